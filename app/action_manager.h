#pragma once

#include <QToolBar>

class QAction;

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

/// Fills a tool bar with buttons for commands; a button may be captioned otherwise than its command.
class ActionManager final : public QObject {
    Q_OBJECT

public:
    ActionManager(const QString& name, QToolBar& toolBar, QObject* parent);

    /// `caption`: "&" marks the button's Alt accelerator.
    void addButton(QAction& action, const QString& caption);

private:
    QToolBar& toolBar_;
};

} // namespace app
