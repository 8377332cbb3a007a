// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>
#include <QString>

namespace app {

/// An image of the program's resources in the XPM format. Throws base::ResourceError when it cannot be read.
///
/// Other formats, and other ways to read this one, have Qt look through its image plugins first, which a
/// start of the program would wait for.
[[nodiscard]] QImage readXpmResource(const QString& resource);

} // namespace app
