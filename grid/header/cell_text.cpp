// SPDX-License-Identifier: MIT

#include "grid/header/cell_text.h"

#include <QFontMetrics>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>
#include <vector>

namespace grid {

namespace {

constexpr QRgb markColor = qRgb(255, 224, 102);

/// Line breaks of the data break the line, other control characters are shown by their pictures (U+2400 and
/// on). Every character stays one character, so that ranges in `text` stay right.
QString printable(const QString& text) {
    constexpr char16_t pictures = 0x2400;
    constexpr char16_t deleteCharacter = 0x7F;
    constexpr char16_t deletePicture = 0x2421;
    QString result = text;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t character = text[i].unicode();
        if (character == deleteCharacter) {
            result[i] = QChar(deletePicture);
        }
        if (character >= u' ') {
            continue;
        }
        const bool endsLine = character == u'\n' || (character == u'\r' && text.mid(i + 1, 1) != u"\n");
        result[i] = endsLine             ? QChar(QChar::LineSeparator)
                    : character == u'\r' ? QChar(u' ')
                    : character == u'\t' ? QChar(u' ')
                                         : QChar(static_cast<char16_t>(pictures + character));
    }
    return result;
}

bool fitsOneLine(const QString& text, int width, const QFontMetrics& metrics) {
    return !text.contains(QChar::LineSeparator) && metrics.horizontalAdvance(text) <= width;
}

/// Whether half of a text would be another number: it has digits and one decimal sign.
bool isDecimal(const QString& text) {
    const auto digits = std::ranges::count_if(text, [](QChar each) { return each.isDigit(); });
    const auto signs = std::ranges::count_if(text, [](QChar each) { return each == u'.' || each == u','; });
    const qsizetype minus = text.startsWith(u'-') ? 1 : 0;
    return digits > 0 && signs == 1 && digits + signs + minus == text.size();
}

/// How many characters of `word` from `start` on make a line of `width` pixels: as many parts between hyphens
/// and points as fit, or, where not even one does, as many characters; at least one.
qsizetype wordPart(const QString& word, qsizetype start, int width, const QFontMetrics& metrics) {
    const auto fits = [&](qsizetype length) {
        return metrics.horizontalAdvance(word.mid(start, length)) <= width;
    };
    const qsizetype rest = word.size() - start;
    if (fits(rest)) {
        return rest;
    }
    qsizetype length = 0;
    for (qsizetype next = 1; next < rest && fits(next); ++next) {
        const QChar last = word[start + next - 1];
        if (last == u'-' || last == u'.') {
            length = next;
        }
    }
    if (length == 0) {
        length = 1;
        while (length + 1 < rest && fits(length + 1)) {
            ++length;
        }
    }
    return length;
}

/// Whether lines are long enough for words to be broken; below that a row would only become a column of
/// letters.
bool mayBreakWords(int width, const QFont& font) {
    constexpr int leastLetters = 2;
    return width >= leastLetters * QFontMetrics(font).averageCharWidth();
}

QTextOption wrapping(QTextOption::WrapMode mode) {
    QTextOption option;
    option.setWrapMode(mode);
    return option;
}

bool isUnbroken(const QString& text, CellKind kind) {
    return kind == CellKind::Number || isDecimal(text);
}

/// The lines of a text. A single word is a number, which never breaks, or a code or an address, which breaks
/// by wordPart(); other texts break between words, and within those that are wider than the cell.
std::vector<TextRange> linesOf(const QString& text, int width, const QFont& font, CellKind kind) {
    if (isUnbroken(text, kind)) {
        return {{0, text.size()}};
    }
    std::vector<TextRange> lines;
    if (std::ranges::none_of(text, [](QChar character) { return character.isSpace(); })) {
        const QFontMetrics metrics(font);
        for (qsizetype start = 0; start < text.size() && mayBreakWords(width, font);
             start = lines.back().end) {
            lines.push_back({start, start + wordPart(text, start, width, metrics)});
        }
        return lines.empty() ? std::vector<TextRange>{{0, text.size()}} : lines;
    }
    for (const auto mode : {QTextOption::WordWrap, QTextOption::WrapAtWordBoundaryOrAnywhere}) {
        QTextLayout layout(text, font);
        layout.setTextOption(wrapping(mode));
        lines.clear();
        bool isCut = false;
        layout.beginLayout();
        for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
            line.setLineWidth(width);
            isCut = isCut || line.naturalTextWidth() > width + 1;
            lines.push_back({line.textStart(), line.textStart() + line.textLength()});
        }
        layout.endLayout();
        if (!isCut || !mayBreakWords(width, font)) {
            break;
        }
    }
    return lines;
}

int innerWidth(int cellWidth) {
    return std::max(1, cellWidth - 2 * cellTextPaddingX);
}

qreal aligned(qreal left, qreal width, qreal textWidth, Qt::Alignment horizontal) {
    if (horizontal & Qt::AlignRight) {
        return left + std::max(0.0, width - textWidth);
    }
    return horizontal & Qt::AlignHCenter ? left + std::max(0.0, (width - textWidth) / 2) : left;
}

/// The parts of `marks` within a line of their text, counted from its first character.
std::vector<TextRange> within(std::span<const TextRange> marks, TextRange line) {
    std::vector<TextRange> parts;
    for (const TextRange& mark : marks) {
        const TextRange part{std::max(mark.start, line.start) - line.start,
                             std::min(mark.end, line.end) - line.start};
        if (!part.isEmpty()) {
            parts.push_back(part);
        }
    }
    return parts;
}

QList<QTextLayout::FormatRange> formatsOf(const std::vector<TextRange>& marks) {
    QList<QTextLayout::FormatRange> formats;
    for (const TextRange& mark : marks) {
        QTextLayout::FormatRange marked;
        marked.start = static_cast<int>(mark.start);
        marked.length = static_cast<int>(mark.end - mark.start);
        marked.format.setBackground(QColor(markColor));
        marked.format.setForeground(Qt::black);
        formats.append(marked);
    }
    return formats;
}

/// Draws one line of a text, cut with an ellipsis where it is too long; `marks` count from its first
/// character.
void drawLine(QPainter& painter, const QRectF& place, const QString& line, Qt::Alignment horizontal,
              const std::vector<TextRange>& marks) {
    const QFontMetrics metrics(painter.font());
    const bool isCut = metrics.horizontalAdvance(line.trimmed()) > place.width() + 1;
    const QString text =
        isCut ? metrics.elidedText(line, Qt::ElideRight, static_cast<int>(place.width())) : line;
    QTextLayout layout(text, painter.font());
    layout.setFormats(formatsOf(within(marks, {0, text.size()})));
    layout.beginLayout();
    QTextLine whole = layout.createLine();
    whole.setNumColumns(static_cast<int>(text.size()));
    layout.endLayout();
    const qreal left = aligned(place.left(), place.width(), whole.naturalTextWidth(), horizontal);
    whole.draw(&painter, QPointF(left, place.top()) - whole.position());
}

} // namespace

int cellTextHeight(const QString& text, int width, const QFont& font) {
    const QFontMetrics metrics(font);
    const QString shown = printable(text);
    std::size_t lines = 1;
    if (!fitsOneLine(shown, innerWidth(width), metrics)) {
        lines = std::max<std::size_t>(1, linesOf(shown, innerWidth(width), font, CellKind::Text).size());
    }
    return static_cast<int>(lines) * metrics.height() + 2 * cellTextPaddingY;
}

int cellTextWidth(const QString& text, const QFont& font) {
    const QFontMetrics metrics(font);
    int widest = 0;
    for (const QString& line : printable(text).split(QChar(QChar::LineSeparator))) {
        widest = std::max(widest, metrics.horizontalAdvance(line));
    }
    return widest + 2 * cellTextPaddingX;
}

bool isCellTextCut(const QString& text, int width, const QFont& font, CellKind kind) {
    const QString shown = printable(text);
    const QFontMetrics metrics(font);
    return std::ranges::any_of(linesOf(shown, innerWidth(width), font, kind), [&](const TextRange& line) {
        return metrics.horizontalAdvance(shown.mid(line.start, line.end - line.start).trimmed()) >
               innerWidth(width) + 1;
    });
}

void drawCellText(QPainter& painter, const QRect& cell, const QString& text, Qt::Alignment horizontal,
                  std::span<const TextRange> marks, CellKind kind) {
    const QFontMetrics metrics(painter.font());
    const QString shown = printable(text);
    const int width = innerWidth(cell.width());
    const int left = cell.left() + cellTextPaddingX;
    int top = cell.top() + cellTextPaddingY;
    const bool isOneLine = fitsOneLine(shown, width, metrics);
    if (marks.empty() && isOneLine) {
        const qreal x = horizontal & (Qt::AlignRight | Qt::AlignHCenter)
                            ? aligned(left, width, metrics.horizontalAdvance(shown), horizontal)
                            : left;
        painter.drawText(QPointF(x, top + metrics.ascent()), shown);
        return;
    }
    if (!isOneLine && isUnbroken(shown, kind)) {
        drawLine(painter, QRectF(left, top, width, metrics.height()), QStringLiteral("…"), horizontal, {});
        return;
    }
    for (const TextRange& line : linesOf(shown, width, painter.font(), kind)) {
        drawLine(painter, QRectF(left, top, width, metrics.height()),
                 shown.mid(line.start, line.end - line.start), horizontal, within(marks, line));
        top += metrics.height();
    }
}

} // namespace grid
