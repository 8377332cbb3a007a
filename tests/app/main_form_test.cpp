// SPDX-License-Identifier: MIT

#include "app/action_manager.h"
#include "app/error_log.h"
#include "app/main_form.h"
#include "app/xpm_resource.h"
#include "base/error.h"
#include "browser/ter_form.h"
#include "data/data_modul.h"
#include "support/firebird_server.h"
#include "support/printing.h"
#include "support/waiting.h"
#include "ui/application.h"

#include <QAccessible>
#include <QActionGroup>
#include <QDir>
#include <QInputDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QWindow>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using test::NextMessage;

class MainFormTest : public testing::Test {
protected:
    MainFormTest() {
        DM = &module_;
        QFile::remove(app::ErrorLog::path());
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&form_));
    }
    ~MainFormTest() override { QFile::remove(app::ErrorLog::path()); }

    /// Runs the menu command and answers its input box by OK, or by Cancel where `server` is null.
    void connectTo(const QString& server) {
        const test::NextDialog inputBox([&](QDialog& dialog) {
            caption_ = dialog.windowTitle();
            prompt_ = qobject_cast<QInputDialog*>(&dialog)->labelText();
            auto* const edit = dialog.findChild<QLineEdit*>();
            preset_ = edit->text();
            buttons_ = buttonsOf(dialog);
            if (server.isNull()) {
                QTest::keyClick(edit, Qt::Key_Escape);
                return;
            }
            edit->selectAll();
            QTest::keyClick(edit, Qt::Key_Delete);
            edit->insert(server);
            QTest::keyClick(edit, Qt::Key_Return);
        });
        form_.N1->trigger();
    }

    /// The captions of a dialog's buttons.
    [[nodiscard]] static QStringList buttonsOf(const QDialog& dialog) {
        QStringList captions;
        for (const QPushButton* button : dialog.findChildren<QPushButton*>()) {
            captions += button->text().remove('&');
        }
        return captions;
    }

    [[nodiscard]] QLabel& panel(const QString& name) const {
        return *form_.dxStatusBar1->findChild<QLabel*>(name);
    }

    /// Text, colour and what the tool bar does, after an attempt to connect.
    [[nodiscard]] QString outcome() const {
        return panel("ConnectionPanel").text() + ' ' +
               panel("ConnectionPanel").palette().color(QPalette::WindowText).name() +
               (form_.ActionToolBar1->isVisible() ? " tool bar" : "");
    }

    [[nodiscard]] static QStringList logLines() {
        QFile file(app::ErrorLog::path());
        return file.open(QIODevice::ReadOnly) ? QString::fromLocal8Bit(file.readAll()).split("\r\n")
                                              : QStringList();
    }

    TDM module_;
    TMainForm form_;
    QString caption_, prompt_, preset_;
    QStringList buttons_;
};

TEST(XpmResource, IsReadOrRefused) {
    EXPECT_FALSE(app::readXpmResource(":/cursor/CAT_DRAG_COPY").isNull());
    EXPECT_THROW(static_cast<void>(app::readXpmResource(":/cursor/NONE")), base::ResourceError);
}

TEST_F(MainFormTest, ConnectsAndReportsTheOutcomeOnly) {
    EXPECT_EQ(form_.MainMenu1->actions(), QList<QAction*>({form_.N1}));
    EXPECT_EQ(outcome(), " #008000");
    connectTo("127.0.0.99");
    EXPECT_EQ(QStringList({caption_, prompt_, preset_}),
              QStringList({"Сервер базы данных", "Введите IP сервера", "127.0.0.1"}));
    EXPECT_EQ(buttons_, QStringList({"OK", "Отмена"}));
    EXPECT_EQ(outcome(), "База FB не подключена #ff0000");
    connectTo(test::sampleServer);
    EXPECT_EQ(outcome(), "База FB подключена #008000 tool bar");
    EXPECT_EQ(form_.focusWidget()->accessibleName(), "ТЕР");
    connectTo(test::sampleServer);
    EXPECT_EQ(outcome(), "База FB подключена #008000 tool bar");
    connectTo(test::limitsServer);
    EXPECT_EQ(outcome(), "База FB не подключена #ff0000 tool bar") << "the old connection stays";
    EXPECT_TRUE(module_.pFIBDatabase1.isConnected());
    module_.pFIBDatabase1.close();
    connectTo({});
    EXPECT_EQ(module_.pFIBDatabase1.databaseName(), TDM::databaseNameOn("127.0.0.1"))
        << "Cancel gives the preset text";
    EXPECT_EQ(logLines(), QStringList());
}

TEST_F(MainFormTest, LogsOneLineForAnErrorAndShowsIt) {
    const NextMessage first;
    ui::application().handleException(*form_.Panel1, db::DatabaseError("первая"));
    EXPECT_EQ(first.text(), "первая");
    const NextMessage second;
    ui::application().handleException(ui::application(), std::runtime_error("вторая\r\nв две строки\n"));

    const QStringList lines = logLines();
    ASSERT_EQ(lines.size(), 3);
    const QString time = "^.+ \\d{1,2}:\\d{2}:\\d{2}( [AP]M)?";
    EXPECT_TRUE(
        QRegularExpression(time + ":DatabaseError:первая Компонент Panel1$").match(lines[0]).hasMatch())
        << lines[0].toStdString();
    EXPECT_TRUE(QRegularExpression(time + ":runtime_error:вторая в две строки Компонент $")
                    .match(lines[1])
                    .hasMatch())
        << lines[1].toStdString();
    EXPECT_EQ(lines[2], "");

    const QDate date(2024, 3, 5);
    const QLocale russian(QLocale::Russian);
    EXPECT_EQ(app::defaultDateTimeText({date, QTime(7, 8, 9)}, russian), "05.03.2024 07:08:09");
    EXPECT_EQ(app::defaultDateTimeText({date, QTime(0, 0)}, russian), "05.03.2024");
}

TEST_F(MainFormTest, KeepsALongNameWithinItsMessageBox) {
    const QString path = "/каталог" + QString(400, u'ы') + ".xlsx";
    int width = 0;
    const test::NextDialog box([&](QDialog& dialog) {
        width = dialog.width();
        dialog.reject();
    });
    ui::application().handleException(form_, base::Error(path));
    EXPECT_GT(width, 0);
    EXPECT_LT(width, form_.screen()->availableGeometry().width());
    EXPECT_TRUE(logLines().value(0).contains(path)) << "whole in the log";
}

TEST_F(MainFormTest, LogsWhatTheHandlingOfAnEventThrows) {
    class Failing final : public QObject {
        bool event(QEvent*) override { throw base::Error("из обработчика"); }
    } failing;
    failing.setObjectName("failing");
    const NextMessage shown;
    QEvent event(QEvent::User);
    QCoreApplication::sendEvent(&failing, &event);
    EXPECT_EQ(shown.text(), "из обработчика");
    EXPECT_TRUE(logLines().value(0).endsWith(":Error:из обработчика Компонент failing"));
}

TEST_F(MainFormTest, ShowsThatTheLogCannotBeWritten) {
    ASSERT_TRUE(QDir().mkdir(app::ErrorLog::path()));
    const NextMessage shown;
    ui::application().handleException(form_, base::Error("скрытая"));
    EXPECT_TRUE(shown.text().contains(app::ErrorLog::path()) && !shown.text().contains("скрытая"))
        << shown.text().toStdString();
    QDir().rmdir(app::ErrorLog::path());
}

TEST_F(MainFormTest, ReportsALostServerAndConnectsAnew) {
    const test::FirebirdServer server("127.0.0.6", test::limitsCatalog);
    connectTo(server.address());
    form_.Action1Execute(form_);
    server.kill();
    const NextMessage shown;
    form_.findChild<QAction*>("Action4")->trigger();
    EXPECT_NE(shown.text(), "");
    ASSERT_EQ(logLines().size(), 2);
    EXPECT_TRUE(logLines()[0].contains(":DatabaseError:") &&
                logLines()[0].endsWith(" Компонент ActionToolBar1"));
    EXPECT_EQ(TERForm, nullptr);
    EXPECT_EQ(form_.Tag, 4);

    server.start();
    connectTo(server.address());
    EXPECT_EQ(outcome(), "База FB подключена #008000 tool bar");
    form_.findChild<QAction*>("Action4")->trigger();
    EXPECT_NE(TERForm, nullptr);

    // Whether the client notices, and so a message comes, depends on when the system reports the broken pipe.
    server.kill();
    QTimer closer;
    closer.callOnTimeout([] {
        if (auto* const message = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
            message->accept();
        }
    });
    closer.start(5);
    EXPECT_TRUE(form_.close());
    EXPECT_FALSE(form_.isVisible());
    EXPECT_FALSE(module_.pFIBDatabase1.isConnected());
    EXPECT_TRUE(ui::application().isTerminating());
    ui::application().setTerminating(false);
}

TEST_F(MainFormTest, LeavesAnOpenBrowserAloneWhenItConnectsAgain) {
    connectTo(test::limitsServer);
    QApplication::setActiveWindow(&form_);
    form_.Action1Execute(form_);
    const QWidget* const focused = form_.focusWidget();
    const int rows = module_.pFIBDataSet3.rowCount();
    ASSERT_GT(rows, 0);
    for (const char* server : {test::limitsServer, test::sampleServer}) {
        connectTo(server);
        EXPECT_EQ(outcome(), server == test::limitsServer ? "База FB подключена #008000 tool bar"
                                                          : "База FB не подключена #ff0000 tool bar");
        EXPECT_EQ(form_.focusWidget(), focused);
        EXPECT_EQ(module_.pFIBDataSet3.rowCount(), rows);
        EXPECT_TRUE(module_.RFIBTransaction.isActive());
    }
    module_.pFIBDataSet3.reopenLocate("ID");
    EXPECT_EQ(module_.pFIBDataSet3.rowCount(), rows);
}

TEST_F(MainFormTest, EndsAfterTheMessageWhereItsClosingFails) {
    connectTo(test::sampleServer);
    form_.Action1Execute(form_);
    QObject::connect(&module_.pFIBDataSet5, &db::DataSet::aboutToReset, &form_,
                     [] { throw db::DatabaseError("на полпути"); });
    const NextMessage shown;
    EXPECT_TRUE(form_.close());
    EXPECT_EQ(shown.text(), "на полпути");
    EXPECT_FALSE(form_.isVisible());
    EXPECT_TRUE(ui::application().isTerminating());
    ui::application().handleException(form_, base::Error("слишком поздно"));
    ui::application().setTerminating(false);
    EXPECT_EQ(logLines().size(), 2) << "nothing is logged or shown while the program ends";
    EXPECT_TRUE(logLines().value(0).endsWith(":DatabaseError:на полпути Компонент MainForm"));
}

TEST_F(MainFormTest, ShowsHintsAndTheKeyboardState) {
    connectTo(test::sampleServer);
    QApplication::processEvents();
    const auto buttons = form_.ActionToolBar1->findChildren<QToolButton*>();
    QStringList seen;
    for (QToolButton* button : buttons) {
        if (!button->accessibleName().isEmpty()) {
            QTest::mouseMove(button);
            QApplication::processEvents();
            seen += button->text() + '=' + panel("HintPanel").text();
        }
    }
    EXPECT_EQ(seen.join(", "), "ТЕР=Тип ТЕР, ФЕР20&14И2=Тип ФЕР2014И2, ФЕР2017И&5=Тип ФЕР2017И5, "
                               "ФЕР&2020=Тип ФЕР2020, Закрыть=");
    EXPECT_EQ(form_.N1->statusTip(), "Открыть базу данных");

    EXPECT_EQ(panel("dxStatusBar1Insert").text(), "INS");
    QTest::keyClick(form_.windowHandle(), Qt::Key_Insert);
    EXPECT_EQ(panel("dxStatusBar1Insert").text(), "OVR");
    QTest::keyClick(form_.windowHandle(), Qt::Key_Insert, Qt::KeypadModifier);
    EXPECT_EQ(panel("dxStatusBar1Insert").text(), "INS");
    QTest::keyClick(form_.windowHandle(), Qt::Key_Insert, Qt::ShiftModifier);
    EXPECT_EQ(panel("dxStatusBar1Insert").text(), "INS") << "that pastes";
}

TEST_F(MainFormTest, OpensEditionsByEveryKeyThatPressesAButton) {
    connectTo(test::limitsServer);
    QApplication::setActiveWindow(&form_);
    const auto buttons = form_.ActionToolBar1->findChildren<QToolButton*>();
    const auto buttonOf = [&](const QString& caption) {
        return *std::ranges::find(buttons, caption, &QToolButton::accessibleName);
    };
    struct Press {
        const char* caption = nullptr;
        Qt::Key key = {};
        Qt::KeyboardModifiers modifiers;
        int edition = 0;
    };
    for (const Press& press : {Press{"ТЕР", Qt::Key_Return, Qt::NoModifier, 1},
                               {"ФЕР2014И2", Qt::Key_1, Qt::AltModifier, 4},
                               {"ФЕР2017И5", Qt::Key_Space, Qt::NoModifier, 7},
                               {"ФЕР2020", Qt::Key_2, Qt::AltModifier, 8},
                               {"Закрыть", Qt::Key_Enter, Qt::KeypadModifier, 0}}) {
        QToolButton* const button = buttonOf(press.caption);
        button->setFocus();
        QTest::keyClick(press.modifiers == Qt::AltModifier ? static_cast<QWidget*>(&form_) : button,
                        press.key, press.modifiers);
        // A button that is pressed by its accelerator stays down for a moment.
        EXPECT_TRUE(QTest::qWaitFor([&] { return form_.Tag == press.edition; })) << press.caption;
        const auto marked = std::ranges::count(buttons, "Открыт", &QToolButton::accessibleDescription);
        EXPECT_EQ(marked, press.edition == 0 ? 0 : 1);
        EXPECT_EQ(button->accessibleDescription(), press.edition == 0 ? "" : "Открыт");
    }
    EXPECT_GE(form_.minimumSizeHint().width(), form_.ActionToolBar1->sizeHint().width());
}

TEST_F(MainFormTest, ShowsAllKeysOnOnePage) {
    QStringList seen;
    const test::NextDialog help([&](QDialog& dialog) {
        seen = buttonsOf(dialog) + QStringList(dialog.windowTitle());
        dialog.reject();
    });
    QTest::keyClick(&form_, Qt::Key_F1);
    EXPECT_EQ(seen, QStringList({"Закрыть", "Клавиши"}));
}

TEST_F(MainFormTest, HasTheSizesAndCommandsOfItsDesign) {
    EXPECT_TRUE(form_.isMaximized());
    EXPECT_EQ(form_.ActionToolBar1->height(), 23);
    EXPECT_EQ(form_.dxStatusBar1->height(), 20);
    EXPECT_EQ(form_.ActionList1->actions().size(), data::editions.size() + 1);
    EXPECT_FALSE(panel("dxStatusBar1ScrollLock").isVisible());
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&form_)->role(), QAccessible::Window);
}

} // namespace
