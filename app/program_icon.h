// SPDX-License-Identifier: MIT

#pragma once

#include <QIcon>

namespace app {

/// The program's icon in every size that desktops ask for. Throws base::ResourceError when its drawing cannot
/// be read.
///
/// Drawn from the file that the desktop shows too. No image plugin takes part, which a start of the program
/// would wait for.
[[nodiscard]] QIcon programIcon();

} // namespace app
