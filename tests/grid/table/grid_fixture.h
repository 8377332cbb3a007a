// SPDX-License-Identifier: MIT

#pragma once

#include "data/data_modul.h"
#include "db/data_set.h"
#include "db/data_source.h"
#include "grid/header/fitted_header.h"
#include "grid/rows/column.h"
#include "grid/rows/table_model.h"
#include "grid/table/filter_values.h"
#include "grid/table/grid.h"
#include "grid/table/table_footer.h"
#include "grid/table/table_view.h"
#include "support/firebird_server.h"
#include "support/printing.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QListView>
#include <QTest>

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <numeric>

namespace grid {

inline constexpr std::array fields{
    db::bigint(u"ID").hidden(),
    db::integer(u"KOD", u"Код").left(),
    db::text(u"NAME", 1000, u"Наименование"),
    db::decimal(u"PRICE", 2, u"Цена"),
};

inline constexpr std::array columns{
    ColumnSpec{u"ViewID", u"ID", false},
    ColumnSpec{u"ViewKOD", u"KOD", true, 100},
    ColumnSpec{u"ViewNAME", u"NAME", true, 300},
    ColumnSpec{u"ViewPRICE", u"PRICE", true, 80, Qt::AlignRight},
    ColumnSpec{u"ViewCMP", u"CMP"},
};
inline constexpr int kod = 1;
inline constexpr int name = 2;
inline constexpr int price = 3;
inline constexpr int absent = 4;

inline constexpr GridSpec gridSpec{u"Grid", u"Level", u"View", columns, u"KOD"};

inline const QString fewRows = QStringLiteral(
    "select cast(ID as bigint) ID, cast(KOD as integer) KOD, cast(trim(NAME) as varchar(1000)) NAME, "
    "cast(PRICE as numeric(18,2)) PRICE from ("
    "select 1 ID, 30 KOD, 'Щебень' NAME, 12.50 PRICE from RDB$DATABASE union all "
    "select 2, 4, null, -3.00 from RDB$DATABASE union all "
    "select 3, null, 'бетон \"М400\"', 1012.55 from RDB$DATABASE union all "
    "select 4, 100, '', null from RDB$DATABASE union all "
    "select 5, 4, 'БЕТОН', 0.05 from RDB$DATABASE)");

/// 4000 rows, of which KOD counts; every hundredth has a name of many lines.
inline const QString manyRows = QStringLiteral(
    "with recursive N as (select 0 I from RDB$DATABASE union all select I + 1 from N where I < 999) "
    "select cast(A.I * 4 + B.I as bigint) ID, cast(A.I * 4 + B.I as integer) KOD, "
    "cast(iif(mod(A.I * 4 + B.I, 100) = 99, rpad('', 1000, 'длинное имя '), 'имя ' || (A.I * 4 + B.I)) "
    "as varchar(1000)) NAME, cast(A.I / 7.00 as numeric(18,2)) PRICE from N A join N B on B.I < 4");

/// The materials of the sample catalog, %1 as NAME; a condition and an order may follow.
inline const QString materials =
    "select ID, KOD, cast(%1 as varchar(1000)) NAME, cast(CMETNAY as numeric(18,2)) PRICE "
    "from TERKATALOGKTC_TABLE where PER='202403' and REGIONID=11 ";

/// A grid over a query, on screen.
class GridTest : public testing::Test {
protected:
    void open(const QString& sql) {
        QLocale::setDefault(QLocale(QLocale::Russian));
        module_.connectTo(test::sampleServer);
        dataSet.setSql({sql});
        dataSet.open();
        grid_ = std::make_unique<Grid>(gridSpec, source_, nullptr);
        grid_->resize(500, 300);
        grid_->show();
        QApplication::setActiveWindow(grid_.get());
        grid_->setFocus();
    }

    Grid& grid() { return *grid_; }
    TableView& view() { return grid_->view(); }
    QString footer() { return grid_->findChild<TableFooter*>()->text(); }
    TableModel& model() { return grid_->view().tableModel(); }

    template <typename Widget>
    Widget& child(const char* objectName) {
        auto* const found = grid_->findChild<Widget*>(QString::fromLatin1(objectName));
        EXPECT_NE(found, nullptr) << objectName;
        return *found;
    }

    /// The shown values of ID.
    QString ids() {
        QStringList texts;
        for (int row = 0; row < model().rowCount(); ++row) {
            texts.append(model().text(row, 0));
        }
        return texts.join(u' ');
    }

    /// The values of ID in the server's own answer.
    QString serverIds(const QString& nameField, const QString& conditionAndOrder) {
        reference.close();
        reference.setSql({materials.arg(nameField) + conditionAndOrder});
        reference.open();
        QStringList texts;
        for (int row = 0; row < reference.rowCount(); ++row) {
            texts.append(reference.text(row, reference.field("ID")));
        }
        return texts.join(u' ');
    }

    /// The list of the open filter: ticks, values and numbers of rows.
    QString offered() {
        const QAbstractItemModel& values = *part<QListView>("FilterValues").model();
        QStringList items;
        for (int row = 0; row < values.rowCount(); ++row) {
            const QModelIndex index = values.index(row, 0);
            const auto tick = QStringView(u" -x").at(index.data(Qt::CheckStateRole).toInt());
            items.append(QStringLiteral("[%1]%2 %3")
                             .arg(tick)
                             .arg(index.data().toString())
                             .arg(index.data(FilterValues::rowsRole).toInt()));
        }
        return items.join(QStringLiteral(", "));
    }

    void clickValue(int row, int x) {
        auto& list = part<QListView>("FilterValues");
        const QRect place = list.visualRect(list.model()->index(row, 0));
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, {place.left() + x, place.center().y()});
    }

    /// A part of the open filter.
    template <typename Widget>
    Widget& part(const char* objectName) {
        return *QApplication::activePopupWidget()->findChild<Widget*>(QString::fromLatin1(objectName));
    }

    /// Opens a filter and types over what its field holds.
    void typeIntoFilter(int column, const char* keys) {
        view().openFilter(column);
        QTest::keyClick(&part<QLineEdit>("FilterText"), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(&part<QLineEdit>("FilterText"), keys);
    }

    /// What all columns take together.
    int usedWidth() {
        const auto shown = view().visibleColumns();
        return std::accumulate(shown.begin(), shown.end(), 0,
                               [](int sum, const Column* column) { return sum + column->width(); });
    }

    void clickHeader(int column, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        const int x = view().header().sectionViewportPosition(column) + 12;
        QTest::mouseClick(view().header().viewport(), Qt::LeftButton, modifiers,
                          {x, view().header().height() / 2});
    }

    void clickRow(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        const QRect cell = view().visualRect(model().index(row, name));
        QTest::mouseClick(view().viewport(), Qt::LeftButton, modifiers, cell.topLeft() + QPoint(5, 5));
    }

    QString copied() {
        QTest::keyClick(&view(), Qt::Key_C, Qt::ControlModifier);
        return QApplication::clipboard()->text();
    }

private:
    TDM module_;

protected:
    db::DataSet dataSet{"dataSet", fields, {}, module_.pFIBDatabase1, module_.RFIBTransaction, nullptr};
    db::DataSet reference{"reference", fields, {}, module_.pFIBDatabase1, module_.RFIBTransaction, nullptr};

private:
    db::DataSource source_{QStringLiteral("source"), dataSet, nullptr};
    std::unique_ptr<Grid> grid_;
};

} // namespace grid
