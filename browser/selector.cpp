#include "browser/selector.h"

#include <QCoreApplication>
#include <QWheelEvent>

namespace browser {

Selector::Selector(QWidget* parent) : QComboBox(parent) {
    setEditable(true);
    setInsertPolicy(NoInsert);
    // What is typed is taken letter by letter; completing it would choose what the user did not type.
    setCompleter(nullptr);
    setFocusPolicy(Qt::StrongFocus);
}

void Selector::hidePopup() {
    QComboBox::hidePopup();
    // Qt takes the pointer for being back over the selector, wherever the list has left it.
    if (!rect().contains(mapFromGlobal(QCursor::pos()))) {
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(this, &leave);
    }
}

void Selector::wheelEvent(QWheelEvent* event) {
    if (hasFocus()) {
        QComboBox::wheelEvent(event);
    } else {
        event->ignore();
    }
}

} // namespace browser
