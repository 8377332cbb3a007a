// SPDX-License-Identifier: MIT

#include "browser/grid_export.h"

#include "export/table_export.h"
#include "grid/table/grid.h"
#include "grid/table/table_view.h"
#include "ui/screen_cursor.h"

#include <QPointer>

namespace browser {

namespace {

/// Keeps a grid from being used and painted.
class SuspendedGrid final {
public:
    explicit SuspendedGrid(grid::Grid& grid)
        : grid_(grid), enabled_(grid.isEnabledTo(grid.parentWidget())), focus_(grid.window()->focusWidget()) {
        grid_.setExporting(true);
        grid_.setUpdatesEnabled(false);
        grid_.setEnabled(false);
    }
    ~SuspendedGrid() {
        grid_.setEnabled(enabled_);
        // A widget that is disabled hands the focus on.
        if (focus_ && focus_ != grid_.window()->focusWidget()) {
            focus_->setFocus(Qt::OtherFocusReason);
        }
        grid_.setUpdatesEnabled(true);
        grid_.setExporting(false);
    }
    Q_DISABLE_COPY_MOVE(SuspendedGrid)

private:
    grid::Grid& grid_;
    bool enabled_;
    QPointer<QWidget> focus_;
};

} // namespace

void exportGrid(grid::Grid* grid, const QString& folder, const QString& name, const QString& pageHeader) {
    if (!grid) {
        return;
    }
    const ui::Hourglass hourglass;
    const SuspendedGrid suspended(*grid);
    const grid::TableView& view = grid->view();
    exporter::exportTable({view.tableModel(), view.visibleColumns(), view.footerColumn(), pageHeader}, folder,
                          name);
}

} // namespace browser
