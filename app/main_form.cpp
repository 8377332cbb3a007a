// SPDX-License-Identifier: MIT

#include "app/main_form.h"

#include "app/action_manager.h"
#include "app/application_events.h"
#include "app/error_log.h"
#include "app/input_box.h"
#include "app/key_help.h"
#include "browser/ter_form.h"
#include "data/data_modul.h"
#include "ui/application.h"
#include "ui/fonts.h"
#include "ui/screen_cursor.h"
#include "ui/tight_layout.h"

#include <QAccessibleWidget>
#include <QAction>
#include <QActionGroup>
#include <QCloseEvent>
#include <QScopeGuard>
#include <QScreen>
#include <QStatusTipEvent>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <functional>
#include <ranges>

TMainForm* MainForm = nullptr;

namespace {

constexpr QSize designSize(966, 642);
constexpr int toolBarHeight = 23;
constexpr int statusBarHeight = 20;
constexpr int browserMargin = 3;

constexpr int closeCommand = 9;
constexpr data::Edition::Words closeWords{.caption = u"Закрыть", .buttonCaption = u"Закрыть", .hint = u""};
static_assert(std::ranges::none_of(data::editions, [](const data::Edition& edition) {
    return edition.number == 0 || edition.number == closeCommand;
}));

constexpr int connectionPanel = 0;
constexpr int hintPanel = 1;

const QColor connectedColor(0, 128, 0);
const QColor notConnectedColor(255, 0, 0);
const QColor hintColor(128, 0, 0);
const QColor statusBarColor(128, 0, 128);

constexpr app::OpenDialog::Options openDialogOptions =
    app::OpenDialog::HideReadOnly | app::OpenDialog::PathMustExist | app::OpenDialog::FileMustExist |
    app::OpenDialog::ShareAware | app::OpenDialog::EnableSizing;

/// Qt takes a window that is a plain widget for a container.
QAccessibleInterface* accessibleWindow(const QString& className, QObject* object) {
    return object && className == QStringLiteral("TMainForm")
               ? new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::Window)
               : nullptr;
}

QString tahoma() {
    return QStringLiteral("Tahoma");
}

QString commandName(int number) {
    return QStringLiteral("Action%1").arg(number);
}

/// Any failure is told by the result alone: the status bar is all that a failed connection shows.
bool connectToCatalog(const QString& server) {
    try {
        DM->connectTo(server);
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

} // namespace

/// A command that code reaches by its name, and the handler that it runs.
struct TMainForm::NamedCommand {
    int number;
    app::Command* TMainForm::*member;
    void (TMainForm::*handler)(QObject& sender);
};

const TMainForm::NamedCommand TMainForm::namedCommands[]{
    {1, &TMainForm::Action1, &TMainForm::Action1Execute},
    {4, &TMainForm::Action4, &TMainForm::Action4Execute},
    {7, &TMainForm::Action7, &TMainForm::Action7Execute},
    {8, &TMainForm::Action8, &TMainForm::Action8Execute},
    {closeCommand, &TMainForm::Action9, &TMainForm::Action9Execute},
};

TMainForm::TMainForm() {
    setObjectName(QStringLiteral("MainForm"));
    QAccessible::installFactory(accessibleWindow);
    showEmpty();
    createEvents();
    OpenDialog1 = new app::OpenDialog(QStringLiteral("OpenDialog1"), QStringLiteral("Открыть базу данных"),
                                      QStringLiteral("BAZAKATALOG.FDB"), openDialogOptions, this);
    createMenu();
    createToolBar();
    createCommands();
    createClientPanel();
    createStatusBar();
    layOut();
    MainForm = this;
}

TMainForm::~TMainForm() {
    MainForm = nullptr;
}

void TMainForm::showEmpty() {
    setWindowTitle(QStringLiteral("Tarvelo"));
    setFont(ui::pixelFont(tahoma(), 11));
    QPalette white = palette();
    white.setColor(QPalette::Window, Qt::white);
    setPalette(white);
    resize(designSize);
    move(screen()->availableGeometry().center() - QRect(QPoint(), designSize).center());
    // The window manager gives the window its place and size while its parts are being made.
    showMaximized();
}

void TMainForm::createEvents() {
    ApplicationEvents1 = new app::ApplicationEvents(
        QStringLiteral("ApplicationEvents1"),
        {.exceptionRaised =
             [this](QObject& sender, const std::exception& exception) {
                 ApplicationEvents1Exception(sender, exception);
             },
         .hintChanged = [this](QObject& sender) { ApplicationEvents1Hint(sender); }},
        this);
}

void TMainForm::createMenu() {
    MainMenu1 = new QMenuBar(this);
    MainMenu1->setObjectName(QStringLiteral("MainMenu1"));
    MainMenu1->setPalette(QApplication::palette());
    MainMenu1->setFont(ui::fixedTextFont(tahoma(), 11));
    const QString caption = QStringLiteral("Открыть базу данных");
    N1 = new app::Command(QStringLiteral("N1"), caption, caption, std::bind_front(&TMainForm::N1Click, this),
                          *this, this);
    MainMenu1->addAction(N1);
    auto* const keys = new QAction(QStringLiteral("Клавиши…"), this);
    keys->setShortcut(Qt::Key_F1);
    connect(keys, &QAction::triggered, this, [this] { app::showKeyHelp(this); });
    addAction(keys);
    setContextMenuPolicy(Qt::ActionsContextMenu);
}

void TMainForm::createToolBar() {
    ActionToolBar1 = new app::FlatToolBar(this);
    ActionToolBar1->setObjectName(QStringLiteral("ActionToolBar1"));
    ActionToolBar1->setFixedHeight(toolBarHeight);
    QPalette colors = MainMenu1->palette();
    colors.setColor(QPalette::ButtonText, Qt::black);
    colors.setColor(QPalette::Disabled, QPalette::ButtonText, QColor(109, 109, 109));
    colors.setColor(QPalette::Base, Qt::white);
    colors.setColor(QPalette::Highlight, Qt::white);
    colors.setColor(QPalette::HighlightedText, Qt::black);
    ActionToolBar1->setPalette(colors);
    ActionToolBar1->hide();
}

void TMainForm::createCommands() {
    ActionList1 = new QActionGroup(this);
    ActionList1->setObjectName(QStringLiteral("ActionList1"));
    ActionList1->setExclusionPolicy(QActionGroup::ExclusionPolicy::None);
    ActionManager1 =
        new app::ActionManager(QStringLiteral("ActionManager1"), QStringLiteral("Platform Default"),
                               *ActionList1, *ActionToolBar1, this);
    for (const data::Edition& edition : data::editions) {
        createCommand(edition.number, edition.words, [this, &edition](QObject&) { openEdition(edition); });
    }
    ActionToolBar1->addSeparator();
    createCommand(closeCommand, closeWords, {});
}

void TMainForm::createCommand(int number, const data::Edition::Words& words, app::Command::Handler handler) {
    const auto* const named = std::ranges::find(namedCommands, number, &NamedCommand::number);
    const bool isNamed = named != std::end(namedCommands);
    if (isNamed) {
        handler = std::bind_front(named->handler, this);
    }
    auto* const command =
        new app::Command(commandName(number), words.caption.toString(), words.hint.toString(),
                         std::move(handler), *ActionToolBar1, ActionList1);
    command->setCheckable(number != closeCommand);
    if (isNamed) {
        this->*named->member = command;
    }
    ActionManager1->addButton(*command, words.buttonCaption.toString());
}

void TMainForm::createClientPanel() {
    Panel1 = new QFrame(this);
    Panel1->setObjectName(QStringLiteral("Panel1"));
    Panel1->setFrameShape(QFrame::NoFrame);
    Panel1->setAutoFillBackground(true);
    auto* const layout = new QVBoxLayout(Panel1);
    layout->setContentsMargins(browserMargin, browserMargin, browserMargin, browserMargin);
}

void TMainForm::createStatusBar() {
    const std::array<app::TextPanelSpec, 2> panels{{
        {"ConnectionPanel", 200, connectedColor},
        {"HintPanel", 0, hintColor},
    }};
    dxStatusBar1 = new app::StatusBar(QStringLiteral("dxStatusBar1"), statusBarHeight, panels,
                                      ui::fixedTextFont(tahoma(), 13, true), statusBarColor,
                                      app::loadSkin(QStringLiteral("DEFAULTUSERSKINDATA")), this);
}

void TMainForm::layOut() {
    auto* const layout = ui::makeTightLayout<QVBoxLayout>(this);
    layout->setMenuBar(MainMenu1);
    layout->addWidget(ActionToolBar1);
    layout->addWidget(Panel1, 1);
    layout->addWidget(dxStatusBar1);
}

void TMainForm::N1Click(QObject&) {
    const QString server =
        app::inputBox(this, QStringLiteral("Сервер базы данных"), QStringLiteral("Введите IP сервера"),
                      QString::fromLatin1(localServer));
    const bool connected = connectToCatalog(server);
    dxStatusBar1->setFontColor(connectionPanel, connected ? connectedColor : notConnectedColor);
    dxStatusBar1->setText(connectionPanel, connected ? QStringLiteral("База FB подключена")
                                                     : QStringLiteral("База FB не подключена"));
    if (connected) {
        ActionToolBar1->show();
        if (!TERForm) {
            ActionToolBar1->focusFirstButton();
        }
    }
}

void TMainForm::openEdition(const data::Edition& edition) {
    const auto check = qScopeGuard([this] { checkOpenEdition(); });
    if (Tag != 0 && Tag != edition.number) {
        Action9->execute();
    }
    ui::Application::processMessages();
    if (!TERForm) {
        ui::setScreenCursor(ui::ScreenCursor::Hourglass);
        Tag = edition.number;
        createBrowser(edition);
        TERForm->cxLabel1->setText(QStringLiteral("   ") + edition.words.caption.toString());
    }
    TERForm->show();
    TERForm->raise();
}

void TMainForm::createBrowser(const data::Edition& edition) {
    try {
        DM->chooseEdition(edition);
        TTERForm::create(*this);
    } catch (...) {
        const std::exception_ptr reason = std::current_exception();
        try {
            // No browser is there to do it when it closes.
            DM->releaseQueries();
        } catch (const db::DatabaseError&) {
            // The first error is the one to tell.
        }
        std::rethrow_exception(reason);
    }
}

void TMainForm::checkOpenEdition() {
    const QString open = TERForm ? commandName(Tag) : QString();
    for (QAction* command : ActionList1->actions()) {
        command->setChecked(command->objectName() == open);
    }
}

void TMainForm::clearOpenBrowserMarker() {
    Tag = 0;
    checkOpenEdition();
}

void TMainForm::Action9Execute(QObject&) {
    if (Tag == 0) {
        close();
        return;
    }
    const std::vector<ui::Form*> forms = ui::Form::all();
    for (ui::Form* form : forms | std::views::reverse) {
        form->closeForm();
    }
}

void TMainForm::ApplicationEvents1Hint(QObject&) {
    dxStatusBar1->setText(hintPanel, ui::application().hint());
}

void TMainForm::ApplicationEvents1Exception(QObject& sender, const std::exception& exception) {
    if (ui::application().isTerminating()) {
        return;
    }
    app::ErrorLog log;
    log.append(app::errorLine(QDateTime::currentDateTime(), exception, sender.objectName()));
    ui::Application::showException(exception);
}

void TMainForm::FormClose(QObject&, ui::CloseAction&) {
    if (DM->pFIBDatabase1.isConnected()) {
        DM->pFIBDatabase1.close();
    }
}

bool TMainForm::event(QEvent* event) {
    if (event->type() == QEvent::StatusTip) {
        ui::application().setHint(static_cast<QStatusTipEvent*>(event)->tip());
        return true;
    }
    return QWidget::event(event);
}

void TMainForm::closeEvent(QCloseEvent* event) {
    ui::CloseAction action = ui::CloseAction::Free;
    ui::guarded(*this, [&] { FormClose(*this, action); });
    event->setAccepted(action == ui::CloseAction::Free);
    ui::application().setTerminating(event->isAccepted());
}
