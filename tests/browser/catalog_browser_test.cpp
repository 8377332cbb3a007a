// SPDX-License-Identifier: MIT

#include "app/action_manager.h"
#include "app/command.h"
#include "app/error_log.h"
#include "base/error.h"
#include "base/program_place.h"
#include "browser/ter_form.h"
#include "data/selection.h"
#include "grid/table/grid.h"
#include "grid/table/table_footer.h"
#include "grid/table/table_view.h"
#include "support/catalog_window.h"
#include "support/firebird_server.h"
#include "support/printing.h"
#include "support/waiting.h"
#include "ui/application.h"
#include "ui/screen_cursor.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QtTest/qtestspontaneevent.h>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <cerrno>

#include <sys/syscall.h>
#include <unistd.h>

/// Whether no folder can be entered.
static bool areFoldersGone = false;

/// Stands for the system library's.
extern "C" int chdir(const char* path) noexcept {
    if (areFoldersGone) {
        errno = ENOENT;
        return -1;
    }
    return static_cast<int>(syscall(SYS_chdir, path));
}

namespace {

using test::CatalogWindow;
using test::FirebirdServer;
using test::runSql;
using test::sqlValue;
using test::type;

QString state() {
    return QStringLiteral("%1 %2 | %3 %4 |")
        .arg(TERForm->cxComboBox1->currentText(), TERForm->cxComboBox2->currentText())
        .arg(CurRegionId)
        .arg(CurPeriod);
}

/// The rows in each of the five datasets of the selection; "-" for a closed one.
QStringList rowCounts(TDM& module) {
    QStringList counts;
    for (const db::DataSet* dataSet : module.selectionDataSets()) {
        counts += dataSet->isOpen() ? QString::number(dataSet->rowCount()) : QStringLiteral("-");
    }
    return counts;
}

/// The same, as a server with the catalog of limits counts them.
QStringList countedRows(const QString& period, int region, const QString& edition = QStringLiteral("TER")) {
    QStringList counts;
    for (const QString& table : {edition + "KATALOGKTC", edition + "KATOGLAVLENIE", edition + "MASH",
                                 edition + "TRUD", QStringLiteral("FER20KATALOGPEREVOZKA")}) {
        counts += QStringLiteral("(select count(*) from %1_TABLE where PER='%2' and REGIONID=%3)")
                      .arg(table, period)
                      .arg(region);
    }
    return sqlValue(
               test::limitsServer,
               QStringLiteral("select %1 from RDB$DATABASE").arg(counts.join(QStringLiteral(" || ' ' || "))))
        .split(u' ');
}

const QStringList noRows(5, QStringLiteral("0"));

QString firstName(const db::DataSet& materials) {
    return materials.rowCount() == 0 ? QStringLiteral("no rows") : materials.text(0, materials.field("NAME"));
}

TEST(Selection, BeginsWithTheFourthRegionAndTheNewestPeriod) {
    CatalogWindow window(test::limitsServer, "Action1");
    EXPECT_EQ(state(), "В пределах 202403 | 1 202403 |");
    EXPECT_EQ(QString::number(TERForm->cxComboBox1->count()),
              sqlValue(test::limitsServer, "select count(*) from REGION"));
    EXPECT_EQ(TERForm->cxComboBox1->itemText(0), "") << "a NULL name is an empty item";
    EXPECT_EQ(rowCounts(window.module()), countedRows("202403", 1));
    EXPECT_EQ(TERForm->cxGrid1->findChild<grid::TableFooter*>()->text(),
              QString::number(window.module().pFIBDataSet3.rowCount()));
    EXPECT_EQ(window.module().pFIBDataSet1.currentRow(), 3) << "the regions' tab follows the selector";
}

TEST(Selection, FollowsWheelAndKeysOnlyWhereTheFocusIs) {
    CatalogWindow window(test::limitsServer, "Action1");
    QComboBox& selector = *TERForm->cxComboBox1;
    const QString region = selector.currentText();
    const auto turnWheel = [&] {
        const QPointF centre = selector.rect().center();
        QWheelEvent event(centre, selector.mapToGlobal(centre), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&selector, &event);
    };
    turnWheel();
    EXPECT_EQ(selector.currentText(), region);
    EXPECT_TRUE(TERForm->cxGrid1->view().hasFocus());
    selector.setFocus();
    turnWheel();
    EXPECT_NE(selector.currentText(), region);

    const int last = TERForm->cxPageControl1->count() - 1;
    for (const int page : {1, last}) {
        selector.setFocus();
        TERForm->cxPageControl1->setCurrentIndex(page);
        EXPECT_TRUE(TERForm->cxPageControl1->currentWidget()->isAncestorOf(QApplication::focusWidget()));
    }
}

TEST(Pages, TakeTheirKeysFromWhereverTheFocusIs) {
    CatalogWindow window(test::sampleServer, "Action1");
    QTabWidget& pages = *TERForm->cxPageControl1;
    const auto pressIn = [](QWidget& widget, Qt::Key key, Qt::KeyboardModifiers modifiers) {
        widget.setFocus();
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
        return QApplication::focusWidget()->objectName();
    };
    for (QWidget* const outside :
         std::initializer_list<QWidget*>{TERForm->cxComboBox1, pages.tabBar(), TERForm->Button1}) {
        EXPECT_EQ(pressIn(*outside, Qt::Key_F, Qt::ControlModifier), "FindBarText");
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        EXPECT_TRUE(TERForm->cxGrid1->view().hasFocus());
    }

    for (QWidget* const place : std::initializer_list<QWidget*>{TERForm->cxComboBox1, TERForm->cxGrid1}) {
        pages.setCurrentIndex(0);
        pressIn(*place, Qt::Key_Tab, Qt::ControlModifier);
        EXPECT_EQ(pages.currentIndex(), 1) << place->objectName().toStdString();
        pages.setCurrentIndex(0);
        pressIn(*place, Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
        EXPECT_EQ(pages.currentIndex(), pages.count() - 1) << place->objectName().toStdString();
    }
}

TEST(Selection, TakesARegionOnlyByItsExactName) {
    CatalogWindow window(test::limitsServer, "Action1");
    const db::DataSet& materials = window.module().pFIBDataSet3;
    QComboBox& selector = *TERForm->cxComboBox1;

    for (const char* text : {"Г двойни", "г двойник", "Г двойник ", ""}) {
        type(selector, "В пределах");
        type(selector, text);
        EXPECT_EQ(CurRegionId, *text == '\0' ? 10 : text == std::string_view("Г двойник ") ? 5 : 1) << text;
    }
    type(selector, "Г двойник");
    EXPECT_EQ(CurRegionId, 5) << "the first of two";
    EXPECT_EQ(firstName(materials), "первый двойник");
    type(selector, "Д код больше 32 бит");
    EXPECT_EQ(CurRegionId, 2);
    EXPECT_EQ(firstName(materials), "младшие 32 бита кода");
    selector.setCurrentText("А без кода");
    EXPECT_EQ(CurRegionId, 0);
    EXPECT_EQ(firstName(materials), "регион без кода");
}

TEST(Selection, GoesOnFromATypedItemWithoutReadingTwice) {
    CatalogWindow window(test::limitsServer, "Action1");
    QComboBox& selector = *TERForm->cxComboBox1;
    selector.setCurrentText("Г двойник");
    type(selector, "Е код наименьши");
    const QSignalSpy resets(&window.module().pFIBDataSet3, &db::DataSet::reset);
    selector.lineEdit()->insert("й");
    EXPECT_EQ(resets.count(), 2) << "one closing, one opening";
    EXPECT_EQ(selector.itemText(selector.currentIndex()), "Е код наименьший");
    selector.showPopup();
    EXPECT_EQ(selector.maxVisibleItems(), 25);
    EXPECT_GE(selector.view()->width(), std::min(selector.view()->sizeHintForColumn(0),
                                                 selector.screen()->availableGeometry().width()));
    QTest::keyClick(selector.view(), Qt::Key_Return);
    EXPECT_EQ(selector.currentText(), "Е код наименьший") << "the list begins at what was typed";
    QTest::keyClick(&selector, Qt::Key_Up);
    EXPECT_EQ(selector.currentText(), "Д код больше 32 бит");
}

TEST(Selection, MarksATextThatDoesNotSayWhatIsShown) {
    CatalogWindow window(test::limitsServer, "Action1");
    QComboBox& region = *TERForm->cxComboBox1;
    const QColor plain = region.palette().color(QPalette::Base);
    const QString hint = region.toolTip();
    for (const auto& [selector, text, last] :
         {std::tuple(&region, "В предела", "х"),
          std::tuple(static_cast<QComboBox*>(TERForm->cxComboBox2), "20240", "3")}) {
        type(*selector, text);
        EXPECT_NE(selector->palette().color(QPalette::Base), plain);
        EXPECT_TRUE(selector != &region || region.toolTip().contains("«В пределах»"));
        EXPECT_NE(selector->accessibleDescription(), "");
        EXPECT_EQ(selector->accessibleDescription(), selector->toolTip());
        selector->lineEdit()->insert(last);
        EXPECT_EQ(selector->palette().color(QPalette::Base), plain);
        EXPECT_EQ(selector->accessibleDescription(), "");
    }
    EXPECT_EQ(region.toolTip(), hint);
}

TEST(Selection, TakesAnyPeriodAsItIsTyped) {
    CatalogWindow window(test::limitsServer, "Action1");
    const db::DataSet& materials = window.module().pFIBDataSet3;
    QObject::connect(&materials, &db::DataSet::reset, &window.form(),
                     [] { EXPECT_EQ(ui::screenCursor(), ui::ScreenCursor::Hourglass); });
    type(*TERForm->cxComboBox2, "1");
    EXPECT_EQ(CurPeriod, "1");
    EXPECT_EQ(firstName(materials), "короткий период");
    type(*TERForm->cxComboBox2, "");
    EXPECT_EQ(firstName(materials), "пустой период");
    type(*TERForm->cxComboBox2, "2024031");
    EXPECT_EQ(CurPeriod, "2024031");
    EXPECT_EQ(rowCounts(window.module()), noRows);
    QTest::keyClick(TERForm->cxComboBox2->lineEdit(), Qt::Key_Backspace);
    EXPECT_EQ(rowCounts(window.module()), countedRows("202403", 1));

    // Beside the name of no region it is read for the region that was chosen last.
    type(*TERForm->cxComboBox1, "Нет такого");
    type(*TERForm->cxComboBox2, "1");
    EXPECT_EQ(state(), "Нет такого 1 | 1 1 |");
    EXPECT_EQ(firstName(materials), "короткий период");
    EXPECT_TRUE(TERForm->cxComboBox1->toolTip().contains("«В пределах»"));
}

TEST(Selection, KeepsTheRegionOfBeforeWhereTheListIsShort) {
    const FirebirdServer server("127.0.0.7", "schema");
    runSql(server.address(),
           "insert into REGION values (1, 'Один'); insert into REGION values (2, 'Два');"
           "insert into TERTRUD_TABLE (ID, PER, REGIONID) values (1, 'Период', 77); commit;");
    CatalogWindow window(server.address());
    CurRegionId = 77;
    window.choose("Action1");
    EXPECT_EQ(state(), "Регион Период | 77 Период |");
    EXPECT_EQ(rowCounts(window.module()), QStringList({"0", "0", "0", "1", "0"}));
    type(*TERForm->cxComboBox1, "Два");
    EXPECT_EQ(CurRegionId, 2);
}

TEST(Selection, LeavesWhatWasReadWhenADataSetFails) {
    CatalogWindow window(test::limitsServer, "Action1");
    db::DataSet& machines = window.module().pFIBDataSet5;
    const QStringList sql = machines.sql();
    machines.close();
    machines.setSql({"select ID from NO_SUCH_TABLE where per=:p1 and REGIONID=:p2"});
    const test::NextMessage shown;
    TERForm->cxComboBox1->setCurrentText("Г двойник");
    EXPECT_TRUE(shown.text().contains("NO_SUCH_TABLE")) << shown.text().toStdString();
    const QStringList before = countedRows("202403", 1);
    const QStringList after = countedRows("202403", 5);
    EXPECT_EQ(rowCounts(window.module()), QStringList({after[0], after[1], "-", before[3], before[4]}));
    EXPECT_EQ(std::get<std::int32_t>(window.module().pFIBDataSet4.parameter("p2")), 5);
    EXPECT_EQ(std::get<std::int32_t>(window.module().pFIBDataSet6.parameter("p2")), 1);
    EXPECT_EQ(TERForm->cxGrid4->findChild<grid::TableFooter*>()->text(), "0");
    EXPECT_TRUE(TERForm->cxComboBox1->accessibleDescription().contains("не все таблицы"));
    const auto hasLogged = [](const char* end) {
        QFile log(app::ErrorLog::path());
        return log.open(QIODevice::ReadOnly) && log.readAll().endsWith(end);
    };
    EXPECT_TRUE(hasLogged(" Компонент cxComboBox1\r\n"));

    const test::NextMessage next;
    TERForm->cxComboBox2->setCurrentText("1");
    EXPECT_TRUE(next.text().contains("NO_SUCH_TABLE")) << next.text().toStdString();
    EXPECT_EQ(rowCounts(window.module())[2], "-");
    EXPECT_TRUE(TERForm->cxComboBox1->accessibleDescription().contains("не все таблицы"));
    EXPECT_TRUE(hasLogged(" Компонент cxComboBox2\r\n"));
    EXPECT_EQ(ui::screenCursor(), ui::ScreenCursor::Default);

    machines.setSql(sql);
    QApplication::setActiveWindow(&window.form()); // an inactive window takes no shortcut
    QTest::keyClick(TERForm->cxComboBox1->lineEdit(), Qt::Key_F5);
    EXPECT_EQ(rowCounts(window.module()), countedRows("1", 5)) << "read again is what the selectors say";
}

TEST(Selection, IsReadAgainByF5AndStaysWhereItIs) {
    const FirebirdServer server("127.0.0.8", test::limitsCatalog);
    CatalogWindow window(server.address(), "Action1");
    const db::DataSet& labour = window.module().pFIBDataSet6;
    TERForm->cxPageControl1->setCurrentWidget(TERForm->cxTabSheet4);
    QTest::keyClick(&TERForm->cxGrid5->view(), Qt::Key_End, Qt::ControlModifier);
    const int rows = labour.rowCount();
    const QString current = labour.text(labour.currentRow(), labour.field("ID"));
    runSql(server.address(),
           "insert into TERTRUD_TABLE (ID, PER, REGIONID, KOD) values (777, '202403', 1, -5); commit;");
    QTest::keyClick(TERForm->cxComboBox1->lineEdit(), Qt::Key_F5);
    EXPECT_EQ(labour.rowCount(), rows + 1);
    EXPECT_EQ(labour.text(labour.currentRow(), labour.field("ID")), current);
    EXPECT_EQ(TERForm->cxGrid5->view().currentRow(), labour.currentRow());
}

TEST(Selection, ShowsTheFirstRowsWhileTheOthersAreRead) {
    CatalogWindow window(test::sampleServer, "Action1");
    db::DataSet& materials = window.module().pFIBDataSet3;
    const grid::TableView& view = TERForm->cxGrid1->view();
    const int few = materials.rowCount();
    materials.close();
    materials.setSql({"select FEW.* from (", materials.sql().join(u' '),
                      ") as FEW cross join (select first 20 RDB$TYPE from RDB$TYPES)"});
    int arrivals = 0;
    QObject::connect(&materials, &db::DataSet::rowsArrived, &window.form(), [&](int count) {
        ++arrivals;
        EXPECT_EQ(ui::screenCursor(), ui::ScreenCursor::Hourglass);
        EXPECT_EQ(TERForm->cxGrid1->findChild<grid::TableFooter*>()->text(), QString::number(count));
        EXPECT_EQ(view.currentRow(), 0);
        EXPECT_FALSE(data::isSelectionRead(window.module()));
    });
    TERForm->cxComboBox1->setCurrentIndex(0);
    TERForm->cxComboBox1->setCurrentIndex(3);
    EXPECT_GE(arrivals, 2);
    EXPECT_GT(materials.rowCount(), 10 * few);
    EXPECT_EQ(view.currentRow(), 0);

    // Reading again ends where it began, whatever was in view meanwhile.
    materials.moveTo(few / 2);
    const int current = materials.currentRow();
    arrivals = 0;
    QTest::keyClick(TERForm->cxComboBox1->lineEdit(), Qt::Key_F5);
    EXPECT_GE(arrivals, 1);
    EXPECT_EQ(materials.text(materials.currentRow(), materials.field("ID")),
              materials.text(current, materials.field("ID")));
    EXPECT_EQ(view.currentRow(), materials.currentRow());
    EXPECT_FALSE(view.rowRect(view.currentRow()).isEmpty());
}

TEST(Lifecycle, OpensWithTheFocusOnTheFirstMaterial) {
    CatalogWindow window(test::sampleServer, "Action1");
    EXPECT_EQ(TERForm->cxPageControl1->currentIndex(), 0);
    EXPECT_TRUE(TERForm->cxGrid1->view().hasFocus());
    EXPECT_EQ(TERForm->cxGrid1->view().currentIndex().row(), 0);
    QTest::keyClick(&TERForm->cxGrid1->view(), Qt::Key_Down);
    EXPECT_EQ(window.module().pFIBDataSet3.currentRow(), 1);

    TERForm->cxPageControl1->setCurrentIndex(4);
    TERForm->cxComboBox1->setCurrentIndex(0);
    TTERForm* const shown = TERForm;
    window.choose("Action1");
    EXPECT_EQ(TERForm, shown) << "the same edition only shows its window again";
    EXPECT_EQ(TERForm->cxPageControl1->currentIndex(), 4);
    EXPECT_EQ(TERForm->cxComboBox1->currentIndex(), 0);

    // A window that comes back from its icon is shown by the system.
    TERForm->cxPageControl1->setCurrentIndex(0);
    TERForm->cxComboBox2->setFocus();
    window.module().pFIBDataSet3.moveTo(3);
    QShowEvent restored;
    QSpontaneKeyEvent::setSpontaneous(&restored);
    ui::application().notify(TERForm, &restored);
    EXPECT_TRUE(TERForm->cxComboBox2->hasFocus());
    EXPECT_EQ(window.module().pFIBDataSet3.currentRow(), 3);
}

TEST(Lifecycle, SwitchesEditionsByFreeingTheOldWindowFirst) {
    CatalogWindow window(test::sampleServer);
    QString order;
    window.choose("Action1");
    EXPECT_EQ(window.form().Tag, 1);
    const QPointer<TTERForm> first = TERForm;
    QObject::connect(&window.module().pFIBDataSet1, &db::DataSet::reset, &window.form(), [&] {
        order += first ? " closed" : " opened";
        order += ui::screenCursor() == ui::ScreenCursor::Hourglass ? " under the hourglass" : "";
    });
    QObject::connect(first, &QObject::destroyed, &window.form(), [&] { order += " freed"; });
    window.choose("Action8");
    EXPECT_EQ(order, " closed freed opened under the hourglass");
    EXPECT_EQ(window.form().Tag, 8);
    EXPECT_EQ(TERForm->findChild<QLabel*>("cxLabel1")->text(), "   ФЕР2020");
    EXPECT_EQ(firstName(window.module().pFIBDataSet3),
              sqlValue(test::sampleServer, QStringLiteral("select first 1 NAME from FER20KATALOGKTC_TABLE "
                                                          "where PER='%1' and REGIONID=%2 order by KOD")
                                               .arg(CurPeriod)
                                               .arg(CurRegionId)));
}

TEST(Lifecycle, ClosesTheBrowserFirstAndThenTheProgram) {
    CatalogWindow window(test::sampleServer, "Action1");
    TERForm->cxComboBox2->setCurrentIndex(2);
    const QPointer<TTERForm> closing = TERForm;
    QDir::setCurrent("/");
    window.choose("Action9");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(closing, nullptr);
    EXPECT_EQ(TERForm, nullptr);
    EXPECT_EQ(window.form().Tag, 0);
    EXPECT_EQ(QDir::currentPath() + '/', base::programFolder());
    for (const db::DataSet* dataSet : window.module().dataSets()) {
        EXPECT_FALSE(dataSet->isOpen()) << dataSet->objectName().toStdString();
    }
    EXPECT_TRUE(window.module().pFIBDatabase1.isConnected());
    EXPECT_TRUE(window.form().ActionToolBar1->isVisible());

    window.choose("Action1");
    EXPECT_EQ(TERForm->cxComboBox2->currentIndex(), 0) << "a new window begins with the newest period";
    window.choose("Action9");
    EXPECT_TRUE(window.form().isVisible());
    window.choose("Action9");
    EXPECT_FALSE(window.form().isVisible());
    EXPECT_FALSE(window.module().pFIBDatabase1.isConnected());
    ui::application().setTerminating(false);
}

TEST(Lifecycle, GoesOnAfterAnEditionThatCannotBeOpened) {
    const FirebirdServer server("127.0.0.8", test::limitsCatalog);
    CatalogWindow window(server.address(), "Action1");
    runSql(server.address(), "drop table FER17I5TRUD_TABLE; commit;");
    const test::NextMessage shown;
    window.choose("Action7");
    EXPECT_TRUE(shown.text().contains("FER17I5TRUD_TABLE")) << shown.text().toStdString();
    EXPECT_EQ(TERForm, nullptr);
    EXPECT_EQ(window.form().Tag, 7);
    EXPECT_EQ(ui::screenCursor(), ui::ScreenCursor::Hourglass);

    window.choose("Action9");
    EXPECT_TRUE(window.form().isVisible()) << "there is no browser to close, and the program does not end";
    EXPECT_EQ(window.form().Tag, 7);
    window.choose("Action8");
    ASSERT_NE(TERForm, nullptr);
    EXPECT_EQ(window.form().Tag, 8);
    EXPECT_EQ(rowCounts(window.module()), countedRows("202403", 1, "FER20"));
}

TEST(Lifecycle, LeavesNoWindowWhenItCannotBeCreated) {
    const FirebirdServer server("127.0.0.8", "schema");
    runSql(server.address(), "drop table KATALOG; commit;");
    CatalogWindow window(server.address());
    const test::NextMessage shown;
    window.choose("Action1");
    EXPECT_TRUE(shown.text().contains("KATALOG")) << shown.text().toStdString();
    EXPECT_EQ(TERForm, nullptr);
    EXPECT_EQ(window.form().Tag, 1);
    EXPECT_TRUE(window.form().Panel1->findChildren<TTERForm*>().isEmpty());

    // No browser will close and give back the query of the firms, which has been read by then.
    EXPECT_EQ(
        sqlValue(server.address(),
                 "select count(*) from MON$STATEMENTS S join MON$ATTACHMENTS A on A.MON$ATTACHMENT_ID = "
                 "S.MON$ATTACHMENT_ID where A.MON$SYSTEM_FLAG = 0 and A.MON$ATTACHMENT_ID <> "
                 "current_connection"),
        "0");
    runSql(server.address(),
           "create table KATALOG (ID bigint, PARENTID bigint, NAME varchar(1000), TREE varchar(30)); "
           "commit;");
    window.choose("Action1");
    ASSERT_NE(TERForm, nullptr);
    EXPECT_TRUE(TERForm->isVisible());
}

TEST(Lifecycle, StaysOpenWhereTheFolderOfTheProgramIsGone) {
    CatalogWindow window(test::limitsServer, "Action1");
    TTERForm* const shown = TERForm;
    areFoldersGone = true;
    for (const char* command : {"Action9", "Action8"}) {
        const test::NextMessage told;
        window.choose(command);
        EXPECT_TRUE(told.text().contains(base::programFolder())) << told.text().toStdString();
        EXPECT_EQ(TERForm, shown);
        EXPECT_TRUE(shown->isVisible());
        EXPECT_EQ(window.form().Tag, 1);
        EXPECT_TRUE(window.form().Action1->isChecked());
        EXPECT_EQ(rowCounts(window.module()), countedRows("202403", 1));
    }
    areFoldersGone = false;
    window.choose("Action9");
    EXPECT_EQ(TERForm, nullptr);
}

TEST(Lifecycle, IsGoneAfterAClosingThatFailsHalfWay) {
    CatalogWindow window(test::limitsServer, "Action1");
    const QPointer<TTERForm> closing = TERForm;
    const auto failing = QObject::connect(&window.module().pFIBDataSet5, &db::DataSet::aboutToReset,
                                          &window.form(), [] { throw base::Error("на полпути"); });
    const test::NextMessage shown;
    window.choose("Action9");
    QObject::disconnect(failing);
    EXPECT_EQ(shown.text(), "на полпути");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(closing, nullptr);
    EXPECT_EQ(TERForm, nullptr);
    EXPECT_EQ(window.form().Tag, 0);
    EXPECT_FALSE(window.form().Action1->isChecked());

    window.choose("Action4");
    ASSERT_NE(TERForm, nullptr);
    EXPECT_EQ(rowCounts(window.module()), countedRows("202403", 1, "FER14I2"));
}

} // namespace
