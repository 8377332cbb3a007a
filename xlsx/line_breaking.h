#pragma once

#include "xlsx/resources.h"

#include <string_view>

namespace xlsx {

/// The lines that a wrapped text of WIN1251 takes in a cell of `width` (in the units of `widths`). Breaks at
/// fewer places than a spreadsheet may do, so that the lines suffice in any of them: at blanks, after a
/// hyphen between letters, between ")" and "(", and anywhere in a word that is longer than a line.
[[nodiscard]] int linesOf(std::string_view text, int width, const FontWidths& widths);

} // namespace xlsx
