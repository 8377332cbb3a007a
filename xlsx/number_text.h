#pragma once

#include <cstdint>

namespace xlsx {

/// Characters that writeNumber() may need, for up to 18 fraction digits.
inline constexpr int longestNumber = 24;

/// Writes `units` / 10^`fractionDigits` digit for digit, with a point; returns the end.
[[nodiscard]] char* writeNumber(char* out, std::int64_t units, int fractionDigits);

/// Whether a spreadsheet, which keeps 15 significant digits, holds `units` without loss, wherever the decimal
/// point stands.
[[nodiscard]] bool isExactInSpreadsheet(std::int64_t units);

} // namespace xlsx
