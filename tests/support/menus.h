// SPDX-License-Identifier: MIT

#pragma once

#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QPointer>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>

/// Context menus, as a user opens and uses them.
namespace test {

inline QMenu& openMenu() {
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    EXPECT_NE(menu, nullptr);
    return *menu;
}

/// The menu that opens where the pointer, or else the keyboard, asks for one.
inline QMenu& requestMenu(QWidget& target, const QPoint& place,
                          QContextMenuEvent::Reason reason = QContextMenuEvent::Mouse) {
    QContextMenuEvent event(reason, place, target.mapToGlobal(place));
    QApplication::sendEvent(&target, &event);
    return openMenu();
}

/// The entry that begins so.
inline QAction& entry(const QMenu& menu, const QString& start) {
    const QList<QAction*> actions = menu.actions();
    const auto found = std::ranges::find_if(
        actions, [&](const QAction* action) { return action->text().startsWith(start); });
    EXPECT_NE(found, actions.end()) << start.toStdString();
    return **found;
}

/// Expects a menu that has been used to be freed.
inline void expectGone(const QPointer<QMenu>& menu) {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(menu.isNull());
}

inline void choose(QMenu& menu, const QString& start) {
    QAction& action = entry(menu, start);
    EXPECT_TRUE(action.isEnabled()) << start.toStdString();
    const QPointer<QMenu> used(&menu);
    QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(&action).center());
    expectGone(used);
}

inline void close(QMenu& menu) {
    const QPointer<QMenu> used(&menu);
    QTest::keyClick(&menu, Qt::Key_Escape);
    expectGone(used);
}

/// What the entries say, without their key; disabled ones in brackets.
inline QStringList entries(const QMenu& menu) {
    QStringList texts;
    for (const QAction* action : menu.actions()) {
        if (!action->isSeparator()) {
            texts.append(action->isEnabled() ? action->text() : u'[' + action->text() + u']');
        }
    }
    return texts;
}

} // namespace test
