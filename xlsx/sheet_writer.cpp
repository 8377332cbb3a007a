#include "xlsx/sheet_writer.h"

#include "base/win1251.h"
#include "xlsx/cell_text.h"
#include "xlsx/line_breaking.h"

#include <algorithm>
#include <stdexcept>

namespace xlsx {

namespace {

constexpr std::size_t flushedBytes = 64 * 1024;
constexpr std::size_t cellFrame = 512; // more than what stands around a value, and before and after a row

// Calibri 11 sets a line in 15 points; a row has at most 409.5 (ECMA-376 part 1, 18.3.1.73).
constexpr int linePoints = 15;
constexpr int tallestRowLines = 27;
constexpr std::string_view tallestRow = "409.5";

constexpr int padding = 560; // both sides of a cell, 0.35 mm each, and a reserve, in units of the font
constexpr int filterButtonPixels = 20;

// After the number of a cell's row.
constexpr std::string_view textStart = R"("><is><t>)";
constexpr std::string_view keptTextStart = R"("><is><t xml:space="preserve">)";
constexpr std::string_view numberStart = R"("><v>)";
constexpr std::string_view blankEnd = R"("/>)";
constexpr std::string_view textEnd = "</t></is></c>";
constexpr std::string_view numberEnd = "</v></c>";

/// Pixels of a sheet in units of the font's widths: LibreOffice makes the seven of a digit 5.55 points.
int fontUnits(int pixels) {
    return pixels * 1475 / 10;
}

/// As many characters for every height, so that it can be filled in when the row is complete.
std::string heightText(int lines) {
    return lines > tallestRowLines
               ? std::string(tallestRow)
               : (std::to_string(lines * linePoints) + ".00").substr(0, tallestRow.size());
}

bool isBlank(char character) {
    return character == ' ' || character == '\t' || character == '\n';
}

char* append(char* out, std::string_view bytes) {
    return std::copy(bytes.begin(), bytes.end(), out);
}

} // namespace

SheetWriter::SheetWriter(QIODevice& device, Page page, std::vector<Column> columns)
    : archive_(device), page_(std::move(page)), columns_(std::move(columns)), buffer_(2 * flushedBytes) {
    const std::vector<int> widths = sheetWidths(columns_);
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        Cells& cells = cells_.emplace_back();
        cells.wrapWidth = fontUnits(widths[i]) - padding;
        for (int kind = 0; kind < cellKinds; ++kind) {
            const std::string start = "<c s=\"" + std::to_string(styleOf(i, static_cast<CellKind>(kind)));
            const std::string name = "\" r=\"" + columnLetters(i).toStdString();
            cells.texts[static_cast<std::size_t>(kind)] = start + "\" t=\"inlineStr" + name;
            cells.others[static_cast<std::size_t>(kind)] = start + name;
        }
    }
    archive_.beginPart(sheetPartName);
    archive_.write(beforeRows(columns_));
    writeHeader();
}

void SheetWriter::writeHeader() {
    for (const Column& column : columns_) {
        const std::string text = textOf(column.header).toStdString();
        char* const out = startText(CellKind::Header, text.size());
        endCell(append(append(out, keptTextStart), text), textEnd);
        // Room beside or below the caption for the button of the filter, which covers a cell's lower right.
        needLines(base::win1251::encode(column.header).toStdString(), fontUnits(filterButtonPixels), bold_);
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
    char* const out = startText(CellKind::Value, (win1251.size() + 1) * longestCharacter);
    const bool kept = isBlank(win1251.front()) || isBlank(win1251.back());
    endCell(writeText(append(out, kept ? keptTextStart : textStart), win1251), textEnd);
    needLines(win1251, 0, regular_);
}

void SheetWriter::number(std::int64_t units) {
    const bool exact = isExactInSpreadsheet(units);
    char* const out = exact ? startOther(CellKind::Value) : startText(CellKind::NumberAsText, longestNumber);
    const int digits = columns_[column_ - 1].fractionDigits.value_or(0);
    if (exact) {
        endCell(writeNumber(append(out, numberStart), units, digits), numberEnd);
        return;
    }
    char* const value = append(out, textStart);
    char* const end = writeNumber(value, units, digits);
    std::replace(value, end, '.', page_.decimalPoint.toLatin1());
    endCell(end, textEnd);
    needLines({value, end}, 0, regular_);
}

void SheetWriter::blank() {
    endCell(startOther(CellKind::Value), blankEnd);
}

void SheetWriter::endRow() {
    closeRow();
    ++rows_;
}

void SheetWriter::footer(std::size_t column, std::int64_t count) {
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        char* const out = startOther(CellKind::Footer);
        if (i == column) {
            endCell(writeNumber(append(out, numberStart), count, 0), numberEnd);
        } else {
            endCell(out, blankEnd);
        }
    }
    closeRow();
}

void SheetWriter::finish() {
    flush();
    archive_.write(afterRows(page_, columns_.size(), rows_));
    archive_.endPart();
    for (const Part& part : partsBesideSheet(page_, columns_, rows_)) {
        archive_.writePart(part.name, part.bytes);
    }
    archive_.finish();
}

/// Begins a cell with room for `bytes` of its text; returns where what follows the number of the row goes.
char* SheetWriter::startText(CellKind kind, std::size_t bytes) {
    return startCell(nextCell(bytes).texts[static_cast<std::size_t>(kind)]);
}

char* SheetWriter::startOther(CellKind kind) {
    return startCell(nextCell(longestNumber).others[static_cast<std::size_t>(kind)]);
}

char* SheetWriter::startCell(const std::string& start) {
    return append(append(buffer_.data() + used_, start), rowNumber_);
}

/// Makes room for `bytes` of a cell's value, and begins the row with its first cell.
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
    return cells_[column_++];
}

void SheetWriter::startRow() {
    lines_ = 1;
    rowNumber_ = std::to_string(rows_ + 1);
    const std::string start = "<row r=\"" + rowNumber_ + "\" ht=\"";
    height_ = used_ + start.size();
    endCell(append(append(buffer_.data() + used_, start), tallestRow), "\">");
}

void SheetWriter::endCell(char* out, std::string_view end) {
    used_ = static_cast<std::size_t>(append(out, end) - buffer_.data());
}

/// Makes the row high enough for the text of the cell that was written last, beside a reserve in its width.
void SheetWriter::needLines(std::string_view text, int reserve, const FontWidths& widths) {
    lines_ = std::max(lines_, linesOf(text, cells_[column_ - 1].wrapWidth - reserve, widths));
}

void SheetWriter::closeRow() {
    if (column_ != columns_.size()) {
        throw std::logic_error("a row of a sheet has too few cells");
    }
    append(buffer_.data() + height_, heightText(lines_));
    // A cell leaves at least its frame unused behind it.
    endCell(buffer_.data() + used_, "</row>");
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
