#pragma once

#include <QObject>
#include <QString>

#include <exception>
#include <functional>

namespace ui {

/// Hooks the application's events as long as it lives: unhandled exceptions and the changing hint.
class ApplicationEvents final : public QObject {
    Q_OBJECT

public:
    using ExceptionEvent = std::function<void(QObject& sender, const std::exception& exception)>;
    using HintEvent = std::function<void(QObject& sender)>;

    ApplicationEvents(const QString& name, ExceptionEvent exceptionEvent, HintEvent hintEvent,
                      QObject* parent);
    ~ApplicationEvents() override;

    void exceptionRaised(QObject& sender, const std::exception& exception) const {
        exceptionEvent_(sender, exception);
    }
    void hintChanged(QObject& sender) const { hintEvent_(sender); }

private:
    ExceptionEvent exceptionEvent_;
    HintEvent hintEvent_;
};

} // namespace ui
