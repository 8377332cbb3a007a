#pragma once

#include "grid/table/grid_spec.h"

#include <QFrame>

namespace db {
class DataSource;
}

namespace grid {

class TableFindBar;
class TableView;

/// The one page of a grid: the table view with the find bar above and the filter bar below.
class Level final : public QWidget {
    Q_OBJECT

public:
    Level(const GridSpec& spec, db::DataSource& dataSource, QWidget* parent);

    /// The table itself.
    [[nodiscard]] TableView& view() const { return *view_; }
    /// The bar above it.
    [[nodiscard]] TableFindBar& findBar() const { return *findBar_; }

private:
    TableView* view_;
    TableFindBar* findBar_;
};

/// The control that shows a dataset's rows. Has the focus through its view.
class Grid final : public QFrame {
    Q_OBJECT

public:
    Grid(const GridSpec& spec, db::DataSource& dataSource, QWidget* parent);

    /// The page.
    [[nodiscard]] Level& level() const { return *level_; }
    /// The table on the page.
    [[nodiscard]] TableView& view() const { return level_->view(); }

    /// Marks the grid while its view is written to a file.
    void setExporting(bool exporting) { exporting_ = exporting; }
    [[nodiscard]] bool isExporting() const { return exporting_; }

private:
    Level* level_;
    bool exporting_ = false;
};

} // namespace grid
