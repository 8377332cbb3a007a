#pragma once

#include <QString>

/// The names of an export: its file's and its own.
namespace exporter {

/// The file that is written for `name`: ".xlsx" stands in the place of everything from the last point on, or
/// at the end when no point follows the last path delimiter.
[[nodiscard]] QString workbookFileName(const QString& name);

/// `fileName` without its folder and without everything from its last point on.
[[nodiscard]] QString exportName(const QString& fileName);

} // namespace exporter
