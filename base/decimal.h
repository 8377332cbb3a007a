#pragma once

#include <cstdint>
#include <string>

namespace base {

/// Writes the exact decimal `units` / 10^`fractionDigits` with all its fraction digits and without grouping:
/// decimalText(-5, 2, ',') is "-0,05".
[[nodiscard]] std::string decimalText(std::int64_t units, int fractionDigits, char point);

} // namespace base
