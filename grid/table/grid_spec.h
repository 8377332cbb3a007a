#pragma once

#include "grid/rows/column.h"

#include <span>

namespace grid {

/// One row of the table of grids.
struct GridSpec {
    std::u16string_view grid;            ///< object name of the control
    std::u16string_view level;           ///< object name of its page
    std::u16string_view view;            ///< object name of the table view on the page
    std::span<const ColumnSpec> columns; ///< must outlive the grid
    std::u16string_view keyField;        ///< the field that tells the rows apart
    std::u16string_view footerField;     ///< the column that the count of rows stands under; empty for none
};

} // namespace grid
