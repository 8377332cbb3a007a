#include "grid/cut_text_tip.h"

#include "grid/cell_text.h"

#include <QHelpEvent>
#include <QToolTip>
#include <QWidget>

namespace grid {

void showCutTextTip(const QHelpEvent& event, QWidget& viewport, const QRect& cell, const QString& text) {
    if (cellText::isCut(text, cell.width(), viewport.font())) {
        // As rich text it would wrap, but the data is no markup.
        QToolTip::showText(event.globalPos(), QStringLiteral("<p>%1</p>").arg(text.toHtmlEscaped()), &viewport, cell);
    } else {
        QToolTip::hideText();
    }
}

} // namespace grid
