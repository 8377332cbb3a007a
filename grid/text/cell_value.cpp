// SPDX-License-Identifier: MIT

#include "grid/text/cell_value.h"

#include "base/win1251.h"
#include "db/decimal.h"
#include "db/row_store.h"

namespace grid {

CellView cellView(const db::RowStore& rows, int row, const db::Field& field) {
    const int index = field.index();
    if (rows.isNull(row, index)) {
        return {};
    }
    if (field.isNumber()) {
        return rows.integer(row, index);
    }
    const std::string_view text = rows.string(row, index);
    return text.empty() ? CellView() : CellView(text);
}

CellView toView(const CellValue& value) {
    return std::visit([](const auto& held) { return CellView(held); }, value);
}

CellValue toValue(const CellView& view) {
    if (const auto* text = std::get_if<std::string_view>(&view)) {
        return std::string(*text);
    }
    if (const auto* number = std::get_if<std::int64_t>(&view)) {
        return *number;
    }
    return {};
}

QString cellValueText(const CellValue& value, const db::Field& field, QChar decimalPoint) {
    if (const auto* text = std::get_if<std::string>(&value)) {
        return base::win1251::decode(*text);
    }
    if (const auto* number = std::get_if<std::int64_t>(&value)) {
        return db::decimalText(*number, field.fractionDigits(), decimalPoint);
    }
    return {};
}

} // namespace grid
