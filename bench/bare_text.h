// SPDX-License-Identifier: MIT

#pragma once

#include "db/row_store.h"

#include <QString>

#include <string>
#include <string_view>

namespace bench {

/// Bytes of WIN1251 with capitals made small: texts that differ in case only become the same bytes.
[[nodiscard]] std::string folded(std::string_view bytes);

/// The number of rows whose text in the field contains `text` in either case.
[[nodiscard]] int countContaining(const db::RowStore& rows, int field, const QString& text);

} // namespace bench
