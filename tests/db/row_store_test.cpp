// SPDX-License-Identifier: MIT

#include "db/row_store.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

TEST(RowStore, GivesBackWhatWasPutAcrossStretches) {
    using enum db::FieldKind;
    const std::vector<db::FieldKind> kinds{Integer64, String,    Integer32, String,   Decimal,
                                           String,    Integer32, Integer32, Integer64};
    db::RowStore store(kinds);
    constexpr int rows = 5000;
    const auto name = [](int row) {
        return std::string(static_cast<std::size_t>(row % 1001), static_cast<char>('a' + row % 26));
    };
    for (int row = 0; row < rows; ++row) {
        db::RowStore::RowWriter writer(store);
        writer.putInteger(0, std::numeric_limits<std::int64_t>::min() + row);
        writer.putString(1, name(row));
        writer.putInteger(2, -row);
        writer.putNull(3);
        writer.putInteger(4, row);
        writer.putString(5, name(row + 7));
        writer.putNull(6);
        writer.putInteger(7, std::numeric_limits<std::int32_t>::max());
        writer.putNull(8);
        writer.finish();
    }
    store.seal();
    ASSERT_EQ(store.rowCount(), rows);
    for (int row = 0; row < rows; ++row) {
        ASSERT_EQ(store.integer(row, 0), std::numeric_limits<std::int64_t>::min() + row);
        ASSERT_EQ(store.string(row, 1), name(row));
        ASSERT_EQ(store.integer(row, 2), -row);
        ASSERT_TRUE(store.isNull(row, 3) && store.isNull(row, 6) && store.isNull(row, 8));
        ASSERT_FALSE(store.isNull(row, 5) || store.isNull(row, 7));
        ASSERT_EQ(store.string(row, 3), "");
        ASSERT_EQ(store.string(row, 5), name(row + 7));
        ASSERT_EQ(store.integer(row, 7), std::numeric_limits<std::int32_t>::max());
    }
}

} // namespace
