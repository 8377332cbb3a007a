#pragma once

#include "xlsx/sheet.h"

#include <QByteArray>

#include <span>

/// The looks of cells: each column has one for every kind of its cells.
namespace xlsx {

enum class CellKind { Header, Value, NumberAsText, Footer };

/// The style that a cell of a column names.
[[nodiscard]] int styleOf(std::size_t column, CellKind kind);

/// The part that holds the styles.
[[nodiscard]] QByteArray stylesPart(std::span<const Column> columns);

} // namespace xlsx
