// SPDX-License-Identifier: MIT

#include "grid/header/cut_text_tip.h"

#include <QHelpEvent>
#include <QToolTip>
#include <QWidget>

namespace grid {

void showCutTextTip(const QHelpEvent& event, QWidget& viewport, const QRect& cell, const QString& text,
                    CellKind kind) {
    if (isCellTextCut(text, cell.width(), viewport.font(), kind)) {
        // Rich text, as only that wraps in a tool tip; escaped, as the data is no markup.
        QString lines = text.toHtmlEscaped();
        lines.replace(u'\n', QStringLiteral("<br>"));
        QToolTip::showText(event.globalPos(), QStringLiteral("<p>%1</p>").arg(lines), &viewport, cell);
    } else {
        QToolTip::hideText();
    }
}

} // namespace grid
