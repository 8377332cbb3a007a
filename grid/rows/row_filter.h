// SPDX-License-Identifier: MIT

#pragma once

#include "grid/text/cell_value.h"
#include "grid/text/number_condition.h"
#include "grid/text/text_matcher.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <set>
#include <span>
#include <vector>

namespace db {
class DataSet;
class Field;
} // namespace db

namespace grid {

/// What the rows must hold in one column to be shown.
struct ColumnFilter {
    enum class Values : std::uint8_t { Any, Only, AllBut };

    QString containedText; ///< words that TextMatcher finds; empty: any text
    Values rule = Values::Any;
    std::set<CellValue> values; ///< those that `rule` speaks of
    std::optional<NumberCondition> condition = std::nullopt;

    [[nodiscard]] bool isEmpty() const {
        return containedText.isEmpty() && rule == Values::Any && !condition;
    }
};

/// Whether values hold the words of a column's filter and fulfil its condition; made ready for many of them.
class ContentsCheck final {
public:
    /// `filter` must outlive the check.
    ContentsCheck(const ColumnFilter& filter, const db::Field& field);

    [[nodiscard]] bool holdsFor(const CellView& value) const;

private:
    TextMatcher words_;
    const std::optional<NumberCondition>& condition_;
    std::optional<UnitCondition> unitCondition_; // of a number field
    int fractionDigits_;
};

/// A filter with the field that it is about.
struct FieldFilter {
    const db::Field* field;
    const ColumnFilter* filter;
};

/// The rows of an open dataset that pass every filter, ascending.
[[nodiscard]] std::vector<std::int32_t> filteredRows(const db::DataSet& dataSet,
                                                     std::span<const FieldFilter> filters);

/// Whether number conditions make sense for a field: it is a number, or most of its texts are.
[[nodiscard]] bool takesConditions(const db::DataSet& dataSet, const db::Field& field);

} // namespace grid
