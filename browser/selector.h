// SPDX-License-Identifier: MIT

#pragma once

#include <QComboBox>

namespace browser {

/// A list to choose from and to type into; a typed text that stands in the list is that item. The wheel turns
/// it only while it has the focus, so that a stray notch never shows the prices of another region.
class Selector final : public QComboBox {
    Q_OBJECT

public:
    /// `hint` says what is chosen; it stands in the empty field too.
    Selector(const QString& hint, QWidget* parent);

    /// Marks a text that does not say what is shown; `warning` tells what is. An empty one takes the mark
    /// away.
    void setWarning(const QString& warning);

    /// Shows the list as wide as its widest item, and 25 of its lines.
    void showPopup() override;
    void hidePopup() override;

protected:
    void wheelEvent(QWheelEvent* event) override;

private:
    void takeTypedItem(const QString& text);
    void setBackground(QRgb color);

    QString hint_;
};

} // namespace browser
