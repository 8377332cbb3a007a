#include "app/catalog_connection.h"

#include "data/data_modul.h"

namespace app {

bool connectToCatalog(db::Connection& connection, const QString& server) {
    try {
        connection.setDatabaseName(TDM::databaseNameOn(server));
        connection.open();
        return true;
    } catch (const std::exception&) {
        // The status bar is all that a failed connection shows; nothing is logged.
        return false;
    }
}

} // namespace app
