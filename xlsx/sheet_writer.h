#pragma once

#include "xlsx/resources.h"
#include "xlsx/workbook_parts.h"
#include "xlsx/zip_archive.h"

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace xlsx {

/// Writes a workbook of one sheet: a header that stays in view, is printed on every page and carries a
/// filter, rows, and a footer. The cells of a row follow one another, every column has one; a row goes to the
/// device as soon as it is complete. Everything throws what the archive throws, and std::logic_error when a
/// row has too few or too many cells.
class SheetWriter final {
public:
    /// There is at least one column.
    SheetWriter(QIODevice& device, Page page, std::vector<Column> columns);
    Q_DISABLE_COPY_MOVE(SheetWriter)

    /// A text in WIN1251; it stays one whatever it looks like. Throws std::length_error beyond longestText.
    void text(std::string_view win1251);
    /// `units` / 10^`fractionDigits` of the column; as a text where a spreadsheet would lose digits.
    void number(std::int64_t units);
    void blank();
    void endRow();

    /// Writes the row that closes the table: `count` in one column.
    void footer(std::size_t column, std::int64_t count);

    /// Completes the workbook, which is not to be written to any more.
    void finish();

private:
    /// How the cells of a column begin, up to the number of their row. Their names stand last: what differs
    /// from row to row is then followed by what all cells share, which packs better and faster.
    struct Cells {
        std::array<std::string, cellKinds> texts;
        std::array<std::string, cellKinds> others; ///< numbers and blank cells
        int wrapWidth;                             ///< in units of the font
    };

    void writeHeader();
    void startRow();
    [[nodiscard]] char* startText(CellKind kind, std::size_t bytes);
    [[nodiscard]] char* startOther(CellKind kind);
    const Cells& nextCell(std::size_t bytes);
    [[nodiscard]] char* startCell(const std::string& start);
    void endCell(char* out, std::string_view end);
    void needLines(std::string_view text, int reserve, const FontWidths& widths);
    void closeRow();
    void flush();

    const FontWidths regular_ = fontWidths(QStringLiteral("regular"));
    const FontWidths bold_ = fontWidths(QStringLiteral("bold"));
    ZipArchive archive_;
    Page page_;
    std::vector<Column> columns_;
    std::vector<Cells> cells_; // of every column
    std::vector<char> buffer_; // holds whole rows unless one is being written
    std::size_t used_ = 0;
    std::size_t column_ = 0; // of the next cell
    std::size_t height_ = 0; // place of the row's height in the buffer
    int lines_ = 1;          // that the row needs
    std::string rowNumber_;
    int rows_ = 0; // complete ones, the header among them but not the footer
};

} // namespace xlsx
