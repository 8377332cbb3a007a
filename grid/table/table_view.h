// SPDX-License-Identifier: MIT

#pragma once

#include "grid/rows/cell_search.h"
#include "grid/rows/table_model.h"
#include "grid/table/grid_spec.h"
#include "grid/text/text_matcher.h"
#include "grid/view/row_view.h"

#include <optional>
#include <vector>

namespace db {
class DataSource;
}

namespace grid {

class TableFooter;
class TableHeader;

/// A table of a dataset's rows with header and footer.
class TableView final : public RowView {
    Q_OBJECT

public:
    TableView(const GridSpec& spec, db::DataSource& dataSource, QWidget* parent);

    /// What the view shows: rows in order and under filter.
    [[nodiscard]] TableModel& tableModel() const { return *model_; }

    /// The visible columns from left to right, as the user arranged them.
    [[nodiscard]] std::vector<const Column*> visibleColumns() const;
    /// The column that the count of rows stands under, or null.
    [[nodiscard]] const Column* footerColumn() const;

    /// Marks words, as TextMatcher finds them; no word takes the marks away.
    void setMarkedText(const QString& words);
    /// The cell in focus; row -1 when there is no row.
    [[nodiscard]] CellPlace currentPlace() const { return {currentRow(), focusColumn()}; }
    /// Makes a cell current and selects its row.
    void goTo(CellPlace place);

    /// Opens the filter of a column (index of the model).
    void openFilter(int column);

protected:
    [[nodiscard]] int rowCount() const override { return model_->rowCount(); }
    [[nodiscard]] QModelIndex indexOf(int row, int column) const override {
        return model_->index(row, column);
    }
    [[nodiscard]] int rowOf(const QModelIndex& index) const override { return index.row(); }
    [[nodiscard]] int dataSetRow(int row) const override { return model_->dataSetRow(row); }
    [[nodiscard]] int bringIn(int dataSetRow) override { return model_->rowOfDataSetRow(dataSetRow); }
    [[nodiscard]] QItemSelection selectionOf(int first, int last) const override;
    [[nodiscard]] QString textOf(int row, int column) const override { return model_->text(row, column); }
    [[nodiscard]] std::vector<TextRange> marksIn(int row, int column) const override;
    [[nodiscard]] RowColors rowColors(int row) const override;
    [[nodiscard]] QString emptyText() const override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void addCellEntries(QMenu& menu, const QModelIndex& cell) override;
    void addColumnEntries(QMenu& menu, int column) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void paintArrived();
    void announceArrangement();
    [[nodiscard]] ColumnFilter filterOf(int column) const;
    void showOnly(int column, const CellValue& value);
    void hideValue(int column, const CellValue& value);
    void leaveValue(int column, const CellValue& value);

    TableHeader* tableHeader_ = nullptr;
    TableModel* model_ = nullptr;
    TableFooter* footer_ = nullptr;
    std::optional<TextMatcher> marked_;
};

} // namespace grid
