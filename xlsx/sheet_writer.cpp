#include "xlsx/sheet_writer.h"

#include "base/win1251.h"
#include "xlsx/cell_text.h"
#include "xlsx/line_breaking.h"
#include "xlsx/number_text.h"
#include "xlsx/package_parts.h"
#include "xlsx/sheet_frame.h"
#include "xlsx/styles.h"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace xlsx {

namespace {

constexpr std::size_t flushedBytes = 64 * 1024;
constexpr std::size_t cellFrame = 512; // more than what stands around a value, and before and after a row

// Calibri 11 sets a line in 15 points; a row has at most 409.5 (ECMA-376 part 1, 18.3.1.73).
constexpr int linePoints = 15;
constexpr int tallestRowLines = 27;
constexpr std::size_t heightBytes = 5;
constexpr const char* tallestRow = "409.5";

constexpr int padding = 560; // both sides of a cell, 0.35 mm each, and a reserve, in units of the font
constexpr int filterButtonPixels = 20;

constexpr auto rowStart = "<row r=\"";
constexpr auto heightStart = "\" ht=\"";
constexpr auto rowEnd = "</row>";
constexpr auto textType = "\" t=\"inlineStr\"";
constexpr auto numberType = "\"";

// After the number of a cell's row.
constexpr Fragment textStart("\"><is><t>");
constexpr Fragment keptTextStart("\"><is><t xml:space=\"preserve\">");
constexpr Fragment numberStart("\"><v>");
constexpr Fragment blankEnd("\"/>");
constexpr auto textEnd = "</t></is></c>";
constexpr auto numberEnd = "</v></c>";

/// Pixels of a sheet in units of the font's widths: LibreOffice makes the seven of a digit 5.55 points.
int fontUnits(int pixels) {
    return pixels * 1475 / 10;
}

/// Five characters for every height, so that it can be filled in when the row is complete.
QByteArray heightText(int lines) {
    return lines > tallestRowLines ? QByteArray(tallestRow)
                                   : (QByteArray::number(lines * linePoints) + ".00").first(heightBytes);
}

bool isBlank(char character) {
    return character == ' ' || character == '\t' || character == '\n';
}

char* append(char* out, QByteArrayView bytes) {
    return std::copy(bytes.begin(), bytes.end(), out);
}

} // namespace

SheetWriter::SheetWriter(Output& output, Page page, std::span<const Column> columns)
    : archive_(output), page_(std::move(page)), buffer_(2 * flushedBytes) {
    for (const Part& part : fixedParts(page_)) {
        archive_.writePart(part.name, part.bytes);
    }
    archive_.writePart(stylesPartName, stylesPart(columns));

    const std::vector<int> widths = sheetWidths(columns);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const auto start = [i](CellKind kind, const char* type) {
            const QByteArray text =
                "<c s=\"" + QByteArray::number(styleOf(i, kind)) + type + " r=\"" + columnLetters(i);
            return Fragment(text.toStdString());
        };
        Cells& cells = columns_.emplace_back();
        cells.header = start(CellKind::Header, textType);
        cells.text = start(CellKind::Value, textType);
        cells.number = start(CellKind::Value, numberType);
        cells.numberAsText = start(CellKind::NumberAsText, textType);
        cells.footer = start(CellKind::Footer, numberType);
        cells.fractionDigits = columns[i].fractionDigits.value_or(0);
        cells.wrapWidth = fontUnits(widths[i]) - padding;
    }

    archive_.beginPart(sheetPartName);
    const QByteArray frame = beforeRows(widths);
    archive_.write(frame);
    writeHeader(columns);
}

void SheetWriter::writeHeader(std::span<const Column> columns) {
    for (const Column& column : columns) {
        const QByteArray text = textOf(column.header);
        const Cells& cells = nextCell(static_cast<std::size_t>(text.size()));
        endCell(append(append(startCell(cells.header, keptTextStart), text), textEnd));
        // Room beside or below the caption for the button of the filter, which covers a cell's lower right.
        needLines(linesOf(base::win1251::encode(column.header).toStdString(),
                          cells.wrapWidth - fontUnits(filterButtonPixels), boldWidths));
    }
    endRow();
}

void SheetWriter::text(std::string_view win1251) {
    if (win1251.empty()) {
        blank();
        return;
    }
    if (win1251.size() > longestText) {
        throw std::length_error("a cell cannot hold a text of " + std::to_string(win1251.size()) +
                                " characters");
    }
    const Cells& cells = nextCell((win1251.size() + 1) * longestCharacter);
    const bool kept = isBlank(win1251.front()) || isBlank(win1251.back());
    char* const out = writeText(startCell(cells.text, kept ? keptTextStart : textStart), win1251);
    endCell(append(out, textEnd));
    needLines(linesOf(win1251, cells.wrapWidth, regularWidths));
}

void SheetWriter::number(std::int64_t units) {
    const Cells& cells = nextCell(longestNumber);
    if (isExactInSpreadsheet(units)) {
        char* const out = writeNumber(startCell(cells.number, numberStart), units, cells.fractionDigits);
        endCell(append(out, numberEnd));
        return;
    }
    std::array<char, longestNumber> buffer;
    const char* const end = writeNumber(buffer.data(), units, cells.fractionDigits);
    const std::string_view digits(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
    const QByteArray shown = textOf(QString::fromLatin1(digits).replace(u'.', page_.decimalPoint));
    endCell(append(append(startCell(cells.numberAsText, textStart), shown), textEnd));
    needLines(linesOf(digits, cells.wrapWidth, regularWidths));
}

void SheetWriter::blank() {
    const Cells& cells = nextCell(0);
    endCell(startCell(cells.number, blankEnd));
}

void SheetWriter::endRow() {
    closeRow();
    ++rows_;
}

void SheetWriter::footer(std::size_t column, std::int64_t count) {
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        const Cells& cells = nextCell(longestNumber);
        endCell(i == column ? append(writeNumber(startCell(cells.footer, numberStart), count, 0), numberEnd)
                            : startCell(cells.footer, blankEnd));
    }
    closeRow();
}

void SheetWriter::finish() {
    flush();
    const QByteArray lastColumn = columnLetters(columns_.size() - 1);
    const QByteArray lastRow = QByteArray::number(rows_);
    archive_.write(afterRows(page_, "A1:" + lastColumn + lastRow));
    archive_.endPart();
    const Part workbook = workbookPart(page_, "$A$1:$" + lastColumn + '$' + lastRow);
    archive_.writePart(workbook.name, workbook.bytes);
    archive_.finish();
}

/// Begins a row with its first cell and makes room for `bytes` of a cell's value.
const SheetWriter::Cells& SheetWriter::nextCell(std::size_t bytes) {
    if (column_ == columns_.size()) {
        throw std::logic_error("a row of a sheet has too many cells");
    }
    const std::size_t needed = used_ + bytes + cellFrame;
    if (buffer_.size() < needed) {
        buffer_.resize(needed);
    }
    if (column_ == 0) {
        startRow();
    }
    return columns_[column_++];
}

void SheetWriter::startRow() {
    lines_ = 1;
    rowNumber_ = Fragment(std::to_string(rows_ + 1));
    char* const out = append(rowNumber_.copyTo(append(buffer_.data() + used_, rowStart)), heightStart);
    height_ = static_cast<std::size_t>(out - buffer_.data());
    endCell(append(out + heightBytes, "\">"));
}

char* SheetWriter::startCell(const Fragment& kind, const Fragment& end) {
    return end.copyTo(rowNumber_.copyTo(kind.copyTo(buffer_.data() + used_)));
}

void SheetWriter::endCell(const char* end) {
    used_ = static_cast<std::size_t>(end - buffer_.data());
}

void SheetWriter::needLines(int lines) {
    lines_ = std::max(lines_, lines);
}

void SheetWriter::closeRow() {
    if (column_ != columns_.size()) {
        throw std::logic_error("a row of a sheet has too few cells");
    }
    append(buffer_.data() + height_, heightText(lines_));
    // A cell leaves at least its frame unused behind it.
    endCell(append(buffer_.data() + used_, rowEnd));
    column_ = 0;
    if (used_ >= flushedBytes) {
        flush();
    }
}

void SheetWriter::flush() {
    archive_.write(QByteArrayView(buffer_.data(), buffer_.data() + used_));
    used_ = 0;
}

} // namespace xlsx
