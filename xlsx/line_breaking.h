// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

#include <array>
#include <string_view>

namespace xlsx {

/// Advance widths of the 256 characters of WIN1251 in units of 1/2048 of the font's size. A character that
/// the font lacks, such as a control character, has the width of its substitute.
using FontWidths = std::array<int, 256>;

/// Reads a table of such widths in decimal digits.
[[nodiscard]] FontWidths fontWidths(const QByteArray& table);

/// The lines that a wrapped text of WIN1251 takes in a cell of `width` (in the units of `widths`). Breaks at
/// fewer places than a spreadsheet may do, so that the lines suffice in any of them: at blanks, after a
/// hyphen between letters, between ")" and "(", and anywhere in a word that is longer than a line.
[[nodiscard]] int linesOf(std::string_view text, int width, const FontWidths& widths);

} // namespace xlsx
