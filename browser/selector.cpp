// SPDX-License-Identifier: MIT

#include "browser/selector.h"

#include "ui/fonts.h"

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QLineEdit>
#include <QScreen>
#include <QSignalBlocker>
#include <QWheelEvent>

#include <algorithm>

namespace browser {

namespace {

constexpr int listLines = 25;
constexpr QRgb background = qRgb(255, 251, 240);
constexpr QRgb warningBackground = qRgb(255, 214, 204);

} // namespace

Selector::Selector(const QString& hint, QWidget* parent) : QComboBox(parent), hint_(hint) {
    setEditable(true);
    setInsertPolicy(NoInsert);
    // What is typed is taken letter by letter; completing it would choose what the user did not type.
    setCompleter(nullptr);
    setFocusPolicy(Qt::StrongFocus);
    setMaxVisibleItems(listLines);
    setFont(ui::pixelFont(QStringLiteral("Tahoma"), 13));
    setBackground(background);
    view()->setPalette(palette()); // a warning is not about what the list offers
    setToolTip(hint);
    setStatusTip(hint);
    setAccessibleName(hint);
    lineEdit()->setPlaceholderText(hint);
    // It has the focus in the selector's stead, so a screen reader calls it by its own name.
    lineEdit()->setAccessibleName(hint);
    connect(this, &QComboBox::editTextChanged, this, &Selector::takeTypedItem);
}

void Selector::setWarning(const QString& warning) {
    setToolTip(warning.isEmpty() ? hint_ : warning);
    setAccessibleDescription(warning);
    lineEdit()->setAccessibleDescription(warning);
    setBackground(warning.isEmpty() ? background : warningBackground);
}

void Selector::setBackground(QRgb color) {
    QPalette colors = palette();
    colors.setColor(QPalette::Base, QColor(color));
    setPalette(colors);
}

/// Lets keys, wheel and list go on from a typed text; the text itself has been told of already.
void Selector::takeTypedItem(const QString& text) {
    const int item = findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (item < 0 || itemText(currentIndex()) == text) {
        return;
    }
    const QSignalBlocker blocker(this);
    const int cursor = lineEdit()->cursorPosition();
    setCurrentIndex(item);
    lineEdit()->setCursorPosition(cursor);
}

void Selector::showPopup() {
    constexpr int listMargin = 8;
    const int scrollBar = count() > maxVisibleItems() ? style()->pixelMetric(QStyle::PM_ScrollBarExtent) : 0;
    const int widest = view()->sizeHintForColumn(0) + scrollBar + listMargin;
    view()->setMinimumWidth(std::max(width(), std::min(widest, screen()->availableSize().width())));
    QComboBox::showPopup();
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
