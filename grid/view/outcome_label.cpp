#include "grid/view/outcome_label.h"

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

} // namespace grid
