// SPDX-License-Identifier: MIT

#pragma once

#include "app/main_form.h"
#include "data/data_modul.h"

#include <QComboBox>

namespace test {

/// The program's data module and main window, shown and connected to a server, as after the menu command. The
/// test fails where the hourglass is left behind.
class CatalogWindow {
public:
    /// `edition`: the command of the tool bar that opens one at once.
    explicit CatalogWindow(const QString& server, const QString& edition = {});
    ~CatalogWindow();

    [[nodiscard]] TDM& module() { return module_; }
    [[nodiscard]] TMainForm& form() { return form_; }

    /// Executes a command of the tool bar by its name.
    void choose(const QString& action);

private:
    TDM module_;
    TMainForm form_;
};

/// Replaces the selector's text by typing.
void type(QComboBox& selector, const QString& text);

} // namespace test
