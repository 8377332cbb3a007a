// SPDX-License-Identifier: MIT

#pragma once

#include "base/decimal.h"

#include <QString>

#include <cstdint>

namespace db {

/// base::DecimalCharacters as they are shown: decimalText(-5, 2, ',') is "-0,05". `digits` is 0 to 18.
[[nodiscard]] QString decimalText(std::int64_t units, int digits, QChar decimalPoint);

/// The same for a sum.
[[nodiscard]] QString wideDecimalText(base::WideInteger units, int digits, QChar decimalPoint);

} // namespace db
