// SPDX-License-Identifier: MIT

#pragma once

#include "ui/application.h"

#include <QObject>

namespace app {

/// Hooks the application's events as long as it lives.
class ApplicationEvents final : public QObject {
    Q_OBJECT

public:
    ApplicationEvents(const QString& name, ui::Application::Events events, QObject* parent)
        : QObject(parent) {
        setObjectName(name);
        ui::application().setEvents(std::move(events));
    }
    ~ApplicationEvents() override { ui::application().setEvents({}); }
};

} // namespace app
