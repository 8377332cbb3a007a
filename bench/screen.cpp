// SPDX-License-Identifier: MIT

#include "bench/screen.h"

#include "bench/measure.h"

#include <QElapsedTimer>
#include <QEvent>
#include <QGuiApplication>

#include <X11/Xlib.h>

#include <stdexcept>

namespace bench {

namespace {

constexpr int patience = 10'000;

} // namespace

bool PaintWatch::eventFilter(QObject* watched, QEvent* event) {
    painted_ = painted_ || event->type() == QEvent::Paint;
    return QObject::eventFilter(watched, event);
}

double timeUntilPainted(QWidget& widget, const std::function<void()>& action) {
    settle();
    return timeOf([&] {
        action();
        const PaintWatch watch(widget);
        QElapsedTimer waited;
        waited.start();
        while (!watch.isPainted()) {
            QCoreApplication::processEvents();
            if (waited.elapsed() > patience) {
                throw std::runtime_error("nothing has been painted");
            }
        }
        waitForServer();
    });
}

void waitForServer() {
    const auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!x11) {
        throw std::runtime_error("painting is measured under X11 only");
    }
    XSync(x11->display(), False);
}

void settle() {
    QCoreApplication::processEvents();
    waitForServer();
    QCoreApplication::processEvents();
}

} // namespace bench
