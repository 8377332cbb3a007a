// SPDX-License-Identifier: MIT

#pragma once

#include "grid/rows/column.h"

#include <span>

namespace grid {

/// One row of the table of grids.
struct GridSpec {
    QStringView grid;                    ///< object name of the control
    QStringView level;                   ///< object name of its page
    QStringView view;                    ///< object name of the table view on the page
    std::span<const ColumnSpec> columns; ///< must outlive the grid
    QStringView footerField;             ///< the column that the count of rows stands under; empty for none
};

} // namespace grid
