// SPDX-License-Identifier: MIT

#pragma once

#include "grid/rows/column.h"

#include <QFrame>

#include <span>

namespace db {
class DataSource;
}

namespace grid {

class TreeFindPanel;
class TreeView;

/// The table of a tree list.
struct TreeListSpec {
    QStringView name;                    ///< object name of the control
    std::span<const ColumnSpec> columns; ///< must outlive the tree list
    QStringView keyField;                ///< integer field that tells the nodes apart
    QStringView parentField;             ///< integer field with the parent's key; NULL at the top level
};

/// A tree of a dataset's rows under a panel that narrows it to the nodes with a text. Its columns are its
/// children by their object names.
class TreeList final : public QFrame {
    Q_OBJECT

public:
    /// Throws db::DatabaseError when the dataset lacks the key or the parent field.
    TreeList(const TreeListSpec& spec, db::DataSource& dataSource, QWidget* parent);

    /// The tree itself.
    [[nodiscard]] TreeView& view() const { return *view_; }
    /// Puts the cursor into the panel.
    void openFind();

private:
    TreeFindPanel* findPanel_;
    TreeView* view_;
};

} // namespace grid
