#pragma once

#include <QStringList>

namespace grid {

/// A row's cells as a line of text that spreadsheets paste: tabs stand between the cells, and a cell that
/// holds tabs, quotes or line breaks is quoted.
[[nodiscard]] QString clipboardLine(QStringList cells);

} // namespace grid
