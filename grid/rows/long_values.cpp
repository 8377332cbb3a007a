#include "grid/rows/long_values.h"

#include "db/field.h"
#include "db/row_store.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>

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

struct Candidate {
    std::size_t length;
    int row;
    bool operator>(const Candidate& other) const { return length > other.length; }
};

} // namespace

std::vector<int> rowsWithLongValues(const db::RowStore& rows, const db::Field& field, int rowCount,
                                    const std::function<ValuePlace(int row)>& placeOf, std::size_t limit) {
    std::vector<Candidate> longest; // a heap with the shortest of them on top
    std::unordered_set<std::string_view> seen;
    for (int row = 0; row < rowCount; ++row) {
        const ValuePlace place = placeOf(row);
        const std::string_view text =
            field.isNumber() ? std::string_view() : rows.string(place.storeRow, field.index());
        const std::size_t length =
            static_cast<std::size_t>(place.leadingCharacters) +
            (field.isNumber()
                 ? numberLength(rows.integer(place.storeRow, field.index()), field.fractionDigits())
                 : text.size());
        const bool isFull = longest.size() == limit;
        if (isFull && length <= longest.front().length) {
            continue;
        }
        // Where a text stands deeper in a tree than before, it counts again.
        const bool isRepeated = !text.empty() && place.leadingCharacters == 0 && !seen.insert(text).second;
        if (isRepeated) {
            continue;
        }
        if (isFull) {
            std::ranges::pop_heap(longest, std::greater());
            longest.pop_back();
        }
        longest.push_back({length, row});
        std::ranges::push_heap(longest, std::greater());
    }
    std::vector<int> result(longest.size());
    std::ranges::transform(longest, result.begin(), &Candidate::row);
    return result;
}

} // namespace grid
