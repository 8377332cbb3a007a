// SPDX-License-Identifier: MIT

#pragma once

#include "grid/text/text_matcher.h"

#include <QFont>
#include <QRect>
#include <QString>

#include <span>

class QPainter;

// Wrapped text of cells and headers: measured and drawn by the same rules. Lines break between words, a
// single word after its hyphens and points, and anywhere where nothing else helps. In a very narrow cell
// words are cut. A number never breaks, nor does a text that is a decimal one; where it is wider than the
// cell an ellipsis stands for the whole of it, since half a number is another one. Digits alone are a number
// only in a column of numbers: as a text they are a code.
namespace grid {

/// Pixels between a cell's left or right edge and its text.
inline constexpr int cellTextPaddingX = 4;
/// Pixels between a cell's upper or lower edge and its text.
inline constexpr int cellTextPaddingY = 2;

enum class CellKind : bool { Text, Number };

/// The height of a cell of `width` pixels that shows the whole of `text`, paddings included; at least one
/// line. For texts: a number takes one line.
[[nodiscard]] int cellTextHeight(const QString& text, int width, const QFont& font);

/// The width of a cell in which no line of `text` breaks, paddings included.
[[nodiscard]] int cellTextWidth(const QString& text, const QFont& font);

/// Whether a cell of `width` pixels has no room for a line of `text`, which is a number or has no place to
/// break.
[[nodiscard]] bool isCellTextCut(const QString& text, int width, const QFont& font,
                                 CellKind kind = CellKind::Text);

/// Draws `text` into `cell` (outer edge, paddings inside) with the painter's font and pen; vertically at the
/// top. `marks` are what a search has found, from left to right.
void drawCellText(QPainter& painter, const QRect& cell, const QString& text, Qt::Alignment horizontal,
                  std::span<const TextRange> marks = {}, CellKind kind = CellKind::Text);

} // namespace grid
