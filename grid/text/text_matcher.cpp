#include "grid/text/text_matcher.h"

#include "base/decimal.h"
#include "base/win1251.h"
#include "db/data_set.h"

#include <algorithm>

namespace grid {

TextMatcher::TextMatcher(const QString& text)
    : length_(text.size()),
      mayBeInText_(base::win1251::tryEncode(text).has_value()),
      mayBeInNumber_(std::ranges::all_of(
          text, [](QChar each) { return each.isDigit() || each == u'.' || each == u',' || each == u'-'; })),
      needle_(base::win1251::encode(text).toStdString()),
      number_(QString(text).replace(u',', u'.').toStdString()) {}

TextRange TextMatcher::findIn(const db::DataSet& dataSet, int row, const db::Field& field) const {
    const db::RowStore& rows = dataSet.rows();
    if (rows.isNull(row, field.index())) {
        return {};
    }
    return field.isNumber() ? findIn(rows.integer(row, field.index()), field.fractionDigits())
                            : findIn(rows.string(row, field.index()));
}

TextRange TextMatcher::findIn(std::string_view text) const {
    return mayBeInText_ ? rangeFrom(needle_.findIn(text)) : TextRange();
}

TextRange TextMatcher::findIn(std::int64_t units, int digits) const {
    return mayBeInNumber_ ? rangeFrom(base::DecimalCharacters(units, digits).view().find(number_))
                          : TextRange();
}

TextRange TextMatcher::rangeFrom(std::size_t found) const {
    if (found == std::string_view::npos) {
        return {};
    }
    const auto start = static_cast<qsizetype>(found);
    return {start, start + length_};
}

} // namespace grid
