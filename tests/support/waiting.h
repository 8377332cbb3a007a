// SPDX-License-Identifier: MIT

#pragma once

#include <QDialog>
#include <QPointer>
#include <QString>
#include <QTimer>

#include <functional>

namespace test {

/// Waits for the next modal dialog and deals with it as soon as it is shown. The test fails when none has
/// come by the end of the object's life.
class NextDialog {
public:
    /// `act` must close the dialog.
    explicit NextDialog(std::function<void(QDialog& dialog)> act);
    ~NextDialog();
    NextDialog(const NextDialog&) = delete;
    NextDialog& operator=(const NextDialog&) = delete;

private:
    void look();

    std::function<void(QDialog& dialog)> act_;
    QTimer timer_;
};

/// Closes the next dialog by its OK button and keeps its text.
class NextMessage {
public:
    NextMessage();

    [[nodiscard]] const QString& text() const { return text_; }

private:
    QString text_;
    NextDialog dialog_;
};

/// Fails the test and closes the dialog when one stays open that nobody deals with, which would block the
/// test for ever.
class DialogWatch {
public:
    DialogWatch();

private:
    void look();

    QTimer timer_;
    QPointer<QDialog> seen_;
};

} // namespace test
