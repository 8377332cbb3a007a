#include "base/decimal.h"

namespace base {

std::string decimalText(std::int64_t units, int fractionDigits, char point) {
    std::string text = std::to_string(units);
    if (fractionDigits == 0) {
        return text;
    }
    const auto digits = static_cast<std::size_t>(fractionDigits);
    const std::size_t sign = units < 0 ? 1 : 0;
    const std::size_t shortest = sign + 1 + digits; // a digit stands before the point
    if (text.size() < shortest) {
        text.insert(sign, shortest - text.size(), '0');
    }
    text.insert(text.size() - digits, 1, point);
    return text;
}

} // namespace base
