#pragma once

#include <QString>

namespace grid {
class Grid;
}

namespace exporter {

/// Writes the view of `grid` as it is shown (visible columns in their order, rows in their order and under
/// their filter, footer) to a workbook, replacing an earlier one. The file is workbookFileName(`fileName`),
/// its one sheet is named after it. Does nothing when `grid` is null. Meanwhile the grid is disabled and the
/// hourglass is shown. `pageHeader` is printed above every page. Throws ExportError; an earlier workbook is
/// then left whole, and nothing else is left.
void exportGrid(const QString& fileName, grid::Grid* grid, const QString& pageHeader = {});

} // namespace exporter
