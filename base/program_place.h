// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

namespace base {

/// Full path of the running executable file, with the system's own delimiters.
[[nodiscard]] QString programPath();

/// programPath() up to and including its last path delimiter.
[[nodiscard]] QString programFolder();

} // namespace base
