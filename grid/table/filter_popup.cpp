#include "grid/table/filter_popup.h"

#include "db/field.h"
#include "grid/rows/column.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>

namespace grid {
namespace {

constexpr int firstValueItem = 1;
constexpr QSize listSize(280, 260);
constexpr int widestList = 560;

} // namespace

FilterPopup::FilterPopup(const Column& column, DistinctValues values, const ColumnFilter& present,
                         bool takesConditions, QChar decimalPoint, QWidget* parent)
    : QFrame(parent, Qt::Popup), values_(std::move(values)), takesConditions_(takesConditions) {
    setObjectName(column.objectName() + QStringLiteral("Filter"));
    setAccessibleName(QStringLiteral("Фильтр: ") + column.headerText());
    setAttribute(Qt::WA_DeleteOnClose);
    setFrameShape(StyledPanel);
    setFont(parent->font()); // windows do not inherit it

    text_ = new QLineEdit(present.condition ? present.condition->text() : present.containedText, this);
    text_->setObjectName(QStringLiteral("FilterText"));
    text_->setClearButtonEnabled(true);
    auto* const textLabel = new QLabel(this);
    textLabel->setBuddy(text_);
    if (takesConditions_) {
        textLabel->setText(QStringLiteral("Содержит &текст или условие:"));
        text_->setPlaceholderText(QStringLiteral("12,5 или >1000 или 1000~5000"));
        text_->setToolTip(QStringLiteral("Условия: >1000 >=1000 <1000 <=1000 =1000 <>1000 1000~5000\n"
                                         "Несколько через пробел должны выполняться вместе"));
    } else {
        textLabel->setText(QStringLiteral("Содержит &текст:"));
    }
    word_ = new QLabel(this);
    word_->setObjectName(QStringLiteral("FilterWord"));
    word_->setTextFormat(Qt::PlainText);
    word_->setWordWrap(true);
    list_ = new QListWidget(this);
    list_->setObjectName(QStringLiteral("FilterValues"));
    list_->setAccessibleName(QStringLiteral("Значения"));
    list_->setUniformItemSizes(true);
    list_->setMinimumSize(listSize);
    list_->setTextElideMode(Qt::ElideRight);
    list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    addItems(*column.field(), present, decimalPoint);
    const int wanted = list_->sizeHintForColumn(0) + list_->verticalScrollBar()->sizeHint().width() +
                       2 * list_->frameWidth();
    list_->setMinimumWidth(std::clamp(wanted, listSize.width(), widestList));
    ok_ = new QPushButton(QStringLiteral("ОК"), this);
    ok_->setObjectName(QStringLiteral("FilterOk"));
    auto* const cancel = new QPushButton(QStringLiteral("Отмена"), this);

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
    layout->addWidget(list_);
    if (!values_.complete) {
        layout->addWidget(new QLabel(QStringLiteral("Показаны первые значения: %1")
                                         .arg(static_cast<qulonglong>(values_.values.size())),
                                     this));
    }
    layout->addLayout(buttons);

    connect(list_, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
        changed_ = item;
        takeCheck(item);
    });
    // A click beside the box counts as well; one on the box has changed the item, without a press being told.
    connect(list_, &QListWidget::itemPressed, this, [this] { changed_ = nullptr; });
    connect(list_, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) {
        if (changed_ != item) {
            item->setCheckState(item->checkState() == Qt::Checked ? Qt::Unchecked : Qt::Checked);
        }
    });
    connect(ok_, &QPushButton::clicked, this, &FilterPopup::accept);
    connect(cancel, &QPushButton::clicked, this, &QWidget::close);
    connect(text_, &QLineEdit::textChanged, this, &FilterPopup::readText);
    text_->setFocus();
    text_->selectAll();
    readText();
}

void FilterPopup::readText() {
    condition_.reset();
    QString mistake;
    if (takesConditions_ && NumberCondition::isMeantBy(text_->text())) {
        NumberCondition::Reading reading = NumberCondition::read(text_->text());
        condition_ = std::move(reading.condition);
        mistake = reading.mistake;
    }
    showWord(mistake);
    ok_->setEnabled(mistake.isEmpty());
}

void FilterPopup::showWord(const QString& word) {
    if (word == word_->text()) {
        return;
    }
    word_->setText(word);
    text_->setAccessibleDescription(word);
    QAccessibleEvent event(word_, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

void FilterPopup::addItem(const QString& text, bool checked) {
    auto* const item = new QListWidgetItem(text, list_);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    item->setCheckState(checked ? Qt::Checked : Qt::Unchecked);
}

void FilterPopup::addItems(const db::Field& field, const ColumnFilter& present, QChar decimalPoint) {
    using Values = ColumnFilter::Values;
    addItem(QStringLiteral("(Все)"), present.rule == Values::Any);
    for (const CellValue& value : values_.values) {
        const bool isNothing = std::holds_alternative<std::monostate>(value);
        const bool isListed = present.values.contains(value);
        addItem(isNothing ? QStringLiteral("(Пустые)")
                          : cellValueText(value, field, decimalPoint).simplified(),
                present.rule == Values::Any || isListed == (present.rule == Values::Only));
    }
    if (!values_.complete) {
        addItem(QStringLiteral("(Остальные)"), present.rule != Values::Only);
    }
}

bool FilterPopup::isChecked(int item) const {
    return list_->item(item)->checkState() == Qt::Checked;
}

/// The first item checks and unchecks all others, and is checked when they all are.
void FilterPopup::takeCheck(QListWidgetItem* changed) {
    const QSignalBlocker blocker(list_);
    if (list_->row(changed) == 0) {
        for (int i = firstValueItem; i < list_->count(); ++i) {
            list_->item(i)->setCheckState(changed->checkState());
        }
    } else {
        bool all = true;
        for (int i = firstValueItem; i < list_->count() && all; ++i) {
            all = isChecked(i);
        }
        list_->item(0)->setCheckState(all ? Qt::Checked : Qt::Unchecked);
    }
    list_->viewport()->update();
}

ColumnFilter FilterPopup::chosenFilter() const {
    ColumnFilter filter;
    if (condition_) {
        filter.condition = condition_;
    } else {
        filter.containedText = text_->text();
    }
    if (isChecked(0)) {
        return filter;
    }
    // Values that are not in the list go with its last item. Where it is complete, few that are unticked mean
    // all but these, so that what another region brings is not hidden.
    const auto count = static_cast<int>(values_.values.size());
    int ticked = 0;
    for (int i = 0; i < count; ++i) {
        ticked += isChecked(firstValueItem + i) ? 1 : 0;
    }
    const bool takesOthers = values_.complete ? 2 * ticked > count : isChecked(list_->count() - 1);
    filter.rule = takesOthers ? ColumnFilter::Values::AllBut : ColumnFilter::Values::Only;
    for (std::size_t i = 0; i < values_.values.size(); ++i) {
        if (isChecked(firstValueItem + static_cast<int>(i)) != takesOthers) {
            filter.values.insert(values_.values[i]);
        }
    }
    return filter;
}

void FilterPopup::accept() {
    if (!ok_->isEnabled()) {
        return;
    }
    const ColumnFilter filter = chosenFilter();
    close();
    emit accepted(filter);
}

void FilterPopup::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        accept();
    } else if (event->key() == Qt::Key_Escape) {
        close();
    } else {
        QFrame::keyPressEvent(event);
    }
}

} // namespace grid
