// SPDX-License-Identifier: MIT

#include "xlsx/sheet_writer.h"

#include "base/decimal.h"
#include "base/win1251.h"
#include "xlsx/cell_text.h"

#include <algorithm>
#include <stdexcept>

namespace xlsx {

namespace {

constexpr std::size_t flushedBytes = 65536;

// Calibri 11 sets a line in 15 points; a row has at most 409.5 (ECMA-376 part 1, 18.3.1.73).
constexpr int linePoints = 15;
constexpr int tallestRowLines = 27;

// In units of the font: LibreOffice makes the seven pixels of a digit 5.55 points.
constexpr int tenPixels = 1475;
constexpr int padding = 600; // both sides of a cell, 0.35 mm each, and a reserve
constexpr int filterButtonPixels = 20;

// After the number of a cell's row.
constexpr std::string_view textStart = R"("><is><t>)";
constexpr std::string_view keptTextStart = R"("><is><t xml:space="preserve">)";
constexpr std::string_view textEnd = "</t></is></c>";
constexpr std::string_view numberStart = R"("><v>)";
constexpr std::string_view numberEnd = "</v></c>";
constexpr std::string_view blankEnd = R"("/>)";

/// How the cells of a column begin, up to the number of their row. Their names stand last: what differs from
/// row to row is then followed by what all cells share, which packs better and faster.
std::array<std::string, cellKinds> cellStarts(std::size_t column) {
    std::array<std::string, cellKinds> starts;
    for (std::size_t i = 0; i < cellKinds; ++i) {
        const auto kind = static_cast<CellKind>(i);
        const bool text = kind == CellKind::Header || kind == CellKind::Text;
        starts[i] = "<c s=\"" + std::to_string(styleOf(column, kind)) + (text ? R"(" t="inlineStr)" : "") +
                    "\" r=\"" + columnLetters(column).toStdString();
    }
    return starts;
}

} // namespace

SheetWriter::SheetWriter(QIODevice& device, Page page, std::vector<Column> columns)
    : archive_(device), page_(std::move(page)), columns_(fittedToSheet(std::move(columns))) {
    while (starts_.size() < columns_.size()) {
        starts_.push_back(cellStarts(starts_.size()));
    }
    archive_.beginPart("xl/worksheets/sheet1.xml");
    archive_.write(beforeRows(columns_));
    writeHeader();
}

void SheetWriter::writeHeader() {
    const FontWidths bold = fontWidths(resource(QStringLiteral("bold_widths")));
    for (const Column& column : columns_) {
        writeCell(CellKind::Header, keptTextStart, textOf(column.header).toStdString(), textEnd);
        // Room beside or below the caption for the button of the filter, which covers a cell's lower right.
        needLines(base::win1251::encode(column.header).toStdString(), bold, filterButtonPixels);
    }
    endRow();
}

void SheetWriter::text(std::string_view win1251) {
    if (win1251.empty()) {
        blank();
        return;
    }
    if (win1251.size() > longestText) {
        throw std::length_error("a text is too long for a cell of a sheet");
    }
    const bool kept = QByteArrayView(win1251).trimmed().size() < std::ssize(win1251);
    text_.clear();
    appendText(text_, win1251);
    writeCell(CellKind::Text, kept ? keptTextStart : textStart, text_, textEnd);
    needLines(win1251, regular_, 0);
}

void SheetWriter::number(std::int64_t units) {
    const int digits = columns_.at(column_).fractionDigits.value_or(0);
    if (!base::isExactInSpreadsheet(units)) {
        text(base::decimalText(units, digits, page_.decimalPoint.toLatin1()));
        return;
    }
    writeCell(CellKind::NumberOrBlank, numberStart, base::decimalText(units, digits, '.'), numberEnd);
}

void SheetWriter::blank() {
    writeCell(CellKind::NumberOrBlank, {}, {}, blankEnd);
}

void SheetWriter::endRow() {
    if (column_ != columns_.size()) {
        throw std::logic_error("a row of a sheet has too few cells");
    }
    const std::string height = lines_ > tallestRowLines ? "409.5" : std::to_string(lines_ * linePoints);
    complete_ += "<row r=\"" + rowNumber_ + "\" ht=\"" + height + "\">";
    complete_ += cells_;
    complete_ += "</row>";
    if (complete_.size() >= flushedBytes) {
        archive_.write(complete_);
        complete_.clear();
    }
    cells_.clear();
    column_ = 0;
    lines_ = 1;
    rowNumber_ = std::to_string(++row_);
}

void SheetWriter::finish(std::optional<std::size_t> countColumn) {
    const int lastRow = row_ - 1;
    if (countColumn) {
        writeFooter(*countColumn);
    }
    archive_.write(complete_);
    archive_.write(afterRows(page_, columns_.size(), lastRow));
    for (const Part& part : partsBesideSheet(page_, columns_, lastRow)) {
        archive_.beginPart(part.name);
        archive_.write(part.bytes);
    }
    archive_.finish();
}

void SheetWriter::writeFooter(std::size_t countColumn) {
    constexpr int rowsAround = 2; // the header and this one
    const std::string count = std::to_string(row_ - rowsAround);
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        const bool counts = i == countColumn;
        writeCell(CellKind::Footer, counts ? numberStart : "", counts ? count : "",
                  counts ? numberEnd : blankEnd);
    }
    endRow();
}

void SheetWriter::writeCell(CellKind kind, std::string_view start, std::string_view value,
                            std::string_view end) {
    cells_ += starts_.at(column_)[static_cast<std::size_t>(kind)];
    ++column_;
    cells_ += rowNumber_;
    cells_ += start;
    cells_ += value;
    cells_ += end;
}

/// Makes the row high enough for the text of the last cell, which has to leave some pixels of it free.
void SheetWriter::needLines(std::string_view win1251, const FontWidths& widths, int reservedPixels) {
    const int pixels = columns_[column_ - 1].width - reservedPixels;
    lines_ = std::max(lines_, linesOf(win1251, pixels * tenPixels / 10 - padding, widths));
}

} // namespace xlsx
