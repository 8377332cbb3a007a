// SPDX-License-Identifier: MIT

#include "bench/catalog_window.h"
#include "bench/rows.h"
#include "bench/screen.h"
#include "browser/ter_form.h"
#include "grid/rows/table_model.h"
#include "grid/table/grid.h"
#include "grid/table/table_view.h"

#include <QProcess>

#include <stdexcept>

namespace bench {

namespace {

constexpr int rounds = 3; // they last long
const Stretch& stretch = threeHundredThousand;

/// Milliseconds that isql, Firebird's own command-line client, takes to log in, to read the materials in the
/// order of a column, and to write them to nowhere.
double timeOfIsql(const Surroundings& surroundings, const db::DataSet& materials, const QString& column) {
    QString query = materials.sql().join(u' ');
    query.replace(QStringLiteral(":p1"), u'\'' + QString::fromLatin1(stretch.period) + u'\'')
        .replace(QStringLiteral(":p2"), QString::number(stretch.region))
        .replace(QStringLiteral("order by KOD"), QStringLiteral("order by ") + column);
    return timeOf([&] {
        QProcess isql;
        isql.setStandardOutputFile(QProcess::nullDevice());
        isql.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        isql.start(QStringLiteral("isql-fb"),
                   {QStringLiteral("-quiet"), QStringLiteral("-bail"), QStringLiteral("-ch"),
                    QStringLiteral("WIN1251"), QStringLiteral("-user"), QString::fromLatin1(TDM::userName),
                    QStringLiteral("-password"), QString::fromLatin1(TDM::password),
                    TDM::databaseNameOn(surroundings.server)});
        isql.write(query.toLatin1() + ";\n");
        isql.closeWriteChannel();
        isql.waitForFinished(-1);
        if (isql.exitStatus() != QProcess::NormalExit || isql.exitCode() != 0) {
            throw std::runtime_error("isql-fb has failed");
        }
    });
}

} // namespace

std::vector<Result> measureIsql(const Surroundings& surroundings) {
    CatalogWindow window(surroundings.server);
    window.choose(stretch);
    db::DataSet& materials = window.module().pFIBDataSet3;
    grid::TableView& view = TERForm->cxGrid1->view();
    grid::TableModel& model = view.tableModel();

    const Medians reading = alternate(
        rounds,
        [&](int) {
            const double taken =
                timeUntilPainted(*view.viewport(), [&] { materials.reopenLocate(QStringLiteral("ID")); });
            requireSame("rows", materials.rowCount(), stretch.materials);
            return taken;
        },
        [&](int) { return timeOfIsql(surroundings, materials, QStringLiteral("KOD")); });
    const Medians sorting = alternate(
        rounds,
        [&](int) {
            model.sortBy({});
            return timeUntilPainted(*view.viewport(),
                                    [&] { model.sortBy({{columnOf(model, QStringLiteral("NAME"))}}); });
        },
        [&](int) { return timeOfIsql(surroundings, materials, QStringLiteral("NAME")); });
    return {{QStringLiteral("isql-read"), QStringLiteral("read 300,000 rows, until painted (bare: isql)"),
             reading.ours, reading.bare, QStringLiteral("ms"), LimitOf::Ratio, 1},
            {QStringLiteral("isql-sort"), QStringLiteral("order them by name (bare: isql reads them so)"),
             sorting.ours, sorting.bare, QStringLiteral("ms"), LimitOf::Ratio, 0.1}};
}

} // namespace bench
