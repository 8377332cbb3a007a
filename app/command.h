// SPDX-License-Identifier: MIT

#pragma once

#include "ui/application.h"

#include <QAction>

#include <functional>

namespace app {

/// A command of the main window.
class Command final : public QAction {
    Q_OBJECT

public:
    /// What it does, with the command as the sender.
    using Handler = std::function<void(QObject& sender)>;

    /// `hint` is shown in the status bar. What `handler` throws when the user triggers the command counts as
    /// raised by `control`.
    Command(const QString& name, const QString& caption, const QString& hint, Handler handler,
            QObject& control, QObject* parent)
        : QAction(caption, parent), handler_(std::move(handler)) {
        setObjectName(name);
        setStatusTip(hint);
        connect(this, &QAction::triggered, &control,
                [this, &control] { ui::guarded(control, [this] { execute(); }); });
    }

    /// Runs the command on behalf of another one: what its handler throws ends that one too.
    void execute() { handler_(*this); }

private:
    Handler handler_;
};

} // namespace app
