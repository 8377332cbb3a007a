#include "app/error_log.h"
#include "app/flat_tool_bar.h"
#include "base/program_place.h"
#include "browser/ter_form.h"
#include "data/selection.h"
#include "grid/table/grid.h"
#include "grid/table/table_view.h"
#include "support/catalog_window.h"
#include "support/firebird_server.h"
#include "support/printing.h"
#include "support/waiting.h"
#include "ui/application.h"
#include "ui/screen_cursor.h"

#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <malloc.h>

namespace {

using test::CatalogWindow;
using test::FirebirdServer;
using test::runSql;

/// Replaces the selector's text by typing.
void type(QComboBox& selector, const QString& text) {
    selector.lineEdit()->setFocus();
    selector.lineEdit()->selectAll();
    if (text.isEmpty()) {
        QTest::keyClick(selector.lineEdit(), Qt::Key_Delete);
    }
    for (const QChar character : text) {
        QTest::sendKeyEvent(QTest::Click, selector.lineEdit(), Qt::Key_unknown, QString(character),
                            Qt::NoModifier);
    }
}

QString state() {
    return QStringLiteral("%1 %2 | %3 %4 |")
        .arg(TERForm->cxComboBox1->currentText(), TERForm->cxComboBox2->currentText())
        .arg(CurRegionId)
        .arg(CurPeriod);
}

/// The rows in each of the five datasets of the selection; "-" for a closed one.
QString rowCounts(TDM& module) {
    QStringList counts;
    for (const db::DataSet* dataSet : module.selectionDataSets()) {
        counts += dataSet->isOpen() ? QString::number(dataSet->rowCount()) : QStringLiteral("-");
    }
    return counts.join(u' ');
}

QString firstName(const db::DataSet& materials) {
    return materials.rowCount() == 0 ? QStringLiteral("no rows") : materials.text(0, materials.field("NAME"));
}

TEST(Selection, BeginsWithTheFourthRegionAndTheNewestPeriod) {
    CatalogWindow window(test::limitsServer);
    window.choose("Action1");
    EXPECT_EQ(state(), "В пределах 202403 | 1 202403 |");
    EXPECT_EQ(TERForm->cxComboBox1->count(), 12);
    EXPECT_EQ(TERForm->cxComboBox1->itemText(0), "") << "a NULL name is an empty item";
    EXPECT_EQ(rowCounts(window.module()), "68 3 13 13 13");
    EXPECT_EQ(TERForm->cxGrid1->view().footerCount(), 68);
    EXPECT_EQ(window.module().pFIBDataSet1.currentRow(), 3) << "the regions' tab follows the selector";
}

TEST(Selection, FollowsWheelAndKeysOnlyWhereTheFocusIs) {
    CatalogWindow window(test::limitsServer);
    window.choose("Action1");
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

TEST(Selection, TakesARegionOnlyByItsExactName) {
    CatalogWindow window(test::limitsServer);
    window.choose("Action1");
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
    selector.setCurrentIndex(5);
    EXPECT_EQ(firstName(materials), "первый двойник");
    type(selector, "Д код больше 32 бит");
    EXPECT_EQ(CurRegionId, 2);
    EXPECT_EQ(firstName(materials), "младшие 32 бита кода");
    type(selector, "Е код наименьший");
    EXPECT_EQ(firstName(materials), "наименьший код");
    selector.setCurrentText("А без кода");
    EXPECT_EQ(CurRegionId, 0);
    EXPECT_EQ(firstName(materials), "регион без кода");
    EXPECT_EQ(ui::screenCursor(), ui::ScreenCursor::Default);
}

TEST(Selection, TakesAnyPeriodAsItIsTyped) {
    CatalogWindow window(test::limitsServer);
    window.choose("Action1");
    const db::DataSet& materials = window.module().pFIBDataSet3;
    type(*TERForm->cxComboBox2, "1");
    EXPECT_EQ(CurPeriod, "1");
    EXPECT_EQ(firstName(materials), "короткий период");
    type(*TERForm->cxComboBox2, "");
    EXPECT_EQ(firstName(materials), "пустой период");
    type(*TERForm->cxComboBox2, "2024031");
    EXPECT_EQ(CurPeriod, "2024031");
    EXPECT_EQ(rowCounts(window.module()), "0 0 0 0 0");
    QTest::keyClick(TERForm->cxComboBox2->lineEdit(), Qt::Key_Backspace);
    EXPECT_EQ(rowCounts(window.module()), "68 3 13 13 13");
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
    EXPECT_EQ(rowCounts(window.module()), "0 0 0 1 0");
    type(*TERForm->cxComboBox1, "Два");
    EXPECT_EQ(CurRegionId, 2);
}

TEST(Selection, LeavesWhatWasReadWhenADataSetFails) {
    CatalogWindow window(test::limitsServer);
    window.choose("Action1");
    db::DataSet& machines = window.module().pFIBDataSet5;
    machines.close();
    machines.setSql({"select ID from NO_SUCH_TABLE where per=:p1 and REGIONID=:p2"});
    QString shown;
    test::acceptNextMessage(shown);
    TERForm->cxComboBox1->setCurrentText("Г двойник");
    EXPECT_TRUE(shown.contains("NO_SUCH_TABLE")) << shown.toStdString();
    EXPECT_EQ(rowCounts(window.module()), "1 0 - 13 13");
    EXPECT_EQ(std::get<std::int32_t>(window.module().pFIBDataSet4.parameter("p2").value()), 5);
    EXPECT_EQ(std::get<std::int32_t>(window.module().pFIBDataSet6.parameter("p2").value()), 1);
    EXPECT_EQ(TERForm->cxGrid4->view().footerCount(), 0);
    EXPECT_EQ(ui::screenCursor(), ui::ScreenCursor::Default);
    QFile log(app::ErrorLog::path());
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    EXPECT_TRUE(log.readAll().endsWith(" Компонент cxComboBox1\r\n"));
}

TEST(Lifecycle, OpensWithTheFocusOnTheFirstMaterial) {
    CatalogWindow window(test::sampleServer);
    window.choose("Action1");
    EXPECT_EQ(TERForm->cxPageControl1->currentIndex(), 0);
    EXPECT_TRUE(TERForm->cxGrid1->view().hasFocus());
    EXPECT_EQ(TERForm->cxGrid1->view().currentIndex().row(), 0);
    EXPECT_EQ(ui::screenCursor(), ui::ScreenCursor::Default);
    QTest::keyClick(&TERForm->cxGrid1->view(), Qt::Key_Down);
    EXPECT_EQ(window.module().pFIBDataSet3.currentRow(), 1);

    TERForm->cxPageControl1->setCurrentIndex(4);
    TERForm->cxComboBox1->setCurrentIndex(0);
    TTERForm* const shown = TERForm;
    window.choose("Action1");
    EXPECT_EQ(TERForm, shown) << "the same edition only shows its window again";
    EXPECT_EQ(TERForm->cxPageControl1->currentIndex(), 4);
    EXPECT_EQ(TERForm->cxComboBox1->currentIndex(), 0);
}

TEST(Lifecycle, SwitchesEditionsByFreeingTheOldWindowFirst) {
    CatalogWindow window(test::sampleServer);
    QString order;
    window.choose("Action1");
    EXPECT_EQ(window.form().Tag, 1);
    const QPointer<TTERForm> first = TERForm;
    const QString before = firstName(window.module().pFIBDataSet3);
    QObject::connect(&window.module().pFIBDataSet1, &db::DataSet::reset, &window.form(),
                     [&] { order += first == nullptr ? " opened" : " closed"; });
    QObject::connect(first, &QObject::destroyed, &window.form(), [&] { order += " freed"; });
    window.choose("Action8");
    EXPECT_EQ(order, " closed freed opened");
    EXPECT_EQ(window.form().Tag, 8);
    EXPECT_EQ(TERForm->findChild<QLabel*>("cxLabel1")->text(), "   ФЕР2020");
    EXPECT_EQ(
        window.module().pFIBDataSet3.sql(),
        QStringList(
            {"SELECT "
             "ID,PER,REGIONID,KOD,NOMER,NAME,EDIZM,BRUTTO,KLASSGR,KODUZLA,BAZOVAY,OPTOVAY,CMETNAY,INDEKS",
             "FROM FER20KATALOGKTC_TABLE where per=:p1 and REGIONID=:p2 order by KOD"}));
}

TEST(Lifecycle, ClosesTheBrowserFirstAndThenTheProgram) {
    CatalogWindow window(test::sampleServer);
    window.choose("Action1");
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
    CatalogWindow window(server.address());
    window.choose("Action1");
    runSql(server.address(), "drop table FER17I5TRUD_TABLE; commit;");
    QString shown;
    test::acceptNextMessage(shown);
    window.choose("Action7");
    EXPECT_TRUE(shown.contains("FER17I5TRUD_TABLE")) << shown.toStdString();
    EXPECT_EQ(TERForm, nullptr);
    EXPECT_EQ(window.form().Tag, 7);
    EXPECT_EQ(ui::screenCursor(), ui::ScreenCursor::Hourglass);

    window.choose("Action9");
    EXPECT_TRUE(window.form().isVisible()) << "there is no browser to close, and the program does not end";
    EXPECT_EQ(window.form().Tag, 7);
    window.choose("Action8");
    ASSERT_NE(TERForm, nullptr);
    EXPECT_EQ(window.form().Tag, 8);
    EXPECT_EQ(ui::screenCursor(), ui::ScreenCursor::Default);
    EXPECT_EQ(rowCounts(window.module()), "0 0 0 0 13");
}

TEST(Lifecycle, LeavesNoWindowWhenItCannotBeCreated) {
    const FirebirdServer server("127.0.0.8", "schema");
    runSql(server.address(), "drop table KATALOG; commit;");
    CatalogWindow window(server.address());
    QString shown;
    test::acceptNextMessage(shown);
    window.choose("Action1");
    EXPECT_TRUE(shown.contains("KATALOG")) << shown.toStdString();
    EXPECT_EQ(TERForm, nullptr);
    EXPECT_EQ(window.form().Tag, 1);
    EXPECT_TRUE(window.form().Panel1->findChildren<TTERForm*>().isEmpty());
    ui::setScreenCursor(ui::ScreenCursor::Default);
}

TEST(Lifecycle, HoldsNoMoreMemoryHoweverOftenTheChoiceChanges) {
    CatalogWindow window(test::limitsServer);
    const auto round = [&](int number) {
        window.choose(number % 2 == 0 ? "Action1" : "Action4");
        TERForm->cxComboBox1->setCurrentIndex(4 + number % 4);
        TERForm->cxComboBox2->setCurrentIndex(number % 3);
        QCoreApplication::processEvents();
    };
    for (int number = 0; number < 20; ++number) {
        round(number);
    }
    const auto before = mallinfo2().uordblks;
    for (int number = 0; number < 60; ++number) {
        round(number);
    }
    EXPECT_LT(mallinfo2().uordblks, before + 100'000);
}

/// Clicks an export button; returns the message that follows and, after a blank line, the workbooks that are
/// new.
QString exportBy(const QString& button) {
    const QDir folder(base::programFolder());
    const QStringList before = folder.entryList(QDir::Files | QDir::Hidden);
    QString shown;
    test::acceptNextMessage(shown);
    auto* const clicked = TERForm->findChild<QPushButton*>(button);
    TERForm->cxPageControl1->setCurrentWidget(clicked->parentWidget()->parentWidget());
    QTest::mouseClick(clicked, Qt::LeftButton);
    QStringList added = folder.entryList(QDir::Files | QDir::Hidden);
    added.removeIf([&](const QString& name) { return before.contains(name) || name.endsWith(".log"); });
    for (const QString& name : added) {
        QFile::remove(folder.filePath(name));
    }
    return (shown + '|' + added.join('|'));
}

TEST(ExportButtons, NameTheFileAfterEditionTabRegionAndPeriod) {
    CatalogWindow window(test::limitsServer);
    window.choose("Action8");
    const std::map<QString, QString> expected{
        {"Button1", "_КТЦ_Материалы_В пределах202403"},
        {"Button2", "_КТЦ_Материалы_оглавление_В пределах202403"},
        {"Button3", "_КТЦ_Машины_В пределах202403"},
        {"Button4", "_КТЦ_Труд_В пределах202403"},
        {"Button5", "_Регионы"},
        {"Button6", "_Фирмы"},
        {"Button7", "_Региональные коэффициенты"},
        {"Button8", "_Каталог перевозка_В пределах202403"},
    };
    TERForm->cxGrid1->setFocus();
    EXPECT_EQ(exportBy("Button1"), "Выгрузка завершена|   ФЕР2020_КТЦ_Материалы_В пределах202403.xlsx");
    EXPECT_EQ(window.form().focusWidget(), &TERForm->cxGrid1->view())
        << "a click on the button leaves the focus in the table";
    for (const auto& [button, text] : expected) {
        EXPECT_EQ(exportBy(button), "Выгрузка завершена|   ФЕР2020" + text + ".xlsx");
    }

    struct Case {
        QString region, period, fileEnd; // an empty end: no file can have that name
    };
    const std::vector<Case> cases{
        {"Респ. Коми", "202403", "Респ"},   {" ", "ж:\"中", " ж:\"中"},
        {"В пределах", " ", "В пределах "}, {"Москва", "20.24", "Москва20"},
        {"а\\б", "202403", "а\\б202403"},   {"а/б", "202403", ""},
        {QString(255, u'ы'), "202403", ""},
    };
    for (const Case& texts : cases) {
        type(*TERForm->cxComboBox1, texts.region);
        type(*TERForm->cxComboBox2, texts.period);
        for (const auto& [button, text] : expected) {
            if (!text.endsWith("202403")) {
                continue;
            }
            const QString outcome = exportBy(button);
            if (!texts.fileEnd.isEmpty()) {
                const QString fixedText = text.left(text.lastIndexOf('_') + 1);
                EXPECT_EQ(outcome, "Выгрузка завершена|   ФЕР2020" + fixedText + texts.fileEnd + ".xlsx");
            } else {
                EXPECT_TRUE(outcome.contains(texts.region) && !outcome.contains("завершена") &&
                            outcome.endsWith('|'))
                    << outcome.toStdString();
            }
        }
    }
    for (const grid::Grid* control : TERForm->findChildren<grid::Grid*>()) {
        EXPECT_TRUE(control->isEnabled()) << control->objectName().toStdString();
    }
    QFile log(app::ErrorLog::path());
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    EXPECT_EQ(log.readAll().count(" Компонент Button3\r\n"), 2);
    EXPECT_EQ(ui::screenCursor(), ui::ScreenCursor::Default);
}

} // namespace
