// SPDX-License-Identifier: MIT

#include "support/waiting.h"

#include <QApplication>
#include <QMessageBox>

#include <gtest/gtest.h>

#include <chrono>
#include <utility>

namespace test {

namespace {

using namespace std::chrono_literals;

QDialog* openDialog() {
    return qobject_cast<QDialog*>(QApplication::activeModalWidget());
}

QString textOf(const QDialog& dialog) {
    const auto* const message = qobject_cast<const QMessageBox*>(&dialog);
    return message ? message->text().remove(QChar(0x200B)) : dialog.windowTitle();
}

} // namespace

NextDialog::NextDialog(std::function<void(QDialog& dialog)> act) : act_(std::move(act)) {
    timer_.callOnTimeout([this] { look(); });
    timer_.start(5ms);
}

NextDialog::~NextDialog() {
    EXPECT_FALSE(timer_.isActive()) << "no dialog has been shown";
}

void NextDialog::look() {
    if (QDialog* const dialog = openDialog()) {
        timer_.stop();
        act_(*dialog);
    }
}

NextMessage::NextMessage()
    : dialog_([this](QDialog& dialog) {
          text_ = textOf(dialog);
          dialog.accept();
      }) {}

DialogWatch::DialogWatch() {
    timer_.callOnTimeout([this] { look(); });
    timer_.start(10s);
}

void DialogWatch::look() {
    QDialog* const dialog = openDialog();
    if (dialog && dialog == seen_) {
        ADD_FAILURE() << "a dialog stays open: " << textOf(*dialog).toStdString();
        dialog->reject();
    }
    seen_ = dialog;
}

} // namespace test
