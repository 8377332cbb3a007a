// SPDX-License-Identifier: MIT

#pragma once

#include "grid/table/grid_spec.h"

#include <QFrame>

namespace db {
class DataSource;
}

namespace grid {

class TableFindBar;
class TableView;

/// The control that shows a dataset's rows. Its one page, the level, holds the table view with the find bar
/// above and the filter bar below. Has the focus through its view.
class Grid final : public QFrame {
    Q_OBJECT

public:
    Grid(const GridSpec& spec, db::DataSource& dataSource, QWidget* parent);

    /// The table on the page.
    [[nodiscard]] TableView& view() const { return *view_; }

    /// Shows the find bar with the cursor in it.
    void openFind();

    /// Takes the grid, which lies beneath another one, out of reach, since nobody sees it: the focus goes on
    /// to the other one, and assistive technology is not told of it.
    void setCoveredBy(Grid& other);
    [[nodiscard]] bool isCovered() const { return covered_; }

    /// Marks the grid while its view is written to a file.
    void setExporting(bool exporting) { exporting_ = exporting; }
    [[nodiscard]] bool isExporting() const { return exporting_; }

private:
    TableView* view_;
    TableFindBar* findBar_;
    bool covered_ = false;
    bool exporting_ = false;
};

} // namespace grid
