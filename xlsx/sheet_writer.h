// SPDX-License-Identifier: MIT

#pragma once

#include "xlsx/line_breaking.h"
#include "xlsx/workbook_parts.h"
#include "xlsx/zip_archive.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace xlsx {

/// Writes a workbook of one sheet: a header that stays in view, is printed on every page and carries a
/// filter, rows, and a footer. The cells of a row follow one another, every column has one; a row goes to the
/// device soon after it is complete. Everything throws what the archive throws, and std::logic_error when a
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

    /// Completes the workbook, which is not to be written to any more; a last row tells in `countColumn` how
    /// many were written.
    void finish(std::optional<std::size_t> countColumn);

private:
    void writeHeader();
    void writeCell(CellKind kind, std::string_view start, std::string_view value, std::string_view end);
    void needLines(std::string_view win1251, const FontWidths& widths, int reservedPixels);
    void writeFooter(std::size_t countColumn);

    const FontWidths regular_ = fontWidths(resource(QStringLiteral("regular_widths")));
    ZipArchive archive_;
    Page page_;
    std::vector<Column> columns_;
    std::vector<std::array<std::string, cellKinds>> starts_; // of each column's cells
    std::string complete_;                                   // rows, but for those that are in the archive
    std::string cells_;                                      // of the row that is being written
    std::string text_;                                       // a cell's, reused for its memory
    std::size_t column_ = 0;                                 // of its next cell
    int lines_ = 1;                                          // that it needs
    int row_ = 1;                                            // its number
    std::string rowNumber_ = "1";                            // the same, as a text
};

} // namespace xlsx
