// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace base {

/// Wide enough for the sum of as many 64-bit numbers as there can be rows.
__extension__ using WideInteger = __int128;

/// The exact decimal `units` / 10^`fractionDigits` in characters, with a point, all its fraction digits and
/// no grouping. `fractionDigits` is 0 to 18. Takes no memory from the heap, so that whole columns can be gone
/// through.
class DecimalCharacters final {
public:
    DecimalCharacters(std::int64_t units, int fractionDigits);
    DecimalCharacters(WideInteger units, int fractionDigits);

    [[nodiscard]] std::string_view view() const { return {bytes_.data() + start_, bytes_.size() - start_}; }

private:
    template <typename Magnitude>
    void write(Magnitude magnitude, bool isNegative, int fractionDigits);

    std::array<char, 42> bytes_{}; // filled from the end; sign, point and 39 digits at most
    std::size_t start_ = bytes_.size();
};

/// The same as a text with another decimal point: decimalText(-5, 2, ',') is "-0,05".
[[nodiscard]] std::string decimalText(std::int64_t units, int fractionDigits, char point);

/// Whether a spreadsheet, which keeps 15 significant digits, holds `units` without loss, wherever the decimal
/// point stands.
[[nodiscard]] bool isExactInSpreadsheet(std::int64_t units);

} // namespace base
