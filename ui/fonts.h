#pragma once

#include <QFont>

namespace ui {

/// Names stand-ins of the same or nearly the same widths for the fonts that the layout asks for and the
/// system may lack.
void installFontSubstitutes();

/// A font by family and character height in pixels.
[[nodiscard]] QFont pixelFont(const QString& family, int pixelHeight, bool bold = false);

} // namespace ui
