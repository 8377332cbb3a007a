#pragma once

#include <QByteArray>
#include <QStringView>

#include <cstdint>
#include <string_view>

/// Values as they stand in the XML of a workbook. Texts are UTF-8 in which a control character is written as
/// _xHHHH_, and so is the "_" of what a reader would take for that (ST_Xstring of ECMA-376 part 1,
/// 22.9.2.19). The functions that write to `out` return the end of what they have written.
namespace xlsx {

/// Bytes that one character of a text may become; writeText() needs room for one more of them than there are
/// characters.
inline constexpr std::size_t longestCharacter = 8;

/// Writes a text of WIN1251.
[[nodiscard]] char* writeText(char* out, std::string_view win1251);

/// The same of any other text; half a surrogate pair is escaped as well.
[[nodiscard]] QByteArray textOf(QStringView text);

/// Characters that writeNumber() may need, for up to 18 fraction digits.
inline constexpr int longestNumber = 24;

/// Writes `units` / 10^`fractionDigits` digit for digit, with a point.
[[nodiscard]] char* writeNumber(char* out, std::int64_t units, int fractionDigits);

/// Whether a spreadsheet, which keeps 15 significant digits, holds `units` without loss, wherever the decimal
/// point stands.
[[nodiscard]] bool isExactInSpreadsheet(std::int64_t units);

} // namespace xlsx
