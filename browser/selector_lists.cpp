// SPDX-License-Identifier: MIT

#include "browser/selector_lists.h"

#include "data/data_modul.h"
#include "data/selection.h"

#include <QComboBox>

namespace browser {

namespace {

/// The region that a new window shows, by its place in the list.
constexpr int initialRegionIndex = 3;
constexpr int initialPeriodIndex = 0;

/// Lists the values of `column` and selects the one at `index`; a shorter list leaves the selector's text.
/// Tells whether it is long enough.
bool fillSelector(QComboBox& selector, db::DataSet& dataSet, const QString& column, int index) {
    QStringList items;
    const db::Field& field = dataSet.field(column);
    for (int row = 0; row < dataSet.rowCount(); ++row) {
        dataSet.moveTo(row);
        items += dataSet.text(row, field);
    }
    const QString text = selector.currentText();
    selector.clear();
    selector.addItems(items);
    const bool hasItem = index < selector.count();
    if (hasItem) {
        selector.setCurrentIndex(index);
    } else {
        selector.setCurrentIndex(-1);
        selector.setEditText(text);
    }
    return hasItem;
}

} // namespace

void fillRegionSelector(TDM& module, QComboBox& selector) {
    module.pFIBDataSet1.open();
    const bool isChosen =
        fillSelector(selector, module.pFIBDataSet1, QStringLiteral("NAME"), initialRegionIndex);
    // Where the list is short the selector still holds its first text, which is not meant as a region's name.
    if (isChosen && data::locateRegion(module, selector.currentText())) {
        CurRegionId = data::currentRegionId(module);
    }
}

void fillPeriodSelector(TDM& module, QComboBox& selector) {
    module.pFIBDataSet2.open();
    static_cast<void>(
        fillSelector(selector, module.pFIBDataSet2, QStringLiteral("PERIOD"), initialPeriodIndex));
    CurPeriod = selector.currentText();
}

} // namespace browser
