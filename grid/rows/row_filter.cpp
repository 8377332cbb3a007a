#include "grid/rows/row_filter.h"

#include "db/data_set.h"
#include "grid/text/text_matcher.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>

namespace grid {

namespace {

/// A column's filter made ready for many rows.
class Check final {
public:
    explicit Check(const FieldFilter& source)
        : field_(*source.field),
          rule_(source.filter->rule),
          text_(source.filter->containedText),
          condition_(source.filter->condition) {
        if (condition_ && field_.isNumber()) {
            unitCondition_ = condition_->forDigits(field_.fractionDigits());
        }
        for (const CellValue& value : source.filter->values) {
            values_.insert(toView(value));
        }
    }

    [[nodiscard]] bool passes(const db::DataSet& dataSet, int row) const {
        if (!text_.isEmpty() && text_.findIn(dataSet, row, field_).isEmpty()) {
            return false;
        }
        if (condition_ && !holds(dataSet.rows(), row)) {
            return false;
        }
        if (rule_ == ColumnFilter::Values::Any) {
            return true;
        }
        const bool listed = values_.contains(cellView(dataSet.rows(), row, field_));
        return listed == (rule_ == ColumnFilter::Values::Only);
    }

private:
    [[nodiscard]] bool holds(const db::RowStore& rows, int row) const {
        const int index = field_.index();
        if (!field_.isNumber()) {
            return condition_->holdsFor(rows.string(row, index));
        }
        return !rows.isNull(row, index) && unitCondition_->holdsFor(rows.integer(row, index));
    }

    const db::Field& field_;
    ColumnFilter::Values rule_;
    TextMatcher text_;
    const std::optional<NumberCondition>& condition_;
    std::optional<UnitCondition> unitCondition_; // of a number field
    std::unordered_set<CellView> values_;        // views into the filter's own values
};

} // namespace

std::vector<std::int32_t> filteredRows(const db::DataSet& dataSet, std::span<const FieldFilter> filters) {
    std::vector<Check> checks;
    checks.reserve(filters.size());
    for (const FieldFilter& filter : filters) {
        checks.emplace_back(filter);
    }
    std::vector<std::int32_t> result;
    for (int row = 0; row < dataSet.rowCount(); ++row) {
        if (std::ranges::all_of(checks, [&](const Check& check) { return check.passes(dataSet, row); })) {
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
