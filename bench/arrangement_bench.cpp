#include "base/win1251.h"
#include "bench/bare_text.h"
#include "bench/catalog_window.h"
#include "bench/rows.h"
#include "bench/screen.h"
#include "browser/ter_form.h"
#include "grid/rows/table_model.h"
#include "grid/table/grid.h"
#include "grid/table/table_view.h"

#include <algorithm>
#include <numeric>

namespace bench {

namespace {

constexpr int rounds = 9;

template <typename Key>
std::vector<int> orderBy(const std::vector<Key>& keys) {
    std::vector<int> order(keys.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&](int first, int second) {
        return keys[static_cast<std::size_t>(first)] < keys[static_cast<std::size_t>(second)];
    });
    return order;
}

std::vector<int> orderByText(const db::RowStore& rows, int field) {
    std::vector<std::string> keys;
    keys.reserve(static_cast<std::size_t>(rows.rowCount()));
    for (int row = 0; row < rows.rowCount(); ++row) {
        keys.push_back(folded(rows.string(row, field)));
    }
    return orderBy(keys);
}

std::vector<int> orderByNumber(const db::RowStore& rows, int field) {
    std::vector<std::int64_t> keys;
    keys.reserve(static_cast<std::size_t>(rows.rowCount()));
    for (int row = 0; row < rows.rowCount(); ++row) {
        keys.push_back(rows.integer(row, field));
    }
    return orderBy(keys);
}

using BareOrder = std::vector<int> (*)(const db::RowStore& rows, int field);

/// Sorts the materials on screen by a column, from the unsorted table on, until they are painted.
Medians compareSorting(const Surroundings& surroundings, const QString& field, BareOrder bareOrder) {
    CatalogWindow window(surroundings.server);
    window.choose(threeHundredThousand);
    grid::TableView& view = TERForm->cxGrid1->view();
    grid::TableModel& model = view.tableModel();
    const int column = columnOf(model, field);
    const db::DataSet& dataSet = window.module().pFIBDataSet3;
    const int fieldIndex = dataSet.field(field).index();

    return alternate(
        rounds,
        [&](int) {
            model.sortBy({});
            return timeUntilPainted(*view.viewport(), [&] { model.sortBy({{column}}); });
        },
        [&](int) {
            std::vector<int> order;
            const double taken = timeOf([&] { order = bareOrder(dataSet.rows(), fieldIndex); });
            requireSame("rows", model.rowCount(), static_cast<long long>(order.size()));
            return taken;
        });
}

int countContaining(const db::RowStore& rows, int field, const std::string& text) {
    int count = 0;
    for (int row = 0; row < rows.rowCount(); ++row) {
        count += folded(rows.string(row, field)).find(text) != std::string::npos ? 1 : 0;
    }
    return count;
}

} // namespace

std::vector<Result> measureSortByName(const Surroundings& surroundings) {
    const Medians medians = compareSorting(surroundings, QStringLiteral("NAME"), orderByText);
    return {{QStringLiteral("sort-name"), QStringLiteral("sort 300,000 rows by name, until painted"),
             medians.ours, medians.bare, QStringLiteral("ms"), LimitOf::Value, 600}};
}

std::vector<Result> measureSortByNumber(const Surroundings& surroundings) {
    const Medians medians = compareSorting(surroundings, QStringLiteral("BAZOVAY"), orderByNumber);
    return {{QStringLiteral("sort-number"), QStringLiteral("sort 300,000 rows by price, until painted"),
             medians.ours, medians.bare, QStringLiteral("ms"), LimitOf::Value, 60}};
}

std::vector<Result> measureFilter(const Surroundings& surroundings) {
    CatalogWindow window(surroundings.server);
    window.choose(threeHundredThousand);
    grid::TableView& view = TERForm->cxGrid1->view();
    grid::TableModel& model = view.tableModel();
    const int column = columnOf(model, QStringLiteral("NAME"));
    const db::DataSet& dataSet = window.module().pFIBDataSet3;
    const int fieldIndex = dataSet.field(QStringLiteral("NAME")).index();
    const QString text = QStringLiteral("Бетон");
    const std::string foldedText = folded(base::win1251::encode(text).toStdString());

    const Medians medians = alternate(
        rounds,
        [&](int) {
            model.clearFilters();
            return timeUntilPainted(*view.viewport(), [&] { model.setFilter(column, {text, {}, {}}); });
        },
        [&](int) {
            int count = 0;
            const double taken =
                timeOf([&] { count = countContaining(dataSet.rows(), fieldIndex, foldedText); });
            if (!model.filters().empty()) {
                requireSame("rows", model.rowCount(), count);
            }
            return taken;
        });
    return {{QStringLiteral("filter"), QStringLiteral("filter 300,000 rows for a text, until painted"),
             medians.ours, medians.bare, QStringLiteral("ms"), LimitOf::Value, 100}};
}

} // namespace bench
