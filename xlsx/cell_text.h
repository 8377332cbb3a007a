#pragma once

#include <QByteArray>
#include <QStringView>

#include <string_view>

/// Texts as they stand in the XML of a workbook: UTF-8 in which a control character is written as _xHHHH_,
/// and so is the "_" of what a reader would take for that (ST_Xstring of ECMA-376 part 1, 22.9.2.19).
namespace xlsx {

/// Bytes that one character of a text may become; writeText() needs room for one more of them than there are
/// characters.
inline constexpr std::size_t longestCharacter = 8;

/// Writes a text of WIN1251 to `out`; returns the end.
[[nodiscard]] char* writeText(char* out, std::string_view win1251);

/// The same of any other text; half a surrogate pair is escaped as well.
[[nodiscard]] QByteArray textOf(QStringView text);

} // namespace xlsx
