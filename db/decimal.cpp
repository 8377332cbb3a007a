#include "db/decimal.h"

namespace db {

QString decimalText(std::int64_t units, int digits, QChar decimalPoint) {
    const bool negative = units < 0;
    // Negating in unsigned arithmetic is defined for the smallest value too.
    const auto magnitude = negative ? 0 - static_cast<qulonglong>(units) : static_cast<qulonglong>(units);
    QString text = QString::number(magnitude);
    if (digits > 0) {
        text = text.rightJustified(digits + 1, u'0');
        text.insert(text.size() - digits, decimalPoint);
    }
    if (negative) {
        text.prepend(u'-');
    }
    return text;
}

} // namespace db
