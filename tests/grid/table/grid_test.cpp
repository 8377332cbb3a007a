// SPDX-License-Identifier: MIT

#include "base/win1251.h"
#include "grid/header/cell_text.h"
#include "grid/table/filter_values.h"
#include "grid/table/grid_fixture.h"
#include "grid/table/table_find_bar.h"
#include "grid/table/table_header.h"

#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMimeData>
#include <QPushButton>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>

namespace grid {

TEST_F(GridTest, KeepsOrderAndFilterWhenItIsReopened) {
    open(fewRows);
    const QAbstractItemModelTester tester(&model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    model().sortBy({{kod, false}, {price, true}});
    model().setFilter(price, {.containedText = "05", .values = {}});
    EXPECT_EQ(ids(), "5");
    EXPECT_EQ(child<QLabel>("FilterBarWords").text(), "«Цена» содержит «05»");
    EXPECT_EQ(dataSet.currentRow(), 4);
    dataSet.close();
    EXPECT_EQ(footer(), "0");
    EXPECT_FALSE(view().currentIndex().isValid());
    dataSet.open();
    EXPECT_EQ(ids(), "5");
    EXPECT_EQ(footer(), "1 из 5");
    EXPECT_EQ(view().currentIndex().row(), 0);
    EXPECT_EQ(dataSet.currentRow(), 4) << "the first row shown";
    model().clearFilters();
    EXPECT_EQ(ids(), "3 5 2 1 4");
}

TEST_F(GridTest, OffersTheFilterByKeyboardAndTakesItAwayByButton) {
    open(fewRows);
    EXPECT_FALSE(child<QWidget>("FilterBar").isVisible());
    QTest::keyClick(&view(), Qt::Key_Right);
    QTest::keyClick(&view(), Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(offered(), "[x](Все) 5, [x](Пустые) 2, [x]БЕТОН 1, [x]бетон \"М400\" 1, [x]Щебень 1");
    // On the text of an item and on its box.
    for (const auto& [item, x] : {std::pair(0, 10), {1, 60}, {4, 10}, {3, 60}, {3, 10}}) {
        clickValue(item, x);
    }
    EXPECT_EQ(offered(), "[-](Все) 5, [x](Пустые) 2, [ ]БЕТОН 1, [ ]бетон \"М400\" 1, [x]Щебень 1");
    QTest::keyClick(child<QWidget>("ViewNAMEFilter").findChild<QLineEdit*>("FilterText"), Qt::Key_Return);
    EXPECT_EQ(ids(), "1 2 4");
    EXPECT_EQ(child<QLabel>("FilterBarWords").text(), "«Наименование» равно (Пустые), «Щебень»");
    EXPECT_TRUE(child<QWidget>("FilterBar").isVisible());
    child<QPushButton>("FilterBarClear").setFocus();
    QTest::mouseClick(&child<QPushButton>("FilterBarClear"), Qt::LeftButton);
    EXPECT_TRUE(view().hasFocus());
    EXPECT_EQ(ids(), "1 2 3 4 5");
    EXPECT_FALSE(child<QWidget>("FilterBar").isVisible());

    // The button in the header opens the filter and does not sort.
    const int right = view().header().sectionViewportPosition(kod) + view().header().sectionSize(kod);
    QTest::mouseClick(view().header().viewport(), Qt::LeftButton, {},
                      {right - 12, view().header().height() / 2});
    auto& second = child<QWidget>("ViewKODFilter");
    EXPECT_TRUE(second.isVisible());
    EXPECT_TRUE(model().sortColumns().empty());
    QTest::keyClick(&second, Qt::Key_Escape);
    EXPECT_FALSE(second.isVisible());
    EXPECT_TRUE(model().filters().empty());
}

TEST_F(GridTest, KeepsChosenValuesThatOtherRowsLack) {
    open(fewRows);
    const ColumnFilter chosen{"",
                              ColumnFilter::Values::Only,
                              {CellValue(), base::win1251::encode(QStringLiteral("Щебень")).toStdString()}};
    model().setFilter(name, chosen);
    dataSet.close();
    dataSet.setSql({fewRows + " where ID > 1"});
    dataSet.open();
    EXPECT_EQ(ids(), "2 4");

    // Enter presses the button in focus: first the one that leaves things as they are, then the other.
    for (const char* const button : {"Отмена", "ОК"}) {
        view().openFilter(name);
        auto& popup = *view().findChildren<QWidget*>("ViewNAMEFilter").last();
        popup.findChild<QLineEdit*>("FilterText")->setText("е");
        const auto buttons = popup.findChildren<QPushButton*>();
        const auto found = std::ranges::find(buttons, QString(button), &QPushButton::text);
        ASSERT_NE(found, buttons.end());
        QTest::keyClick(*found, Qt::Key_Return);
        EXPECT_FALSE(popup.isVisible());
        const ColumnFilter& inForce = model().filters().at(name);
        EXPECT_EQ(inForce.containedText, QString(button) == "ОК" ? "е" : "");
        EXPECT_EQ(inForce.rule, chosen.rule);
        EXPECT_EQ(inForce.values, chosen.values);
    }
}

TEST_F(GridTest, AgreesWithTheServerOnOrderAndFilter) {
    open(materials.arg("NAME") + "order by KOD, ID");
    ASSERT_GT(model().rowCount(), 1000);
    // Beginnings of names, in which the server sees no numbers, and few classes on many rows, some of them
    // NULL: equal keys keep the order of the dataset.
    for (const QString field : {"substring(NAME from 1 for 9)", "KLASSGR"}) {
        dataSet.close();
        dataSet.setSql({materials.arg(field) + "order by KOD, ID"});
        dataSet.open();
        ASSERT_NE(serverIds(field, QString("and %1 is null order by KOD, ID").arg(field)), "");
        for (const bool descending : {false, true}) {
            const QString direction = descending ? " desc" : "";
            model().sortBy({{name, descending}});
            EXPECT_EQ(ids(),
                      serverIds(field, QString("order by upper(%1)%2, KOD, ID").arg(field, direction)));
            model().sortBy({{price, descending}, {name, !descending}});
            EXPECT_EQ(ids(), serverIds(field, QString("order by 4%2, upper(%1)%3, KOD, ID")
                                                  .arg(field, direction, descending ? "" : " desc")));
        }
        model().sortBy({});
    }
    model().setFilter(price, {"", ColumnFilter::Values::AllBut, {CellValue()}});
    EXPECT_EQ(ids(), serverIds("KLASSGR", "and CMETNAY is not null order by KOD, ID"));
    model().clearFilters();
    model().setFilter(price, {"", {}, {}, NumberCondition::read("1000~5000 <>2000 <4000").condition});
    EXPECT_EQ(ids(),
              serverIds("KLASSGR", "and CMETNAY between 1000 and 5000 and CMETNAY <> 2000 and CMETNAY < 4000 "
                                   "order by KOD, ID"));
}

TEST_F(GridTest, TakesTypedConditions) {
    open(fewRows);
    const auto press = [&](Qt::Key key) { QTest::keyClick(&part<QLineEdit>("FilterText"), key); };
    typeIntoFilter(price, ">1 000");
    const QString mistake = "Перед «000» нужен знак: > >= < <= = <> или ~";
    EXPECT_EQ(part<QLabel>("FilterWord").text(), mistake);
    EXPECT_EQ(part<QLineEdit>("FilterText").accessibleDescription(), mistake);
    EXPECT_FALSE(part<QPushButton>("FilterOk").isEnabled());
    press(Qt::Key_Return);
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    for (int i = 0; i < 4; ++i) {
        press(Qt::Key_Backspace);
    }
    QTest::keyClicks(&part<QLineEdit>("FilterText"), "0 <>12.50");
    EXPECT_EQ(offered(), "[x](Все) 1, [x]1012,55 1");
    QTest::mouseClick(&part<QPushButton>("FilterOk"), Qt::LeftButton);
    EXPECT_EQ(ids(), "3");
    EXPECT_EQ(child<QLabel>("FilterBarWords").text(), "«Цена» больше 10 и не равно 12,50");

    // The field shows the condition again; a text without a sign is searched for.
    view().openFilter(price);
    EXPECT_EQ(part<QLineEdit>("FilterText").text(), ">10 <>12.50");
    press(Qt::Key_Escape);
    typeIntoFilter(price, "05");
    press(Qt::Key_Return);
    EXPECT_EQ(ids(), "5");

    // Among texts that are no numbers the signs are letters like any other.
    model().clearFilters();
    typeIntoFilter(name, ">1");
    EXPECT_EQ(part<QLabel>("FilterWord").text(), "Таких значений нет");
    EXPECT_FALSE(part<QPushButton>("FilterOk").isEnabled());
}

TEST_F(GridTest, NarrowsTheValuesOfAFilter) {
    open(QString(manyRows).replace("'имя '", "'щётка '"));
    model().setFilter(kod, {"", {}, {}, NumberCondition::read("<>5 <2500").condition});
    view().openFilter(name);
    auto& list = part<QListView>("FilterValues");
    EXPECT_EQ(part<QLabel>("FilterWord").text(), "Значений: 2475") << "what KOD leaves, long names as one";
    QTest::keyClick(&part<QLineEdit>("FilterText"), Qt::Key_Down);
    EXPECT_TRUE(list.hasFocus());
    // Typing in the list goes on in the field.
    part<QLineEdit>("FilterText").setText("\"ЩЕТКА 2");
    part<QLineEdit>("FilterText").selectAll();
    QTest::keyClicks(&list, "4");
    EXPECT_TRUE(part<QLineEdit>("FilterText").hasFocus());
    QTest::keyClicks(&part<QLineEdit>("FilterText"), "9");
    EXPECT_EQ(part<QLineEdit>("FilterText").text(), "\"ЩЕТКА 249");
    EXPECT_TRUE(offered().startsWith("[x](Все) 10, [x]щётка 249 1, [x]щётка 2490 1, [x]щётка 2491 1,"));
    clickValue(2, 60);
    QTest::mouseClick(&part<QPushButton>("FilterOk"), Qt::LeftButton);
    EXPECT_EQ(footer(), "9 из 4000");
    EXPECT_EQ(child<QLabel>("FilterBarWords").text(),
              "«Код» не равно 5 и меньше 2500 и «Наименование» содержит слова «\"ЩЕТКА 249» и «Наименование» "
              "не равно "
              "«щётка 2490»");

    // Values that neither the other filters nor the rows have stay unticked in their filter.
    model().setFilter(kod, {"", {}, {}, NumberCondition::read("249~2489").condition});
    view().openFilter(name);
    EXPECT_EQ(offered(), "[-](Все) 1, [x]щётка 249 1, [ ]щётка 2490 0");
    QTest::keyClick(&list, Qt::Key_Escape);
}

TEST_F(GridTest, TicksMeanTheseOrAllButThese) {
    open(fewRows);
    using enum ColumnFilter::Values;
    const auto choose = [&](std::initializer_list<int> clicked) -> ColumnFilter {
        view().openFilter(name);
        for (const int row : clicked) {
            clickValue(row, 60);
        }
        QTest::mouseClick(&part<QPushButton>("FilterOk"), Qt::LeftButton);
        const auto found = model().filters().find(name);
        return found == model().filters().end() ? ColumnFilter() : found->second;
    };
    ColumnFilter chosen = choose({4});
    EXPECT_EQ(chosen.rule, AllBut);
    EXPECT_EQ(chosen.values, (std::set<CellValue>{base::win1251::encode(u"Щебень").toStdString()}));
    EXPECT_EQ(ids(), "2 3 4 5");
    // All ticked again: no filter.
    EXPECT_TRUE(choose({4}).isEmpty());
    chosen = choose({0, 4});
    EXPECT_EQ(chosen.rule, Only);
    EXPECT_EQ(ids(), "1");
    // The half-ticked first row ticks all; of two values, one taken from all means all but it.
    model().setFilter(price, {"", AllBut, {CellValue(), std::int64_t{-300}, std::int64_t{5}}});
    chosen = choose({0, 1});
    EXPECT_EQ(chosen.rule, AllBut);

    view().openFilter(name);
    clickValue(0, 60);
    clickValue(0, 60);
    EXPECT_EQ(part<QLabel>("FilterWord").text(), "Не выбрано ни одного значения");
    EXPECT_FALSE(part<QPushButton>("FilterOk").isEnabled());
    clickValue(1, 10);
    EXPECT_TRUE(part<QPushButton>("FilterOk").isEnabled());
    EXPECT_EQ(part<QLabel>("FilterWord").text(), "Значений: 2, выбрано: 1");
    QAccessibleInterface* const list =
        QAccessible::queryAccessibleInterface(&part<QListView>("FilterValues"));
    EXPECT_EQ(list->child(0)->text(QAccessible::Name), "(Все)");
    EXPECT_EQ(list->child(0)->text(QAccessible::Description), "Выбраны не все, строк: 2");
}

TEST_F(GridTest, SortsByClicksOnTheHeader) {
    open(fewRows);
    clickHeader(name);
    EXPECT_EQ(ids(), "2 4 5 3 1");
    clickHeader(name);
    EXPECT_EQ(ids(), "1 3 5 4 2");
    clickHeader(kod);
    EXPECT_EQ(ids(), "3 2 5 1 4");
    clickHeader(price, Qt::ShiftModifier);
    clickHeader(price, Qt::ShiftModifier);
    EXPECT_EQ(ids(), "3 5 2 1 4");
    clickHeader(price, Qt::ShiftModifier);
    EXPECT_EQ(ids(), "3 2 5 1 4") << "the third click takes the order away";
    clickHeader(absent);
    EXPECT_EQ(ids(), "1 2 3 4 5");
    // The row in focus is still the one that it was.
    EXPECT_EQ(dataSet.currentRow(), 0);
    EXPECT_EQ(view().currentIndex().row(), 0);
}

TEST_F(GridTest, KeepsCaptionsWholeBesideTheirMarks) {
    open(fewRows);
    const auto narrowTo = [&](const QString& text) {
        view().header().resizeSection(name, view().header().fontMetrics().horizontalAdvance(text) +
                                                2 * cellTextPaddingX);
    };
    grid().resize(1500, 300);
    const int oneLine = view().header().height();
    narrowTo("Наименование");
    const int withMarksBeneath = view().header().height();
    EXPECT_GT(withMarksBeneath, oneLine) << "the filter button has room before the pointer comes";
    const auto caption = [&] {
        const QRect section(view().header().sectionViewportPosition(name), 0,
                            view().header().sectionSize(name), oneLine - 6);
        return view().header().grab(section).toImage();
    };
    const QImage unsorted = caption();
    model().sortBy({{price}, {name}});
    EXPECT_EQ(caption(), unsorted) << "the sort marks leave it as it was";
    EXPECT_EQ(view().header().height(), withMarksBeneath);
    model().sortBy({});

    const QImage atRest = view().header().grab().toImage();
    const int right = view().header().sectionViewportPosition(name) + view().header().sectionSize(name);
    QTest::mouseMove(view().header().viewport(), {right - 12, view().header().height() - 10});
    EXPECT_NE(view().header().grab().toImage(), atRest) << "the button beneath the caption";

    // Where even a line of two letters has no room, a tool tip says it all.
    const auto tip = [&] {
        const QPoint place(view().header().sectionViewportPosition(name) + 3, 5);
        QHelpEvent help(QEvent::ToolTip, place, view().header().viewport()->mapToGlobal(place));
        QApplication::sendEvent(view().header().viewport(), &help);
        return QToolTip::text();
    };
    EXPECT_EQ(tip(), "");
    grid().resize(50, 300);
    EXPECT_EQ(tip(), "<p>Наименование</p>");
}

TEST_F(GridTest, EscapeCancelsTheDraggingOfAColumnOrItsEdge) {
    open(fewRows);
    FittedHeader& header = view().header();
    const auto layout = [&] { return header.saveState(); };
    const QByteArray before = layout();
    const int y = header.height() / 2;
    const auto drag = [&](QPoint from, QPoint to, bool cancel) {
        QWidget& viewport = *header.viewport();
        QTest::mousePress(&viewport, Qt::LeftButton, {}, from);
        for (const QPoint& place : {(from + to) / 2, to}) {
            QMouseEvent move(QEvent::MouseMove, place, viewport.mapToGlobal(place), Qt::NoButton,
                             Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(&viewport, &move);
        }
        if (cancel) {
            QTest::keyClick(&view(), Qt::Key_Escape);
            EXPECT_EQ(layout(), before);
        }
        QTest::mouseRelease(&viewport, Qt::LeftButton, {}, to);
        return layout();
    };
    const int edge = header.sectionViewportPosition(name) - 1;
    const int middle = header.sectionViewportPosition(price) + 20;
    EXPECT_EQ(drag({edge, y}, {edge + 40, y}, true), before);
    EXPECT_EQ(drag({middle, y}, {10, y}, true), before);
    EXPECT_TRUE(model().sortColumns().empty()) << "nor is it a click";
    EXPECT_NE(drag({middle, y}, {10, y}, false), before);
    EXPECT_EQ(header.visibleColumns().front(), price);
    EXPECT_NE(drag({edge + 40, y}, {edge + 80, y}, false), before);
}

TEST_F(GridTest, CopiesTheSelectedRowsAsTheyAreShown) {
    open(fewRows);
    EXPECT_EQ(copied(), "30\tЩебень\t12,50\t\n");
    clickRow(2);
    EXPECT_EQ(copied(), "\t\"бетон \"\"М400\"\"\"\t1012,55\t\n");
    clickRow(4, Qt::ControlModifier);
    clickRow(0, Qt::ControlModifier);
    EXPECT_EQ(copied(), "30\tЩебень\t12,50\t\n\t\"бетон \"\"М400\"\"\"\t1012,55\t\n4\tБЕТОН\t0,05\t\n");
    clickRow(1);
    clickRow(3, Qt::ShiftModifier);
    clickRow(4, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(copied().count(u'\n'), 4);
    // A drag that begins below the rows selects none of them.
    clickRow(1);
    QTest::mousePress(view().viewport(), Qt::LeftButton, {}, view().viewport()->rect().bottomLeft());
    QTest::mouseMove(view().viewport(), view().visualRect(model().index(3, name)).center());
    QTest::mouseRelease(view().viewport(), Qt::LeftButton);
    EXPECT_EQ(copied().count(u'\n'), 1);
    EXPECT_EQ(dataSet.currentRow(), 1);
    view().header().moveSection(view().header().visualIndex(price), view().header().visualIndex(kod));
    QTest::keyClick(&view(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_TRUE(copied().startsWith("12,50\t30\tЩебень\t\n-3,00\t4\t\t\n"));
    EXPECT_EQ(view().visibleColumns().front()->headerText(), "Цена");
}

TEST_F(GridTest, TellsSpreadsheetsWhichCopiedCellsAreTexts) {
    open("select cast(1 as bigint) ID, cast(7 as integer) KOD, cast('01.1.01' as varchar(1000)) NAME, "
         "cast(1012.5 as numeric(18,2)) PRICE from RDB$DATABASE union all "
         "select 2, null, '=1+1', -92233720368547758.08 from RDB$DATABASE union all "
         "select 3, -2, ' a  b < \"c\" & d' || ascii_char(13) || ascii_char(10) || 'e', null from "
         "RDB$DATABASE");
    QTest::keyClick(&view(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&view(), Qt::Key_C, Qt::ControlModifier);
    dataSet.close();
    // What somebody pastes later is what was copied.
    const QMimeData& copied = *QApplication::clipboard()->mimeData();
    EXPECT_EQ(copied.text().split('\n').at(1), "\t=1+1\t-92233720368547758,08\t");
    const QStringList cells = copied.html().split("<td").mid(1);
    ASSERT_EQ(cells.size(), 12);
    const auto isText = [](const QString& cell) { return cell.contains("sdnum=\"1033;0;@\""); };
    EXPECT_TRUE(cells[0].contains("sdval=\"7\" sdnum=\"1033;0;0\"")) << cells[0].toStdString();
    EXPECT_TRUE(isText(cells[1]));
    EXPECT_TRUE(cells[2].contains("sdval=\"1012.50\" sdnum=\"1033;0;0.00\">1012,50<"));
    EXPECT_TRUE(isText(cells[5]) && cells[5].contains(">=1+1<"));
    EXPECT_TRUE(isText(cells[6])) << "a spreadsheet's number would round it";
    const QString blank = "<span style=\"mso-spacerun:yes\">%1</span>";
    EXPECT_TRUE(cells[9].contains(blank.arg("&nbsp;") + "a" + blank.arg("&nbsp;&nbsp;") +
                                  "b &lt; \"c\" &amp; d<br style=\"mso-data-placement:same-cell\">e</td>"))
        << cells[9].toStdString();
    EXPECT_TRUE(cells[10].startsWith("></td>"));
}

TEST_F(GridTest, FollowsTheDataSetAndLeadsIt) {
    open(fewRows);
    db::DataSource other(QStringLiteral("other"), dataSet, nullptr);
    Grid second(gridSpec, other, nullptr);
    second.view().tableModel().sortBy({{0, true}});
    QTest::keyClick(&view(), Qt::Key_Down);
    QTest::keyClick(&view(), Qt::Key_Down);
    EXPECT_EQ(dataSet.currentRow(), 2);
    EXPECT_EQ(second.view().currentIndex().row(), 2);
    dataSet.moveTo(0);
    EXPECT_EQ(view().currentIndex().row(), 0);
    EXPECT_EQ(second.view().currentIndex().row(), 4);
    second.view().goToFirstRow();
    EXPECT_EQ(view().currentIndex().row(), 4);

    // A row that a view does not show leaves the view without a current row, not the dataset.
    model().setFilter(kod, {.containedText = "30", .values = {}});
    EXPECT_EQ(dataSet.currentRow(), 0);
    dataSet.moveTo(3);
    EXPECT_FALSE(view().currentIndex().isValid());
    EXPECT_EQ(dataSet.currentRow(), 3);

    // Another view goes along when a filtered one cannot stay on the first row of the reopened dataset.
    model().setFilter(kod, {.containedText = "100", .values = {}});
    second.show();
    QTest::keyClick(&second.view(), Qt::Key_End);
    dataSet.close();
    dataSet.setSql({fewRows + " where ID in (1, 4)"});
    dataSet.open();
    EXPECT_EQ(dataSet.currentRow(), 1);
    EXPECT_EQ(view().currentIndex().row(), 0);
    EXPECT_EQ(second.view().currentIndex().row(), 0);
}

TEST_F(GridTest, ScrollsThroughRowsOfAllHeights) {
    open(manyRows);
    ASSERT_EQ(model().rowCount(), 4000);
    const auto key = [&](Qt::Key which) { QTest::keyClick(&view(), which); };
    const auto fullyVisible = [&](int row) {
        const QRect rect = view().visualRect(model().index(row, name));
        return !rect.isEmpty() && rect.top() >= 0 && rect.bottom() < view().viewport()->height();
    };
    key(Qt::Key_End);
    EXPECT_EQ(dataSet.currentRow(), 3999);
    const QRect last = view().visualRect(model().index(3999, name));
    EXPECT_GT(last.height(), view().viewport()->height());
    key(Qt::Key_PageDown);
    EXPECT_EQ(view().visualRect(model().index(3999, name)).bottom(), view().viewport()->height() - 1);
    key(Qt::Key_Home);
    EXPECT_TRUE(fullyVisible(0));

    int lastSeen = 0;
    while (fullyVisible(lastSeen + 1)) {
        ++lastSeen;
    }
    key(Qt::Key_PageDown);
    EXPECT_LE(view().verticalScrollBar()->value(), lastSeen + 1) << "none is skipped";
    view().verticalScrollBar()->setValue(view().verticalScrollBar()->maximum());
    EXPECT_EQ(view().visualRect(model().index(3999, name)).bottom(), view().viewport()->height() - 1);
}

TEST_F(GridTest, FillsItsWidthAndFitsItsHeights) {
    open(manyRows);
    const int headerHeight = view().header().height();
    grid().resize(1500, 300);
    EXPECT_EQ(usedWidth(), view().viewport()->width());
    view().header().resizeSection(name, 60);
    EXPECT_EQ(usedWidth(), view().viewport()->width());
    EXPECT_NEAR(view().header().sectionSize(name), 60, 1);
    dataSet.moveTo(99);
    const int narrow = view().visualRect(model().index(99, name)).height();
    view().header().resizeSection(name, 900);
    EXPECT_LT(view().visualRect(model().index(99, name)).height(), narrow / 2);
    EXPECT_EQ(view().header().height(), headerHeight);
    EXPECT_TRUE(view().header().isSectionHidden(0));
}

TEST_F(GridTest, FindsTextBothWaysAndRoundTheEnd) {
    open(fewRows);
    QTest::keyClick(&view(), Qt::Key_F, Qt::ControlModifier);
    auto& text = child<QLineEdit>("FindBarText");
    ASSERT_TRUE(text.isVisible());
    text.setText("бетон");
    EXPECT_EQ(view().currentIndex(), model().index(2, name));
    text.setText("0,0");
    EXPECT_EQ(view().currentIndex(), model().index(4, price));
    text.setText("нигде");
    EXPECT_EQ(child<QLabel>("FindBarOutcome").text(), "Не найдено");
    EXPECT_EQ(dataSet.currentRow(), 4);
    QTest::keyClick(&text, Qt::Key_Escape);
    EXPECT_FALSE(text.isVisible());
    EXPECT_TRUE(view().hasFocus());

    text.setText("бетон");
    EXPECT_EQ(view().currentIndex(), model().index(4, price)) << "nobody searches in a hidden bar";
    QTest::keyClick(&view(), Qt::Key_F3);
    EXPECT_EQ(dataSet.currentRow(), 2);
    EXPECT_TRUE(text.hasFocus()) << "where Esc takes the marks away";
}

TEST_F(GridTest, CountsWhatItFindsInTheOrderOfTheRows) {
    open(manyRows);
    model().sortBy({{price, true}});
    model().setFilter(kod, {"", {}, {}, NumberCondition::read("<3900").condition});
    QTest::keyClick(&view(), Qt::Key_F, Qt::ControlModifier);
    auto& text = child<QLineEdit>("FindBarText");
    const auto& outcome = child<QLabel>("FindBarOutcome");
    text.setText("9 ИМ");
    QStringList expected;
    for (int row = 0; row < model().rowCount(); ++row) {
        const QString shown = model().text(row, name);
        if (shown.contains("9") && shown.contains("им")) {
            expected.append(shown);
        }
    }
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return outcome.text() == QStringLiteral("1 из %1").arg(expected.size()); }));
    for (const auto& [modifiers, step] : {std::pair{Qt::NoModifier, 1}, std::pair{Qt::ShiftModifier, -1}}) {
        qsizetype place = expected.indexOf(model().text(view().currentRow(), name));
        for (qsizetype i = 0; i < expected.size() + 2; ++i) {
            QTest::keyClick(&text, Qt::Key_Return, modifiers);
            place = (place + step + expected.size()) % expected.size();
            ASSERT_EQ(model().text(view().currentRow(), name), expected[place]);
            ASSERT_EQ(outcome.text(), QStringLiteral("%1 из %2").arg(place + 1).arg(expected.size()));
        }
    }

    QTest::keyClick(&view(), Qt::Key_Left);
    EXPECT_EQ(outcome.text(), QStringLiteral("Найдено: %1").arg(expected.size()));
    QTest::keyClick(&view(), Qt::Key_Home, Qt::ControlModifier);
    // In the midst of a change no outcome is told, not even for the moment.
    const QString before = outcome.text();
    dataSet.close();
    EXPECT_EQ(outcome.text(), before);
    dataSet.open();
    EXPECT_EQ(outcome.text(), before);
    model().sortBy({{price, false}});
    EXPECT_EQ(outcome.text(), before);
    QTest::keyClick(&text, Qt::Key_Return);
    EXPECT_EQ(outcome.text(), QStringLiteral("1 из %1").arg(expected.size()));

    text.setText("\"имя 39\" 07");
    EXPECT_TRUE(QTest::qWaitFor([&] { return outcome.text() == "Не найдено"; }));
    model().clearFilters();
    EXPECT_TRUE(QTest::qWaitFor([&] { return outcome.text() == "Найдено: 1"; }));
    QTest::keyClick(&text, Qt::Key_Return);
    view().verticalScrollBar()->setValue(0);
    QTest::keyClick(&text, Qt::Key_Return);
    EXPECT_FALSE(view().rowRect(view().currentRow()).isEmpty()) << "it was current before, but out of view";
    view().header().setColumnHidden(name, true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return outcome.text() == "Не найдено"; }));
    view().header().setColumnHidden(name, false);
    view().header().setColumnHidden(kod, true);
    EXPECT_EQ(view().footerColumn(), &model().column(name)) << "the count is never lost";
    dataSet.close();
    EXPECT_TRUE(QTest::qWaitFor([&] { return outcome.text() == "Не найдено"; }));
}

TEST_F(GridTest, IsReadableByAssistiveTechnology) {
    open(fewRows);
    QAccessibleInterface* const table = QAccessible::queryAccessibleInterface(&view());
    QAccessibleTableInterface* const cells = table->tableInterface();
    EXPECT_EQ(cells->rowCount(), 5);
    ASSERT_EQ(cells->columnCount(), 4) << "ID is hidden";
    ASSERT_EQ(table->childCount(), 4 * (1 + 5) + 1) << "header, rows, footer";
    QStringList headers;
    for (int column = 0; column < cells->columnCount(); ++column) {
        headers.append(table->child(column)->text(QAccessible::Name));
        EXPECT_EQ(table->child(column)->role(), QAccessible::ColumnHeader);
    }
    EXPECT_EQ(headers, QStringList({"Код", "Наименование", "Цена", "CMP"}));

    QAccessibleInterface* const cell = cells->cellAt(2, 1);
    ASSERT_NE(cell, nullptr);
    EXPECT_EQ(cell->text(QAccessible::Name), "бетон \"М400\"");
    EXPECT_EQ(cells->cellAt(2, 2)->text(QAccessible::Name), "1012,55");
    EXPECT_EQ(cells->cellAt(5, 0), nullptr);
    EXPECT_EQ(table->indexOfChild(cell), 4 * 3 + 1);
    EXPECT_EQ(table->childAt(cell->rect().center().x(), cell->rect().center().y()), cell);
    EXPECT_EQ(cell->tableCellInterface()->columnHeaderCells().value(0), table->child(1));

    view().goToFirstRow();
    QTest::keyClick(&view(), Qt::Key_Right);
    QTest::keyClick(&view(), Qt::Key_Down);
    QTest::keyClick(&view(), Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(table->focusChild(), cell);
    EXPECT_TRUE(cell->state().focused);
    EXPECT_EQ(cells->selectedRows(), QList<int>({1, 2}));

    // A column that has been moved counts where it stands on screen.
    view().header().moveSection(view().header().visualIndex(price), view().header().visualIndex(kod));
    EXPECT_EQ(cells->cellAt(2, 0)->text(QAccessible::Name), "1012,55");
    EXPECT_EQ(cell->tableCellInterface()->columnIndex(), 2);
}

TEST_F(GridTest, SelectsByKeysFromTheAnchorOn) {
    open(fewRows);
    const auto press = [&](Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(&view(), key, modifiers);
        return view().selectedRows();
    };
    using Rows = std::vector<int>;
    EXPECT_EQ(press(Qt::Key_Down, Qt::ControlModifier), Rows({0})) << "only the focus moves";
    EXPECT_EQ(view().currentRow(), 1);
    EXPECT_EQ(press(Qt::Key_Space), Rows({0, 1}));
    EXPECT_EQ(press(Qt::Key_Space, Qt::ControlModifier), Rows({0}));
    EXPECT_EQ(press(Qt::Key_Down, Qt::ControlModifier | Qt::ShiftModifier), Rows({1, 2}));
    EXPECT_EQ(press(Qt::Key_End, Qt::ShiftModifier), Rows({1, 2, 3, 4}));
    EXPECT_EQ(press(Qt::Key_Home, Qt::ControlModifier | Qt::ShiftModifier), Rows({0, 1}));
    EXPECT_EQ(press(Qt::Key_Down), Rows({1}));
}

TEST_F(GridTest, DragsASelectionBesideTheRowsAndBeyondThem) {
    open(manyRows);
    QWidget& viewport = *view().viewport();
    clickRow(1);
    QTest::mousePress(&viewport, Qt::LeftButton, {}, view().rowRect(1).center());
    const auto dragTo = [&](const QPoint& place) {
        QCursor::setPos(viewport.mapToGlobal(place));
        QMouseEvent move(QEvent::MouseMove, place, viewport.mapToGlobal(place), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(&viewport, &move);
    };
    dragTo({-40, view().rowRect(3).center().y()});
    EXPECT_EQ(view().selectedRows(), std::vector<int>({1, 2, 3}));
    dragTo({viewport.width() + 40, view().rowRect(2).center().y()});
    EXPECT_EQ(view().selectedRows(), std::vector<int>({1, 2}));

    dragTo({20, viewport.height() + 5});
    EXPECT_TRUE(QTest::qWaitFor([&] { return view().verticalScrollBar()->value() > 3; }));
    dragTo({20, -5});
    EXPECT_TRUE(QTest::qWaitFor([&] { return view().currentRow() == 0; }));
    QTest::mouseRelease(&viewport, Qt::LeftButton);
    EXPECT_EQ(view().selectedRows(), std::vector<int>({0, 1}));
}

TEST_F(GridTest, LaysNothingOutWhileItIsHidden) {
    open(fewRows);
    const auto reopenHidden = [&](const QString& sql) {
        grid().hide();
        dataSet.close();
        dataSet.setSql({sql});
        dataSet.open();
        QApplication::processEvents();
    };
    reopenHidden(manyRows);
    EXPECT_EQ(view().verticalScrollBar()->maximum(), 0) << "still that of the few rows";
    grid().show();
    EXPECT_GT(view().verticalScrollBar()->maximum(), 3900);
    EXPECT_EQ(view().rowRect(0).top(), 0);

    reopenHidden(manyRows);
    dataSet.moveTo(2000);
    grid().show();
    EXPECT_FALSE(view().rowRect(2000).isEmpty());
    grid().hide();
    view().scrollTo(model().index(500, name), QAbstractItemView::PositionAtTop);
    grid().show();
    EXPECT_EQ(view().rowRect(500).top(), 0);
    grid().hide();
    grid().resize(400, 250);
    grid().show();
    EXPECT_EQ(view().header().length(), view().viewport()->width());
    reopenHidden(fewRows);
    grid().show();
    EXPECT_EQ(view().verticalScrollBar()->maximum(), 0);
}

TEST_F(GridTest, KeepsAccessibleCellsWhileTheyAreAskedFor) {
    open(QString(manyRows).replace("B.I < 4", "B.I < 12"));
    QAccessibleTableInterface* const cells = QAccessible::queryAccessibleInterface(&view())->tableInterface();
    QAccessibleInterface* const first = cells->cellAt(0, 0);
    const QAccessible::Id id = QAccessible::uniqueId(first);
    for (int row = 0; row < cells->rowCount(); ++row) {
        for (int column = 0; column < cells->columnCount(); ++column) {
            ASSERT_NE(cells->cellAt(row, column), nullptr);
        }
    }
    ASSERT_EQ(QAccessible::accessibleInterface(id), first);
    EXPECT_EQ(first->tableCellInterface()->columnHeaderCells().size(), 1);
    QApplication::processEvents();
    EXPECT_EQ(QAccessible::accessibleInterface(id), nullptr) << "too many to keep";
}

} // namespace grid
