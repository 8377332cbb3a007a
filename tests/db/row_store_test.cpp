// SPDX-License-Identifier: MIT

#include "db/row_store.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(RowStore, GivesBackWhatWasPutAcrossStretches) {
    using enum db::FieldKind;
    const std::vector<db::FieldKind> kinds{Integer64, String, String, Integer32, Integer64};
    db::RowStore store(kinds);
    constexpr int rows = 5000;
    const auto name = [](int row) {
        return std::string(static_cast<std::size_t>(row % 1001), static_cast<char>('a' + row % 26));
    };
    for (int row = 0; row < rows; ++row) {
        db::RowStore::RowWriter writer(store);
        writer.putInteger(0, std::numeric_limits<std::int64_t>::min() + row);
        writer.putString(1, name(row));
        writer.putNull(2);
        writer.putInteger(3, -row);
        writer.putNull(4);
        writer.finish();
    }
    store.seal();
    ASSERT_EQ(store.rowCount(), rows);
    for (int row = 0; row < rows; ++row) {
        ASSERT_EQ(store.integer(row, 0), std::numeric_limits<std::int64_t>::min() + row);
        ASSERT_EQ(store.string(row, 1), name(row));
        ASSERT_EQ(store.string(row, 2), "");
        ASSERT_EQ(store.integer(row, 3), -row);
        ASSERT_TRUE(store.isNull(row, 2) && store.isNull(row, 4));
        ASSERT_FALSE(store.isNull(row, 1) || store.isNull(row, 3));
    }
}

} // namespace
