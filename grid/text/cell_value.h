// SPDX-License-Identifier: MIT

#pragma once

#include <QChar>
#include <QString>

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace db {
class Field;
class RowStore;
} // namespace db

namespace grid {

/// A value as it is held: nothing (NULL and the empty text), a number in units of its last digit, or the
/// bytes of a text.
using CellValue = std::variant<std::monostate, std::int64_t, std::string>;

/// The same without a copy of its text.
using CellView = std::variant<std::monostate, std::int64_t, std::string_view>;

/// The value of a row; valid as long as the rows.
[[nodiscard]] CellView cellView(const db::RowStore& rows, int row, const db::Field& field);

/// A view of the value; valid as long as it.
[[nodiscard]] CellView toView(const CellValue& value);

/// The value with a text of its own.
[[nodiscard]] CellValue toValue(const CellView& view);

/// The value as the cells show it; empty for nothing.
[[nodiscard]] QString cellValueText(const CellValue& value, const db::Field& field, QChar decimalPoint);

} // namespace grid
