// SPDX-License-Identifier: MIT

#include "grid/rows/long_values.h"

#include "base/decimal.h"
#include "db/field.h"
#include "db/row_store.h"

#include <algorithm>
#include <string_view>

namespace grid {

namespace {

/// Places whose values have the same length, and the texts there.
struct SameLength {
    std::vector<int> places;
    std::vector<std::string_view> texts;
};

/// Letters are of different widths: this many texts of a length give the widest, nearly enough.
constexpr std::size_t placesOfALength = 16;

} // namespace

std::vector<int> placesOfLongValues(const db::RowStore& store, const db::Field& field,
                                    std::span<const std::int32_t> storeRows,
                                    std::span<const std::int32_t> leading, std::size_t limit) {
    std::vector<SameLength> byLength;
    for (std::size_t place = 0; place < storeRows.size(); ++place) {
        // Sorted rows lie apart in the store.
        if (place + db::RowStore::prefetchAhead < storeRows.size()) {
            store.prefetch(storeRows[place + db::RowStore::prefetchAhead]);
        }
        std::string_view text;
        std::size_t length = leading.empty() ? 0 : static_cast<std::size_t>(leading[place]);
        if (field.isNumber()) {
            const std::int64_t number = store.integer(storeRows[place], field.index());
            length += base::DecimalCharacters(number, field.fractionDigits()).view().size();
        } else {
            text = store.string(storeRows[place], field.index());
            length += text.size();
        }
        if (length >= byLength.size()) {
            byLength.resize(length + 1);
        }
        SameLength& same = byLength[length];
        if (same.places.size() == placesOfALength) {
            continue;
        }
        if (field.isNumber() || std::ranges::find(same.texts, text) == same.texts.end()) {
            same.places.push_back(static_cast<int>(place));
            same.texts.push_back(text);
        }
    }
    std::vector<int> longest;
    for (auto same = byLength.rbegin(); same != byLength.rend() && longest.size() < limit; ++same) {
        const std::size_t taken = std::min(same->places.size(), limit - longest.size());
        longest.insert(longest.end(), same->places.begin(),
                       same->places.begin() + static_cast<std::ptrdiff_t>(taken));
    }
    return longest;
}

} // namespace grid
