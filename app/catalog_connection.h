#pragma once

#include "db/connection.h"

#include <QString>

namespace app {

/// Points the connection at the catalog on `server` and opens it. Any failure is told by the result alone.
[[nodiscard]] bool connectToCatalog(db::Connection& connection, const QString& server);

} // namespace app
