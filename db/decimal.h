#pragma once

#include <QString>

#include <cstdint>

namespace db {

/// base::decimalText() as it is shown; `digits` is 0 to 18.
[[nodiscard]] QString decimalText(std::int64_t units, int digits, QChar decimalPoint);

} // namespace db
