// SPDX-License-Identifier: MIT

// Preloaded into an unchanged Qt program: tells when its first maximised window is on screen, and ends the
// program. Standard output then holds the steady clock in nanoseconds.
#include <QApplication>
#include <QEvent>
#include <QScreen>
#include <QTimer>
#include <QWidget>

#include <X11/Xlib.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace {

/// Whether the window has grown to the screen; before that the window manager has not had its say yet.
bool fillsScreen(const QWidget& window) {
    constexpr double share = 0.9;
    const QSize whole = window.screen()->size();
    return window.width() >= share * whole.width() && window.height() >= share * whole.height();
}

class StartWatch final : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && watched->isWidgetType()) {
            auto* const window = static_cast<QWidget*>(watched);
            if (window->isWindow() && fillsScreen(*window)) {
                // By then all parts of the window are painted and have been handed to the X server.
                QTimer::singleShot(0, this, &StartWatch::finish);
            }
        }
        return false;
    }

private:
    static void finish() {
        XSync(qApp->nativeInterface<QNativeInterface::QX11Application>()->display(), False);
        const auto now = std::chrono::steady_clock::now().time_since_epoch();
        std::printf("%lld\n", static_cast<long long>(
                                  std::chrono::duration_cast<std::chrono::nanoseconds>(now).count()));
        std::fflush(stdout);
        std::_Exit(0);
    }
};

void install() {
    qApp->installEventFilter(new StartWatch(qApp));
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(install)
