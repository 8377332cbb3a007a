// SPDX-License-Identifier: MIT

#include "grid/rows/distinct_values.h"

#include "db/data_set.h"
#include "grid/rows/row_order.h"
#include "grid/text/collation.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <unordered_map>

namespace grid {

namespace {

/// Not noexcept, so that the library keeps it with every entry instead of reckoning it again for neighbours.
struct CellHash {
    std::size_t operator()(const CellView& value) const { return std::hash<CellView>()(value); }
};

/// A row for every value.
using RowOfValue = std::unordered_map<CellView, std::int32_t, CellHash>;

bool standsBefore(const CountedValue& left, const CountedValue& right) {
    const auto* const leftText = std::get_if<std::string>(&left.value);
    const auto* const rightText = std::get_if<std::string>(&right.value);
    return leftText && rightText ? collation::compare(*leftText, *rightText) < 0 : left.value < right.value;
}

/// The values of `listed` that are not among those present.
std::vector<CountedValue> missingValues(const std::set<CellValue>& listed, const RowOfValue& present) {
    std::vector<CountedValue> missing;
    for (const CellValue& value : listed) {
        if (!present.contains(toView(value))) {
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
    RowOfValue firstRowOf;
    firstRowOf.reserve(rows.size());
    std::vector<std::int32_t> firstRows;
    std::vector<int> counts(static_cast<std::size_t>(dataSet.rowCount())); // by first row
    for (const std::int32_t row : rows) {
        const auto [place, isNew] = firstRowOf.try_emplace(cellView(dataSet.rows(), row, field), row);
        if (isNew) {
            firstRows.push_back(row);
        }
        ++counts[static_cast<std::size_t>(place->second)];
    }
    const RowOrderKey key{field.index(), field.isNumber(), false};
    sortRows(firstRows, dataSet.rows(), {&key, 1});

    std::vector<CountedValue> present;
    present.reserve(firstRows.size());
    for (const std::int32_t row : firstRows) {
        present.push_back(
            {toValue(cellView(dataSet.rows(), row, field)), counts[static_cast<std::size_t>(row)]});
    }
    std::vector<CountedValue> missing = missingValues(alwaysListed, firstRowOf);
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
