#pragma once

#include <QChar>
#include <QString>

#include <cstdint>
#include <set>
#include <span>
#include <string>
#include <variant>
#include <vector>

namespace db {
class DataSet;
class Field;
} // namespace db

namespace grid {

/// A value as it is held: nothing (NULL and the empty text), a number in units of its last digit, or the
/// bytes of a text.
using CellValue = std::variant<std::monostate, std::int64_t, std::string>;

/// The value as the cells show it; empty for nothing.
[[nodiscard]] QString cellValueText(const CellValue& value, const db::Field& field, QChar decimalPoint);

/// What the rows must hold in one column to be shown.
struct ColumnFilter {
    enum class Values : std::uint8_t { Any, Only, AllBut };

    QString containedText; ///< empty: any text
    Values rule = Values::Any;
    std::set<CellValue> values; ///< those that `rule` speaks of

    [[nodiscard]] bool isEmpty() const { return containedText.isEmpty() && rule == Values::Any; }
};

/// A filter with the field that it is about.
struct FieldFilter {
    const db::Field* field;
    const ColumnFilter* filter;
};

/// The rows of an open dataset that pass every filter, ascending.
[[nodiscard]] std::vector<std::int32_t>
filteredRows(const db::DataSet& dataSet, std::span<const FieldFilter> filters, QChar decimalPoint);

/// Values that occur in a column.
struct DistinctValues {
    std::vector<CellValue> values; ///< in the order of a sorted column
    bool complete = true;          ///< false when there are more
};

/// The values of a column, at most `limit`. Those `alwaysListed` are among them whether the rows hold them or
/// not, and even beyond the limit.
[[nodiscard]] DistinctValues distinctValues(const db::DataSet& dataSet, const db::Field& field,
                                            const std::set<CellValue>& alwaysListed, std::size_t limit);

} // namespace grid
