// SPDX-License-Identifier: MIT

#include "app/style.h"
#include "grid/table/grid_fixture.h"
#include "grid/table/table_find_bar.h"
#include "support/picture.h"

#include <QScreen>
#include <QScrollBar>
#include <QWheelEvent>

#include <functional>

namespace grid {

namespace {

using test::Picture;

const QColor foundText(255, 224, 102);
const QColor highlight(0x2f, 0x5f, 0x8f);

class TablePaintingTest : public GridTest {
protected:
    static void SetUpTestSuite() { ASSERT_TRUE(app::trySetStyle("SLATECLASSICO")); }

    QRect cell(int row, int column) { return view().visualRect(model().index(row, column)); }
    /// Within the lines and the rectangle of the focus.
    QRect inner(int row, int column) { return cell(row, column).adjusted(1, 1, -3, -3); }

    QRect section(int column) {
        return {view().header().sectionViewportPosition(column), 0, view().header().sectionSize(column),
                view().header().height()};
    }

    /// What is marked in the header beside code and name: the order's direction, with a number where it has
    /// one, and a filter in force.
    QString marks() {
        const Picture header(view().header());
        QStringList found;
        for (const int column : {kod, name}) {
            const QRect all = section(column).adjusted(section(column).width() / 2, 2, -2, -2);
            const bool isFiltered = header.amount(all, highlight) > 50;
            const int right = all.right() + 2 - (isFiltered ? 20 : 0);
            const bool isOneOfTwo = model().sortColumns().size() > 1;
            const QRect number(right - 8, all.top(), 8, all.height());
            const QRect triangle((isOneOfTwo ? number.left() : right) - 10, all.center().y() - 3, 10, 3);
            const double above = header.darkness(triangle);
            const double below = header.darkness(triangle.translated(0, 4));
            QString mark = above > below ? "v" : below > above ? "^" : "";
            mark += !mark.isEmpty() && isOneOfTwo && header.darkness(number) > 0 ? "#" : "";
            found.append(mark + (isFiltered ? "Y" : ""));
        }
        return found.join('|');
    }
};

TEST_F(TablePaintingTest, ShowsEachTextInItsCellAndLinesBetween) {
    open(fewRows);
    const Picture rows(*view().viewport());
    for (int row = 0; row < model().rowCount(); ++row) {
        for (const int column : view().header().visibleColumns()) {
            const QRectF ink = rows.ink(inner(row, column));
            EXPECT_EQ(!ink.isEmpty(), !model().text(row, column).isEmpty()) << row << ' ' << column;
            if (!ink.isEmpty()) {
                const bool isRight = column == price;
                EXPECT_NEAR(isRight ? cell(row, column).right() - ink.right()
                                    : ink.left() - cell(row, column).left(),
                            5, 2)
                    << row << ' ' << column;
                EXPECT_LT(ink.height(), view().fontMetrics().height());
            }
            const QRect right(cell(row, column).right(), cell(row, column).top(), 1,
                              cell(row, column).height());
            const QRect below(cell(row, column).left(), cell(row, column).bottom(), cell(row, column).width(),
                              1);
            for (const QRect& line : {right, below}) {
                EXPECT_EQ(rows.background(line), "#c0c0c0") << row << ' ' << column;
                EXPECT_TRUE(rows.ink(line).isEmpty()) << row << ' ' << column;
            }
        }
    }
    const QRect beneath = view().viewport()->rect().adjusted(0, view().rowRect(4).bottom() + 2, 0, 0);
    EXPECT_EQ(rows.background(beneath), "#ffffff");
    EXPECT_TRUE(rows.ink(beneath).isEmpty());

    const Picture header(view().header());
    for (const int column : view().header().visibleColumns()) {
        EXPECT_GT(header.darkness(section(column).adjusted(2, 2, -2, -2)), 5) << column;
    }
    EXPECT_EQ(marks(), "|");
    const Picture footer(*grid().findChild<TableFooter*>());
    for (const int column : view().header().visibleColumns()) {
        const bool isCounted = column == kod;
        EXPECT_EQ(footer.darkness(section(column).adjusted(3, 4, -3, -4)) > 0, isCounted) << column;
        EXPECT_EQ(footer.amount(section(column).adjusted(0, 1, 0, 0), QColor("#b4bcc6")) > 50, isCounted);
    }

    // A view is disabled only while it is exported, and looks as before.
    view().clearFocus();
    const Picture atRest(grid());
    grid().setEnabled(false);
    EXPECT_EQ(Picture(grid()).image(), atRest.image());
}

TEST_F(TablePaintingTest, TellsSelectedAndCurrentRowsByColour) {
    open(fewRows);
    const QString selected = "#ffffff on #2f5f8f";
    const QString tinted = "#101820 on #cbd7e3";
    const QString plain = "#101820 on #ffffff";
    struct State {
        const char* what;
        std::function<void()> prepare;
        QStringList colors; // of the rows 0, 2 and 4, which have a name
        int focusRow;       // -1: no rectangle
    };
    const auto click = [&](int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        return [=, this] { clickRow(row, modifiers); };
    };
    const auto moveFocus = [&] { QTest::keyClick(&view(), Qt::Key_Down, Qt::ControlModifier); };
    const State states[]{
        {"at first", [] {}, {selected, plain, plain}, 0},
        {"one selected", click(2), {plain, selected, plain}, 2},
        {"two selected", click(4, Qt::ControlModifier), {plain, selected, selected}, 4},
        {"the first one", click(0), {selected, plain, plain}, 0},
        {"another current", moveFocus, {selected, plain, plain}, 1},
        {"and the next", moveFocus, {selected, tinted, plain}, 2},
        {"focus elsewhere", [&] { view().clearFocus(); }, {tinted, tinted, plain}, -1},
    };
    for (const State& state : states) {
        state.prepare();
        const Picture rows(*view().viewport());
        for (qsizetype i = 0; i < 3; ++i) {
            const QRect place = inner(static_cast<int>(2 * i), name);
            EXPECT_EQ(rows.foreground(place) + " on " + rows.background(place), state.colors[i])
                << state.what << ", row " << 2 * i;
        }
        for (int row = 0; row < model().rowCount(); ++row) {
            for (const int column : view().header().visibleColumns()) {
                const QRect edge(cell(row, column).left() + 2, cell(row, column).top(),
                                 cell(row, column).width() - 6, 2);
                EXPECT_EQ(!rows.ink(edge).isEmpty(),
                          row == state.focusRow && column == view().currentIndex().column())
                    << state.what << ", " << row << ' ' << column;
            }
        }
    }
}

TEST_F(TablePaintingTest, MarksOrderAndFiltersInTheHeader) {
    open(fewRows);
    struct Arrangement {
        std::vector<SortColumn> order;
        std::vector<int> filtered;
        const char* marks;
    };
    for (const Arrangement& arrangement : {Arrangement{{{kod, false}}, {}, "^|"},
                                           {{{kod, true}}, {}, "v|"},
                                           {{{name, false}, {kod, true}}, {}, "v#|^#"},
                                           {{}, {name}, "|Y"},
                                           {{{name, true}}, {name, kod}, "Y|vY"}}) {
        model().clearFilters();
        model().sortBy(arrangement.order);
        for (const int column : arrangement.filtered) {
            model().setFilter(column, {"4", {}, {}});
        }
        EXPECT_EQ(marks(), arrangement.marks);
    }
}

TEST_F(TablePaintingTest, ShowsEllipsesSumsAndWhatASearchFinds) {
    open(fewRows);
    const double whole = Picture(*view().viewport()).ink(inner(2, price)).height();
    view().header().resizeSection(price, 32);
    EXPECT_LT(Picture(*view().viewport()).ink(inner(2, price)).height(), whole / 2) << "dots alone";

    QTest::keyClick(&view(), Qt::Key_A, Qt::ControlModifier);
    view().header().restoreInitialLayout();
    EXPECT_GT(Picture(*grid().findChild<TableFooter*>()).darkness(section(price).adjusted(3, 4, -3, -4)), 5);

    const auto found = [&] {
        const Picture rows(*view().viewport());
        QStringList cells;
        for (int row = 0; row < model().rowCount(); ++row) {
            for (const int column : view().header().visibleColumns()) {
                if (rows.amount(inner(row, column), foundText) > 5) {
                    cells.append(QStringLiteral("%1:%2").arg(row).arg(column));
                }
            }
        }
        return cells.join(' ');
    };
    QTest::keyClick(&view(), Qt::Key_F, Qt::ControlModifier);
    child<QLineEdit>("FindBarText").setText("бетон");
    EXPECT_EQ(found(), "2:2 4:2");
    QTest::keyClick(&child<QLineEdit>("FindBarText"), Qt::Key_Escape);
    EXPECT_EQ(found(), "");
}

TEST_F(TablePaintingTest, RepaintsInPartWhatAFullRepaintShows) {
    open(manyRows);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&grid()));
    QWidget& viewport = *view().viewport();
    const auto onScreen = [&] {
        QApplication::processEvents();
        return grid().screen()->grabWindow(grid().winId()).toImage();
    };
    const auto expectWhole = [&](int input) {
        const QImage inPart = onScreen();
        viewport.repaint();
        EXPECT_EQ(inPart, onScreen()) << input;
    };
    const QPointF center = viewport.rect().center();
    int value = 0;
    for (const int angle : {-40, -120, -240, 120, 40, -9600, 80, -40}) {
        QWheelEvent turn(center, viewport.mapToGlobal(center), {}, {0, angle}, Qt::NoButton, Qt::NoModifier,
                         Qt::NoScrollPhase, false);
        QApplication::sendEvent(&viewport, &turn);
        EXPECT_NE(std::exchange(value, view().verticalScrollBar()->value()), value);
        expectWhole(angle);
    }
    using Keys = QKeyCombination;
    for (const Keys keys : {Keys(Qt::Key_Home), Keys(Qt::Key_Down), Keys(Qt::Key_Down), Keys(Qt::Key_Right),
                            Keys(Qt::Key_Up), Qt::CTRL | Qt::Key_Down, Qt::CTRL | Qt::Key_Down,
                            Keys(Qt::Key_Left), Keys(Qt::Key_PageDown), Keys(Qt::Key_End)}) {
        QTest::keyClick(&view(), keys.key(), keys.keyboardModifiers());
        expectWhole(keys.toCombined());
    }
}

} // namespace

} // namespace grid
