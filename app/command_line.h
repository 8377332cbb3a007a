// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <optional>

namespace app {

/// What the program is asked by --help or --version to say instead of starting.
[[nodiscard]] std::optional<QString> commandLineAnswer(int argc, const char* const* argv);

/// Writes a text to the standard output; on Windows, where a program with windows has none of its own, to the
/// console that it was started from. Returns whether all of it was written.
[[nodiscard]] bool printText(const QString& text);

} // namespace app
