// SPDX-License-Identifier: MIT

#include "bench/catalog_window.h"
#include "bench/rows.h"
#include "bench/screen.h"
#include "browser/grid_export.h"
#include "browser/ter_form.h"
#include "grid/rows/table_model.h"
#include "grid/table/grid.h"
#include "grid/table/table_view.h"

#include <QFile>

#include <array>

namespace bench {

namespace {

const QString exportName = QStringLiteral("growth");

constexpr int rounds = 3;

/// Of a cost that grows in a straight line; sorting, which compares more often the more rows there are, takes
/// a tenth more than that by its nature.
constexpr double limit = 1.25;

/// The materials of one stretch on screen.
class Materials final {
public:
    Materials(CatalogWindow& window, const Stretch& stretch, const QString& folder)
        : window_(window), stretch_(stretch), folder_(folder + u'/') {
        window_.choose(stretch_);
    }
    ~Materials() { QFile::remove(folder_ + exportName + QStringLiteral(".xlsx")); }
    Q_DISABLE_COPY_MOVE(Materials)

    double open() {
        db::DataSet& dataSet = window_.module().pFIBDataSet3;
        dataSet.close();
        const double taken = untilPainted([&] { dataSet.open(); });
        requireSame("materials", dataSet.rowCount(), stretch_.materials);
        return taken;
    }

    double sort() {
        const double taken =
            untilPainted([&] { model().sortBy({{columnOf(model(), QStringLiteral("NAME"))}}); });
        model().sortBy({});
        return taken;
    }

    double filter() {
        const double taken = untilPainted([&] {
            model().setFilter(columnOf(model(), QStringLiteral("NAME")), {QStringLiteral("Бетон"), {}, {}});
        });
        model().clearFilters();
        return taken;
    }

    double exportGrid() {
        return timeOf([&] { browser::exportGrid(TERForm->cxGrid1, folder_, exportName, {}); });
    }

private:
    [[nodiscard]] static grid::TableView& view() { return TERForm->cxGrid1->view(); }
    [[nodiscard]] static grid::TableModel& model() { return view().tableModel(); }
    [[nodiscard]] static double untilPainted(const std::function<void()>& action) {
        return timeUntilPainted(*view().viewport(), action);
    }

    CatalogWindow& window_;
    Stretch stretch_;
    QString folder_;
};

struct Work {
    const char* name;
    const char16_t* description;
    double (Materials::*run)();
};

constexpr std::array works{
    Work{"growth-open", u"open 1,000,000 rows", &Materials::open},
    Work{"growth-sort", u"sort 1,000,000 rows by name", &Materials::sort},
    Work{"growth-filter", u"filter 1,000,000 rows for a text", &Materials::filter},
    Work{"growth-export", u"export 1,000,000 rows", &Materials::exportGrid},
};

using Taken = std::array<std::vector<double>, works.size()>;

void addRound(CatalogWindow& window, const Stretch& stretch, const QString& folder, Taken& taken) {
    Materials materials(window, stretch, folder);
    for (std::size_t index = 0; index < works.size(); ++index) {
        taken[index].push_back((materials.*works[index].run)());
    }
}

} // namespace

std::vector<Result> measureGrowth(const Surroundings& surroundings) {
    CatalogWindow window(surroundings.server);
    Taken many;
    Taken few;
    for (int round = 0; round < rounds; ++round) {
        addRound(window, million, surroundings.folder, many);
        addRound(window, threeHundredThousand, surroundings.folder, few);
    }
    constexpr double times = static_cast<double>(million.materials) / threeHundredThousand.materials;
    std::vector<Result> results;
    for (std::size_t index = 0; index < works.size(); ++index) {
        results.push_back(
            {QString::fromLatin1(works[index].name),
             QString::fromUtf16(works[index].description) + QStringLiteral(" (bare: a line from 300,000)"),
             median(many[index]), times * median(few[index]), QStringLiteral("ms"), LimitOf::Ratio, limit});
    }
    return results;
}

} // namespace bench
