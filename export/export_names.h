#pragma once

#include <QString>

/// The names of an export: its file's, its own and its sheet's.
namespace exporter {

/// The file that is written for `name`: ".xlsx" stands in the place of everything from the last point on, or
/// at the end when no point follows the last path delimiter.
[[nodiscard]] QString workbookFileName(const QString& name);

/// `fileName` without its folder and without everything from its last point on.
[[nodiscard]] QString exportName(const QString& fileName);

/// The name of a sheet that comes closest to `name`: at most 31 UTF-16 units, what sheet names may not hold
/// replaced by "_", never empty and never the one that spreadsheets keep for themselves. Blanks stay.
[[nodiscard]] QString sheetName(const QString& name);

} // namespace exporter
