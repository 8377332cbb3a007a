// SPDX-License-Identifier: MIT

#pragma once

#include "grid/rows/distinct_values.h"
#include "grid/rows/row_filter.h"

#include <QAbstractTableModel>

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <vector>

namespace db {
class DataSet;
}

namespace grid {

class Column;

/// A column that the rows are sorted by.
struct SortColumn {
    int column = 0; ///< index of the model's column
    bool descending = false;
    bool operator==(const SortColumn&) const = default;
};

/// Rows that follow each other, both ends among them.
struct RowStretch {
    int first;
    int last;
    [[nodiscard]] int count() const { return last - first + 1; }
};

/// The rows of a dataset in the order and under the filter that the user chose; the dataset's own rows stay
/// untouched. Order and filter survive a reopening of the dataset. While the dataset reads, the rows that
/// have come are there already, unless they are going to be sorted or filtered.
class TableModel final : public QAbstractTableModel {
    Q_OBJECT

public:
    /// `columns` are the columns of the view, the hidden ones among them.
    TableModel(db::DataSet& dataSet, std::vector<Column*> columns, QObject* parent);

    [[nodiscard]] db::DataSet& dataSet() const { return dataSet_; }
    /// All columns, the hidden ones among them, by index.
    [[nodiscard]] const std::vector<Column*>& columns() const { return columns_; }
    [[nodiscard]] const Column& column(int index) const { return *columns_[static_cast<std::size_t>(index)]; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    /// A cell as it is shown; empty for NULL and where the dataset lacks the field.
    [[nodiscard]] QString text(int row, int column) const;
    /// A cell's value; nothing where the dataset lacks the field.
    [[nodiscard]] CellValue value(int row, int column) const;
    /// The exact sums of number columns over some rows, as their cells would show them; NULL counts for
    /// nothing.
    [[nodiscard]] std::vector<QString> sums(std::span<const int> columns,
                                            std::span<const RowStretch> rows) const;
    /// The sign that stands between whole and fraction digits.
    [[nodiscard]] QChar decimalPoint() const { return decimalPoint_; }

    /// The dataset's row that stands in `row`.
    [[nodiscard]] int dataSetRow(int row) const;
    /// Where the dataset's row stands; -1 when it is not shown.
    [[nodiscard]] int rowOfDataSetRow(int dataSetRow) const;

    /// Sorts by these columns, the first one first; columns without a field are left out. None: the dataset's
    /// order.
    void sortBy(std::vector<SortColumn> columns);
    /// What the rows are sorted by, the first column first.
    [[nodiscard]] const std::vector<SortColumn>& sortColumns() const { return sortColumns_; }

    /// Filters by one column; an empty filter takes the column's filter away.
    void setFilter(int column, ColumnFilter filter);
    /// Takes all filters away.
    void clearFilters();
    /// The values of a column, which must have a field, in the rows that the filters of the other columns
    /// leave; those of its own filter are always among them.
    [[nodiscard]] std::vector<CountedValue> valuesToFilter(int column) const;
    /// The filters in force by column.
    [[nodiscard]] const std::map<int, ColumnFilter>& filters() const { return filters_; }

signals:
    /// Sorting or filters have been changed (not merely applied to other rows).
    void arrangementChanged();

private:
    void takeArrived(int count);
    void rearrange();
    void arrange();
    [[nodiscard]] std::vector<std::int32_t> rowsLeftBy(const std::map<int, ColumnFilter>& filters) const;

    db::DataSet& dataSet_;
    std::vector<Column*> columns_;
    QChar decimalPoint_;
    std::vector<SortColumn> sortColumns_;
    std::map<int, ColumnFilter> filters_;
    int available_;                                  // of the dataset's rows
    std::optional<std::vector<std::int32_t>> order_; // none: the dataset's rows as they are
};

} // namespace grid
