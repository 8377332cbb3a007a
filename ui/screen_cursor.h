// SPDX-License-Identifier: MIT

#pragma once

#include <QtGlobal>

namespace ui {

enum class ScreenCursor { Default, Hourglass };

/// The cursor that is shown everywhere on the program's windows.
void setScreenCursor(ScreenCursor cursor);
[[nodiscard]] ScreenCursor screenCursor();

/// Shows the hourglass and, when it goes, another cursor: the one from before unless it is told which. Such
/// objects may live within each other.
class Hourglass final {
public:
    explicit Hourglass(ScreenCursor afterwards = screenCursor()) : afterwards_(afterwards) {
        setScreenCursor(ScreenCursor::Hourglass);
    }
    ~Hourglass() { setScreenCursor(afterwards_); }
    Q_DISABLE_COPY_MOVE(Hourglass)

private:
    ScreenCursor afterwards_;
};

} // namespace ui
