// SPDX-License-Identifier: MIT

#pragma once

#include <QToolBar>

class QAction;
class QActionGroup;

namespace app {

/// A tool bar in the plain colour of its palette, its buttons side by side.
class FlatToolBar final : public QToolBar {
    Q_OBJECT

public:
    explicit FlatToolBar(QWidget* parent);

    /// Gives the focus to the first button.
    void focusFirstButton();

    /// Room for all buttons.
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
};

/// Fills a tool bar with buttons for the commands of a list; a button may be captioned otherwise than its
/// command.
class ActionManager final : public QObject {
    Q_OBJECT
    /// The look of the buttons by its name.
    Q_PROPERTY(QString style MEMBER style_ CONSTANT)

public:
    ActionManager(const QString& name, const QString& style, QActionGroup& actionList, QToolBar& toolBar,
                  QObject* parent);

    /// Takes the command into the list and gives it a button, which is marked while the command is checked.
    /// `caption`: "&" marks the button's Alt accelerator.
    void addButton(QAction& action, const QString& caption);

private:
    QString style_;
    QActionGroup& actionList_;
    QToolBar& toolBar_;
};

} // namespace app
