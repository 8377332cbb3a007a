// SPDX-License-Identifier: MIT

#pragma once

namespace bench {

/// Megabytes of the process that lie in memory, after the heap has given back what it does not need.
[[nodiscard]] double residentMegabytes();

/// Forgets the peak up to now.
void resetPeak();
/// The most megabytes of the process that have lain in memory at once since resetPeak().
[[nodiscard]] double peakMegabytes();

} // namespace bench
