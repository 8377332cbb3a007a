#pragma once

#include "app/edition_commands.h"
#include "browser/browser_host.h"
#include "ui/open_dialog.h"
#include "ui/status_bar.h"

#include <QAction>
#include <QFrame>
#include <QMenuBar>
#include <QToolBar>
#include <QWidget>

#include <array>
#include <exception>

class QActionGroup;

/// The main window: menu, edition tool bar, client panel for the catalog browser, and status bar.
class TMainForm final : public QWidget, public browser::BrowserHost {
    Q_OBJECT

public:
    /// Opens nothing. Throws FileError when the status bar's skin cannot be read.
    TMainForm();
    ~TMainForm() override;

    /// The open-browser marker: 0, or the number of the edition whose browser is open.
    int Tag = 0;

    QMenuBar* MainMenu1;
    QAction* N1;
    QToolBar* ActionToolBar1;
    QFrame* Panel1;
    ui::StatusBar* dxStatusBar1;
    QActionGroup* ActionList1;
    ui::OpenDialog* OpenDialog1;

    void N1Click(QObject& sender);
    void Action1Execute(QObject& sender);
    void Action4Execute(QObject& sender);
    void Action7Execute(QObject& sender);
    void Action8Execute(QObject& sender);
    void Action9Execute(QObject& sender);
    void ApplicationEvents1Hint(QObject& sender);
    void ApplicationEvents1Exception(QObject& sender, const std::exception& exception);
    void FormClose();

    [[nodiscard]] QWidget& clientPanel() override;
    void clearOpenBrowserMarker() override;

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void createMenu();
    void createToolBar();
    void createClientPanel();
    void createStatusBar();
    void openEdition(const data::Edition& edition);
};

/// The main window of the running program.
extern TMainForm* MainForm;
