#pragma once

#include <QComboBox>

namespace browser {

/// A list to choose from and to type into. The wheel turns it only while it has the focus, so that a stray
/// notch never shows the prices of another region.
class Selector final : public QComboBox {
    Q_OBJECT

public:
    explicit Selector(QWidget* parent);

    void hidePopup() override;

protected:
    void wheelEvent(QWheelEvent* event) override;
};

} // namespace browser
