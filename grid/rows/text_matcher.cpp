#include "grid/rows/text_matcher.h"

#include "base/win1251.h"
#include "db/data_set.h"
#include "db/decimal.h"

#include <algorithm>

namespace grid {

TextMatcher::TextMatcher(const QString& text, QChar decimalPoint)
    : text_(text),
      decimalPoint_(decimalPoint),
      mayBeInNumber_(std::ranges::all_of(
          text, [=](QChar each) { return each.isDigit() || each == decimalPoint || each == u'-'; })),
      needle_(base::win1251::encode(text).toStdString()) {}

std::optional<qsizetype> TextMatcher::findIn(const db::DataSet& dataSet, int row,
                                             const db::Field& field) const {
    const db::RowStore& rows = dataSet.rows();
    if (rows.isNull(row, field.index()) || (field.isNumber() && !mayBeInNumber_)) {
        return std::nullopt;
    }
    std::size_t found = std::string::npos;
    if (field.isNumber()) {
        const QString shown =
            db::decimalText(rows.integer(row, field.index()), field.fractionDigits(), decimalPoint_);
        found = needle_.findIn(base::win1251::encode(shown).toStdString());
    } else {
        found = needle_.findIn(rows.string(row, field.index()));
    }
    return found == std::string::npos ? std::nullopt : std::optional(static_cast<qsizetype>(found));
}

} // namespace grid
