#pragma once

#include <QByteArray>
#include <QString>

#include <array>

/// What resources/xlsx holds. Throws base::ResourceError when it is missing.
namespace xlsx {

[[nodiscard]] QByteArray resource(const QString& name);

/// Advance widths of the 256 characters of WIN1251 in units of 1/2048 of the font's size. A character that
/// the font lacks, such as a control character, has the width of its substitute.
using FontWidths = std::array<int, 256>;

/// Of the font of a workbook's cells, Calibri, in its style "regular" or "bold".
[[nodiscard]] FontWidths fontWidths(const QString& style);

} // namespace xlsx
