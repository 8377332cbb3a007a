// SPDX-License-Identifier: MIT

#include "grid/table/filter_bar.h"

#include "db/field.h"
#include "grid/rows/column.h"
#include "grid/rows/table_model.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStringList>

namespace grid {

namespace {

/// Values that are named in words; the others are only counted.
constexpr int namedValues = 3;

QString valuesInWords(const ColumnFilter& filter, const db::Field& field, QChar decimalPoint) {
    QStringList names;
    for (const CellValue& value : filter.values) {
        if (names.size() == namedValues) {
            const auto others = static_cast<int>(filter.values.size()) - namedValues;
            names.append(QStringLiteral("ещё %1").arg(others));
            break;
        }
        names.append(std::holds_alternative<std::monostate>(value)
                         ? QStringLiteral("(Пустые)")
                         : u'«' + cellValueText(value, field, decimalPoint).simplified() + u'»');
    }
    return names.join(QStringLiteral(", "));
}

QString columnInWords(const Column& column, const ColumnFilter& filter, QChar decimalPoint) {
    const QString name = u'«' + column.headerText() + u'»';
    QStringList parts;
    if (!filter.containedText.isEmpty()) {
        const bool isSeveral = filter.containedText.trimmed().contains(u' ');
        parts.append(name +
                     (isSeveral ? QStringLiteral(" содержит слова «") : QStringLiteral(" содержит «")) +
                     filter.containedText + u'»');
    }
    if (filter.condition) {
        parts.append(name + u' ' + filter.condition->inWords(decimalPoint));
    }
    if (filter.rule != ColumnFilter::Values::Any) {
        const QString values = valuesInWords(filter, *column.field(), decimalPoint);
        const bool isOnly = filter.rule == ColumnFilter::Values::Only;
        parts.append(name + (values.isEmpty() ? QStringLiteral(": ничего не выбрано")
                             : isOnly         ? QStringLiteral(" равно ") + values
                                              : QStringLiteral(" не равно ") + values));
    }
    return parts.join(QStringLiteral(" и "));
}

} // namespace

QString filterInWords(const TableModel& model) {
    QStringList parts;
    for (const auto& [column, filter] : model.filters()) {
        parts.append(columnInWords(model.column(column), filter, model.decimalPoint()));
    }
    return parts.join(QStringLiteral(" и "));
}

FilterBar::FilterBar(TableModel& model, QWidget* parent) : QWidget(parent), model_(model) {
    setObjectName(QStringLiteral("FilterBar"));
    auto* const clear = new QPushButton(QStringLiteral("Сбросить фильтр"), this);
    clear->setAutoDefault(true); // Enter presses it
    clear->setObjectName(QStringLiteral("FilterBarClear"));
    words_ = new QLabel(this);
    words_->setObjectName(QStringLiteral("FilterBarWords"));
    words_->setTextFormat(Qt::PlainText);
    words_->setWordWrap(true);
    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 2, 4, 2);
    layout->addWidget(clear);
    layout->addWidget(words_, 1);
    connect(clear, &QPushButton::clicked, &model_, &TableModel::clearFilters);
    connect(&model_, &TableModel::arrangementChanged, this, &FilterBar::showFilters);
    hide();
}

void FilterBar::showFilters() {
    words_->setText(filterInWords(model_));
    const bool isNeeded = !model_.filters().empty();
    if (!isNeeded && isAncestorOf(QApplication::focusWidget())) {
        // Otherwise the focus would go to whatever comes next in the window.
        parentWidget()->setFocus();
    }
    setVisible(isNeeded);
}

} // namespace grid
