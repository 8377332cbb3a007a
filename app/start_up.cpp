#include "app/start_up.h"

#include "app/cursor_table.h"
#include "app/main_form.h"
#include "app/xpm_resource.h"
#include "data/data_modul.h"
#include "ui/application.h"
#include "ui/fonts.h"
#include "ui/style.h"

#include <QIcon>
#include <QPixmap>

#include <clocale>
#include <cstdlib>
#include <cstring>
#include <exception>

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
    ui::Application::setWindowIcon(
        QPixmap::fromImage(app::readXpmResource(QStringLiteral(":/icon/tarvelo"))));
    ui::installFontSubstitutes();
    // Without its style the program looks plainer, no more; the failure has been shown.
    static_cast<void>(ui::trySetStyle(QStringLiteral("SLATECLASSICO")));

    app::CursorTable cursors;
    const app::RegisteredCursor dragCopy(cursors, dragCopyCursor, QStringLiteral(":/cursor/CAT_DRAG_COPY"));

    TDM dataModule;
    DM = &dataModule;
    TMainForm mainForm;
    return ui::Application::exec();
}

} // namespace

int run(int argc, char** argv) {
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
