#pragma once

#include <QDialog>
#include <QString>

#include <functional>

namespace test {

/// Calls `act` with the next modal dialog as soon as it is shown. The dialog must be closed by `act`.
void onNextDialog(const std::function<void(QDialog& dialog)>& act);

/// Closes the next dialog by its OK button and keeps its text in `text`.
void acceptNextMessage(QString& text);

} // namespace test
