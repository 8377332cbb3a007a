// SPDX-License-Identifier: MIT

#include "grid/view/menu.h"

#include <QMenu>

namespace grid {

void addEntry(QMenu& menu, const QString& text, const QKeySequence& key, bool isEnabled,
              std::function<void()> run) {
    QAction* const action = menu.addAction(text);
    action->setShortcut(key);
    action->setShortcutVisibleInContextMenu(true);
    action->setEnabled(isEnabled);
    QObject::connect(action, &QAction::triggered, &menu, std::move(run));
}

QString plainForMenu(const QString& text) {
    return QString(text).replace(u'&', QStringLiteral("&&"));
}

QString quotedForMenu(const QString& value) {
    constexpr qsizetype longest = 48;
    constexpr qsizetype endLength = 16;
    QString shown = value.simplified();
    if (shown.isEmpty()) {
        return QStringLiteral("(Пустые)");
    }
    if (shown.size() > longest) {
        shown = shown.first(longest - endLength - 1).trimmed() + u'…' + shown.last(endLength).trimmed();
    }
    return u'«' + plainForMenu(shown) + u'»';
}

} // namespace grid
