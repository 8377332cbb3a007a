// SPDX-License-Identifier: MIT

#include "ui/screen_cursor.h"

#include <QCursor>
#include <QGuiApplication>

namespace ui {

void setScreenCursor(ScreenCursor cursor) {
    if (cursor == screenCursor()) {
        return;
    }
    if (cursor == ScreenCursor::Hourglass) {
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    } else {
        QGuiApplication::restoreOverrideCursor();
    }
}

ScreenCursor screenCursor() {
    return QGuiApplication::overrideCursor() ? ScreenCursor::Hourglass : ScreenCursor::Default;
}

} // namespace ui
