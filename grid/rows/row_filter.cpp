#include "grid/rows/row_filter.h"

#include "base/win1251.h"
#include "db/data_set.h"
#include "db/decimal.h"
#include "grid/rows/collation.h"
#include "grid/rows/text_matcher.h"

#include <algorithm>
#include <functional>
#include <string_view>
#include <unordered_set>

namespace grid {
namespace {

/// A cell's value without a copy of its text.
using CellView = std::variant<std::monostate, std::int64_t, std::string_view>;

CellView cellView(const db::RowStore& rows, int row, const db::Field& field) {
    const int index = field.index();
    if (rows.isNull(row, index)) {
        return {};
    }
    if (field.isNumber()) {
        return rows.integer(row, index);
    }
    const std::string_view text = rows.string(row, index);
    return text.empty() ? CellView() : CellView(text);
}

CellValue toValue(const CellView& view) {
    if (const auto* text = std::get_if<std::string_view>(&view)) {
        return std::string(*text);
    }
    if (const auto* number = std::get_if<std::int64_t>(&view)) {
        return *number;
    }
    return {};
}

CellView toView(const CellValue& value) {
    return std::visit([](const auto& held) { return CellView(held); }, value);
}

bool standsBefore(const CellValue& left, const CellValue& right) {
    const auto* leftText = std::get_if<std::string>(&left);
    const auto* rightText = std::get_if<std::string>(&right);
    if (leftText && rightText) {
        const int order = collation::compare(*leftText, *rightText);
        return order != 0 ? order < 0 : *leftText < *rightText;
    }
    return left < right;
}

/// A column's filter made ready for many rows.
class Check final {
public:
    Check(const FieldFilter& source, QChar decimalPoint)
        : field_(*source.field),
          rule_(source.filter->rule),
          text_(source.filter->containedText, decimalPoint) {
        for (const CellValue& value : source.filter->values) {
            values_.insert(toView(value));
        }
    }

    [[nodiscard]] bool passes(const db::DataSet& dataSet, int row) const {
        if (!text_.isEmpty() && text_.findIn(dataSet, row, field_).isEmpty()) {
            return false;
        }
        if (rule_ == ColumnFilter::Values::Any) {
            return true;
        }
        const bool listed = values_.contains(cellView(dataSet.rows(), row, field_));
        return listed == (rule_ == ColumnFilter::Values::Only);
    }

private:
    const db::Field& field_;
    ColumnFilter::Values rule_;
    TextMatcher text_;
    std::unordered_set<CellView> values_; // views into the filter's own values
};

} // namespace

QString cellValueText(const CellValue& value, const db::Field& field, QChar decimalPoint) {
    if (const auto* text = std::get_if<std::string>(&value)) {
        return base::win1251::decode(*text);
    }
    if (const auto* number = std::get_if<std::int64_t>(&value)) {
        return db::decimalText(*number, field.fractionDigits(), decimalPoint);
    }
    return {};
}

std::vector<std::int32_t> filteredRows(const db::DataSet& dataSet, std::span<const FieldFilter> filters,
                                       QChar decimalPoint) {
    std::vector<Check> checks;
    checks.reserve(filters.size());
    for (const FieldFilter& filter : filters) {
        checks.emplace_back(filter, decimalPoint);
    }
    std::vector<std::int32_t> result;
    for (int row = 0; row < dataSet.rowCount(); ++row) {
        if (std::ranges::all_of(checks, [&](const Check& check) { return check.passes(dataSet, row); })) {
            result.push_back(row);
        }
    }
    return result;
}

DistinctValues distinctValues(const db::DataSet& dataSet, const db::Field& field,
                              const std::set<CellValue>& alwaysListed, std::size_t limit) {
    std::unordered_set<CellView> seen;
    DistinctValues result;
    for (const CellValue& value : alwaysListed) {
        seen.insert(toView(value));
        result.values.push_back(value);
    }
    for (int row = 0; row < dataSet.rowCount() && result.complete; ++row) {
        const CellView value = cellView(dataSet.rows(), row, field);
        if (seen.contains(value)) {
            continue;
        }
        if (seen.size() >= limit) {
            result.complete = false;
        } else {
            seen.insert(value);
            result.values.push_back(toValue(value));
        }
    }
    std::ranges::sort(result.values, standsBefore);
    return result;
}

} // namespace grid
