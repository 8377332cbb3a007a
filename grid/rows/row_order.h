// SPDX-License-Identifier: MIT

#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace db {
class RowStore;
}

namespace grid {

/// One field that rows are ordered by.
struct RowOrderKey {
    int field = 0; ///< index in the row store
    bool isNumber = false;
    bool descending = false;
};

/// Puts `rows` (row numbers of `store`, ascending) in the order of `keys`, the first key first. Numbers go by
/// value, texts as collation::compare() does, NULL before everything. Rows that are equal in all keys keep
/// their order, also when they descend.
void sortRows(std::vector<std::int32_t>& rows, const db::RowStore& store, std::span<const RowOrderKey> keys);

} // namespace grid
