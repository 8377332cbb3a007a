#pragma once

#include "xlsx/sheet.h"

#include <QByteArray>

#include <span>
#include <vector>

/// The parts of a workbook, but for the rows of its sheet.
namespace xlsx {

/// Each column has a style for every kind of its cells.
enum class CellKind { Header, Value, NumberAsText, Footer };
inline constexpr int cellKinds = 4;

/// The style that a cell of a column names.
[[nodiscard]] int styleOf(std::size_t column, CellKind kind);

/// "A" for column 0.
[[nodiscard]] QByteArray columnLetters(std::size_t column);

/// Pixels of the columns in the sheet. Where one is wider than a sheet allows all shrink, so that their
/// proportions stay.
[[nodiscard]] std::vector<int> sheetWidths(std::span<const Column> columns);

struct Part {
    const char* name;
    QByteArray bytes;
};

/// The parts beside the sheet; `lastRow` ends the table that the filter covers.
[[nodiscard]] std::vector<Part> partsBesideSheet(const Page& page, std::span<const Column> columns,
                                                 int lastRow);

inline constexpr auto sheetPartName = "xl/worksheets/sheet1.xml";
[[nodiscard]] QByteArray beforeRows(std::span<const Column> columns);
[[nodiscard]] QByteArray afterRows(const Page& page, std::size_t columnCount, int lastRow);

} // namespace xlsx
