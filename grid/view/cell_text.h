#pragma once

#include <QFont>
#include <QRect>
#include <QString>

class QPainter;

/// Wrapped text of cells and headers: measured and drawn by the same rules. Lines break between words and, in
/// a text of one word, after hyphens; what is wider than the cell then is cut with an ellipsis.
namespace grid::cellText {

/// Pixels between a cell's edge and its text.
inline constexpr int horizontalPadding = 4;
inline constexpr int verticalPadding = 2;

/// The height of a cell of `width` pixels that shows the whole of `text`, paddings included; at least one
/// line.
[[nodiscard]] int height(const QString& text, int width, const QFont& font);

/// Whether a word of `text` is wider than a cell of `width` pixels leaves room for.
[[nodiscard]] bool isCut(const QString& text, int width, const QFont& font);

/// Draws `text` into `cell` (outer edge, paddings inside) with the painter's font and pen; vertically at the
/// top. Occurrences of a search are marked by the half-open character range [markStart, markEnd).
void draw(QPainter& painter, const QRect& cell, const QString& text, Qt::Alignment horizontal,
          qsizetype markStart = 0, qsizetype markEnd = 0);

} // namespace grid::cellText
