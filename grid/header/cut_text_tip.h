// SPDX-License-Identifier: MIT

#pragma once

#include "grid/header/cell_text.h"

#include <QRect>

class QHelpEvent;
class QString;
class QWidget;

namespace grid {

/// Shows the whole text of the cell under the pointer in a tool tip where the cell is too narrow for one of
/// its words. `cell` is where the text is drawn, in `viewport`; the tip goes when the pointer leaves it.
void showCutTextTip(const QHelpEvent& event, QWidget& viewport, const QRect& cell, const QString& text,
                    CellKind kind = CellKind::Text);

} // namespace grid
