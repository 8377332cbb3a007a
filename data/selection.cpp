// SPDX-License-Identifier: MIT

#include "data/selection.h"

#include "data/data_modul.h"

#include <algorithm>

std::int32_t CurRegionId = 0;
QString CurPeriod;

namespace data {

namespace {

const QString idColumn = QStringLiteral("ID");
const QString nameColumn = QStringLiteral("NAME");
const QString periodParameter = QStringLiteral("p1");
const QString regionParameter = QStringLiteral("p2");

std::int32_t regionIdOf(const TDM& module, int row) {
    const db::DataSet& regions = module.pFIBDataSet1;
    return static_cast<std::int32_t>(regions.rows().integer(row, regions.field(idColumn).index()));
}

} // namespace

void bindSelection(db::DataSet& dataSet, const QString& period, std::int32_t region) {
    dataSet.parameter(periodParameter) = period;
    dataSet.parameter(regionParameter) = region;
}

void openCatalogs(TDM& module) {
    for (db::DataSet* dataSet : module.selectionDataSets()) {
        bindSelection(*dataSet, CurPeriod, CurRegionId);
        dataSet->open();
    }
    for (db::DataSet* dataSet : module.wholeDataSets()) {
        dataSet->open();
    }
}

bool locateRegion(TDM& module, const QString& name) {
    return module.pFIBDataSet1.isOpen() && module.pFIBDataSet1.locate(nameColumn, name);
}

bool isChosenRegion(const TDM& module, const QString& name) {
    const auto row = module.pFIBDataSet1.isOpen() ? module.pFIBDataSet1.find(nameColumn, name) : std::nullopt;
    return row && regionIdOf(module, *row) == CurRegionId;
}

std::int32_t currentRegionId(const TDM& module) {
    return regionIdOf(module, module.pFIBDataSet1.currentRow());
}

bool isSelectionRead(TDM& module) {
    return std::ranges::all_of(module.selectionDataSets(), [](db::DataSet* dataSet) {
        return dataSet->isOpen() && dataSet->parameter(periodParameter) == db::ParameterValue(CurPeriod) &&
               dataSet->parameter(regionParameter) == db::ParameterValue(CurRegionId);
    });
}

void rereadSelection(TDM& module) {
    for (db::DataSet* dataSet : module.selectionDataSets()) {
        bindSelection(*dataSet, CurPeriod, CurRegionId);
        dataSet->reopenLocate(idColumn);
    }
}

void ReopenSelectionDatasets(TDM& module) {
    for (db::DataSet* dataSet : module.selectionDataSets()) {
        dataSet->close();
        bindSelection(*dataSet, CurPeriod, CurRegionId);
        dataSet->reopenLocate(idColumn);
    }
}

} // namespace data
