// SPDX-License-Identifier: MIT

#pragma once

#include <QFont>

namespace ui {

/// Names stand-ins of the same or nearly the same widths for the fonts that the layout asks for and the
/// system may lack.
void installFontSubstitutes();

/// Lets the program use the fonts of a folder, of which there need be none.
void addFontsOf(const QString& folder);

/// A font by family and character height in pixels.
[[nodiscard]] QFont pixelFont(const QString& family, int pixelHeight, bool bold = false);

/// The same for texts of the program's own, which every font can show. Finding stand-ins for letters that a
/// font lacks would take a good part of the program's start.
[[nodiscard]] QFont fixedTextFont(const QString& family, int pixelHeight, bool bold = false);

} // namespace ui
