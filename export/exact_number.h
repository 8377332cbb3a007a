#pragma once

#include <cstdint>
#include <optional>

namespace exporter {

/// The number `units` / 10^`digits` as a spreadsheet holds it, or nothing when it has more than the 15
/// significant digits that a spreadsheet keeps. `digits` is 0 to 18.
[[nodiscard]] std::optional<double> exactNumber(std::int64_t units, int digits);

} // namespace exporter
