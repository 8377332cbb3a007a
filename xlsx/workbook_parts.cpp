// SPDX-License-Identifier: MIT

#include "xlsx/workbook_parts.h"

#include "base/error.h"
#include "xlsx/cell_text.h"

#include <QDateTime>
#include <QFile>
#include <QRegularExpression>

#include <algorithm>

namespace xlsx {

namespace {

constexpr int widestColumn = 1790; // pixels, the 255 characters that a sheet allows
constexpr int digitPixels = 7;     // of Calibri 11, the unit of column widths
constexpr int widthSteps = 256;    // a width is a multiple of 1/256 of that unit
constexpr qsizetype longestHeader = 255;
constexpr qsizetype longestSheetName = 31;
constexpr QChar substitute = u'_';

constexpr QByteArrayView rowsEnd = "</sheetData>";

struct Entity {
    QByteArrayView name; ///< such as "&title;", which no escaped text can hold
    QByteArray value;
};

QByteArray filled(QByteArray xml, std::initializer_list<Entity> entities) {
    for (const Entity& entity : entities) {
        xml.replace(entity.name, entity.value);
    }
    return xml;
}

/// What is `written` of the characters of `text` as long as it stays within `longest` units. Half a surrogate
/// pair comes as the replacement character.
template <typename Written>
QString upTo(qsizetype longest, const QString& text, Written written) {
    QString result;
    for (const char32_t character : text.toUcs4()) {
        const QString next = written(character);
        if (result.size() + next.size() > longest) {
            break;
        }
        result += next;
    }
    return result;
}

/// A character that XML may not hold, or that was half a surrogate pair, comes as the substitute.
QString orSubstitute(char32_t character) {
    const bool possible = QChar::category(character) != QChar::Other_Control && character != U'\uFFFD' &&
                          character != U'\uFFFE' && character != U'\uFFFF';
    return possible ? QString::fromUcs4(&character, 1) : QString(substitute);
}

/// "&" begins a code in a printed header, "&C" the part in the middle.
QByteArray printedHeader(const QString& text) {
    const QString middle = QStringLiteral("&C");
    return textOf(middle + upTo(longestHeader - middle.size(), text, [](char32_t character) {
                      return character == U'&' ? QStringLiteral("&&") : QString::fromUcs4(&character, 1);
                  }));
}

QByteArray workbook(const Page& page, std::size_t columnCount, int lastRow) {
    const QString name = sheetName(page.name);
    const QByteArray sheet = '\'' + textOf(QString(name).replace(u'\'', QStringLiteral("''"))) + "'!";
    const QByteArray table =
        sheet + "$A$1:$" + columnLetters(columnCount - 1) + '$' + QByteArray::number(lastRow);
    return filled(resource(QStringLiteral("workbook")),
                  {{"&name;", textOf(name)}, {"&table;", table}, {"&titleRow;", sheet + "$1:$1"}});
}

/// The line of resources/xlsx/cell_styles.xml for cells of a column. There is a line for each kind; behind
/// that for blank cells among texts follow those for 0 to 18 fraction digits, and then all again for cells
/// aligned right.
int styleLine(const Column& column, CellKind kind) {
    constexpr int alignedRight = 23;
    const Qt::Alignment alignment = kind == CellKind::Header ? column.headerAlignment : column.alignment;
    const int digits =
        kind == CellKind::NumberOrBlank && column.fractionDigits ? 1 + *column.fractionDigits : 0;
    return static_cast<int>(kind) + digits + (alignment.testFlag(Qt::AlignRight) ? alignedRight : 0);
}

QByteArray styles(std::span<const Column> columns) {
    const QByteArrayList lines = resource(QStringLiteral("cell_styles")).split('\n');
    QByteArray cells;
    for (const Column& column : columns) {
        for (std::size_t kind = 0; kind < cellKinds; ++kind) {
            cells += lines[styleLine(column, static_cast<CellKind>(kind))];
        }
    }
    const std::size_t count = styleOf(columns.size(), CellKind::Header);
    return filled(resource(QStringLiteral("styles")),
                  {{"&count;", QByteArray::number(count)}, {"&cells;", cells}});
}

} // namespace

std::size_t styleOf(std::size_t column, CellKind kind) {
    return 1 + column * cellKinds + static_cast<std::size_t>(kind);
}

QByteArray columnLetters(std::size_t column) {
    QByteArray letters;
    for (std::size_t rest = column + 1; rest > 0; rest = (rest - 1) / 26) {
        letters.prepend(static_cast<char>('A' + (rest - 1) % 26));
    }
    return letters;
}

std::vector<Column> fittedToSheet(std::vector<Column> columns) {
    const int widest = std::max(widestColumn, std::ranges::max(columns, {}, &Column::width).width);
    for (Column& column : columns) {
        column.width = static_cast<int>(std::int64_t{column.width} * widestColumn / widest);
    }
    return columns;
}

QString sheetName(const QString& name) {
    static const QRegularExpression wrong(QStringLiteral(R"(^'|'$|[\[\]:*?/\\])"));
    const QString sheet = upTo(longestSheetName, name, orSubstitute).replace(wrong, QString(substitute));
    if (sheet.trimmed().isEmpty()) {
        return QStringLiteral("Лист1");
    }
    return sheet.compare(u"History", Qt::CaseInsensitive) == 0 ? sheet + substitute : sheet;
}

QByteArray resource(const QString& name) {
    QFile file(QStringLiteral(":/xlsx/") + name);
    if (!file.open(QIODevice::ReadOnly)) {
        throw base::ResourceError(file.fileName(), file.errorString());
    }
    return file.readAll();
}

std::vector<Part> partsBesideSheet(const Page& page, std::span<const Column> columns, int lastRow) {
    const QByteArray core = resource(QStringLiteral("core"));
    // A plain string, in which readers resolve no _xHHHH_.
    const QString title = upTo(page.title.size(), page.title, orSubstitute).toHtmlEscaped();
    const QByteArray now = QDateTime::currentDateTimeUtc().toString(Qt::ISODate).toLatin1();
    return {{"[Content_Types].xml", resource(QStringLiteral("content_types"))},
            {"_rels/.rels", resource(QStringLiteral("package_relations"))},
            {"docProps/core.xml", filled(core, {{"&now;", now}, {"&title;", title.toUtf8()}})},
            {"xl/_rels/workbook.xml.rels", resource(QStringLiteral("workbook_relations"))},
            {"xl/workbook.xml", workbook(page, columns.size(), lastRow)},
            {"xl/styles.xml", styles(columns)}};
}

QByteArray beforeRows(std::span<const Column> columns) {
    QByteArray result;
    int number = 0;
    for (const Column& column : columns) {
        const int steps = column.width * widthSteps / digitPixels;
        const double width = static_cast<double>(steps) / widthSteps;
        const QByteArray place = QByteArray::number(++number);
        result += "<col min=\"" + place + "\" max=\"" + place + "\" width=\"" +
                  QByteArray::number(width, 'g', 12) + "\" customWidth=\"1\"/>";
    }
    const QByteArray sheet = resource(QStringLiteral("sheet"));
    return filled(sheet.first(sheet.indexOf(rowsEnd)), {{"&columns;", result}});
}

QByteArray afterRows(const Page& page, std::size_t columnCount, int lastRow) {
    const QByteArray table = "A1:" + columnLetters(columnCount - 1) + QByteArray::number(lastRow);
    const QByteArray sheet = resource(QStringLiteral("sheet"));
    // Codes such as 00012 are texts on purpose: the filtered table needs no warning marks.
    return filled(sheet.sliced(sheet.indexOf(rowsEnd)),
                  {{"&table;", table}, {"&header;", printedHeader(page.header)}});
}

} // namespace xlsx
