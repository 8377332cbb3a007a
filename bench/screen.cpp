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

class PaintWatch final : public QObject {
public:
    explicit PaintWatch(QWidget& widget) { widget.installEventFilter(this); }

    [[nodiscard]] bool isPainted() const { return painted_; }

    bool eventFilter(QObject* watched, QEvent* event) override {
        painted_ = painted_ || event->type() == QEvent::Paint;
        return QObject::eventFilter(watched, event);
    }

private:
    bool painted_ = false;
};

void waitForServer() {
    const auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!x11) {
        throw std::runtime_error("painting is measured under X11 only");
    }
    XSync(x11->display(), False);
}

} // namespace

double timeUntilPainted(QWidget& widget, const std::function<void()>& action) {
    settle();
    PaintWatch watch(widget);
    return timeOf([&] {
        action();
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

void settle() {
    QCoreApplication::processEvents();
    waitForServer();
    QCoreApplication::processEvents();
}

} // namespace bench
