// SPDX-License-Identifier: MIT

#include "data/data_modul.h"
#include "db/data_set.h"
#include "db/data_source.h"
#include "grid/rows/column.h"
#include "grid/rows/tree_model.h"
#include "grid/tree/tree_find_panel.h"
#include "grid/tree/tree_header.h"
#include "grid/tree/tree_list.h"
#include "grid/tree/tree_view.h"
#include "support/firebird_server.h"
#include "support/menus.h"
#include "support/printing.h"

#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace {

constexpr std::array fields{
    db::bigint(u"ID"),
    db::bigint(u"PARENTID"),
    db::text(u"NAME", 1000, u"Наименование"),
    db::text(u"TREE", 30, u"Узел"),
};

constexpr std::array<grid::ColumnSpec, 4> columns = {{
    {u"cxDBTreeList1ID", u"ID", false, 100},
    {u"cxDBTreeList1PARENTID", u"PARENTID", false, 100},
    {u"cxDBTreeList1NAME", u"NAME", true, 100},
    {u"cxDBTreeList1TREE", u"TREE", true, 100},
}};

constexpr grid::TreeListSpec spec = {u"cxDBTreeList1", columns, u"ID", u"PARENTID"};

struct Node {
    const char* id;
    const char* parent;
    const char* name; // SQL expression
    const char* code;
};

QStringList query(std::initializer_list<Node> nodes) {
    QStringList rows;
    for (const Node& node : nodes) {
        rows.append(QStringLiteral("select cast(%1 as bigint) ID, cast(%2 as bigint) PARENTID, "
                                   "cast(%3 as varchar(1000) character set WIN1251) NAME, "
                                   "cast('%4' as varchar(30) character set WIN1251) TREE from RDB$DATABASE")
                        .arg(QString::fromUtf8(node.id), QString::fromUtf8(node.parent),
                             QString::fromUtf8(node.name), QString::fromUtf8(node.code)));
    }
    return {rows.join(QStringLiteral("\nunion all\n"))};
}

const QStringList materials = query({
    {"1", "null", "'Материалы'", "1"},
    {"2", "1", "'Щебень'", "1.2"},
    {"3", "1", "'Бетон'", "1.1"},
    {"4", "3", "'Бетон тяжёлый'", "1.1.1"},
    {"5", "3", "'бетон \"Б\"' || ascii_char(9) || 'лёгкий'", "1.1.2"},
    {"6", "null", "null", "0"},
    {"7", "null", "'Арматура'", "2"},
    {"8", "7", "'Сталь бетонная'", "2.1"},
});

class TreeListTest : public testing::Test {
protected:
    TreeListTest() {
        module_.connectTo(test::sampleServer);
        dataSet_.open();
        list_.resize(600, 400);
        list_.show();
        QApplication::setActiveWindow(&list_);
        view().setFocus();
        QApplication::processEvents();
    }

    [[nodiscard]] grid::TreeView& view() { return list_.view(); }
    [[nodiscard]] QLineEdit& edit() { return *list_.findChild<QLineEdit*>(); }

    /// The rows with their depth, current row marked by ">".
    [[nodiscard]] std::string shown() {
        QStringList lines;
        for (int row = 0; row < view().rows().count(); ++row) {
            const auto [node, depth] = view().rows().at(row);
            lines.append(QString(depth, u'.') +
                         (row == view().currentRow() ? QStringLiteral(">") : QString()) +
                         dataSet_.text(node, dataSet_.field(QStringLiteral("TREE"))));
        }
        return lines.join(u' ').toStdString();
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(&view(), key, modifiers);
    }
    static void type(QWidget& widget, const QString& text) {
        for (const QChar letter : text) {
            QTest::sendKeyEvent(QTest::Click, &widget, Qt::Key_unknown, QString(letter), Qt::NoModifier);
        }
    }
    void clickHeader(int column) {
        QHeaderView& header = view().header();
        QTest::mouseClick(header.viewport(), Qt::LeftButton, {},
                          {header.sectionViewportPosition(column) + 20, header.height() / 2});
    }

    TDM module_;
    db::DataSet dataSet_{"pFIBDataSet9",          fields, materials, module_.pFIBDatabase1,
                         module_.RFIBTransaction, nullptr};
    db::DataSource source_{QStringLiteral("DataSource9"), dataSet_, nullptr};
    grid::TreeList list_{spec, source_, nullptr};
    QAbstractItemModelTester tester_{&list_.view().treeModel(),
                                     QAbstractItemModelTester::FailureReportingMode::Fatal};
};

TEST_F(TreeListTest, FollowsTheDataSet) {
    EXPECT_EQ(shown(), ">1 0 2");
    dataSet_.close();
    EXPECT_EQ(shown(), "");
    press(Qt::Key_Down);
    edit().setText(QStringLiteral("с"));
    list_.findChild<grid::TreeFindPanel*>()->clear();
    EXPECT_EQ(shown(), "");
    edit().setText(QStringLiteral("сталь"));
    dataSet_.setSql(
        query({{"1", "null", "'Сталь'", "a"}, {"2", "1", "'Щебень'", "b"}, {"3", "2", "'Сталь'", "c"}}));
    dataSet_.open();
    EXPECT_EQ(shown(), ">a .b ..c");
    list_.findChild<grid::TreeFindPanel*>()->clear();
    EXPECT_EQ(shown(), ">a");
}

TEST_F(TreeListTest, KeysOpenCloseAndWalk) {
    press(Qt::Key_Plus);
    EXPECT_EQ(shown(), ">1 .1.2 .1.1 0 2");
    press(Qt::Key_Asterisk);
    EXPECT_EQ(shown(), ">1 .1.2 .1.1 ..1.1.1 ..1.1.2 0 2");
    press(Qt::Key_Right);
    press(Qt::Key_Down);
    press(Qt::Key_Right);
    press(Qt::Key_Left);
    press(Qt::Key_Minus);
    EXPECT_EQ(shown(), "1 .1.2 .>1.1 0 2");
    press(Qt::Key_PageDown);
    EXPECT_EQ(shown(), "1 .1.2 .1.1 0 >2");
    press(Qt::Key_Home);
    EXPECT_EQ(shown(), ">1 .1.2 .1.1 0 2");

    // A branch that closes over the node in focus takes the focus.
    dataSet_.moveTo(3);
    view().setExpanded(0, false);
    EXPECT_EQ(shown(), ">1 0 2");
    EXPECT_EQ(dataSet_.currentRow(), 0);

    const QRect row = view().rowRect(0);
    QTest::mouseClick(view().viewport(), Qt::LeftButton, {}, {11, row.center().y()});
    EXPECT_EQ(shown(), ">1 .1.2 .1.1 ..1.1.1 ..1.1.2 0 2");
    QTest::mouseDClick(view().viewport(), Qt::LeftButton, {}, {100, row.center().y()});
    EXPECT_EQ(shown(), ">1 0 2");
}

TEST_F(TreeListTest, TypingGoesToTheNextNodeThatStartsWithTheText) {
    type(view(), QStringLiteral("б"));
    EXPECT_EQ(shown(), "1 .1.2 .>1.1 0 2");
    type(view(), QStringLiteral("ЕТОН т"));
    EXPECT_EQ(shown(), "1 .1.2 .1.1 ..>1.1.1 ..1.1.2 0 2");
    type(view(), QStringLiteral("ы")); // fits nothing and is left out
    press(Qt::Key_Backspace);
    type(view(), QStringLiteral("\"")); // goes on from "бетон "
    EXPECT_EQ(dataSet_.currentRow(), 4);
    QTest::qWait(1'700);
    type(view(), QStringLiteral("б"));
    EXPECT_EQ(dataSet_.currentRow(), 2) << "round the end";

    press(Qt::Key_Escape);
    press(Qt::Key_Right, Qt::ControlModifier);
    type(view(), QStringLiteral("2.1"));
    EXPECT_EQ(dataSet_.currentRow(), 7) << "in the focused column";
}

TEST_F(TreeListTest, TypingReachesNodesThatBeginWithAKeyForBranches) {
    dataSet_.close();
    dataSet_.setSql(query({{"1", "null", "'Прочее'", "1"},
                           {"2", "1", "'+40 °C'", "1.1"},
                           {"3", "1", "'-40 °C'", "1.2"},
                           {"4", "3", "'- 5 °C'", "1.2.1"},
                           {"5", "1", "'* примечание'", "1.3"},
                           {"6", "1", "' без кода'", "1.4"},
                           {"7", "null", "'Трубы'", "2"}}));
    dataSet_.open();
    const auto typed = [&](Qt::Key key, const char* rest = "") {
        dataSet_.moveTo(0);
        view().setExpanded(0, false);
        press(key);
        type(view(), QString::fromUtf8(rest));
        const int found = dataSet_.currentRow();
        press(Qt::Key_Escape);
        return found;
    };
    EXPECT_EQ(typed(Qt::Key_Plus), 1);
    EXPECT_EQ(typed(Qt::Key_Minus), 2);
    EXPECT_EQ(typed(Qt::Key_Minus, " 5"), 3);
    EXPECT_EQ(typed(Qt::Key_Asterisk), 4);
    EXPECT_EQ(typed(Qt::Key_Space, "без"), 5);

    // The number pad commands the branch all the same, and so do these keys in a column that has no such
    // text.
    dataSet_.moveTo(0);
    view().setExpanded(0, false);
    press(Qt::Key_Plus, Qt::KeypadModifier);
    EXPECT_EQ(shown(), ">1 .1.1 .1.2 ..1.2.1 .1.3 .1.4 2");
    press(Qt::Key_Minus, Qt::KeypadModifier);
    EXPECT_EQ(shown(), ">1 2");
    press(Qt::Key_Right, Qt::ControlModifier);
    press(Qt::Key_Asterisk);
    EXPECT_EQ(shown(), ">1 .1.1 .1.2 ..1.2.1 .1.3 .1.4 2");
}

TEST_F(TreeListTest, FindPanelNarrowsTheTree) {
    view().setExpanded(6, true);
    QTest::keyClick(&view(), Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(edit().hasFocus());
    type(edit(), QStringLiteral("ТЯЖ"));
    EXPECT_EQ(shown(), ">1 .1.1 ..1.1.1");
    EXPECT_EQ(view().treeModel().marks(3, 2), std::vector<grid::TextRange>({{6, 9}}));
    edit().setText(QStringLiteral("бетон"));
    EXPECT_EQ(shown(), ">1 .1.1 ..1.1.1 ..1.1.2 2 .2.1");
    const auto& outcome = *list_.findChild<QLabel*>("FindPanelOutcome");
    EXPECT_EQ(outcome.text(), "Найдено: 4");
    const auto goOn = [&](Qt::KeyboardModifiers modifiers) {
        QTest::keyClick(&edit(), Qt::Key_F3, modifiers);
        return QStringLiteral("%1: %2").arg(view().currentRow()).arg(outcome.text());
    };
    EXPECT_EQ(goOn({}), "1: 1 из 4");
    EXPECT_EQ(goOn(Qt::ShiftModifier), "5: 4 из 4");
    view().setExpanded(6, false);
    EXPECT_EQ(goOn(Qt::ShiftModifier), "3: 3 из 4");
    EXPECT_EQ(goOn({}), "5: 4 из 4") << "in a branch that was closed";
    press(Qt::Key_Home);
    EXPECT_EQ(goOn({}), "1: 1 из 4");
    clickHeader(2);
    EXPECT_EQ(outcome.text(), "2 из 4") << "by the alphabet";
    clickHeader(2);
    clickHeader(2);
    edit().setText(QStringLiteral("2.1"));
    EXPECT_EQ(shown(), "2 .2.1");
    QTest::keyClick(&edit(), Qt::Key_Down);
    EXPECT_EQ(shown(), "2 .>2.1");
    EXPECT_TRUE(view().hasFocus());
    edit().setText(QStringLiteral("нет такого"));
    EXPECT_EQ(shown(), "");
    EXPECT_EQ(outcome.text(), "Не найдено");
    edit().setFocus();
    QTest::keyClick(&edit(), Qt::Key_Return);
    EXPECT_TRUE(edit().hasFocus());
    QTest::keyClick(&edit(), Qt::Key_Escape);
    EXPECT_EQ(edit().text(), "");
    EXPECT_EQ(shown(), "1 0 2 .>2.1");

    // The node in focus comes into view although it stood in a closed branch before the search.
    edit().setText(QStringLiteral("лёгкий"));
    QTest::keyClick(&edit(), Qt::Key_Return);
    press(Qt::Key_End);
    list_.resize(600, 120);
    list_.findChild<grid::TreeFindPanel*>()->clear();
    EXPECT_EQ(shown(), "1 .1.2 .1.1 ..1.1.1 ..>1.1.2 0 2 .2.1");
    EXPECT_FALSE(view().rowRect(view().currentRow()).isEmpty());
}

TEST_F(TreeListTest, SelectsSeveralAndCopies) {
    view().expandBranch(0);
    dataSet_.moveTo(2);
    press(Qt::Key_Down, Qt::ShiftModifier);
    press(Qt::Key_Down, Qt::ShiftModifier);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(),
              "Бетон\t1.1\nБетон тяжёлый\t1.1.1\n\"бетон \"\"Б\"\"\tлёгкий\"\t1.1.2\n");
}

TEST_F(TreeListTest, ColumnsFillTheWidthAndRowsShowTheirWholeText) {
    auto* const name = list_.findChild<grid::Column*>(QStringLiteral("cxDBTreeList1NAME"));
    auto* const code = list_.findChild<grid::Column*>(QStringLiteral("cxDBTreeList1TREE"));
    ASSERT_TRUE(name && code);
    EXPECT_FALSE(list_.findChild<grid::Column*>(QStringLiteral("cxDBTreeList1PARENTID"))->isVisible());
    list_.resize(601, 400);
    EXPECT_EQ(name->width() + code->width(), view().viewport()->width());
    EXPECT_LE(std::abs(name->width() - code->width()), 1);

    dataSet_.close();
    dataSet_.setSql(query({{"1", "null", "rpad('', 1000, 'слово ')", "1"}, {"2", "1", "'б'", "2"}}));
    dataSet_.open();
    view().expandBranch(0);
    list_.resize(1200, 150);
    const int wide = view().rowRect(0).height();
    list_.resize(300, 150);
    EXPECT_GT(view().rowRect(0).height(), 2 * wide);

    // A row that is taller than the view is gone through before the next one gets the focus.
    ASSERT_GT(view().rowRect(0).height(), view().viewport()->height());
    press(Qt::Key_Down);
    EXPECT_EQ(view().currentRow(), 0);
    EXPECT_LT(view().rowRect(0).top(), 0);
    for (int presses = 0; presses < 1000 && view().currentRow() == 0; ++presses) {
        press(Qt::Key_Down);
    }
    EXPECT_EQ(view().currentRow(), 1);
    EXPECT_GT(view().rowRect(1).height(), 0);
}

TEST_F(TreeListTest, IsReadableByAssistiveTechnology) {
    view().setExpanded(0, true);
    QAccessibleInterface* const tree = QAccessible::queryAccessibleInterface(&view());
    ASSERT_NE(tree, nullptr);
    EXPECT_EQ(tree->role(), QAccessible::Tree);
    ASSERT_EQ(tree->childCount(), 5);
    QAccessibleInterface* const concrete = tree->child(2);
    EXPECT_EQ(concrete->role(), QAccessible::TreeItem);
    EXPECT_EQ(concrete->text(QAccessible::Name), "Бетон");
    EXPECT_EQ(concrete->text(QAccessible::Description), "Узел: 1.1");
    EXPECT_TRUE(concrete->state().collapsed);
    EXPECT_EQ(tree->indexOfChild(concrete), 2);
    EXPECT_EQ(tree->childAt(concrete->rect().center().x(), concrete->rect().center().y()), concrete);
    concrete->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_EQ(dataSet_.currentRow(), 2);
    EXPECT_EQ(tree->focusChild(), concrete);
    view().setExpanded(0, false);
    EXPECT_FALSE(concrete->isValid());
    const QAccessible::Id id = QAccessible::uniqueId(concrete);
    dataSet_.close();
    EXPECT_EQ(QAccessible::accessibleInterface(id), nullptr) << "its number stands for another row next time";
    EXPECT_FALSE(QAccessible::queryAccessibleInterface(&edit())->text(QAccessible::Name).isEmpty());
}

TEST_F(TreeListTest, SelectsFromANodeOnWhereverItGoes) {
    view().expandBranch(0);
    // The anchor is a node: it goes where sorting puts it.
    dataSet_.moveTo(1);
    clickHeader(2);
    EXPECT_EQ(shown(), "0 2 1 .1.1 ..1.1.2 ..1.1.1 .>1.2");
    press(Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_EQ(view().selectedRows(), std::vector<int>({5, 6}));

    // A blank is typed only while something is.
    type(view(), QStringLiteral("бетон"));
    type(view(), QStringLiteral(" "));
    EXPECT_EQ(view().currentRow(), 4) << "the first name of several words";
}

TEST_F(TreeListTest, ShowsItsCurrentNodeAfterBeingHidden) {
    list_.resize(600, 120);
    list_.hide();
    dataSet_.close();
    dataSet_.open();
    view().expandBranch(0);
    dataSet_.moveTo(7);
    EXPECT_EQ(shown(), "1 .1.2 .1.1 ..1.1.1 ..1.1.2 0 2 .>2.1");
    EXPECT_EQ(view().verticalScrollBar()->maximum(), 0) << "nothing has been laid out";
    list_.show();
    EXPECT_GT(view().verticalScrollBar()->maximum(), 0);
    EXPECT_FALSE(view().rowRect(7).isEmpty());
    const int maximum = view().verticalScrollBar()->maximum();
    view().setExpanded(0, false);
    EXPECT_LT(view().verticalScrollBar()->maximum(), maximum) << "there is less to scroll through";
}

TEST_F(TreeListTest, OffersWhatCanBeDoneWithANode) {
    const auto openMenu = [&](int row) -> QMenu& {
        return test::requestMenu(*view().viewport(), view().rowRect(row).topLeft() + QPoint(60, 5));
    };
    QMenu& root = openMenu(0);
    EXPECT_EQ(test::entries(root).mid(3, 3),
              QStringList({"Раскрыть", "[Свернуть]", "Раскрыть со всеми вложенными"}));
    test::choose(root, "Раскрыть");
    EXPECT_EQ(shown(), ">1 .1.2 .1.1 0 2");
    test::choose(openMenu(2), "Раскрыть со всеми вложенными");
    EXPECT_EQ(shown(), "1 .1.2 .>1.1 ..1.1.1 ..1.1.2 0 2");
    test::choose(openMenu(0), "Свернуть");
    EXPECT_EQ(shown(), ">1 0 2");
    QMenu& leaf = openMenu(1);
    EXPECT_EQ(test::entries(leaf).filter("аскрыть"),
              QStringList({"[Раскрыть]", "[Раскрыть со всеми вложенными]"}));
    test::choose(leaf, "Найти…");
    EXPECT_TRUE(edit().hasFocus());
}

TEST_F(TreeListTest, FitsAndHidesColumnsByTheirOwnCommands) {
    constexpr int nameColumn = 2;
    constexpr int codeColumn = 3;
    grid::FittedHeader& header = view().header();
    dataSet_.moveTo(3);
    view().fitColumn(nameColumn);
    const QRect cell = view().visualRect(view().currentIndex());
    EXPECT_GE(cell.width(), 3 * 18 + 120) << "the deepest node keeps its indentation";
    EXPECT_LT(cell.width(), 250);
    EXPECT_EQ(header.length(), view().viewport()->width());

    // A hidden column is not searched, from the moment on that it is hidden.
    edit().setText(QStringLiteral("2.1"));
    EXPECT_EQ(shown(), "2 .2.1");
    header.setColumnHidden(codeColumn, true);
    EXPECT_EQ(shown(), "");
    header.restoreInitialLayout();
    EXPECT_EQ(shown(), "2 .2.1");
    EXPECT_FALSE(header.isSectionHidden(codeColumn));
}

} // namespace
