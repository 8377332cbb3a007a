// SPDX-License-Identifier: MIT

#include "app/start_up.h"

#include "app/command_line.h"
#include "app/main_form.h"
#include "app/program_icon.h"
#include "app/style.h"
#include "app/xpm_resource.h"
#include "base/program_place.h"
#include "data/data_modul.h"
#include "ui/application.h"
#include "ui/fonts.h"

#include <QCursor>
#include <QPixmap>

#include <clocale>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <map>

#ifndef Q_OS_WIN
#include <langinfo.h>
#endif

/// The resources lie in a library, which does not register them by itself; the macro works only outside of
/// namespaces.
static void initResources() {
    Q_INIT_RESOURCE(resources);
}

namespace app {

namespace {

/// Without a UTF-8 locale the database's client library gives up where a path, such as the program's own, has
/// letters beyond ASCII.
void useUtf8() {
#ifndef Q_OS_WIN
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0) {
        std::setlocale(LC_CTYPE, "C.UTF-8");
    }
#endif
}

constexpr int dragCopyCursor = -23;

/// Everything that the running program consists of, from the style to the end of the message loop.
int runWindows() {
    ui::Application::setWindowIcon(programIcon());
    // By this name a desktop finds the menu entry that the window belongs to.
    ui::Application::setDesktopFileName(QStringLiteral("org.tarvelo.Tarvelo"));
    ui::installFontSubstitutes();
    ui::addFontsOf(base::programFolder() + QStringLiteral("fonts"));
    // Without its style the program looks plainer, no more; the failure has been shown.
    static_cast<void>(trySetStyle(QStringLiteral("SLATECLASSICO")));

    // The program's own cursors by their numbers, the hot spot at the upper left.
    const std::map<int, QCursor> cursors{
        {dragCopyCursor,
         QCursor(QPixmap::fromImage(readXpmResource(QStringLiteral(":/cursor/CAT_DRAG_COPY"))), 0, 0)}};

    TDM dataModule;
    DM = &dataModule;
    TMainForm mainForm;
    return ui::Application::exec();
}

} // namespace

int run(int argc, char** argv) {
    // There may be no display to start on.
    if (const std::optional<QString> answer = commandLineAnswer(argc, argv)) {
        return printText(*answer) ? EXIT_SUCCESS : EXIT_FAILURE;
    }
    initResources();
    // The menu belongs into the window; asking the desktop for a place elsewhere would hold up the start.
    ui::Application::setAttribute(Qt::AA_DontUseNativeMenuBar);
    ui::Application application(argc, argv);
    useUtf8();
    try {
        return runWindows();
    } catch (const std::exception& error) {
        // Before the main window stands there is nowhere to log to.
        ui::Application::showException(error);
        return EXIT_FAILURE;
    }
}

} // namespace app
