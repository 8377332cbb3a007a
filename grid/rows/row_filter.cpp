// SPDX-License-Identifier: MIT

#include "grid/rows/row_filter.h"

#include "db/data_set.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>

namespace grid {

namespace {

/// A column's filter made ready for many rows.
class Check final {
public:
    explicit Check(const FieldFilter& source)
        : field_(*source.field), rule_(source.filter->rule), contents_(*source.filter, field_) {
        for (const CellValue& value : source.filter->values) {
            values_.insert(toView(value));
        }
    }

    [[nodiscard]] bool passes(const db::RowStore& rows, int row) const {
        const CellView value = cellView(rows, row, field_);
        return contents_.holdsFor(value) &&
               (rule_ == ColumnFilter::Values::Any ||
                values_.contains(value) == (rule_ == ColumnFilter::Values::Only));
    }

private:
    const db::Field& field_;
    ColumnFilter::Values rule_;
    ContentsCheck contents_;
    std::unordered_set<CellView> values_; // views into the filter's own values
};

} // namespace

ContentsCheck::ContentsCheck(const ColumnFilter& filter, const db::Field& field)
    : words_(filter.containedText), condition_(filter.condition), fractionDigits_(field.fractionDigits()) {
    if (condition_ && field.isNumber()) {
        unitCondition_ = condition_->forDigits(fractionDigits_);
    }
}

bool ContentsCheck::holdsFor(const CellView& value) const {
    if (!words_.matches(value, fractionDigits_)) {
        return false;
    }
    if (const auto* const text = std::get_if<std::string_view>(&value)) {
        return !condition_ || condition_->holdsFor(*text);
    }
    if (const auto* const number = std::get_if<std::int64_t>(&value)) {
        return !unitCondition_ || unitCondition_->holdsFor(*number);
    }
    return !condition_;
}

std::vector<std::int32_t> filteredRows(const db::DataSet& dataSet, std::span<const FieldFilter> filters) {
    std::vector<Check> checks;
    checks.reserve(filters.size());
    for (const FieldFilter& filter : filters) {
        checks.emplace_back(filter);
    }
    std::vector<std::int32_t> result;
    for (int row = 0; row < dataSet.rowCount(); ++row) {
        if (std::ranges::all_of(checks,
                                [&](const Check& check) { return check.passes(dataSet.rows(), row); })) {
            result.push_back(row);
        }
    }
    return result;
}

bool takesConditions(const db::DataSet& dataSet, const db::Field& field) {
    if (field.isNumber()) {
        return true;
    }
    // Rows from all over the table stand for the others.
    constexpr int sampleSize = 1000;
    const int step = std::max(1, dataSet.rowCount() / sampleSize);
    int numbers = 0;
    int others = 0;
    for (int row = 0; row < dataSet.rowCount(); row += step) {
        const std::string_view text = dataSet.rows().string(row, field.index());
        if (!text.empty()) {
            ++(ExactNumber::read(text) ? numbers : others);
        }
    }
    return numbers > others;
}

} // namespace grid
