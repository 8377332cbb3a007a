// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>
#include <QWidget>

#include <functional>

namespace bench {

/// Notes whether a widget is painted from now on.
class PaintWatch final : public QObject {
public:
    explicit PaintWatch(QWidget& widget) { widget.installEventFilter(this); }

    [[nodiscard]] bool isPainted() const { return painted_; }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool painted_ = false;
};

/// Milliseconds from the start of `action` until `widget` has been painted after its end and the X server has
/// drawn it. Throws std::runtime_error when nothing is painted within ten seconds.
[[nodiscard]] double timeUntilPainted(QWidget& widget, const std::function<void()>& action);

/// Waits until the X server has drawn what has been painted.
void waitForServer();

/// Handles events until there are none left, and waits for the X server.
void settle();

} // namespace bench
