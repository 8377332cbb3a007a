#include "grid/table/table_find_bar.h"

#include "grid/table/table_view.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

namespace grid {

TableFindBar::TableFindBar(TableView& view, QWidget* parent) : QWidget(parent), view_(view) {
    setObjectName(QStringLiteral("FindBar"));
    text_ = new QLineEdit(this);
    text_->setObjectName(QStringLiteral("FindBarText"));
    text_->setAccessibleName(QStringLiteral("Найти"));
    text_->setPlaceholderText(QStringLiteral("Введите текст для поиска"));
    text_->setClearButtonEnabled(true);
    outcome_ = new QLabel(this);
    outcome_->setObjectName(QStringLiteral("FindBarOutcome"));

    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 2, 4, 2);
    layout->addWidget(text_, 1);
    const auto addButton = [&](Qt::ArrowType arrow, const QString& name, const QString& objectName,
                               auto action) {
        auto* const button = new QToolButton(this);
        button->setObjectName(objectName);
        button->setArrowType(arrow);
        button->setAccessibleName(name);
        button->setToolTip(name);
        button->setAutoRaise(true);
        connect(button, &QToolButton::clicked, this, action);
        layout->addWidget(button);
    };
    addButton(Qt::UpArrow, QStringLiteral("Найти предыдущее"), QStringLiteral("FindBarPrevious"),
              &TableFindBar::findPrevious);
    addButton(Qt::DownArrow, QStringLiteral("Найти следующее"), QStringLiteral("FindBarNext"),
              &TableFindBar::findNext);
    layout->addWidget(outcome_);
    connect(text_, &QLineEdit::textChanged, this, [this] { find(true, true); });
    hide();
}

void TableFindBar::open() {
    show();
    text_->setFocus();
    text_->selectAll();
    view_.setMarkedText(text_->text());
}

void TableFindBar::close() {
    hide();
    view_.setMarkedText({});
    view_.setFocus();
}

void TableFindBar::findNext() {
    goOn(true);
}

void TableFindBar::findPrevious() {
    goOn(false);
}

void TableFindBar::goOn(bool forward) {
    // Without the bar nothing would take the marks away again.
    if (isHidden()) {
        open();
    }
    find(forward, false);
}

void TableFindBar::find(bool forward, bool includeCurrent) {
    view_.setMarkedText(text_->text());
    const bool found = text_->text().isEmpty() || view_.findMarked(forward, includeCurrent);
    outcome_->setText(found ? QString() : QStringLiteral("Не найдено"));
}

void TableFindBar::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        close();
    } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (auto* const button = qobject_cast<QAbstractButton*>(focusWidget())) {
            button->click();
            return;
        }
        find(!(event->modifiers() & Qt::ShiftModifier), false);
    } else {
        QWidget::keyPressEvent(event);
    }
}

} // namespace grid
