#include "base/decimal.h"

namespace base {

DecimalCharacters::DecimalCharacters(std::int64_t units, int fractionDigits) {
    // Negating in unsigned arithmetic is defined for the smallest value too.
    auto magnitude = static_cast<std::uint64_t>(units);
    magnitude = units < 0 ? 0 - magnitude : magnitude;
    for (int written = 0; magnitude > 0 || written <= fractionDigits; ++written) {
        if (written == fractionDigits && fractionDigits > 0) {
            bytes_[--start_] = '.';
        }
        bytes_[--start_] = static_cast<char>('0' + magnitude % 10);
        magnitude /= 10;
    }
    if (units < 0) {
        bytes_[--start_] = '-';
    }
}

std::string decimalText(std::int64_t units, int fractionDigits, char point) {
    std::string text(DecimalCharacters(units, fractionDigits).view());
    if (fractionDigits > 0) {
        text[text.size() - 1 - static_cast<std::size_t>(fractionDigits)] = point;
    }
    return text;
}

} // namespace base
