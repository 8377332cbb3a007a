#include "db/decimal.h"

#include "base/decimal.h"

namespace db {

QString decimalText(std::int64_t units, int digits, QChar decimalPoint) {
    constexpr char point = '.';
    return QString::fromStdString(base::decimalText(units, digits, point))
        .replace(QLatin1Char(point), decimalPoint);
}

} // namespace db
