#pragma once

#include <QString>

#include <cstdint>

namespace exporter {

/// Whether every part of the workbook at `path` arrived whole: the one sheet has `sheetSize` bytes, and each
/// of the other parts, which are small, is well-formed to its end.
[[nodiscard]] bool isCompleteWorkbook(const QString& path, std::int64_t sheetSize);

} // namespace exporter
