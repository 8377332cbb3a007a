#include "grid/rows/text_matcher.h"

#include "base/win1251.h"
#include "db/data_set.h"
#include "db/decimal.h"

#include <algorithm>

namespace grid {

TextMatcher::TextMatcher(const QString& text, QChar decimalPoint)
    : length_(text.size()),
      decimalPoint_(decimalPoint),
      mayBeInText_(base::win1251::tryEncode(text).has_value()),
      mayBeInNumber_(std::ranges::all_of(
          text, [](QChar each) { return each.isDigit() || each == u'.' || each == u',' || each == u'-'; })),
      needle_(base::win1251::encode(text).toStdString()),
      number_(QString(text).replace(u'.', decimalPoint).replace(u',', decimalPoint)) {}

TextRange TextMatcher::findIn(const db::DataSet& dataSet, int row, const db::Field& field) const {
    const db::RowStore& rows = dataSet.rows();
    if (rows.isNull(row, field.index()) || !(field.isNumber() ? mayBeInNumber_ : mayBeInText_)) {
        return {};
    }
    std::size_t found = std::string::npos;
    if (field.isNumber()) {
        const qsizetype place =
            db::decimalText(rows.integer(row, field.index()), field.fractionDigits(), decimalPoint_)
                .indexOf(number_);
        found = place < 0 ? std::string::npos : static_cast<std::size_t>(place);
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
