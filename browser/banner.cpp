// SPDX-License-Identifier: MIT

#include "browser/banner.h"

#include <QPainter>

namespace browser {

void Banner::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(backgroundRole()));
    painter.setPen(palette().color(QPalette::Light));
    painter.drawText(rect().translated(-1, -1), static_cast<int>(alignment()), text());
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(rect(), static_cast<int>(alignment()), text());
}

} // namespace browser
