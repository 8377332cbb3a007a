// SPDX-License-Identifier: MIT

#include "base/win1251.h"
#include "db/row_store.h"
#include "grid/rows/row_order.h"
#include "grid/text/collation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>
#include <random>

namespace grid {

TEST(RowOrder, AgreesWithAPlainStableSort) {
    const std::array kinds{db::FieldKind::String, db::FieldKind::Decimal};
    db::RowStore store(kinds);
    std::mt19937 random(7);
    // The last two differ by one dot, far from their beginning.
    const QString longText = QStringLiteral("Трубы стальные электросварные ").repeated(4);
    const QStringList stems{
        "", "Ель", "ЁЛЬ", "Ёлка", "елка", "ТРУБЫ СТАЛЬНЫЕ Э", longText + "ёще", longText + "еще"};
    const QByteArray nul("a\0", 2);
    for (int row = 0; row < 20000; ++row) {
        db::RowStore::RowWriter writer(store);
        const auto choice = static_cast<int>(random() % 12);
        if (choice == 11) {
            writer.putNull(0);
        } else {
            QByteArray text = choice < 8 ? base::win1251::encode(stems[choice]) : nul;
            text += choice % 2 == 0 ? QByteArray::number(random() % 300) : QByteArray();
            text += choice % 3 == 0 ? ",0" + QByteArray::number(random() % 30) : QByteArray();
            text = choice == 6 ? "-" + QByteArray::number(random() % 3000) : text;
            writer.putString(0, text.toStdString());
        }
        if (random() % 10 == 0) {
            writer.putNull(1);
        } else if (random() % 10 == 0) {
            writer.putInteger(1, random() % 2 == 0 ? std::numeric_limits<std::int64_t>::min()
                                                   : std::numeric_limits<std::int64_t>::max());
        } else {
            writer.putInteger(1, static_cast<std::int64_t>(random() % 40) - 20);
        }
        writer.finish();
    }
    store.seal();

    const auto compareField = [&](int field, int left, int right) {
        if (store.isNull(left, field) || store.isNull(right, field)) {
            return static_cast<int>(store.isNull(right, field)) - static_cast<int>(store.isNull(left, field));
        }
        if (field == 0) {
            return collation::compare(store.string(left, 0), store.string(right, 0));
        }
        const std::int64_t a = store.integer(left, 1);
        const std::int64_t b = store.integer(right, 1);
        return a < b ? -1 : static_cast<int>(a > b);
    };
    const std::vector<std::vector<RowOrderKey>> keyLists{{{0, false, false}},
                                                         {{0, false, true}},
                                                         {{1, true, false}},
                                                         {{1, true, true}, {0, false, false}},
                                                         {{0, false, false}, {1, true, true}}};
    for (const auto& keys : keyLists) {
        std::vector<std::int32_t> expected(20000);
        std::iota(expected.begin(), expected.end(), 0);
        std::vector<std::int32_t> rows = expected;
        std::ranges::stable_sort(expected, [&](int left, int right) {
            for (const RowOrderKey& key : keys) {
                const int order = compareField(key.field, left, right);
                if (order != 0) {
                    return key.descending ? order > 0 : order < 0;
                }
            }
            return false;
        });
        sortRows(rows, store, keys);
        EXPECT_EQ(rows, expected);
    }
}

} // namespace grid
