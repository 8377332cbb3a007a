// SPDX-License-Identifier: MIT

#include "bench/bare_text.h"
#include "bench/catalog_window.h"
#include "bench/rows.h"
#include "bench/screen.h"
#include "browser/ter_form.h"
#include "db/data_set.h"
#include "grid/rows/table_model.h"
#include "grid/table/grid.h"
#include "grid/table/table_view.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>

#include <algorithm>
#include <stdexcept>

namespace bench {

namespace {

constexpr int rounds = 9;

/// How long the search took, and the longest time in which the window handled no event.
struct Search {
    double whole;
    double longestWait;
};

Search search(QLineEdit& field, const QLabel& outcome, const QString& words) {
    field.clear();
    settle();
    Search result{0, 0};
    QElapsedTimer whole;
    whole.start();
    field.setText(words);
    result.longestWait = static_cast<double>(whole.nsecsElapsed()) / 1e6;
    while (!outcome.text().contains(QStringLiteral("из"))) {
        if (whole.elapsed() > 10'000 || outcome.text() == QStringLiteral("Не найдено")) {
            throw std::runtime_error("the search has found nothing");
        }
        result.longestWait = std::max(result.longestWait, timeOf([] { QCoreApplication::processEvents(); }));
    }
    result.whole = static_cast<double>(whole.nsecsElapsed()) / 1e6;
    return result;
}

} // namespace

std::vector<Result> measureFind(const Surroundings& surroundings) {
    CatalogWindow window(surroundings.server);
    window.choose(million);
    grid::TableView& view = TERForm->cxGrid1->view();
    const db::DataSet& dataSet = window.module().pFIBDataSet3;
    // Sorted, so that the rows lie apart.
    view.tableModel().sortBy({{columnOf(view.tableModel(), QStringLiteral("NAME"))}});
    TERForm->cxGrid1->openFind();
    auto& field = *TERForm->cxGrid1->findChild<QLineEdit*>(QStringLiteral("FindBarText"));
    const auto& outcome = *TERForm->cxGrid1->findChild<QLabel*>(QStringLiteral("FindBarOutcome"));

    std::vector<double> waits;
    const auto measure = [&](const QString& words, const QString& rarest) {
        return alternate(
            rounds,
            [&](int) {
                const Search taken = search(field, outcome, words);
                waits.push_back(taken.longestWait);
                return taken.whole;
            },
            [&](int) {
                return timeOf([&] {
                    for (const db::Field* const each : dataSet.fields()) {
                        if (!each->isNumber()) {
                            static_cast<void>(countContaining(dataSet.rows(), each->index(), rarest));
                        }
                    }
                });
            });
    };
    const Medians words = measure(QStringLiteral("25 бетон"), QStringLiteral("бетон"));
    const Medians digits = measure(QStringLiteral("12,5"), QStringLiteral("12,5"));
    return {{QStringLiteral("find-words"),
             QStringLiteral("count two words in all cells of 1,000,000 sorted rows"), words.ours, words.bare,
             QStringLiteral("ms"), LimitOf::Value, 250},
            {QStringLiteral("find-digits"), QStringLiteral("the same with digits, which prices have too"),
             digits.ours, digits.bare, QStringLiteral("ms"), LimitOf::Ratio, 1.6},
            {QStringLiteral("find-wait"), QStringLiteral("longest time without an event meanwhile"),
             median(waits), 8, QStringLiteral("ms"), LimitOf::Value, 25}};
}

} // namespace bench
