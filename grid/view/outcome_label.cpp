// SPDX-License-Identifier: MIT

#include "grid/view/outcome_label.h"

#include "grid/view/search_texts.h"

#include <QAccessible>

namespace grid {

OutcomeLabel::OutcomeLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
}

void OutcomeLabel::say(const QString& words) {
    if (words == text()) {
        return;
    }
    setText(words);
    QAccessibleEvent event(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
}

void OutcomeLabel::reserveWidth() {
    constexpr std::int64_t many = 1'000'000;
    setMinimumWidth(fontMetrics().horizontalAdvance(searchOutcome(many, many)));
}

} // namespace grid
