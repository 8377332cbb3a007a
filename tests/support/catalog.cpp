#include "support/catalog.h"

namespace test {

void connectTo(TDM& module, const QString& server) {
    module.pFIBDatabase1.setDatabaseName(TDM::databaseNameOn(server));
    module.pFIBDatabase1.open();
}

void bind(db::DataSet& dataSet, const QString& period, std::int32_t region) {
    dataSet.parameter("p1").setString(period);
    dataSet.parameter("p2").setInteger(region);
}

void openAll(TDM& module, const QString& period, std::int32_t region) {
    for (db::DataSet* dataSet : module.selectionDataSets()) {
        bind(*dataSet, period, region);
    }
    for (db::DataSet* dataSet : module.dataSets()) {
        dataSet->open();
    }
}

} // namespace test
