#pragma once

#include <qnamespace.h>
#include <QtGlobal>

#include <span>
#include <string_view>

namespace grid {

/// One row of the column table of a grid.
struct ColumnSpec {
    std::u16string_view name;  ///< object name of the column
    std::u16string_view field; ///< column name of the dataset's field
    bool visible = true;
    int width = 0; ///< design width in pixels, relative to the other columns; 0 means defaultColumnWidth
    Qt::AlignmentFlag headerAlignment = Qt::AlignLeft;
};

/// Design width of a column that sets none, in pixels.
inline constexpr int defaultColumnWidth = 64;

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
