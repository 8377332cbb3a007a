// SPDX-License-Identifier: MIT

#pragma once

#include "app/command.h"
#include "app/open_dialog.h"
#include "app/status_bar.h"
#include "browser/browser_host.h"
#include "data/catalog_editions.h"
#include "ui/form.h"

#include <QFrame>
#include <QMenuBar>
#include <QWidget>

#include <exception>

class QActionGroup;

namespace app {
class ActionManager;
class ApplicationEvents;
class FlatToolBar;
} // namespace app

/// The main window: menu, edition tool bar, client panel for the catalog browser, and status bar.
class TMainForm final : public QWidget, public browser::BrowserHost {
    Q_OBJECT

public:
    /// Shows itself maximised; opens nothing. Throws base::ResourceError when the status bar's skin cannot be
    /// read.
    TMainForm();
    ~TMainForm() override;

    /// The open-browser marker: 0, or the number of the edition whose browser is open.
    int Tag = 0;

    QMenuBar* MainMenu1 = nullptr;
    app::Command* N1 = nullptr;
    app::StatusBar* dxStatusBar1 = nullptr;
    app::ApplicationEvents* ApplicationEvents1 = nullptr;
    QFrame* Panel1 = nullptr;
    app::OpenDialog* OpenDialog1 = nullptr;
    QActionGroup* ActionList1 = nullptr;
    app::Command* Action1 = nullptr;
    app::Command* Action4 = nullptr;
    app::Command* Action7 = nullptr;
    app::Command* Action8 = nullptr;
    app::Command* Action9 = nullptr;
    app::ActionManager* ActionManager1 = nullptr;
    app::FlatToolBar* ActionToolBar1 = nullptr;

    /// Asks for a server and connects to the catalog there; only the status bar tells the outcome.
    void N1Click(QObject& sender);
    /// The edition commands: close the browser of another edition, open or show that of their own. Throw what
    /// the database raises.
    void Action1Execute(QObject&) { openEdition(data::editionOf(1)); }
    void Action4Execute(QObject&) { openEdition(data::editionOf(4)); }
    void Action7Execute(QObject&) { openEdition(data::editionOf(7)); }
    void Action8Execute(QObject&) { openEdition(data::editionOf(8)); }
    /// Closes the browser; without one, the program.
    void Action9Execute(QObject& sender);
    /// Shows the application's hint in the status bar.
    void ApplicationEvents1Hint(QObject& sender);
    /// Logs and shows an exception; does nothing once the program ends. Throws base::FileError when the log
    /// fails.
    void ApplicationEvents1Exception(QObject& sender, const std::exception& exception);
    /// Closes the connection with the window; leaves `action` as it is. Throws db::DatabaseError.
    void FormClose(QObject& sender, ui::CloseAction& action);

    [[nodiscard]] QWidget& clientPanel() override { return *Panel1; }
    void clearOpenBrowserMarker() override;

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    struct NamedCommand;
    static const NamedCommand namedCommands[];

    void showEmpty();
    void createEvents();
    void createMenu();
    void createToolBar();
    void createCommands();
    /// Makes the command called Action and the number, and its button. `handler` is what it runs unless it
    /// has a named one.
    void createCommand(int number, const data::Edition::Words& words, app::Command::Handler handler);
    void createClientPanel();
    void createStatusBar();
    void layOut();
    void openEdition(const data::Edition& edition);
    void createBrowser(const data::Edition& edition);
    /// Checks the command of the edition whose browser is open, and no other.
    void checkOpenEdition();
};

/// The main window of the running program.
extern TMainForm* MainForm;
