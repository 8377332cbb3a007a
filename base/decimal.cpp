// SPDX-License-Identifier: MIT

#include "base/decimal.h"

namespace base {

namespace {

__extension__ using WideMagnitude = unsigned __int128;

/// Negating in unsigned arithmetic is defined for the smallest value too.
template <typename Magnitude, typename Integer>
Magnitude magnitudeOf(Integer units) {
    const auto magnitude = static_cast<Magnitude>(units);
    return units < 0 ? 0 - magnitude : magnitude;
}

} // namespace

DecimalCharacters::DecimalCharacters(std::int64_t units, int fractionDigits) {
    write(magnitudeOf<std::uint64_t>(units), units < 0, fractionDigits);
}

DecimalCharacters::DecimalCharacters(WideInteger units, int fractionDigits) {
    write(magnitudeOf<WideMagnitude>(units), units < 0, fractionDigits);
}

template <typename Magnitude>
void DecimalCharacters::write(Magnitude magnitude, bool isNegative, int fractionDigits) {
    const auto writeDigit = [&] {
        bytes_[--start_] = static_cast<char>('0' + static_cast<int>(magnitude % 10));
        magnitude /= 10;
    };
    for (int written = 0; written < fractionDigits; ++written) {
        writeDigit();
    }
    if (fractionDigits > 0) {
        bytes_[--start_] = '.';
    }
    do {
        writeDigit();
    } while (magnitude > 0);
    if (isNegative) {
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

bool isExactInSpreadsheet(std::int64_t units) {
    constexpr std::int64_t firstLost = 1'000'000'000'000'000;
    while (units != 0 && units % 10 == 0) {
        units /= 10;
    }
    return -firstLost < units && units < firstLost;
}

} // namespace base
