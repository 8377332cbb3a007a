// SPDX-License-Identifier: MIT

#pragma once

#include <cstddef>

namespace soak {

/// Bytes that the program has allocated and not yet freed.
[[nodiscard]] std::size_t allocatedBytes();

} // namespace soak
