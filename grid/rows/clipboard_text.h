#pragma once

#include <QString>

#include <span>

namespace grid {

class TableModel;

/// Rows `first` to `last` of a model.
struct RowRange {
    int first;
    int last;
};

/// A cell's text, quoted where it holds tabs, quotes or line breaks, so that spreadsheets take it for one
/// cell.
[[nodiscard]] QString clipboardCell(QString cell);

/// The cells of these rows as text that spreadsheets paste: tabs between cells, a line a row.
[[nodiscard]] QString clipboardText(const TableModel& model, std::span<const int> columns,
                                    std::span<const RowRange> rows);

} // namespace grid
