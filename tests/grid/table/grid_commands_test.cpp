// SPDX-License-Identifier: MIT

#include "grid/header/cell_text.h"
#include "grid/table/grid_fixture.h"
#include "support/menus.h"

#include <QHelpEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QScrollBar>
#include <QToolTip>

namespace grid {

namespace {

using test::choose;
using test::close;
using test::entries;
using test::entry;
using test::openMenu;
using test::requestMenu;

class GridCommandsTest : public GridTest {
protected:
    QMenu& rightClick(int row, int column) {
        const QPoint place = view().visualRect(model().index(row, column)).topLeft() + QPoint(5, 5);
        return test::requestMenu(*view().viewport(), place);
    }
    QMenu& rightClickHeader(int column) {
        QWidget& header = *view().header().viewport();
        const QPoint place(view().header().sectionViewportPosition(column) + 15, header.height() / 2);
        return test::requestMenu(header, place);
    }

    QStringList captions() {
        QStringList texts;
        for (const Column* column : view().visibleColumns()) {
            texts.append(column->headerText());
        }
        return texts;
    }
    void doubleClickEdge(int column) {
        const FittedHeader& header = view().header();
        const QPoint edge(header.sectionViewportPosition(column) + header.sectionSize(column) - 1,
                          header.height() / 2);
        QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, edge);
        QTest::mouseDClick(header.viewport(), Qt::LeftButton, {}, edge);
    }
};

TEST_F(GridCommandsTest, RightClickKeepsASelectionThatHoldsTheRow) {
    open(fewRows);
    clickRow(1);
    clickRow(3, Qt::ShiftModifier);
    close(rightClick(2, price));
    EXPECT_EQ(view().selectedRows(), std::vector<int>({1, 2, 3}));
    EXPECT_EQ(view().currentIndex(), model().index(2, price));
    EXPECT_TRUE(view().hasFocus());
    close(rightClick(4, kod));
    EXPECT_EQ(view().selectedRows(), std::vector<int>({4}));

    // Beside the rows nothing is hit, though rows are still selected.
    QMenu& menu = requestMenu(*view().viewport(), view().viewport()->rect().bottomLeft());
    EXPECT_FALSE(entry(menu, "Копировать ячейку").isEnabled());
    EXPECT_TRUE(entry(menu, "Копировать строки").isEnabled());
    close(menu);
}

TEST_F(GridCommandsTest, FiltersByTheValueOfACell) {
    open(fewRows);
    EXPECT_EQ(entries(rightClick(0, name)),
              QStringList({"Копировать ячейку", "Копировать строки", "Копировать с заголовками",
                           "Оставить только «Щебень»", "Скрыть «Щебень»", "[Сбросить фильтр]", "Найти…",
                           "Столбец «Наименование»"}));
    close(openMenu());
    choose(rightClick(4, kod), "Оставить только «4»");
    EXPECT_EQ(ids(), "2 5");
    choose(rightClick(0, name), "Скрыть (Пустые)");
    EXPECT_EQ(ids(), "5");
    choose(rightClick(0, name), "Сбросить фильтр");
    EXPECT_EQ(ids(), "1 2 3 4 5");
    choose(rightClick(3, price), "Скрыть (Пустые)");
    EXPECT_EQ(dataSet.currentRow(), 4) << "the next one that stays";
    choose(rightClick(3, price), "Скрыть «0,05»");
    EXPECT_EQ(dataSet.currentRow(), 2) << "the one before";
    EXPECT_EQ(ids(), "1 2 3");
    choose(rightClickHeader(price), "Снять фильтр столбца");
    EXPECT_EQ(ids(), "1 2 3 4 5");
    choose(rightClick(0, price), "Оставить только «12,50»");
    EXPECT_EQ(ids(), "1");
    choose(rightClick(0, price), "Скрыть «12,50»");
    EXPECT_EQ(ids(), "") << "none of the only ones is left";
    model().clearFilters();
    EXPECT_TRUE(entries(rightClick(0, absent)).contains("[Оставить только (Пустые)]")) << "no field";
}

TEST_F(GridCommandsTest, NamesLongValuesByTheirEnds) {
    open("select cast(1 as bigint) ID, cast(1 as integer) KOD, cast(1 as numeric(18,2)) PRICE, "
         "cast('R&D ' || ascii_char(9) || rpad('', 100, 'x') || ' конец' as varchar(1000)) NAME from "
         "RDB$DATABASE");
    const QString text = entry(rightClick(0, name), "Скрыть ").text();
    EXPECT_TRUE(text.startsWith("Скрыть «R&&D xxx")) << text.toStdString();
    EXPECT_TRUE(text.endsWith("xxx конец»") && text.contains(u'…') && text.size() < 70) << text.toStdString();
}

TEST_F(GridCommandsTest, CopiesACellOrRowsUnderTheirHeadings) {
    open(fewRows);
    clickRow(2);
    QTest::keyClick(&view(), Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    const QMimeData* const cell = QApplication::clipboard()->mimeData();
    EXPECT_EQ(cell->text(), "бетон \"М400\"");
    EXPECT_TRUE(cell->html().contains("<td class=\"text\" sdnum=\"1033;0;@\">бетон \"М400\"</td>"));
    view().header().moveSection(view().header().visualIndex(price), view().header().visualIndex(kod));
    clickRow(4, Qt::ControlModifier);
    choose(rightClick(4, name), "Копировать с заголовками");
    const QMimeData* const rows = QApplication::clipboard()->mimeData();
    EXPECT_EQ(rows->text(), "Цена\tКод\tНаименование\tCMP\n1012,55\t\t\"бетон \"\"М400\"\"\"\t\n"
                            "0,05\t4\tБЕТОН\t\n");
    EXPECT_EQ(rows->html().count("<tr>"), 3);
    EXPECT_TRUE(rows->html().contains("sdnum=\"1033;0;@\">Код</td>"));
}

TEST_F(GridCommandsTest, OpensTheMenuOfTheCurrentCellByKey) {
    open(manyRows);
    QTest::keyClick(&view(), Qt::Key_Down);
    QTest::keyClick(&view(), Qt::Key_Right);
    view().verticalScrollBar()->setValue(2000);
    QTest::keyClick(&view(), Qt::Key_F10, Qt::ShiftModifier);
    QMenu& byKey = openMenu();
    EXPECT_EQ(byKey.activeAction(), byKey.actions().front());
    const QRect cell = view().visualRect(model().index(1, name));
    ASSERT_FALSE(cell.isEmpty()) << "it is scrolled to";
    EXPECT_EQ(byKey.pos(), view().viewport()->mapToGlobal(cell.bottomLeft()));
    // Down to the filter, which Enter sets.
    for (int i = 0; i < 3; ++i) {
        QTest::keyClick(&byKey, Qt::Key_Down);
    }
    QTest::keyClick(&byKey, Qt::Key_Return);
    EXPECT_EQ(ids(), "1");
    EXPECT_TRUE(view().hasFocus());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    choose(requestMenu(view(), {}, QContextMenuEvent::Keyboard), "Найти…");
    EXPECT_TRUE(child<QLineEdit>("FindBarText").hasFocus());
}

TEST_F(GridCommandsTest, SortsByTheColumnInFocus) {
    open(manyRows);
    const auto press = [&](Qt::Key key) {
        QTest::keyClick(&view(), key, Qt::AltModifier);
        return model().text(0, 0);
    };
    QTest::keyClick(&view(), Qt::Key_Right);
    QTest::keyClick(&view(), Qt::Key_Right);
    dataSet.moveTo(2500);
    EXPECT_EQ(press(Qt::Key_PageDown), "3996");
    EXPECT_EQ(press(Qt::Key_PageUp), "0");
    EXPECT_EQ(model().sortColumns(), std::vector<SortColumn>({{price, false}}));
    view().verticalScrollBar()->setValue(0);
    press(Qt::Key_Backspace);
    EXPECT_TRUE(model().sortColumns().empty());
    EXPECT_EQ(dataSet.currentRow(), 2500);
    EXPECT_FALSE(view().rowRect(2500).isEmpty()) << "the view is back at the current row";

    EXPECT_EQ(entries(rightClickHeader(price)).first(3),
              QStringList({"Сортировать по возрастанию", "Сортировать по убыванию", "[Без сортировки]"}));
    choose(openMenu(), "Сортировать по убыванию");
    EXPECT_EQ(entries(rightClickHeader(absent)).first(4),
              QStringList({"[Сортировать по возрастанию]", "[Сортировать по убыванию]", "Без сортировки",
                           "[Фильтр…]"}));
}

TEST_F(GridCommandsTest, HidesColumnsAndBringsThemBack) {
    open(fewRows);
    const QStringList all = captions();
    model().sortBy({{price, false}});
    clickRow(1);
    ASSERT_EQ(view().currentIndex().column(), name);
    EXPECT_TRUE(entries(rightClickHeader(name)).contains("[Показать столбец]")) << "none hidden by the user";
    EXPECT_TRUE(entries(openMenu()).contains("[Исходный вид]"));
    choose(openMenu(), "Скрыть столбец");
    EXPECT_EQ(captions(), QStringList({"Код", "Цена", "CMP"}));
    EXPECT_EQ(view().currentIndex().column(), price) << "what is hidden has no focus";
    EXPECT_EQ(view().selectedRows(), std::vector<int>({1}));
    EXPECT_EQ(usedWidth(), view().viewport()->width());
    for (const int column : {kod, absent}) {
        choose(rightClickHeader(column), "Скрыть столбец");
    }
    QMenu& menu = rightClickHeader(price);
    EXPECT_FALSE(entry(menu, "Скрыть столбец").isEnabled()) << "the last one";
    EXPECT_EQ(entries(*entry(menu, "Показать столбец").menu()), QStringList({"Код", "Наименование", "CMP"}));
    entry(*entry(menu, "Показать столбец").menu(), "Наименование").trigger();
    close(menu);
    EXPECT_EQ(captions(), QStringList({"Наименование", "Цена"}));

    model().setFilter(name, {"бетон", {}, {}});
    view().header().moveSection(view().header().visualIndex(price), 0);
    choose(rightClickHeader(price), "Исходный вид");
    EXPECT_EQ(captions(), all);
    EXPECT_EQ(view().header().hiddenByUser(), std::vector<int>());
    EXPECT_EQ(ids(), "5 3") << "sort and filter stay";
    const FittedHeader& header = view().header();
    EXPECT_NEAR(header.sectionSize(name), 3 * header.sectionSize(kod), 3);
    EXPECT_EQ(usedWidth(), view().viewport()->width());
}

TEST_F(GridCommandsTest, FitsAColumnToItsWidestText) {
    open("with recursive N as (select 0 I from RDB$DATABASE union all select I + 1 from N where I < 999) "
         "select cast(I as bigint) ID, cast(iif(I = 777, -12345678, I) as integer) KOD, "
         "cast(iif(I = 500, 'Блок оконный двойной', iif(I = 501, rpad('', 300, 'слово '), 'Блок')) "
         "as varchar(1000)) NAME, cast(iif(I = 900, 123456789012.34, I) as numeric(18,2)) PRICE from N");
    grid().resize(700, 300);
    const auto needed = [&](const QString& text) { return cellTextWidth(text, view().font()) + 1; };
    FittedHeader& header = view().header();
    header.resizeSection(name, 100);
    model().setFilter(name, {"", ColumnFilter::Values::AllBut, {model().value(501, name)}});
    for (const auto& [column, text] : {std::pair(kod, "-12345678"), {name, "Блок оконный двойной"}}) {
        doubleClickEdge(column);
        EXPECT_NEAR(header.sectionSize(column), needed(text), 1) << text;
        EXPECT_EQ(usedWidth(), view().viewport()->width());
    }
    EXPECT_TRUE(model().sortColumns().empty());
    choose(rightClickHeader(price), "Ширина по содержимому");
    EXPECT_NEAR(header.sectionSize(price), needed("123456789012,34"), 1);
    EXPECT_NEAR(header.sectionSize(name), needed("Блок оконный двойной"), 1) << "to its left nothing changes";
    choose(rightClickHeader(absent), "Скрыть столбец");
    choose(rightClickHeader(price), "Ширина по содержимому");
    EXPECT_NEAR(header.sectionSize(price), needed("123456789012,34"), 1) << "as the last column";
    EXPECT_EQ(usedWidth(), view().viewport()->width());

    // A text that is wider than the table leaves the numbers beside it whole.
    model().clearFilters();
    choose(rightClickHeader(name), "Ширина по содержимому");
    EXPECT_NEAR(header.sectionSize(price), needed("123456789012,34"), 1);
    EXPECT_GT(header.sectionSize(name), 2 * header.sectionSize(price));
    EXPECT_EQ(usedWidth(), view().viewport()->width());
}

TEST_F(GridCommandsTest, SumsTheSelectedRows) {
    open(fewRows);
    auto& bar = *grid().findChild<TableFooter*>();
    EXPECT_EQ(bar.sum(price), "") << "one row is no sum";
    clickRow(1);
    clickRow(3, Qt::ShiftModifier);
    EXPECT_EQ(footer(), "выделено 3 из 5");
    EXPECT_EQ(bar.sum(price), "1009,55") << "NULL counts for nothing";
    EXPECT_EQ(bar.sum(kod), "") << "whole numbers are codes";
    clickRow(2, Qt::ControlModifier);
    clickRow(4, Qt::ControlModifier);
    EXPECT_EQ(bar.sum(price), "-2,95");
    QApplication::processEvents();
    EXPECT_EQ(bar.accessibleName(), "выделено 3 из 5; Цена: -2,95");
    model().sortBy({{price, true}});
    QTest::keyClick(&view(), Qt::Key_Home);
    QTest::keyClick(&view(), Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(bar.sum(price), "1025,05") << "in the order that is shown";
    model().setFilter(kod, {"4", {}, {}});
    EXPECT_EQ(footer(), "2 из 5");
    dataSet.close();
    QApplication::processEvents();
    EXPECT_EQ(bar.accessibleName(), "0");
}

TEST_F(GridCommandsTest, ShowsSumsWholeOrNotAtAll) {
    open("with recursive N as (select 0 I from RDB$DATABASE union all select I + 1 from N where I < 99) "
         "select cast(I as bigint) ID, cast(1 as integer) KOD, cast(null as varchar(1000)) NAME, "
         "cast(-92233720368547758.07 as numeric(18,2)) PRICE from N");
    auto& bar = *grid().findChild<TableFooter*>();
    QTest::keyClick(&view(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(bar.sum(price), "-9223372036854775807,00") << "beyond 64 bits";
    const auto tipUnder = [&](int column) {
        const QPoint place(view().header().sectionViewportPosition(column) + 5, bar.height() / 2);
        QHelpEvent help(QEvent::ToolTip, place, bar.mapToGlobal(place));
        QApplication::sendEvent(&bar, &help);
        return QToolTip::text();
    };
    EXPECT_EQ(tipUnder(price), "") << "it takes the room of the empty name beside it";
    view().header().moveSection(view().header().visualIndex(name), 3);
    EXPECT_EQ(tipUnder(price), "") << "on whichever side that is";
    EXPECT_EQ(tipUnder(kod), "выделено 100 из 100") << "the price beside it leaves no room";
    grid().resize(150, 300);
    EXPECT_EQ(tipUnder(price), "-9223372036854775807,00");
}

} // namespace

} // namespace grid
