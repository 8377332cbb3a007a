// SPDX-License-Identifier: MIT

#include "db/decimal.h"

namespace db {

namespace {

QString shown(const base::DecimalCharacters& characters, int digits, QChar decimalPoint) {
    QString text = QLatin1StringView(characters.view());
    if (digits > 0) {
        text[text.size() - 1 - digits] = decimalPoint;
    }
    return text;
}

} // namespace

QString decimalText(std::int64_t units, int digits, QChar decimalPoint) {
    return shown(base::DecimalCharacters(units, digits), digits, decimalPoint);
}

QString wideDecimalText(base::WideInteger units, int digits, QChar decimalPoint) {
    return shown(base::DecimalCharacters(units, digits), digits, decimalPoint);
}

} // namespace db
