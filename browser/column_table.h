#pragma once

#include "db/field.h"
#include "grid/rows/column.h"

#include <algorithm>
#include <array>
#include <span>

namespace browser {

/// The columns of a view that shows a dataset: one for each field, in the fields' order, called after the
/// view and the field, the header at the side where the values stand.
template <std::size_t count>
class ColumnTable final {
public:
    constexpr ColumnTable(QStringView view, const std::array<db::FieldSpec, count>& fields) : view_(view) {
        for (std::size_t index = 0; index < count; ++index) {
            const db::FieldSpec& field = fields[index];
            char16_t* const name = names_[index].data();
            std::copy_n(field.column.utf16(), field.column.size(),
                        std::copy_n(view.utf16(), view.size(), name));
            columns_[index] = {
                .name = {name, view.size() + field.column.size()},
                .field = field.column,
                .visible = field.visible,
                .width = field.columnWidth,
                .headerAlignment = field.alignment(),
            };
        }
    }
    // The columns' names lie in the table itself.
    ColumnTable(const ColumnTable&) = delete;
    ColumnTable& operator=(const ColumnTable&) = delete;

    /// Object name of the view.
    [[nodiscard]] constexpr QStringView view() const { return view_; }
    /// The columns; they live as long as the table.
    [[nodiscard]] constexpr std::span<const grid::ColumnSpec> columns() const { return columns_; }

private:
    static constexpr std::size_t longestName = 40;

    QStringView view_;
    std::array<std::array<char16_t, longestName>, count> names_{};
    std::array<grid::ColumnSpec, count> columns_{};
};

} // namespace browser
