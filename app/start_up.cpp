#include "app/start_up.h"

#include "app/main_form.h"
#include "data/data_modul.h"
#include "ui/application.h"
#include "ui/cursor_table.h"
#include "ui/fonts.h"
#include "ui/style.h"

#include <QIcon>

/// The resources lie in a library, which does not register them by itself; the macro works only outside of
/// namespaces.
static void initResources() {
    Q_INIT_RESOURCE(resources);
}

namespace app {

namespace {

constexpr int dragCopyCursor = -23;

} // namespace

int run(int argc, char** argv) {
    initResources();
    ui::Application application(argc, argv);
    ui::Application::setWindowIcon(QIcon(QStringLiteral(":/icon/tarvelo")));
    ui::installFontSubstitutes();
    // Without its style the program looks plainer, no more; the failure has been shown.
    static_cast<void>(ui::trySetStyle(QStringLiteral("SLATECLASSICO")));

    ui::CursorTable cursors;
    const ui::RegisteredCursor dragCopy(cursors, dragCopyCursor, QStringLiteral(":/cursor/CAT_DRAG_COPY"));

    TDM dataModule;
    DM = &dataModule;
    TMainForm mainForm;
    mainForm.showMaximized();
    return ui::Application::exec();
}

} // namespace app
