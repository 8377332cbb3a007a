// SPDX-License-Identifier: MIT

#include "browser/grid_export.h"
#include "browser/ter_form.h"
#include "grid/rows/column.h"
#include "grid/rows/table_model.h"
#include "grid/table/grid.h"
#include "grid/table/table_view.h"
#include "support/catalog_window.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace {

/// Sorts by the last column, downwards, and filters by the first one of texts.
void arrange(const grid::TableView& view, const QString& text) {
    grid::TableModel& model = view.tableModel();
    const auto place = [&model](const grid::Column* column) {
        return static_cast<int>(std::ranges::find(model.columns(), column) - model.columns().begin());
    };
    const auto columns = view.visibleColumns();
    const auto texts =
        std::ranges::find_if(columns, [](auto* column) { return !column->field()->isNumber(); });
    model.sortBy({{place(columns.back()), true}});
    grid::ColumnFilter filter;
    filter.containedText = text;
    model.setFilter(place(*texts), filter);
}

/// Serves read_back.py, which holds the workbooks against the database.
TEST(ExportedGrids, AreWritten) {
    test::CatalogWindow window(qEnvironmentVariable("TARVELO_SERVER"));
    const QStringList filters = qEnvironmentVariable("TARVELO_FILTERS").split('|');
    for (const QString& edition : {QString("Action1"), QString("Action8")}) {
        window.choose(edition);
        test::type(*TERForm->cxComboBox1, "В пределах");
        test::type(*TERForm->cxComboBox2, "202403");
        const auto& form = *TERForm;
        const std::array grids{form.cxGrid1, form.cxGrid3, form.cxGrid4, form.cxGrid5,
                               form.cxGrid9, form.cxGrid6, form.cxGrid7, form.cxGrid8};
        for (std::size_t i = 0; i < grids.size(); ++i) {
            arrange(grids[i]->view(), filters[static_cast<qsizetype>(i)]);
            const QString name = edition + u'-' + QString::number(i);
            browser::exportGrid(grids[i], qEnvironmentVariable("TARVELO_EXPORT") + u'/', name, {});
        }
    }
}

} // namespace
