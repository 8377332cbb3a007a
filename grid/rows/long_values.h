#pragma once

#include <functional>
#include <vector>

namespace db {
class Field;
class RowStore;
} // namespace db

namespace grid {

/// Where the value of a shown row is found, and what stands before it.
struct ValuePlace {
    int storeRow;
    int leadingCharacters = 0; ///< as much room as so many characters take
};

/// At most `limit` of the rows from 0 to `rowCount` - 1 whose values have the most characters; rows with the
/// same text count once. Nothing is decoded and nothing measured, so that a million rows take no time that
/// anybody notices.
[[nodiscard]] std::vector<int> rowsWithLongValues(const db::RowStore& rows, const db::Field& field,
                                                  int rowCount,
                                                  const std::function<ValuePlace(int row)>& placeOf,
                                                  std::size_t limit);

} // namespace grid
