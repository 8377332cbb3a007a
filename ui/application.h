// SPDX-License-Identifier: MIT

#pragma once

#include <QApplication>

#include <exception>
#include <functional>

namespace ui {

/// The application object: every exception that no handler catches ends here.
///
/// An exception must not travel through Qt's event dispatch; each slot that runs a handler therefore goes
/// through guarded(), and what an event handler of a widget throws ends in notify().
class Application final : public QApplication {
public:
    /// What is told of an unhandled exception and of a change of the hint.
    struct Events {
        std::function<void(QObject& sender, const std::exception& exception)> exceptionRaised;
        std::function<void(QObject& sender)> hintChanged;
    };

    Application(int& argc, char** argv);

    /// The hooks in force; without any, exceptions are just shown.
    void setEvents(Events events) { events_ = std::move(events); }

    /// Hands the exception to the exception event. An exception that escapes from there is shown in its
    /// stead.
    void handleException(QObject& sender, const std::exception& exception) const;

    /// The hint of what the pointer is over; empty when that has none.
    [[nodiscard]] const QString& hint() const { return hint_; }
    void setHint(const QString& hint);

    /// Keeps what an event handler throws from travelling on through the event dispatch.
    bool notify(QObject* receiver, QEvent* event) override;

    /// The standard exception message box.
    static void showException(const std::exception& exception);

    /// Runs the event queue once, then frees the objects that wait for it.
    static void processMessages();

    /// True from the closing of the main window on.
    [[nodiscard]] bool isTerminating() const { return terminating_; }
    void setTerminating(bool terminating = true) { terminating_ = terminating; }

private:
    Events events_;
    QString hint_;
    bool terminating_ = false;
};

/// The running application.
[[nodiscard]] Application& application();

/// Runs a handler; an exception goes, with its sender, to the application.
template <typename Handler>
void guarded(QObject& sender, Handler&& handler) {
    try {
        handler();
    } catch (const std::exception& exception) {
        application().handleException(sender, exception);
    }
}

/// A plain modal message with one OK button and no icon.
void showMessage(const QString& text);

} // namespace ui
