#pragma once

#include <QString>

#include <optional>

namespace exporter {

/// The lock file that an office program keeps beside the document `fileName` while it has it open; nothing
/// when there is none, or when it was left behind by a program that can be told to have ended.
[[nodiscard]] std::optional<QString> officeLockOf(const QString& fileName);

} // namespace exporter
