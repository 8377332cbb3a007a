#include "data/selection.h"

#include "data/data_modul.h"

std::int32_t CurRegionId = 0;
QString CurPeriod;

namespace data {

namespace {

const QString idColumn = QStringLiteral("ID");

} // namespace

void bindSelection(db::DataSet& dataSet, const QString& period, std::int32_t region) {
    dataSet.parameter(QStringLiteral("p1")) = period;
    dataSet.parameter(QStringLiteral("p2")) = region;
}

void openCatalogs(TDM& module) {
    for (db::DataSet* dataSet : module.selectionDataSets()) {
        bindSelection(*dataSet, CurPeriod, CurRegionId);
        dataSet->open();
    }
    for (db::DataSet* dataSet : {&module.pFIBDataSet7, &module.pFIBDataSet8, &module.pFIBDataSet9}) {
        dataSet->open();
    }
}

bool locateRegion(TDM& module, const QString& name) {
    return module.pFIBDataSet1.isOpen() && module.pFIBDataSet1.locate(QStringLiteral("NAME"), name);
}

std::int32_t currentRegionId(const TDM& module) {
    const db::DataSet& regions = module.pFIBDataSet1;
    return static_cast<std::int32_t>(
        regions.rows().integer(regions.currentRow(), regions.field(idColumn).index()));
}

void ReopenSelectionDatasets(TDM& module) {
    for (db::DataSet* dataSet : module.selectionDataSets()) {
        dataSet->close();
        bindSelection(*dataSet, CurPeriod, CurRegionId);
        dataSet->reopenLocate(idColumn);
    }
}

} // namespace data
