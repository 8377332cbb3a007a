// SPDX-License-Identifier: MIT

#pragma once

#include "grid/rows/tree_structure.h"
#include "grid/text/text_matcher.h"

#include <QAbstractItemModel>

#include <optional>
#include <vector>

namespace db {
class DataSet;
}

namespace grid {

class Column;

/// The rows of a dataset as a tree. A node is known by its dataset row, which is also the internal id of its
/// indexes. Order and search stay in force when the dataset is opened anew.
class TreeModel final : public QAbstractItemModel {
    Q_OBJECT

public:
    /// `columns`: those of the view, the hidden ones among them. `keyField` and `parentField` are integer
    /// columns of the dataset; throws db::DatabaseError when it has no such fields.
    TreeModel(db::DataSet& dataSet, std::vector<Column*> columns, const QString& keyField,
              const QString& parentField, QObject* parent);

    [[nodiscard]] db::DataSet& dataSet() const { return dataSet_; }
    /// All columns, the hidden ones among them, by index.
    [[nodiscard]] const std::vector<Column*>& columns() const { return columns_; }
    [[nodiscard]] const Column& column(int index) const { return *columns_[static_cast<std::size_t>(index)]; }
    /// The shape of the tree, as sorted and narrowed.
    [[nodiscard]] const TreeStructure& structure() const { return structure_; }

    /// TreeStructure::root for the invalid index.
    [[nodiscard]] static int node(const QModelIndex& index);
    /// The index of a shown node; invalid for the root and for a node that is not shown.
    [[nodiscard]] QModelIndex indexOf(int node, int column = 0) const;

    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& child) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    /// Sorts siblings by one column: texts by the alphabet, numbers by value, NULL first; -1 brings back
    /// the dataset's order.
    void sort(int column, Qt::SortOrder order) override;
    /// The column that siblings are sorted by; none while they stand in the dataset's order.
    [[nodiscard]] std::optional<int> sortColumn() const { return sortColumn_; }
    [[nodiscard]] bool isDescending() const { return descending_; }

    /// Shows only the nodes with all words in one visible column, and their ancestors; no word shows all.
    void setSearch(const TextMatcher& words);
    /// Searches once more; to be called when other columns are visible.
    void searchAgain();
    [[nodiscard]] bool isSearching() const { return search_.has_value(); }
    /// The nodes that the search has found, from top to bottom.
    [[nodiscard]] const std::vector<int>& hits() const { return hits_; }

    /// A cell as it is shown.
    [[nodiscard]] QString text(int node, int column) const;
    /// The characters of a cell that the search has found.
    [[nodiscard]] std::vector<TextRange> marks(int node, int column) const;

    /// The first shown node from `from` on (itself included), in the order of the fully open tree and round
    /// its end, whose text in `column` starts with `text`; TreeStructure::root when there is none.
    [[nodiscard]] int findStartingWith(const QString& text, int column, int from) const;

private:
    void build();
    void applySort();
    void applySearch();
    void collectHits();

    db::DataSet& dataSet_;
    std::vector<Column*> columns_;
    int keyField_;
    int parentField_;
    QChar decimalPoint_;
    std::optional<int> sortColumn_;
    bool descending_ = false;
    std::optional<TextMatcher> search_;
    std::vector<bool> isHit_; // by node, while searching
    std::vector<int> hits_;
    TreeStructure structure_;
};

} // namespace grid
