#include "ui/action_manager.h"

#include <QAction>
#include <QToolBar>
#include <QToolButton>

namespace ui {

ActionManager::ActionManager(const QString& name, QToolBar& toolBar, QObject* parent)
    : QObject(parent), toolBar_(toolBar) {
    setObjectName(name);
}

void ActionManager::addButton(QAction& action, const QString& caption) {
    auto* const button = new QToolButton(&toolBar_);
    button->setAutoRaise(true);
    button->setText(caption);
    button->setAccessibleName(action.text());
    button->setToolTip(action.statusTip());
    button->setStatusTip(action.statusTip());
    button->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    connect(button, &QToolButton::clicked, &action, &QAction::trigger);
    toolBar_.addWidget(button);
}

void ActionManager::addSeparator() {
    toolBar_.addSeparator();
}

} // namespace ui
