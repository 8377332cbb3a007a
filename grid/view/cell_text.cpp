#include "grid/view/cell_text.h"

#include <QFontMetrics>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>

namespace grid {
namespace {

constexpr QRgb markColor = qRgb(255, 224, 102);

/// Line breaks of the data break the line, other control characters are shown by their pictures (U+2400 and
/// on). Every character stays one character, so that ranges in `text` stay right.
QString printable(const QString& text) {
    constexpr char16_t pictures = 0x2400;
    QString result = text;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t character = text[i].unicode();
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

/// How many characters of `code` from `start` on make a line of `width` pixels: up to a hyphen within it, as
/// many parts as fit, or the first one. All, where it fits or has no hyphen.
qsizetype codePart(const QString& code, qsizetype start, int width, const QFontMetrics& metrics) {
    if (metrics.horizontalAdvance(code.mid(start)) <= width) {
        return code.size() - start;
    }
    qsizetype length = 0;
    for (qsizetype end = code.indexOf(u'-', start + 1) + 1; end > 0 && end < code.size();
         end = code.indexOf(u'-', end) + 1) {
        if (length > 0 && metrics.horizontalAdvance(code.mid(start, end - start)) > width) {
            break;
        }
        length = end - start;
    }
    return length > 0 ? length : code.size() - start;
}

/// Breaks the layout's text into lines; returns how many there are. A single word is a number, which never
/// breaks (not behind its decimal point either), or a code, which breaks after its hyphens.
int breakLines(QTextLayout& layout, int width) {
    const QString text = layout.text();
    const bool isOneWord = std::ranges::none_of(text, [](QChar character) { return character.isSpace(); });
    const QFontMetrics metrics(layout.font());
    QTextOption option;
    option.setWrapMode(isOneWord ? QTextOption::WrapAnywhere : QTextOption::WordWrap);
    layout.setTextOption(option);
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        if (isOneWord) {
            line.setNumColumns(static_cast<int>(codePart(text, line.textStart(), width, metrics)));
        } else {
            line.setLineWidth(width);
        }
    }
    layout.endLayout();
    return layout.lineCount();
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

QList<QTextLayout::FormatRange> markFormats(TextRange mark, qsizetype length) {
    mark.end = std::min(mark.end, length);
    if (mark.isEmpty()) {
        return {};
    }
    QTextLayout::FormatRange range;
    range.start = static_cast<int>(mark.start);
    range.length = static_cast<int>(mark.end - mark.start);
    range.format.setBackground(QColor(markColor));
    range.format.setForeground(Qt::black);
    return {range};
}

} // namespace

int cellTextHeight(const QString& text, int width, const QFont& font) {
    const QFontMetrics metrics(font);
    const QString shown = printable(text);
    int lines = 1;
    if (!fitsOneLine(shown, innerWidth(width), metrics)) {
        QTextLayout layout(shown, font);
        lines = std::max(1, breakLines(layout, innerWidth(width)));
    }
    return lines * metrics.height() + 2 * cellTextPaddingY;
}

bool isCellTextCut(const QString& text, int width, const QFont& font) {
    QTextLayout layout(printable(text), font);
    const int lines = breakLines(layout, innerWidth(width));
    for (int i = 0; i < lines; ++i) {
        if (layout.lineAt(i).naturalTextWidth() > innerWidth(width) + 1) {
            return true;
        }
    }
    return false;
}

void drawCellText(QPainter& painter, const QRect& cell, const QString& text, Qt::Alignment horizontal,
                  TextRange mark) {
    const QFontMetrics metrics(painter.font());
    const QString shown = printable(text);
    const int width = innerWidth(cell.width());
    const int left = cell.left() + cellTextPaddingX;
    int top = cell.top() + cellTextPaddingY;
    if (mark.isEmpty() && fitsOneLine(shown, width, metrics)) {
        const qreal x = horizontal & (Qt::AlignRight | Qt::AlignHCenter)
                            ? aligned(left, width, metrics.horizontalAdvance(shown), horizontal)
                            : left;
        painter.drawText(QPointF(x, top + metrics.ascent()), shown);
        return;
    }

    QTextLayout layout(shown, painter.font());
    layout.setFormats(markFormats(mark, shown.size()));
    const int lines = breakLines(layout, width);
    for (int i = 0; i < lines; ++i, top += metrics.height()) {
        const QTextLine line = layout.lineAt(i);
        const qsizetype start = line.textStart();
        if (line.naturalTextWidth() <= width + 1) {
            const QPointF origin(aligned(left, width, line.naturalTextWidth(), horizontal), top);
            line.draw(&painter, origin - line.position());
            continue;
        }
        const QString cut = metrics.elidedText(shown.mid(start, line.textLength()), Qt::ElideRight, width);
        QTextLayout cutLayout(cut, painter.font());
        cutLayout.setFormats(
            markFormats({std::max<qsizetype>(0, mark.start - start), mark.end - start}, cut.size()));
        breakLines(cutLayout, 2 * width);
        cutLayout.draw(&painter, QPointF(left, top));
    }
}

} // namespace grid
