#pragma once

#include <array>
#include <cstdint>

namespace xlsx {

/// Advance widths of the 256 characters of WIN1251 in units of 1/2048 of the font's size. A character that
/// the font lacks, such as a control character, has the width of its substitute.
using FontWidths = std::array<std::uint16_t, 256>;

/// Of the font of a workbook's cells, Calibri, and of its bold style.
extern const FontWidths regularWidths;
extern const FontWidths boldWidths;

} // namespace xlsx
