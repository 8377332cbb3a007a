// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace db {
class Field;
class RowStore;
} // namespace db

namespace grid {

/// At most `limit` of the places in `storeRows` whose values are likely to be shown the widest: those with
/// the most characters, a few different ones of each length. `leading` says for each place how many
/// characters' room stands before the value; empty for none. Nothing is decoded and nothing measured, so that
/// a million rows take no time that anybody notices.
[[nodiscard]] std::vector<int> placesOfLongValues(const db::RowStore& store, const db::Field& field,
                                                  std::span<const std::int32_t> storeRows,
                                                  std::span<const std::int32_t> leading, std::size_t limit);

} // namespace grid
