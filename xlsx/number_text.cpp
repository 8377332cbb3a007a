#include "xlsx/number_text.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace xlsx {

namespace {

constexpr std::int64_t firstTooLong = 1'000'000'000'000'000;

} // namespace

char* writeNumber(char* out, std::int64_t units, int fractionDigits) {
    auto magnitude = static_cast<std::uint64_t>(units);
    if (units < 0) {
        *out++ = '-';
        // Defined for the smallest value too.
        magnitude = 0 - magnitude;
    }
    std::array<char, 20> digits;
    const char* const end = std::to_chars(digits.data(), digits.data() + digits.size(), magnitude).ptr;
    const auto count = static_cast<int>(end - digits.data());
    const int whole = count - fractionDigits;
    if (whole <= 0) {
        *out++ = '0';
    } else {
        out = std::copy_n(digits.data(), whole, out);
    }
    if (fractionDigits > 0) {
        *out++ = '.';
        for (int zeros = whole; zeros < 0; ++zeros) {
            *out++ = '0';
        }
        const int shown = std::min(count, fractionDigits);
        out = std::copy_n(end - shown, shown, out);
    }
    return out;
}

bool isExactInSpreadsheet(std::int64_t units) {
    while (units <= -firstTooLong || units >= firstTooLong) {
        if (units % 10 != 0) {
            return false;
        }
        units /= 10;
    }
    return true;
}

} // namespace xlsx
