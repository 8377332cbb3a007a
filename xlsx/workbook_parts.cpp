#include "xlsx/workbook_parts.h"

#include "xlsx/cell_text.h"
#include "xlsx/resources.h"

#include <QDateTime>

#include <algorithm>

namespace xlsx {

namespace {

constexpr int widestColumn = 1790; // pixels, the 255 characters that a sheet allows
constexpr int digitPixels = 7;     // of Calibri 11, the unit of column widths
constexpr int widthSteps = 256;    // a width is a multiple of 1/256 of that unit
constexpr qsizetype longestHeader = 255;

// Numbers of built-in formats (ECMA-376 part 1, 18.8.30); behind firstOwnFormat stand those of
// resources/xlsx/styles.xml for 1 to 18 fraction digits.
constexpr int generalFormat = 0;
constexpr int integerFormat = 1;
constexpr int textFormat = 49;
constexpr int firstOwnFormat = 164;

constexpr int filterButtonIndent = 2; // of about 9 pixels each

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

int numberFormat(const Column& column, CellKind kind) {
    if (kind == CellKind::Header) {
        return generalFormat;
    }
    if (kind == CellKind::NumberAsText || (kind == CellKind::Value && !column.fractionDigits)) {
        return textFormat;
    }
    const int digits = kind == CellKind::Footer ? 0 : *column.fractionDigits;
    return digits == 0 ? integerFormat : firstOwnFormat + digits;
}

QByteArray cellStyle(const Column& column, CellKind kind) {
    const bool header = kind == CellKind::Header;
    const bool right = (header ? column.headerAlignment : column.alignment).testFlag(Qt::AlignRight);
    const int format = numberFormat(column, kind);
    return QStringLiteral(R"(<xf numFmtId="%1" fontId="%2" fillId="0" borderId="1" xfId="0")"
                          R"( applyNumberFormat="1" applyFont="1" applyBorder="1" applyAlignment="1">)"
                          R"(<alignment horizontal="%3" vertical="top" wrapText="%4" indent="%5"/></xf>)")
        .arg(format)
        .arg(header || kind == CellKind::Footer ? 1 : 0)
        .arg(right ? QStringLiteral("right") : QStringLiteral("left"))
        .arg(format == generalFormat || format == textFormat ? 1 : 0)
        .arg(header && right ? filterButtonIndent : 0)
        .toLatin1();
}

QByteArray styles(std::span<const Column> columns) {
    QByteArray cells;
    for (const Column& column : columns) {
        for (int kind = 0; kind < cellKinds; ++kind) {
            cells += cellStyle(column, static_cast<CellKind>(kind));
        }
    }
    const int count = styleOf(columns.size(), CellKind::Header);
    return filled(resource(QStringLiteral("styles")),
                  {{"&count;", QByteArray::number(count)}, {"&cells;", cells}});
}

QByteArray workbook(const Page& page, std::size_t columnCount, int lastRow) {
    QString quoted = page.sheetName;
    const QByteArray sheet = '\'' + textOf(quoted.replace(u'\'', QStringLiteral("''"))) + "'!";
    const QByteArray table =
        sheet + "$A$1:$" + columnLetters(columnCount - 1) + '$' + QByteArray::number(lastRow);
    return filled(resource(QStringLiteral("workbook")),
                  {{"&name;", textOf(page.sheetName)}, {"&table;", table}, {"&titleRow;", sheet + "$1:$1"}});
}

/// A printed header: "&" begins a code there, "&C" the part in the middle.
QString printedHeader(const QString& text) {
    QString result = QStringLiteral("&C");
    for (const QChar character : text) {
        const QString added = character == u'&' ? QStringLiteral("&&") : QString(character);
        if (result.size() + added.size() > longestHeader) {
            break;
        }
        result += added;
    }
    if (result.back().isHighSurrogate()) {
        result.chop(1);
    }
    return result;
}

/// The sheet's part up to the place of its rows, or from there on.
QByteArray sheetAround(bool before) {
    constexpr QByteArrayView rows = "&rows;";
    const QByteArray sheet = resource(QStringLiteral("sheet"));
    const qsizetype place = sheet.indexOf(rows);
    return before ? sheet.first(place) : sheet.sliced(place + rows.size());
}

} // namespace

int styleOf(std::size_t column, CellKind kind) {
    return 1 + static_cast<int>(column) * cellKinds + static_cast<int>(kind);
}

QByteArray columnLetters(std::size_t column) {
    QByteArray letters;
    for (std::size_t rest = column + 1; rest > 0; rest = (rest - 1) / 26) {
        letters.prepend(static_cast<char>('A' + (rest - 1) % 26));
    }
    return letters;
}

std::vector<int> sheetWidths(std::span<const Column> columns) {
    const auto widest = std::ranges::max_element(columns, {}, &Column::width)->width;
    std::vector<int> widths;
    for (const Column& column : columns) {
        widths.push_back(
            static_cast<int>(std::int64_t{column.width} * widestColumn / std::max(widestColumn, widest)));
    }
    return widths;
}

std::vector<Part> partsBesideSheet(const Page& page, std::span<const Column> columns, int lastRow) {
    const QByteArray core = resource(QStringLiteral("core"));
    const QByteArray now = QDateTime::currentDateTimeUtc().toString(Qt::ISODate).toLatin1();
    return {{"[Content_Types].xml", resource(QStringLiteral("content_types"))},
            {"_rels/.rels", resource(QStringLiteral("package_relations"))},
            {"docProps/core.xml", filled(core, {{"&now;", now}, {"&title;", textOf(page.title)}})},
            {"xl/_rels/workbook.xml.rels", resource(QStringLiteral("workbook_relations"))},
            {"xl/workbook.xml", workbook(page, columns.size(), lastRow)},
            {"xl/styles.xml", styles(columns)}};
}

QByteArray beforeRows(std::span<const Column> columns) {
    QByteArray result;
    int number = 0;
    for (const int pixels : sheetWidths(columns)) {
        const double width = static_cast<double>(pixels * widthSteps / digitPixels) / widthSteps;
        result += QStringLiteral(R"(<col min="%1" max="%1" width="%2" customWidth="1"/>)")
                      .arg(++number)
                      .arg(width, 0, 'g', 12)
                      .toLatin1();
    }
    return filled(sheetAround(true), {{"&columns;", result}});
}

QByteArray afterRows(const Page& page, std::size_t columnCount, int lastRow) {
    const QByteArray table = "A1:" + columnLetters(columnCount - 1) + QByteArray::number(lastRow);
    // Codes such as 00012 are texts on purpose: the filtered table needs no warning marks.
    return filled(sheetAround(false), {{"&table;", table}, {"&header;", textOf(printedHeader(page.header))}});
}

} // namespace xlsx
