#include "grid/rows/long_values.h"

#include "db/field.h"
#include "db/row_store.h"

#include <algorithm>
#include <string_view>

namespace grid {

namespace {

/// How many characters decimalText() gives, about.
std::size_t numberLength(std::int64_t number, int fractionDigits) {
    std::size_t digits = 1;
    for (std::int64_t rest = number / 10; rest != 0; rest /= 10) {
        ++digits;
    }
    const auto whole = static_cast<std::size_t>(fractionDigits) + 1;
    return std::max(digits, whole) + (number < 0 ? 1 : 0);
}

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
        constexpr std::size_t ahead = 12;
        if (place + ahead < storeRows.size()) {
            store.prefetch(storeRows[place + ahead]);
        }
        std::string_view text;
        std::size_t length = leading.empty() ? 0 : static_cast<std::size_t>(leading[place]);
        if (field.isNumber()) {
            length += numberLength(store.integer(storeRows[place], field.index()), field.fractionDigits());
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
