#pragma once

#include <QObject>

class QAction;
class QToolBar;

namespace app {

/// Fills a tool bar with buttons for commands; a button may be captioned otherwise than its command.
class ActionManager final : public QObject {
    Q_OBJECT

public:
    ActionManager(const QString& name, QToolBar& toolBar, QObject* parent);

    /// `caption`: "&" marks the button's Alt accelerator.
    void addButton(QAction& action, const QString& caption);
    void addSeparator();

private:
    QToolBar& toolBar_;
};

} // namespace app
