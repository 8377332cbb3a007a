// SPDX-License-Identifier: MIT

#include "grid/tree/tree_find_panel.h"

#include "grid/view/outcome_label.h"
#include "grid/view/search_texts.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QToolButton>

namespace grid {

TreeFindPanel::TreeFindPanel(QWidget* parent)
    : QWidget(parent),
      text_(new QLineEdit(this)),
      clear_(new QToolButton(this)),
      outcome_(new OutcomeLabel(this)) {
    text_->setPlaceholderText(QStringLiteral("Введите текст для поиска"));
    text_->setAccessibleName(QStringLiteral("Поиск в дереве"));
    text_->setToolTip(searchHint());
    text_->installEventFilter(this);
    outcome_->setObjectName(QStringLiteral("FindPanelOutcome"));
    clear_->setText(QStringLiteral("Очистить"));
    clear_->setAccessibleName(QStringLiteral("Очистить поиск"));
    clear_->setAutoRaise(true);
    clear_->setEnabled(false);
    clear_->installEventFilter(this);

    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->setSpacing(4);
    layout->addWidget(text_);
    layout->addWidget(clear_);
    layout->addWidget(outcome_);
    setFocusProxy(text_);

    connect(text_, &QLineEdit::textChanged, this, [this](const QString& text) {
        clear_->setEnabled(!text.isEmpty());
        emit textChanged(text);
    });
    connect(clear_, &QToolButton::clicked, this, [this] {
        clear();
        text_->setFocus();
    });
}

void TreeFindPanel::open() {
    text_->setFocus(Qt::ShortcutFocusReason);
    text_->selectAll();
}

void TreeFindPanel::clear() {
    text_->clear();
}

void TreeFindPanel::showOutcome(const QString& words) {
    outcome_->reserveWidth();
    outcome_->say(words);
}

bool TreeFindPanel::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) {
        return QWidget::eventFilter(watched, event);
    }
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (watched == clear_ && (key == Qt::Key_Return || key == Qt::Key_Enter)) {
        clear_->click();
        return true;
    }
    switch (key) {
    case Qt::Key_Escape:
        clear();
        return true;
    case Qt::Key_Down:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        emit left();
        return true;
    default:
        return QWidget::eventFilter(watched, event);
    }
}

} // namespace grid
