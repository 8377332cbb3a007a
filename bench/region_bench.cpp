// SPDX-License-Identifier: MIT

#include "bench/catalog_window.h"
#include "bench/rows.h"
#include "bench/screen.h"
#include "browser/ter_form.h"
#include "data/selection.h"
#include "grid/table/grid.h"
#include "grid/table/table_view.h"

#include <QComboBox>
#include <QTabWidget>

namespace bench {

namespace {

constexpr int rounds = 25;

/// Shows every tab that the selection fills, the first one last: a tab that has been seen could go on working
/// while it is hidden.
void visitTabs(int count) {
    for (int index = count - 1; index >= 0; --index) {
        TERForm->cxPageControl1->setCurrentIndex(index);
        settle();
    }
}

} // namespace

std::vector<Result> measureRegion(const Surroundings& surroundings) {
    CatalogWindow window(surroundings.server);
    std::vector<BareQuery> queries;
    for (const db::DataSet* dataSet : window.module().selectionDataSets()) {
        queries.emplace_back(window.module(), *dataSet);
    }
    visitTabs(static_cast<int>(queries.size()));
    // The window shows the fourth region; every round goes on to another one.
    const auto regionOf = [](int round) { return 1 + round % regionCount; };

    const Medians medians = alternate(
        rounds,
        [&](int round) {
            return timeUntilPainted(*TERForm->cxGrid1->view().viewport(), [&] {
                TERForm->cxComboBox1->setCurrentText(regionName(regionOf(round)));
            });
        },
        [&](int round) {
            int read = 0;
            const double taken = timeOf([&] {
                for (BareQuery& query : queries) {
                    read += query.read(QString::fromLatin1(regionPeriod), regionOf(round));
                }
            });
            int shown = 0;
            for (const db::DataSet* dataSet : window.module().selectionDataSets()) {
                shown += dataSet->rowCount();
            }
            requireSame("rows", shown, read);
            return taken;
        });
    requireSame("region", CurRegionId, regionOf(rounds));
    return {{QStringLiteral("region"), QStringLiteral("change of region, 73,600 rows, until painted"),
             medians.ours, medians.bare, QStringLiteral("ms"), LimitOf::Ratio, 1.15}};
}

} // namespace bench
