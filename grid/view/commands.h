// SPDX-License-Identifier: MIT

#pragma once

#include <QKeyCombination>
#include <QStringView>

#include <array>
#include <optional>

// Commands that the views obey by key and show with it in their menus.
namespace grid {

inline constexpr QKeyCombination copyCellKey = Qt::CTRL | Qt::SHIFT | Qt::Key_C;
inline constexpr QKeyCombination cellMenuKey = Qt::SHIFT | Qt::Key_F10;

/// Sorting by the column in focus; without an order it takes all sorting away. Alt and Shift together often
/// switch the keyboard's layout.
struct SortCommand {
    QStringView text;
    QKeyCombination key;
    std::optional<Qt::SortOrder> order;
};

inline constexpr std::array sortCommands{
    SortCommand{u"Сортировать по возрастанию", Qt::ALT | Qt::Key_PageUp, Qt::AscendingOrder},
    SortCommand{u"Сортировать по убыванию", Qt::ALT | Qt::Key_PageDown, Qt::DescendingOrder},
    SortCommand{u"Без сортировки", Qt::ALT | Qt::Key_Backspace, std::nullopt},
};

} // namespace grid
