// SPDX-License-Identifier: MIT

#include "ui/application.h"

#include "base/error.h"

#include <QLibraryInfo>
#include <QMessageBox>
#include <QPixmapCache>
#include <QRegularExpression>
#include <QTranslator>

namespace ui {

namespace {

/// The text with places where a line may end within words that no line holds, such as long paths.
QString breakable(const QString& text) {
    constexpr int longestWord = 60; // characters
    constexpr QChar zeroWidthSpace(0x200B);
    static const QRegularExpression lineEnd(QStringLiteral("([/\\\\_]|\\S{30})"));
    QStringList words = text.split(u' ');
    for (QString& word : words) {
        if (word.size() > longestWord) {
            word.replace(lineEnd, QStringLiteral("\\1") + zeroWidthSpace);
        }
    }
    return words.join(u' ');
}

void showMessageBox(QMessageBox::Icon icon, const QString& text) {
    QMessageBox box(icon, QApplication::applicationName(), breakable(text), QMessageBox::Ok,
                    QApplication::activeWindow());
    // The server's texts are no markup.
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

} // namespace

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
    setApplicationName(QStringLiteral("Tarvelo"));
    // The style keeps the buttons that it draws under the palettes of the very widgets. Those of a window
    // that is gone are never asked for again, and the keys of what the cache has dropped are never freed.
    QPixmapCache::setCacheLimit(0);
    auto* const translator = new QTranslator(this);
    // The standard buttons speak Russian whatever the system's language.
    if (translator->load(QStringLiteral("qtbase_ru"), QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        installTranslator(translator);
    }
}

void Application::handleException(QObject& sender, const std::exception& exception) const {
    if (!events_.exceptionRaised) {
        showException(exception);
        return;
    }
    try {
        events_.exceptionRaised(sender, exception);
    } catch (const std::exception& escaped) {
        showException(escaped);
    }
}

void Application::setHint(const QString& hint) {
    if (hint == hint_) {
        return;
    }
    hint_ = hint;
    if (events_.hintChanged) {
        guarded(*this, [this] { events_.hintChanged(*this); });
    }
}

void Application::showException(const std::exception& exception) {
    showMessageBox(QMessageBox::Critical, base::messageOf(exception));
}

void Application::processMessages() {
    // A window that is already marked must be gone before an event can ask for the next one.
    sendPostedEvents(nullptr, QEvent::DeferredDelete);
    processEvents();
    // Inside a handler processEvents() leaves objects marked by deleteLater() alone.
    sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

bool Application::notify(QObject* receiver, QEvent* event) {
    bool handled = false;
    guarded(*receiver, [&] { handled = QApplication::notify(receiver, event); });
    return handled;
}

Application& application() {
    return *static_cast<Application*>(QCoreApplication::instance());
}

void showMessage(const QString& text) {
    showMessageBox(QMessageBox::NoIcon, text);
}

} // namespace ui
