#include "grid/rows/distinct_values.h"

#include "db/data_set.h"
#include "grid/rows/collation.h"
#include "grid/rows/row_order.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <unordered_map>

namespace grid {
namespace {

bool standsBefore(const CountedValue& left, const CountedValue& right) {
    const auto* const leftText = std::get_if<std::string>(&left.value);
    const auto* const rightText = std::get_if<std::string>(&right.value);
    return leftText && rightText ? collation::compare(*leftText, *rightText) < 0 : left.value < right.value;
}

/// The values of `listed` that are not among the counted ones.
std::vector<CountedValue> missingValues(const std::set<CellValue>& listed,
                                        const std::unordered_map<CellView, int>& counted) {
    std::vector<CountedValue> missing;
    for (const CellValue& value : listed) {
        if (!counted.contains(toView(value))) {
            missing.push_back({value});
        }
    }
    std::ranges::stable_sort(missing, standsBefore);
    return missing;
}

} // namespace

std::vector<CountedValue> distinctValues(const db::DataSet& dataSet, const db::Field& field,
                                         std::span<const std::int32_t> rows,
                                         const std::set<CellValue>& alwaysListed) {
    std::unordered_map<CellView, int> counts;
    std::vector<std::int32_t> firstRows; // one for each value
    for (const std::int32_t row : rows) {
        if (++counts[cellView(dataSet.rows(), row, field)] == 1) {
            firstRows.push_back(row);
        }
    }
    const RowOrderKey key{field.index(), field.isNumber(), false};
    sortRows(firstRows, dataSet.rows(), {&key, 1});

    std::vector<CountedValue> present;
    present.reserve(firstRows.size());
    for (const std::int32_t row : firstRows) {
        const CellView value = cellView(dataSet.rows(), row, field);
        present.push_back({toValue(value), counts.at(value)});
    }
    std::vector<CountedValue> missing = missingValues(alwaysListed, counts);
    if (missing.empty()) {
        return present;
    }
    std::vector<CountedValue> all;
    all.reserve(present.size() + missing.size());
    std::merge(std::move_iterator(present.begin()), std::move_iterator(present.end()),
               std::move_iterator(missing.begin()), std::move_iterator(missing.end()),
               std::back_inserter(all), standsBefore);
    return all;
}

} // namespace grid
