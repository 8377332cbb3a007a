#pragma once

#include <QToolBar>

namespace app {

/// A tool bar in the plain colour of its palette, its buttons side by side.
class FlatToolBar final : public QToolBar {
    Q_OBJECT

public:
    explicit FlatToolBar(QWidget* parent);

    /// Room for all buttons.
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace app
