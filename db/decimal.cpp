#include "db/decimal.h"

#include <cstdlib>

namespace db {
namespace {

QString withPoint(QString text, bool isNegative, int digits, QChar decimalPoint) {
    if (digits > 0) {
        text = text.rightJustified(digits + 1, u'0');
        text.insert(text.size() - digits, decimalPoint);
    }
    if (isNegative) {
        text.prepend(u'-');
    }
    return text;
}

} // namespace

QString decimalText(std::int64_t units, int digits, QChar decimalPoint) {
    const bool negative = units < 0;
    // Negating in unsigned arithmetic is defined for the smallest value too.
    const auto magnitude = negative ? 0 - static_cast<qulonglong>(units) : static_cast<qulonglong>(units);
    return withPoint(QString::number(magnitude), negative, digits, decimalPoint);
}

QString wideDecimalText(WideInteger units, int digits, QChar decimalPoint) {
    constexpr std::int64_t million = 1'000'000;
    constexpr int millionDigits = 6;
    QString text;
    WideInteger rest = units;
    // Each piece has the sign of the whole.
    for (; rest >= million || rest <= -million; rest /= million) {
        const auto piece = static_cast<std::int64_t>(rest % million);
        text.prepend(QString::number(std::abs(piece)).rightJustified(millionDigits, u'0'));
    }
    text.prepend(QString::number(std::abs(static_cast<std::int64_t>(rest))));
    return withPoint(text, units < 0, digits, decimalPoint);
}

} // namespace db
