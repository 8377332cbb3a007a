// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace grid {
class Grid;
}

namespace browser {

/// Writes what a grid shows to a workbook, as exporter::exportTable() does; nothing when `grid` is null.
/// `pageHeader` is printed above every page. Meanwhile the grid is disabled and the hourglass is shown.
/// Throws exporter::ExportError.
void exportGrid(grid::Grid* grid, const QString& folder, const QString& name, const QString& pageHeader);

} // namespace browser
