#include "browser/catalog_selection.h"

namespace browser {

namespace {

/// The region that a new window shows, by its place in the list.
constexpr int initialRegionIndex = 3;
constexpr int initialPeriodIndex = 0;

const QString nameColumn = QStringLiteral("NAME");
const QString idColumn = QStringLiteral("ID");

void bindSelection(db::DataSet& dataSet) {
    dataSet.parameter(QStringLiteral("p1")).setString(CurPeriod);
    dataSet.parameter(QStringLiteral("p2")).setInteger(CurRegionId);
}

/// Lists the values of `column` and selects the one at `index`; a shorter list leaves the selector's text.
void fillSelector(QComboBox& selector, const db::DataSet& dataSet, const QString& column, int index) {
    QStringList items;
    const db::Field& field = dataSet.field(column);
    for (int row = 0; row < dataSet.rowCount(); ++row) {
        items += dataSet.text(row, field);
    }
    const QString text = selector.currentText();
    selector.clear();
    selector.addItems(items);
    if (index < selector.count()) {
        selector.setCurrentIndex(index);
    } else {
        selector.setCurrentIndex(-1);
        selector.setEditText(text);
    }
}

} // namespace

void fillRegionSelector(TDM& module, QComboBox& selector) {
    module.pFIBDataSet1.open();
    fillSelector(selector, module.pFIBDataSet1, nameColumn, initialRegionIndex);
    if (locateRegion(module, selector.currentText())) {
        CurRegionId = currentRegionId(module);
    }
}

void fillPeriodSelector(TDM& module, QComboBox& selector) {
    module.pFIBDataSet2.open();
    fillSelector(selector, module.pFIBDataSet2, QStringLiteral("PERIOD"), initialPeriodIndex);
    CurPeriod = selector.currentText();
}

void openCatalogs(TDM& module) {
    for (db::DataSet* dataSet : module.selectionDataSets()) {
        bindSelection(*dataSet);
        dataSet->open();
    }
    for (db::DataSet* dataSet : {&module.pFIBDataSet7, &module.pFIBDataSet8, &module.pFIBDataSet9}) {
        dataSet->open();
    }
}

bool locateRegion(TDM& module, const QString& name) {
    return module.pFIBDataSet1.isOpen() && module.pFIBDataSet1.locate(nameColumn, name);
}

std::int32_t currentRegionId(const TDM& module) {
    const db::DataSet& regions = module.pFIBDataSet1;
    return static_cast<std::int32_t>(
        regions.rows().integer(regions.currentRow(), regions.field(idColumn).index()));
}

void ReopenSelectionDatasets(TDM& module) {
    for (db::DataSet* dataSet : module.selectionDataSets()) {
        dataSet->close();
        bindSelection(*dataSet);
        dataSet->reopenLocate(idColumn);
    }
}

} // namespace browser
