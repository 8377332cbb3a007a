// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace base {

/// True for the characters at which a path is cut: "\" and ":", and "/" where the system has it.
[[nodiscard]] bool isPathDelimiter(QChar character);

/// `name` with everything from its last point on replaced by `extension` (which holds its point); a point
/// before the last path delimiter does not count.
[[nodiscard]] QString withExtension(const QString& name, const QString& extension);

/// `name` up to and including its last path delimiter; empty when it has none.
[[nodiscard]] QString folderOf(const QString& name);

} // namespace base
