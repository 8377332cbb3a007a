// SPDX-License-Identifier: MIT

#include "grid/view/copied_rows.h"

#include "base/decimal.h"

#include <algorithm>

namespace grid {

namespace {

constexpr QLatin1String plainFormat("text/plain");
constexpr QLatin1String htmlFormat("text/html");

/// Spreadsheets take what tabs stand between for cells, and unquote one that holds tabs, quotes or line
/// breaks.
void appendPlain(QString& text, QStringView cell) {
    const bool isPlain = std::ranges::none_of(cell, [](QChar character) {
        return character == u'\t' || character == u'"' || character == u'\n' || character == u'\r';
    });
    if (isPlain) {
        text += cell;
    } else {
        text += u'"' + cell.toString().replace(u'"', QStringLiteral("\"\"")) + u'"';
    }
}

/// Whether a spreadsheet holds the number that `text` shows without loss.
bool isExactNumber(QStringView text) {
    QString digits = text.toString();
    digits.removeIf([](QChar character) { return !character.isDigit(); });
    bool isWithin64Bits = false;
    const qlonglong units = digits.toLongLong(&isWithin64Bits);
    return isWithin64Bits && base::isExactInSpreadsheet(units);
}

bool isControl(char byte) {
    return byte >= 0 && byte < ' ';
}

/// Blanks that HTML would take for one, or for none; Excel knows those of such a span for plain blanks.
void appendBlanks(QByteArray& html, qsizetype count) {
    html += "<span style=\"mso-spacerun:yes\">";
    for (qsizetype i = 0; i < count; ++i) {
        html += "&nbsp;";
    }
    html += "</span>";
}

void appendCharacter(QByteArray& html, char byte) {
    switch (byte) {
    case '&':
        html += "&amp;";
        break;
    case '<':
        html += "&lt;";
        break;
    case '>':
        html += "&gt;";
        break;
    case '\n':
    case '\r':
        html += "<br style=\"mso-data-placement:same-cell\">"; // no row of its own
        break;
    default:
        html += isControl(byte) ? ' ' : byte; // HTML has no control characters
    }
}

void appendText(QByteArray& html, const QByteArray& text) {
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != ' ') {
            const bool isHalfBreak = text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
            if (!isHalfBreak) {
                appendCharacter(html, text[i]);
            }
            continue;
        }
        qsizetype end = i;
        while (end < text.size() && text[end] == ' ') {
            ++end;
        }
        const bool isInLine = i > 0 && end < text.size() && !isControl(text[i - 1]) && !isControl(text[end]);
        if (isInLine && end - i == 1) {
            html += ' ';
        } else {
            appendBlanks(html, end - i);
        }
        i = end - 1;
    }
}

/// Begins a cell that stays a text.
void beginTextCell(QByteArray& html) {
    html += "<td class=\"text\" sdnum=\"1033;0;@\">";
}

/// Begins a cell. LibreOffice reads sdval and sdnum, the value and its format in English; Excel reads x:num
/// and the style.
void beginCell(QByteArray& html, const CopiedRows::Column& column, QStringView cell) {
    if (cell.isEmpty()) {
        html += "<td>";
        return;
    }
    if (!column.isNumber || !isExactNumber(cell)) {
        beginTextCell(html);
        return;
    }
    const auto appendFormat = [&](const char* point) {
        html += '0';
        if (column.fractionDigits > 0) {
            html += point;
            html.append(column.fractionDigits, '0');
        }
    };
    const QByteArray value = cell.toLatin1().replace(',', '.');
    html += "<td style='mso-number-format:\"";
    appendFormat("\\.");
    html += "\"' x:num=\"";
    html += value;
    html += "\" sdval=\"";
    html += value;
    html += "\" sdnum=\"1033;0;";
    appendFormat(".");
    html += "\">";
}

} // namespace

void CopiedRows::add(const QString& cell) {
    cells_ += cell;
    ends_.push_back(cells_.size());
}

QStringView CopiedRows::cell(std::size_t index) const {
    const qsizetype start = index == 0 ? 0 : ends_[index - 1];
    return QStringView(cells_).sliced(start, ends_[index] - start);
}

QStringList CopiedRows::formats() const {
    return {htmlFormat, plainFormat};
}

QVariant CopiedRows::retrieveData(const QString& format, QMetaType) const {
    if (format == htmlFormat) {
        return html();
    }
    return format == plainFormat ? plainText() : QVariant();
}

QString CopiedRows::plainText() const {
    if (isCell_) {
        return cells_;
    }
    QString text;
    text.reserve(cells_.size() + std::ssize(ends_));
    for (qsizetype column = 0; column < headings_.size(); ++column) {
        appendPlain(text, headings_[column]);
        text += column + 1 == headings_.size() ? u'\n' : u'\t';
    }
    for (std::size_t index = 0; index < ends_.size(); ++index) {
        appendPlain(text, cell(index));
        text += (index + 1) % columns_.size() == 0 ? u'\n' : u'\t';
    }
    return text;
}

QByteArray CopiedRows::html() const {
    QByteArray html = "<html xmlns:x=\"urn:schemas-microsoft-com:office:excel\"><head>"
                      "<meta http-equiv=\"content-type\" content=\"text/html; charset=utf-8\">"
                      "<style>.text{mso-number-format:\"\\@\"}</style></head><body><table>";
    constexpr qsizetype markup = 40; // bytes that most cells take besides their text
    html.reserve(html.size() + 2 * cells_.size() + markup * std::ssize(ends_));
    for (qsizetype column = 0; column < headings_.size(); ++column) {
        html += column == 0 ? "<tr>" : "";
        beginTextCell(html);
        appendText(html, headings_[column].toUtf8());
        html += column + 1 == headings_.size() ? "</td></tr>\n" : "</td>";
    }
    for (std::size_t index = 0; index < ends_.size(); ++index) {
        const std::size_t column = index % columns_.size();
        html += column == 0 ? "<tr>" : "";
        beginCell(html, columns_[column], cell(index));
        appendText(html, cell(index).toUtf8());
        html += column + 1 == columns_.size() ? "</td></tr>\n" : "</td>";
    }
    return html + "</table></body></html>";
}

} // namespace grid
