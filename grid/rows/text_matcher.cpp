#include "grid/rows/text_matcher.h"

#include "base/win1251.h"
#include "db/data_set.h"
#include "db/decimal.h"

#include <algorithm>

namespace grid {

TextMatcher::TextMatcher(const QString& text, QChar decimalPoint)
    : length_(text.size()),
      decimalPoint_(decimalPoint),
      mayBeInNumber_(std::ranges::all_of(
          text, [=](QChar each) { return each.isDigit() || each == decimalPoint || each == u'-'; })),
      needle_(base::win1251::encode(text).toStdString()) {}

TextRange TextMatcher::findIn(const db::DataSet& dataSet, int row, const db::Field& field) const {
    const db::RowStore& rows = dataSet.rows();
    if (rows.isNull(row, field.index()) || (field.isNumber() && !mayBeInNumber_)) {
        return {};
    }
    std::size_t found = std::string::npos;
    if (field.isNumber()) {
        const QString shown =
            db::decimalText(rows.integer(row, field.index()), field.fractionDigits(), decimalPoint_);
        found = needle_.findIn(base::win1251::encode(shown).toStdString());
    } else {
        found = needle_.findIn(rows.string(row, field.index()));
    }
    if (found == std::string::npos) {
        return {};
    }
    const auto start = static_cast<qsizetype>(found);
    return {start, start + length_};
}

} // namespace grid
