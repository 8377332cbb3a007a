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

/// The cells of these rows as text that spreadsheets paste: tabs between cells, a line a row; cells that hold
/// tabs, quotes or line breaks are quoted.
[[nodiscard]] QString clipboardText(const TableModel& model, std::span<const int> columns,
                                    std::span<const RowRange> rows);

} // namespace grid
