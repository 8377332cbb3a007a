#include "ui/application_events.h"

#include "ui/application.h"

namespace ui {

ApplicationEvents::ApplicationEvents(const QString& name, ExceptionEvent exceptionEvent, HintEvent hintEvent,
                                     QObject* parent)
    : QObject(parent), exceptionEvent_(std::move(exceptionEvent)), hintEvent_(std::move(hintEvent)) {
    setObjectName(name);
    application().setEvents(this);
}

ApplicationEvents::~ApplicationEvents() {
    application().setEvents(nullptr);
}

} // namespace ui
