// SPDX-License-Identifier: MIT

#pragma once

#include "app/main_form.h"
#include "bench/catalog.h"

#include <memory>

namespace grid {
class TableModel;
} // namespace grid

namespace bench {

/// The program's main window, maximised, with the catalog browser of the edition ТЕР open in it.
class CatalogWindow final {
public:
    /// Throws std::runtime_error when the browser does not open.
    explicit CatalogWindow(const QString& server);
    ~CatalogWindow();
    CatalogWindow(const CatalogWindow&) = delete;
    CatalogWindow& operator=(const CatalogWindow&) = delete;

    [[nodiscard]] TDM& module() { return *module_; }

    /// Chooses period and region by the texts of the selectors and waits until the materials are on screen.
    void choose(const Stretch& stretch);

private:
    std::unique_ptr<TDM> module_;
    std::unique_ptr<TMainForm> form_;
};

/// The index of the column that shows a field.
[[nodiscard]] int columnOf(const grid::TableModel& model, const QString& field);

} // namespace bench
