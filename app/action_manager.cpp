// SPDX-License-Identifier: MIT

#include "app/action_manager.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QKeyEvent>
#include <QLayout>
#include <QPainter>
#include <QStyleOptionToolButton>
#include <QToolButton>

namespace app {

namespace {

/// A button that the pointer, a press or its command's check marks in the tool bar's own highlight. It is not
/// checkable itself: assistive technology would take it for a check box.
class FlatToolButton final : public QToolButton {
public:
    using QToolButton::QToolButton;

    void setMarked(bool marked) {
        marked_ = marked;
        setAccessibleDescription(marked ? QStringLiteral("Открыт") : QString());
        update();
    }

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
            click();
        } else {
            QToolButton::keyPressEvent(event);
        }
    }

    void paintEvent(QPaintEvent* event) override {
        QToolButton::paintEvent(event);
        if (hasFocus()) {
            QPainter painter(this);
            painter.setPen(QPen(QApplication::palette().color(QPalette::Highlight), 0));
            painter.drawRect(rect().adjusted(0, 0, -1, -1));
        }
    }

    void initStyleOption(QStyleOptionToolButton* option) const override {
        QToolButton::initStyleOption(option);
        option->state.setFlag(QStyle::State_On, marked_);
        if ((option->state & (QStyle::State_MouseOver | QStyle::State_Sunken | QStyle::State_On)) != 0) {
            option->palette.setColor(QPalette::Button, palette().color(QPalette::Highlight));
            option->palette.setColor(QPalette::ButtonText, palette().color(QPalette::HighlightedText));
        }
    }

private:
    bool marked_ = false;
};

} // namespace

FlatToolBar::FlatToolBar(QWidget* parent) : QToolBar(parent) {
    layout()->setContentsMargins(0, 0, 0, 0);
    layout()->setSpacing(0);
}

void FlatToolBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    painter.fillRect(rect().adjusted(sizeHint().width(), 0, 0, 0), palette().color(QPalette::Base));
}

void FlatToolBar::focusFirstButton() {
    widgetForAction(actions().first())->setFocus(Qt::OtherFocusReason);
}

ActionManager::ActionManager(const QString& name, const QString& style, QActionGroup& actionList,
                             QToolBar& toolBar, QObject* parent)
    : QObject(parent), style_(style), actionList_(actionList), toolBar_(toolBar) {
    setObjectName(name);
}

void ActionManager::addButton(QAction& action, const QString& caption) {
    actionList_.addAction(&action);
    auto* const button = new FlatToolButton(&toolBar_);
    button->setAutoRaise(true);
    button->setText(caption);
    button->setAccessibleName(action.text());
    button->setToolTip(action.statusTip());
    button->setStatusTip(action.statusTip());
    button->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    connect(button, &QToolButton::clicked, &action, &QAction::trigger);
    connect(&action, &QAction::toggled, button, &FlatToolButton::setMarked);
    toolBar_.addWidget(button);
}

} // namespace app
