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
    return QGuiApplication::overrideCursor() == nullptr ? ScreenCursor::Default : ScreenCursor::Hourglass;
}

NestedHourglass::NestedHourglass() {
    if (count_++ == 0) {
        saved_ = screenCursor();
        setScreenCursor(ScreenCursor::Hourglass);
    }
}

NestedHourglass::~NestedHourglass() {
    if (--count_ == 0) {
        setScreenCursor(saved_);
    }
}

} // namespace ui
