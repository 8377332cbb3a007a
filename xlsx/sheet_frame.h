#pragma once

#include "xlsx/sheet.h"

#include <QByteArray>

#include <span>
#include <vector>

/// The part of a sheet around its rows.
namespace xlsx {

/// Pixels of the columns in the sheet. Where one is wider than a sheet allows all shrink, so that their
/// proportions stay.
[[nodiscard]] std::vector<int> sheetWidths(std::span<const Column> columns);

/// "A" for column 0.
[[nodiscard]] QByteArray columnLetters(std::size_t column);

[[nodiscard]] QByteArray beforeRows(std::span<const int> widths);

/// `table` is a range such as A1:B9.
[[nodiscard]] QByteArray afterRows(const Page& page, const QByteArray& table);

} // namespace xlsx
