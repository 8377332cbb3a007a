// SPDX-License-Identifier: MIT

#include "grid/table/table_find_bar.h"

#include "grid/header/fitted_header.h"
#include "grid/table/table_view.h"
#include "grid/view/outcome_label.h"
#include "grid/view/search_texts.h"

#include <QDeadlineTimer>
#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTimerEvent>
#include <QToolButton>

#include <chrono>

namespace grid {

namespace {

/// How long the window waits for a slice of the search.
constexpr std::chrono::milliseconds sliceTime{8};

} // namespace

TableFindBar::TableFindBar(TableView& view, QWidget* parent)
    : QWidget(parent), view_(view), text_(new QLineEdit(this)), outcome_(new OutcomeLabel(this)) {
    setObjectName(QStringLiteral("FindBar"));
    text_->setObjectName(QStringLiteral("FindBarText"));
    text_->setAccessibleName(QStringLiteral("Найти"));
    text_->setPlaceholderText(QStringLiteral("Введите текст для поиска"));
    text_->setToolTip(searchHint());
    text_->setClearButtonEnabled(true);
    outcome_->setObjectName(QStringLiteral("FindBarOutcome"));

    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 2, 4, 2);
    layout->addWidget(text_, 1);
    createButtons();
    layout->addWidget(outcome_);

    connect(text_, &QLineEdit::textChanged, this, [this] {
        view_.setMarkedText(text_->text());
        startSearch();
        find({.forward = true, .includeCurrent = true});
    });
    connect(&view_.tableModel(), &TableModel::modelAboutToBeReset, this, &TableFindBar::startSearch);
    connect(&view_.header(), &FittedHeader::layoutChanged, this, &TableFindBar::startSearchOfOtherColumns);
    connect(view_.selectionModel(), &QItemSelectionModel::currentChanged, this, [this] {
        if (search_) {
            showOutcome();
        }
    });
    hide();
}

void TableFindBar::createButtons() {
    const auto addButton = [&](Qt::ArrowType arrow, const QString& name, const QString& objectName,
                               auto action) {
        auto* const button = new QToolButton(this);
        button->setObjectName(objectName);
        button->setArrowType(arrow);
        button->setAccessibleName(name);
        button->setToolTip(name);
        button->setAutoRaise(true);
        connect(button, &QToolButton::clicked, this, action);
        layout()->addWidget(button);
    };
    addButton(Qt::UpArrow, QStringLiteral("Найти предыдущее"), QStringLiteral("FindBarPrevious"),
              &TableFindBar::findPrevious);
    addButton(Qt::DownArrow, QStringLiteral("Найти следующее"), QStringLiteral("FindBarNext"),
              &TableFindBar::findNext);
}

void TableFindBar::open() {
    const bool wasHidden = isHidden();
    outcome_->reserveWidth();
    show();
    text_->setFocus();
    text_->selectAll();
    if (wasHidden) {
        view_.setMarkedText(text_->text());
        startSearch();
    }
}

void TableFindBar::close() {
    hide();
    startSearch();
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
    find({.forward = forward});
}

/// A search of other rows, columns or words: made as soon as events are handled again, when these are what
/// they will be. Until then the outcome of the last one stays. A hidden bar searches nothing.
void TableFindBar::startSearch() {
    wish_.reset();
    search_.reset();
    if (isSearching()) {
        slices_.start(0, this);
    } else {
        slices_.stop();
        outcome_->say({});
    }
}

bool TableFindBar::isSearching() const {
    return !isHidden() && !TextMatcher(text_->text()).isEmpty();
}

void TableFindBar::startSearchOfOtherColumns() {
    if (search_ && search_->columns() != view_.header().visibleColumns()) {
        startSearch();
    }
}

void TableFindBar::find(Wish wish) {
    if (isSearching()) {
        wish_ = wish;
        searchOn();
    }
}

void TableFindBar::timerEvent(QTimerEvent* event) {
    if (event->timerId() == slices_.timerId()) {
        searchOn();
    } else {
        QWidget::timerEvent(event);
    }
}

void TableFindBar::searchOn() {
    if (!search_) {
        search_.emplace(view_.tableModel(), view_.header().visibleColumns(), text_->text());
    }
    for (const QDeadlineTimer deadline(sliceTime); !search_->isComplete() && !deadline.hasExpired();) {
        search_->goOn();
    }
    if (search_->isComplete()) {
        slices_.stop();
    }
    fulfilWish();
    showOutcome();
}

void TableFindBar::fulfilWish() {
    if (!wish_) {
        return;
    }
    const CellSearch::Next next = search_->next(view_.currentPlace(), wish_->forward, wish_->includeCurrent);
    if (next.isKnown) {
        wish_.reset();
    }
    if (next.place) {
        view_.goTo(*next.place);
    }
}

void TableFindBar::showOutcome() {
    outcome_->say(search_->isComplete()
                      ? searchOutcome(search_->numberOf(view_.currentPlace()), search_->hitCount())
                      : QStringLiteral("Поиск…"));
}

void TableFindBar::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        close();
    } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (auto* const button = qobject_cast<QAbstractButton*>(focusWidget())) {
            button->click();
            return;
        }
        find({.forward = !(event->modifiers() & Qt::ShiftModifier)});
    } else {
        QWidget::keyPressEvent(event);
    }
}

} // namespace grid
