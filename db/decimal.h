#pragma once

#include <QString>

#include <cstdint>

namespace db {

/// Wide enough for the sum of as many 64-bit numbers as there can be rows.
__extension__ using WideInteger = __int128;

/// Writes the exact decimal `units` / 10^`digits` with all its fraction digits and without grouping:
/// decimalText(-5, 2, ',') is "-0,05". `digits` is 0 to 18.
[[nodiscard]] QString decimalText(std::int64_t units, int digits, QChar decimalPoint);

/// The same for a sum.
[[nodiscard]] QString wideDecimalText(WideInteger units, int digits, QChar decimalPoint);

} // namespace db
