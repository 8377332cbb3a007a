// SPDX-License-Identifier: MIT

#pragma once

#include "db/field.h"
#include "grid/rows/column.h"

#include <algorithm>
#include <array>

namespace browser {

/// The columns of a view that shows a dataset, from the dataset's fields: one for each, in their order, the
/// header at the side where the values stand.
template <const auto& fields>
inline constexpr auto columnsOf = [] {
    std::array<grid::ColumnSpec, fields.size()> columns;
    std::ranges::transform(fields, columns.begin(), [](const db::FieldSpec& field) {
        return grid::ColumnSpec{.field = field.column,
                                .visible = field.visible,
                                .width = field.columnWidth,
                                .headerAlignment = field.alignment()};
    });
    return columns;
}();

} // namespace browser
