// SPDX-License-Identifier: MIT

#include "grid/table/filter_popup.h"

#include "grid/rows/column.h"
#include "grid/table/filter_list.h"
#include "grid/view/outcome_label.h"
#include "grid/view/search_texts.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace grid {

FilterPopup::FilterPopup(const Column& column, std::vector<CountedValue> values, const ColumnFilter& present,
                         bool takesConditions, QChar decimalPoint, QWidget* parent)
    : QFrame(parent, Qt::Popup),
      values_(*column.field(), std::move(values), present, decimalPoint, nullptr),
      takesConditions_(takesConditions) {
    setObjectName(column.objectName() + QStringLiteral("Filter"));
    setAccessibleName(QStringLiteral("Фильтр: ") + column.headerText());
    setAttribute(Qt::WA_DeleteOnClose);
    setFrameShape(StyledPanel);
    setFont(parent->font()); // windows do not inherit it

    text_ = new QLineEdit(present.condition ? present.condition->text() : present.containedText, this);
    text_->setObjectName(QStringLiteral("FilterText"));
    text_->setClearButtonEnabled(true);
    word_ = new OutcomeLabel(this);
    word_->setObjectName(QStringLiteral("FilterWord"));
    word_->setWordWrap(true);
    list_ = new FilterList(values_, this);
    list_->setObjectName(QStringLiteral("FilterValues"));
    list_->setAccessibleName(QStringLiteral("Значения"));
    ok_ = new QPushButton(QStringLiteral("ОК"), this);
    ok_->setObjectName(QStringLiteral("FilterOk"));
    layOut();

    connect(text_, &QLineEdit::textChanged, this, &FilterPopup::readText);
    connect(&values_, &QAbstractItemModel::dataChanged, this, &FilterPopup::judge);
    connect(list_, &FilterList::typed, this, [this](const QString& text) {
        text_->setFocus();
        text_->end(false); // what was selected stays
        text_->insert(text);
    });
    connect(ok_, &QPushButton::clicked, this, &FilterPopup::accept);
    text_->setFocus();
    text_->selectAll();
    readText();
}

void FilterPopup::layOut() {
    auto* const textLabel = new QLabel(this);
    textLabel->setBuddy(text_);
    if (takesConditions_) {
        textLabel->setText(QStringLiteral("Содержит &текст или условие:"));
        text_->setPlaceholderText(QStringLiteral("12,5 или >1000 или 1000~5000"));
        text_->setToolTip(QStringLiteral("Условия: >1000 >=1000 <1000 <=1000 =1000 <>1000 1000~5000\n"
                                         "Несколько через пробел должны выполняться вместе\n\n") +
                          searchHint());
    } else {
        textLabel->setText(QStringLiteral("Содержит &текст:"));
        text_->setToolTip(searchHint());
    }
    auto* const cancel = new QPushButton(QStringLiteral("Отмена"), this);
    connect(cancel, &QPushButton::clicked, this, &QWidget::close);

    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    for (QPushButton* const button : {ok_, cancel}) {
        button->setAutoDefault(true); // Enter presses the button in focus
        buttons->addWidget(button);
    }
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(textLabel);
    layout->addWidget(text_);
    layout->addWidget(word_);
    layout->addWidget(list_, 1);
    layout->addLayout(buttons);
}

void FilterPopup::readText() {
    typed_ = {};
    mistake_.clear();
    if (takesConditions_ && NumberCondition::isMeantBy(text_->text())) {
        NumberCondition::Reading reading = NumberCondition::read(text_->text());
        typed_.condition = std::move(reading.condition);
        mistake_ = reading.mistake;
    } else {
        typed_.containedText = TextMatcher(text_->text()).isEmpty() ? QString() : text_->text();
    }
    // A condition that is still being typed leaves the list as it is.
    if (mistake_.isEmpty()) {
        values_.narrow(typed_);
    }
    judge();
}

void FilterPopup::judge() {
    const QString why = objection();
    ok_->setEnabled(why.isEmpty());
    showWord(why.isEmpty() ? listInWords() : why, !why.isEmpty());
}

QString FilterPopup::objection() const {
    if (!mistake_.isEmpty()) {
        return mistake_;
    }
    if (values_.tickedCount() > 0 || values_.valueCount() == 0) {
        return {};
    }
    return values_.leftCount() == 0 ? QStringLiteral("Таких значений нет")
                                    : QStringLiteral("Не выбрано ни одного значения");
}

QString FilterPopup::listInWords() const {
    QString words = QStringLiteral("Значений: %1").arg(values_.leftCount());
    if (values_.leftCount() < values_.valueCount()) {
        words += QStringLiteral(" из %1").arg(values_.valueCount());
    }
    if (values_.tickedCount() < values_.leftCount()) {
        words += QStringLiteral(", выбрано: %1").arg(values_.tickedCount());
    }
    return words;
}

void FilterPopup::showWord(const QString& word, bool isObjection) {
    QPalette colors = palette();
    if (isObjection) {
        colors.setColor(QPalette::WindowText, Qt::darkRed);
    }
    word_->setPalette(colors);
    text_->setAccessibleDescription(word);
    word_->say(word);
}

void FilterPopup::accept() {
    if (!ok_->isEnabled()) {
        return;
    }
    ColumnFilter filter = values_.chosenFilter();
    filter.containedText = typed_.containedText;
    filter.condition = typed_.condition;
    close();
    emit accepted(filter);
}

void FilterPopup::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        accept();
    } else if (event->key() == Qt::Key_Escape) {
        close();
    } else if (event->key() == Qt::Key_Down && text_->hasFocus() && values_.rowCount() > 0) {
        list_->setFocus();
        list_->setCurrentIndex(values_.index(0));
    } else {
        QFrame::keyPressEvent(event);
    }
}

} // namespace grid
