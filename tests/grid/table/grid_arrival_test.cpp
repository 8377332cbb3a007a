// SPDX-License-Identifier: MIT

#include "grid/table/grid_fixture.h"
#include "support/catalog.h"

#include <QElapsedTimer>
#include <QScreen>
#include <QScrollBar>
#include <QSignalSpy>

namespace grid {

namespace {

/// 200,000 rows, of which ID counts. The server fails at the row `fault`, if there is such a one.
QString longRows(int fault = -1) {
    return QStringLiteral(
               "execute block returns (ID bigint, KOD integer, NAME varchar(1000), PRICE numeric(18,2)) as "
               "begin ID = 0; while (ID < 200000) do begin KOD = 500000 / (ID - %1); "
               "NAME = iif(mod(ID, 5) = 3, rpad('', 200, 'длинное имя '), 'имя ' || ID); PRICE = ID / 7.00; "
               "suspend; ID = ID + 1; end end")
        .arg(fault);
}

/// Counts how often a widget is painted.
class Paintings final : public QObject {
public:
    explicit Paintings(QWidget& widget) { widget.installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(watched, event);
    }

    int count = 0;
};

class GridArrivalTest : public GridTest {
protected:
    void SetUp() override {
        open(fewRows);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&grid()));
    }

    void query(const QString& sql) {
        dataSet.close();
        dataSet.setSql({sql});
    }

    /// What has been painted of a part of the grid.
    QImage onScreen(const QWidget& part) {
        const QPixmap whole = grid().screen()->grabWindow(grid().winId());
        return whole.copy(QRect(part.mapTo(&grid(), QPoint()), part.size())).toImage();
    }

    QString endState() {
        QStringList parts{ids().right(30), footer(), QString::number(dataSet.currentRow())};
        for (const int number : {view().currentIndex().row(), view().currentIndex().column(),
                                 view().verticalScrollBar()->value(), view().verticalScrollBar()->maximum(),
                                 static_cast<int>(view().selectedRows().size()), view().header().height()}) {
            parts.append(QString::number(number));
        }
        for (const int column : view().header().visibleColumns()) {
            parts.append(QString::number(view().header().sectionSize(column)));
        }
        return parts.join(u' ');
    }
};

TEST_F(GridArrivalTest, PaintsTheFirstRowsAndCountsTheOthersAsTheyCome) {
    QTest::keyClick(&view(), Qt::Key_End, Qt::ControlModifier);
    query(longRows());
    std::vector<int> counts;
    QImage firstRows;
    QImage lastFooter;
    const auto& footerRow = child<TableFooter>("ViewFooter");
    const Paintings rowPaintings(*view().viewport());
    const QSignalSpy insertions(&model(), &QAbstractItemModel::rowsInserted);
    QObject::connect(&dataSet, &db::DataSet::rowsArrived, &view(), [&](int count) {
        EXPECT_FALSE(dataSet.isOpen());
        EXPECT_EQ(insertions.size(), std::ssize(counts));
        EXPECT_EQ(dataSet.rowCount(), 0);
        EXPECT_EQ(model().rowCount(), count);
        EXPECT_EQ(footer(), QString::number(count));
        EXPECT_EQ(view().verticalScrollBar()->value(), 0);
        if (counts.empty()) {
            firstRows = onScreen(*view().viewport());
        }
        const QImage shownFooter = onScreen(footerRow);
        EXPECT_NE(shownFooter, lastFooter);
        lastFooter = shownFooter;
        counts.push_back(count);
    });
    bool isEventHandled = false;
    QMetaObject::invokeMethod(
        &view(), [&] { isEventHandled = true; }, Qt::QueuedConnection);
    const int paintingsBefore = rowPaintings.count;
    QElapsedTimer taken;
    taken.start();
    dataSet.open();
    EXPECT_FALSE(isEventHandled);
    ASSERT_GE(counts.size(), 2U);
    EXPECT_LE(counts.front(), 2000);
    EXPECT_LE(counts.size(), static_cast<std::size_t>(1 + taken.elapsed() / 100));
    EXPECT_EQ(rowPaintings.count, paintingsBefore + 1) << "the rows in view stay as they are";

    QCoreApplication::processEvents();
    EXPECT_EQ(onScreen(*view().viewport()), firstRows);
    const QString state = endState();
    const QImage whole = onScreen(grid());
    dataSet.close();
    QObject::disconnect(&dataSet, &db::DataSet::rowsArrived, nullptr, nullptr);
    dataSet.open();
    QCoreApplication::processEvents();
    EXPECT_EQ(endState(), state) << "as where nothing is shown before the end";
    EXPECT_EQ(onScreen(grid()), whole);
}

TEST_F(GridArrivalTest, LeavesNothingOfAReadingThatFails) {
    dataSet.close();
    QCoreApplication::processEvents();
    const QString closedState = endState();
    const QImage closed = onScreen(grid());
    query(longRows(50'000));
    const QSignalSpy arrivals(&dataSet, &db::DataSet::rowsArrived);
    for (int attempt = 1; attempt <= 2; ++attempt) {
        const QString error = test::errorOf([&] { dataSet.open(); });
        EXPECT_TRUE(error.contains("zero")) << error.toStdString();
        EXPECT_GE(arrivals.size(), 2 * attempt);
        EXPECT_EQ(arrivals.last().first().toInt(), 0);
        EXPECT_FALSE(dataSet.isOpen());
        EXPECT_EQ(endState(), closedState);
        QCoreApplication::processEvents();
        EXPECT_EQ(onScreen(grid()), closed);
    }
    query(fewRows);
    dataSet.open();
    EXPECT_EQ(ids(), "1 2 3 4 5");
    EXPECT_EQ(view().currentRow(), 0);
}

TEST_F(GridArrivalTest, PaintsNothingThatWouldMisleadOrThatNobodySees) {
    QSignalSpy arrivals(&dataSet, &db::DataSet::rowsArrived);
    const Paintings paintings(*view().viewport());
    const auto paintingsOf = [&](const QString& sql) {
        query(sql);
        QCoreApplication::processEvents();
        arrivals.clear();
        const int before = paintings.count;
        dataSet.open();
        return paintings.count - before;
    };
    model().sortBy({{kod, true}});
    EXPECT_EQ(paintingsOf(longRows()), 0);
    EXPECT_GE(arrivals.size(), 1);
    EXPECT_EQ(ids().left(9), "0 1 2 3 4") << "by KOD = 500000 / (ID + 1)";
    model().sortBy({});
    model().setFilter(name, {.containedText = "имя 7", .values = {}});
    EXPECT_EQ(paintingsOf(longRows()), 0);
    EXPECT_TRUE(footer().endsWith("из 200000"));
    model().clearFilters();
    grid().showMinimized();
    EXPECT_EQ(paintingsOf(longRows()), 0);
    grid().hide();
    EXPECT_EQ(paintingsOf(longRows()), 0);
}

} // namespace

} // namespace grid
