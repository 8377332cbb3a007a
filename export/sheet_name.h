#pragma once

#include <QString>

namespace exporter {

/// The name of a sheet that comes closest to `name`: at most 31 UTF-16 units, what sheet names may not hold
/// replaced by "_", never empty and never the one that spreadsheets keep for themselves. Blanks stay.
[[nodiscard]] QString sheetName(const QString& name);

} // namespace exporter
