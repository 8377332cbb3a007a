// SPDX-License-Identifier: MIT

#pragma once

#include <cstring>

namespace db {

/// The value that lies at `bytes`, aligned or not.
template <typename Value>
[[nodiscard]] Value load(const unsigned char* bytes) noexcept {
    Value value{};
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

} // namespace db
