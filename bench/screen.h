#pragma once

#include <QWidget>

#include <functional>

namespace bench {

/// Milliseconds from the start of `action` until `widget` has been painted and the X server has drawn it.
/// Throws std::runtime_error when nothing is painted within ten seconds.
[[nodiscard]] double timeUntilPainted(QWidget& widget, const std::function<void()>& action);

/// Handles events until there are none left, and waits for the X server.
void settle();

} // namespace bench
