#include "export/exact_number.h"

#include <array>

namespace exporter {

namespace {

constexpr std::int64_t firstTooLong = 1'000'000'000'000'000;

// Powers of ten up to 10^22 are exact, so that one operation on a number of 15 digits is rounded once only.
constexpr std::array<double, 19> powersOfTen{1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8, 1e9,
                                             1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18};

} // namespace

std::optional<double> exactNumber(std::int64_t units, int digits) {
    int zeros = 0;
    while (units <= -firstTooLong || units >= firstTooLong) {
        if (units % 10 != 0) {
            return std::nullopt;
        }
        units /= 10;
        ++zeros;
    }
    const auto number = static_cast<double>(units);
    return zeros > digits ? number * powersOfTen[static_cast<std::size_t>(zeros - digits)]
                          : number / powersOfTen[static_cast<std::size_t>(digits - zeros)];
}

} // namespace exporter
