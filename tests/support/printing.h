// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <ostream>

/// Lets failed expectations show texts instead of their code units.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}
