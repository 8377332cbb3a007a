// SPDX-License-Identifier: MIT

#pragma once

#include "grid/text/cell_value.h"

#include <cstdint>
#include <set>
#include <span>
#include <vector>

namespace db {
class DataSet;
}

namespace grid {

/// A value of a column with the number of rows that hold it.
struct CountedValue {
    CellValue value;
    int rows = 0;
};

/// The different values of a column in some rows of an open dataset, in the order of a sorted column. Those
/// `alwaysListed` are among them, whether the rows hold them or not.
[[nodiscard]] std::vector<CountedValue> distinctValues(const db::DataSet& dataSet, const db::Field& field,
                                                       std::span<const std::int32_t> rows,
                                                       const std::set<CellValue>& alwaysListed);

} // namespace grid
