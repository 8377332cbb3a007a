#include "xlsx/sheet_frame.h"

#include "xlsx/cell_text.h"

#include <algorithm>

namespace xlsx {

namespace {

constexpr int widestColumn = 1790; // pixels, the 255 characters that a sheet allows
constexpr int digitPixels = 7;     // of Calibri 11, the unit of column widths
constexpr int widthSteps = 256;    // a width is a multiple of 1/256 of that unit
constexpr qsizetype longestHeader = 255;

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

} // namespace

std::vector<int> sheetWidths(std::span<const Column> columns) {
    std::vector<int> widths;
    for (const Column& column : columns) {
        widths.push_back(column.width);
    }
    const int widest = std::max(widestColumn, *std::max_element(widths.begin(), widths.end()));
    for (int& width : widths) {
        width = static_cast<int>(std::int64_t{width} * widestColumn / widest);
    }
    return widths;
}

QByteArray columnLetters(std::size_t column) {
    QByteArray letters;
    for (std::size_t rest = column + 1; rest > 0; rest = (rest - 1) / 26) {
        letters.prepend(static_cast<char>('A' + (rest - 1) % 26));
    }
    return letters;
}

QByteArray beforeRows(std::span<const int> widths) {
    QByteArray result = R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>
<worksheet xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main">)"
                        R"(<sheetPr><pageSetUpPr fitToPage="1"/></sheetPr>)"
                        R"(<sheetViews><sheetView tabSelected="1" workbookViewId="0">)"
                        R"(<pane ySplit="1" topLeftCell="A2" activePane="bottomLeft" state="frozen"/>)"
                        R"(<selection pane="bottomLeft"/></sheetView></sheetViews>)"
                        R"(<sheetFormatPr defaultRowHeight="15"/><cols>)";
    for (std::size_t i = 0; i < widths.size(); ++i) {
        const QByteArray number = QByteArray::number(static_cast<qulonglong>(i + 1));
        const double width = static_cast<double>(widths[i] * widthSteps / digitPixels) / widthSteps;
        result += "<col min=\"" + number + "\" max=\"" + number + "\" width=\"" +
                  QByteArray::number(width, 'g', 12) + "\" customWidth=\"1\"/>";
    }
    return result + "</cols><sheetData>";
}

QByteArray afterRows(const Page& page, const QByteArray& table) {
    // Codes such as 00012 are texts on purpose and need no warning mark.
    return "</sheetData><autoFilter ref=\"" + table +
           R"("/><pageMargins left="0.4" right="0.4" top="0.7" bottom="0.6" header="0.3" footer="0.3"/>)"
           R"(<pageSetup paperSize="9" fitToHeight="0" orientation="landscape"/><headerFooter><oddHeader>)" +
           textOf(printedHeader(page.header)) +
           "</oddHeader><oddFooter>&amp;CСтр. &amp;P из &amp;N</oddFooter></headerFooter>"
           "<ignoredErrors><ignoredError sqref=\"" +
           table + R"(" numberStoredAsText="1"/></ignoredErrors></worksheet>)";
}

} // namespace xlsx
