// SPDX-License-Identifier: MIT

#include "bench/bare_text.h"
#include "bench/catalog_window.h"
#include "bench/keystrokes.h"
#include "bench/rows.h"
#include "bench/screen.h"
#include "browser/ter_form.h"
#include "grid/rows/table_model.h"
#include "grid/table/grid.h"
#include "grid/table/table_footer.h"
#include "grid/table/table_view.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QLineEdit>

#include <algorithm>
#include <functional>
#include <numeric>
#include <stdexcept>
#include <unordered_map>

namespace bench {

namespace {

constexpr int rounds = 15;

std::string textKey(const db::RowStore& rows, int row, int field) {
    return folded(rows.string(row, field));
}

std::int64_t numberKey(const db::RowStore& rows, int row, int field) {
    return rows.integer(row, field);
}

/// The rows in the order of their keys, which are made ready first.
template <typename Key>
std::vector<int> orderBy(const db::RowStore& rows, int field,
                         Key (*keyOf)(const db::RowStore& rows, int row, int field)) {
    std::vector<Key> keys;
    keys.reserve(static_cast<std::size_t>(rows.rowCount()));
    for (int row = 0; row < rows.rowCount(); ++row) {
        keys.push_back(keyOf(rows, row, field));
    }
    std::vector<int> order(keys.size());
    std::iota(order.begin(), order.end(), 0);
    std::ranges::stable_sort(order, {}, [&](int row) { return keys[static_cast<std::size_t>(row)]; });
    return order;
}

/// Sorts the materials on screen by a column, from the unsorted table on, until they are painted.
template <typename Key>
Medians compareSorting(const Surroundings& surroundings, const QString& field,
                       Key (*keyOf)(const db::RowStore& rows, int row, int field)) {
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
            const double taken = timeOf([&] { order = orderBy(dataSet.rows(), fieldIndex, keyOf); });
            requireSame("rows", model.rowCount(), static_cast<long long>(order.size()));
            return taken;
        });
}

} // namespace

std::vector<Result> measureSortByName(const Surroundings& surroundings) {
    const Medians medians = compareSorting(surroundings, QStringLiteral("NAME"), textKey);
    return {{QStringLiteral("sort-name"), QStringLiteral("sort 300,000 rows by name, until painted"),
             medians.ours, medians.bare, QStringLiteral("ms"), LimitOf::Ratio, 0.9}};
}

std::vector<Result> measureSortByNumber(const Surroundings& surroundings) {
    const Medians medians = compareSorting(surroundings, QStringLiteral("BAZOVAY"), numberKey);
    return {{QStringLiteral("sort-number"), QStringLiteral("sort 300,000 rows by price, until painted"),
             medians.ours, medians.bare, QStringLiteral("ms"), LimitOf::Value, 60}};
}

namespace {

/// Filters 300,000 rows by one column; `countBare` counts the rows that must be left.
Medians compareFiltering(const Surroundings& surroundings, const QString& field,
                         const grid::ColumnFilter& filter,
                         const std::function<int(const db::RowStore& rows, int field)>& countBare) {
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
            model.clearFilters();
            return timeUntilPainted(*view.viewport(), [&] { model.setFilter(column, filter); });
        },
        [&](int) {
            int count = 0;
            const double taken = timeOf([&] { count = countBare(dataSet.rows(), fieldIndex); });
            if (!model.filters().empty()) {
                requireSame("rows", model.rowCount(), count);
            }
            return taken;
        });
}

int countPrices(const db::RowStore& rows, int field) {
    int count = 0;
    for (int row = 0; row < rows.rowCount(); ++row) {
        const std::int64_t price = rows.integer(row, field);
        count += price > 1000'00 && price <= 50000'00 && price != 2000'00 ? 1 : 0;
    }
    return count;
}

} // namespace

std::vector<Result> measureFilter(const Surroundings& surroundings) {
    const QString text = QStringLiteral("Бетон");
    const Medians medians = compareFiltering(
        surroundings, QStringLiteral("NAME"), {.containedText = text, .values = {}},
        [&](const db::RowStore& rows, int field) { return countContaining(rows, field, text); });
    return {{QStringLiteral("filter"), QStringLiteral("filter 300,000 rows for a text, until painted"),
             medians.ours, medians.bare, QStringLiteral("ms"), LimitOf::Ratio, 2}};
}

std::vector<Result> measureFilterByNumber(const Surroundings& surroundings) {
    const auto condition = grid::NumberCondition::read(QStringLiteral("1000,005~50000 <>2000")).condition;
    const Medians medians =
        compareFiltering(surroundings, QStringLiteral("BAZOVAY"), {{}, {}, {}, condition}, countPrices);
    return {{QStringLiteral("filter-number"), QStringLiteral("filter 300,000 rows for prices, until painted"),
             medians.ours, medians.bare, QStringLiteral("ms"), LimitOf::Value, 40}};
}

std::vector<Result> measureFilterList(const Surroundings& surroundings) {
    constexpr int values = 100'000;
    CatalogWindow window(surroundings.server);
    window.choose(threeHundredThousand);
    grid::TableView& view = TERForm->cxGrid1->view();
    grid::TableModel& model = view.tableModel();
    const int column = columnOf(model, QStringLiteral("NAME"));
    const db::DataSet& dataSet = window.module().pFIBDataSet3;
    const int fieldIndex = dataSet.field(QStringLiteral("NAME")).index();
    model.setFilter(columnOf(model, QStringLiteral("KOD")),
                    {{}, {}, {}, grid::NumberCondition::read(QStringLiteral("<=100000")).condition});

    const auto open = [&]() -> QWidget& {
        view.openFilter(column);
        return *QApplication::activePopupWidget();
    };
    const auto close = [](QWidget& popup) {
        popup.close();
        QCoreApplication::sendPostedEvents(&popup, QEvent::DeferredDelete);
    };
    const auto distinctNames = [&] {
        std::unordered_map<std::string_view, int> counts;
        for (int row = 0; row < model.rowCount(); ++row) {
            ++counts[dataSet.rows().string(model.dataSetRow(row), fieldIndex)];
        }
        return counts.size();
    };
    const Medians opening = alternate(
        rounds,
        [&](int) {
            QWidget* popup = nullptr;
            const double taken = timeOf([&] {
                popup = &open();
                settle();
            });
            close(*popup);
            return taken;
        },
        [&](int) {
            return timeOf([&] { requireSame("values", values, static_cast<long long>(distinctNames())); });
        });

    QWidget& popup = open();
    auto& list = *popup.findChild<QAbstractItemView*>();
    requireSame("rows of the list", list.model()->rowCount(), values + 1);
    // A letter that nearly all names hold, then a rarer and rarer text.
    const Medians worst =
        worstKeystroke(rounds, *popup.findChild<QLineEdit*>(), *list.viewport(), QStringLiteral("ер 432"),
                       [&](const QString& text) {
                           const int rows = countContaining(dataSet.rows(), fieldIndex, text);
                           if (rows == 0 || list.model()->rowCount() < 2) {
                               throw std::runtime_error("the filter's text is in none of the names");
                           }
                       });
    close(popup);
    return {{QStringLiteral("filter-list"), QStringLiteral("open a filter of 100,000 values, until painted"),
             opening.ours, opening.bare, QStringLiteral("ms"), LimitOf::Value, 200},
            {QStringLiteral("filter-key"), QStringLiteral("worst keystroke in that filter, until painted"),
             worst.ours, worst.bare, QStringLiteral("ms"), LimitOf::Value, 30}};
}

std::vector<Result> measureSelectionSum(const Surroundings& surroundings) {
    CatalogWindow window(surroundings.server);
    window.choose(threeHundredThousand);
    grid::TableView& view = TERForm->cxGrid1->view();
    const db::DataSet& dataSet = window.module().pFIBDataSet3;
    auto& footer = *view.findChild<grid::TableFooter*>();
    view.setFocus();
    // Sorted, so that the rows lie apart; four columns have sums, as in the loop beside.
    const int column = columnOf(view.tableModel(), QStringLiteral("BAZOVAY"));
    view.tableModel().sortBy({{columnOf(view.tableModel(), QStringLiteral("NAME"))}});
    std::vector<int> order;
    for (int row = 0; row < view.tableModel().rowCount(); ++row) {
        order.push_back(view.tableModel().dataSetRow(row));
    }

    const Medians medians = alternate(
        rounds,
        [&](int) {
            view.goToFirstRow();
            settle();
            return timeOf([&] {
                view.selectAll();
                static_cast<void>(footer.sum(column));
            });
        },
        [&](int) {
            std::int64_t total = 0;
            const double taken = timeOf([&] {
                for (const char16_t* const name : {u"BAZOVAY", u"OPTOVAY", u"CMETNAY", u"INDEKS"}) {
                    const int field = dataSet.field(QString::fromUtf16(name)).index();
                    for (const int row : order) {
                        total += dataSet.rows().integer(row, field);
                    }
                }
            });
            requireSame("sums", total != 0 ? 1 : 0, 1);
            return taken;
        });
    return {{QStringLiteral("selection-sum"),
             QStringLiteral("select 300,000 sorted rows and sum their prices"), medians.ours, medians.bare,
             QStringLiteral("ms"), LimitOf::Value, 20}};
}

} // namespace bench
