// SPDX-License-Identifier: MIT

#pragma once

#include <QKeySequence>
#include <QString>

#include <functional>

class QMenu;

namespace grid {

/// Appends an entry that shows its key; a menu only tells of keys, it does not listen to them.
void addEntry(QMenu& menu, const QString& text, const QKeySequence& key, bool isEnabled,
              std::function<void()> run);

/// A text without mnemonics.
[[nodiscard]] QString plainForMenu(const QString& text);

/// A value in quotation marks as menus show it: on one line, shortened in the middle, without mnemonics.
[[nodiscard]] QString quotedForMenu(const QString& value);

} // namespace grid
