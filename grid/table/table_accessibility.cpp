// SPDX-License-Identifier: MIT

#include "grid/table/table_accessibility.h"

#include "grid/rows/column.h"
#include "grid/rows/table_model.h"
#include "grid/table/grid.h"
#include "grid/table/table_footer.h"
#include "grid/table/table_header.h"
#include "grid/table/table_view.h"
#include "grid/view/row_accessibility.h"

#include <algorithm>

namespace grid {

namespace {

/// The row number under which the header's sections are kept.
constexpr int headerRow = -1;

/// Cells that are told of at a time as selected.
constexpr qsizetype selectedCellLimit = 20'000;

/// What the marks in a column's header mean.
QString arrangementInWords(const TableModel& model, int column) {
    QStringList words;
    const std::vector<SortColumn>& sorts = model.sortColumns();
    const auto sort = std::ranges::find(sorts, column, &SortColumn::column);
    if (sort != sorts.end()) {
        words.append(sort->descending ? QStringLiteral("по убыванию") : QStringLiteral("по возрастанию"));
        if (sorts.size() > 1) {
            words.append(QStringLiteral("%1-й столбец сортировки").arg(sort - sorts.begin() + 1));
        }
    }
    if (model.filters().contains(column)) {
        words.append(QStringLiteral("с фильтром"));
    }
    return words.join(QStringLiteral(", "));
}

/// A cell, or a section of the header.
class AccessibleCell final : public AccessiblePart, public QAccessibleTableCellInterface {
public:
    AccessibleCell(TableView& view, int row, int column) : AccessiblePart(view), row_(row), column_(column) {}

    [[nodiscard]] bool isValid() const override {
        return view() && row_ < tableView().tableModel().rowCount() &&
               !tableView().header().isSectionHidden(column_);
    }
    [[nodiscard]] QAccessible::Role role() const override {
        return row_ == headerRow ? QAccessible::ColumnHeader : QAccessible::Cell;
    }
    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        if (!isValid()) {
            return {};
        }
        const TableModel& model = tableView().tableModel();
        if (kind == QAccessible::Description && row_ == headerRow) {
            return arrangementInWords(model, column_);
        }
        if (kind != QAccessible::Name) {
            return {};
        }
        return row_ == headerRow ? model.column(column_).headerText() : model.text(row_, column_);
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::TableCellInterface && row_ != headerRow
                   ? static_cast<QAccessibleTableCellInterface*>(this)
                   : nullptr;
    }
    [[nodiscard]] bool isSelected() const override { return isValid() && tableView().isRowSelected(row_); }
    [[nodiscard]] QList<QAccessibleInterface*> columnHeaderCells() const override;
    [[nodiscard]] QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
    [[nodiscard]] int columnIndex() const override {
        const std::vector<int> columns = tableView().header().visibleColumns();
        return static_cast<int>(std::ranges::find(columns, column_) - columns.begin());
    }
    [[nodiscard]] int rowIndex() const override { return row_; }
    [[nodiscard]] int columnExtent() const override { return 1; }
    [[nodiscard]] int rowExtent() const override { return 1; }
    [[nodiscard]] QAccessibleInterface* table() const override { return parent(); }

protected:
    [[nodiscard]] QModelIndex index() const override { return tableView().tableModel().index(row_, column_); }
    [[nodiscard]] QRect area() const override {
        const FittedHeader& header = tableView().header();
        // The header lies above the viewport.
        return row_ != headerRow ? tableView().visualRect(index())
                                 : QRect(header.sectionViewportPosition(column_), -header.height(),
                                         header.sectionSize(column_), header.height());
    }

private:
    [[nodiscard]] TableView& tableView() const { return static_cast<TableView&>(*view()); }

    int row_;
    int column_; ///< index of the model's column
};

/// The children are the header's sections, then the cells row by row, then the footer. Columns count as they
/// stand on screen.
class AccessibleTable final : public AccessibleRowView, public QAccessibleTableInterface {
public:
    explicit AccessibleTable(TableView* view) : AccessibleRowView(view, QAccessible::Table), view_(view) {}

    /// None while the view is being made, when assistive technology may ask already.
    [[nodiscard]] int childCount() const override {
        return view_->model() ? (rowCount() + 1) * columnCount() + 1 : 0;
    }

    [[nodiscard]] QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= childCount()) {
            return nullptr;
        }
        if (index == childCount() - 1) {
            return QAccessible::queryAccessibleInterface(view_->findChild<TableFooter*>());
        }
        return cell(index / columnCount() - 1,
                    visibleColumns()[static_cast<std::size_t>(index % columnCount())]);
    }

    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override {
        const QPoint inHeader = view_->header().mapFromGlobal(QPoint(x, y));
        if (view_->header().rect().contains(inHeader)) {
            const int column = view_->header().logicalIndexAt(inHeader);
            return column < 0 ? nullptr : cell(headerRow, column);
        }
        const QPoint inRows = view_->viewport()->mapFromGlobal(QPoint(x, y));
        const QModelIndex index =
            view_->viewport()->rect().contains(inRows) ? view_->indexAt(inRows) : QModelIndex();
        return index.isValid() ? cell(index.row(), index.column()) : nullptr;
    }

    [[nodiscard]] QAccessibleInterface* focusChild() const override {
        const QModelIndex current = view_->currentIndex();
        return current.isValid() ? cell(current.row(), current.column()) : nullptr;
    }

    [[nodiscard]] int indexOfChild(const QAccessibleInterface* sought) const override {
        if (const auto* const found = dynamic_cast<const AccessibleCell*>(sought)) {
            return found->isValid() ? (found->rowIndex() + 1) * columnCount() + found->columnIndex() : -1;
        }
        return sought && sought->object() == view_->findChild<TableFooter*>() ? childCount() - 1 : -1;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::TableInterface ? static_cast<QAccessibleTableInterface*>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }

    [[nodiscard]] QAccessibleInterface* caption() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* summary() const override { return nullptr; }
    [[nodiscard]] int columnCount() const override { return static_cast<int>(visibleColumns().size()); }
    [[nodiscard]] int rowCount() const override { return view_->tableModel().rowCount(); }
    [[nodiscard]] QAccessibleInterface* cellAt(int row, int column) const override {
        const bool exists = row >= 0 && row < rowCount() && column >= 0 && column < columnCount();
        return exists ? child((row + 1) * columnCount() + column) : nullptr;
    }
    [[nodiscard]] QString columnDescription(int column) const override {
        const bool exists = column >= 0 && column < columnCount();
        return exists ? view_->visibleColumns()[static_cast<std::size_t>(column)]->headerText() : QString();
    }
    [[nodiscard]] QString rowDescription(int) const override { return {}; }

    [[nodiscard]] int selectedRowCount() const override {
        int count = 0;
        for (const QItemSelectionRange& range : view_->selectionModel()->selection()) {
            count += range.height();
        }
        return count;
    }
    [[nodiscard]] QList<int> selectedRows() const override {
        const std::vector<int> rows = view_->selectedRows();
        return {rows.begin(), rows.end()};
    }
    [[nodiscard]] int selectedCellCount() const override { return selectedRowCount() * columnCount(); }
    [[nodiscard]] QList<QAccessibleInterface*> selectedCells() const override {
        QList<QAccessibleInterface*> cells;
        for (const int row : view_->selectedRows()) {
            for (const int column : visibleColumns()) {
                if (cells.size() == selectedCellLimit) {
                    return cells;
                }
                cells.append(cell(row, column));
            }
        }
        return cells;
    }
    [[nodiscard]] bool isRowSelected(int row) const override {
        return row >= 0 && row < rowCount() && view_->isRowSelected(row);
    }
    bool selectRow(int row) override { return select(row, QItemSelectionModel::Select); }
    bool unselectRow(int row) override { return select(row, QItemSelectionModel::Deselect); }

    // Whole columns cannot be selected.
    [[nodiscard]] int selectedColumnCount() const override { return 0; }
    [[nodiscard]] QList<int> selectedColumns() const override { return {}; }
    [[nodiscard]] bool isColumnSelected(int) const override { return false; }
    bool selectColumn(int) override { return false; }
    bool unselectColumn(int) override { return false; }

    void modelChange(QAccessibleTableModelChangeEvent*) override {}

    [[nodiscard]] QAccessibleInterface* cell(int row, int column) const {
        const std::int64_t key = std::int64_t{row} * view_->tableModel().columnCount() + column;
        return part(key, [=, this] { return new AccessibleCell(*view_, row, column); });
    }

private:
    [[nodiscard]] std::vector<int> visibleColumns() const { return view_->header().visibleColumns(); }

    bool select(int row, QItemSelectionModel::SelectionFlag flag) {
        const QModelIndex index = view_->tableModel().index(row, 0);
        if (index.isValid()) {
            view_->selectionModel()->select(index, flag | QItemSelectionModel::Rows);
        }
        return index.isValid();
    }

    QPointer<TableView> view_;
};

QList<QAccessibleInterface*> AccessibleCell::columnHeaderCells() const {
    const auto* const table = dynamic_cast<AccessibleTable*>(parent());
    return table ? QList<QAccessibleInterface*>{table->cell(headerRow, column_)}
                 : QList<QAccessibleInterface*>();
}

/// A grid, which tells of nothing while it is covered.
class AccessibleGrid final : public QAccessibleWidget {
public:
    explicit AccessibleGrid(Grid* grid) : QAccessibleWidget(grid, QAccessible::Border) {}

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.invisible = state.invisible || isCovered();
        return state;
    }
    [[nodiscard]] int childCount() const override {
        return isCovered() ? 0 : QAccessibleWidget::childCount();
    }

private:
    [[nodiscard]] bool isCovered() const { return static_cast<const Grid*>(widget())->isCovered(); }
};

QAccessibleInterface* makeInterface(const QString&, QObject* object) {
    if (auto* const view = qobject_cast<TableView*>(object)) {
        return new AccessibleTable(view);
    }
    auto* const grid = qobject_cast<Grid*>(object);
    return grid ? new AccessibleGrid(grid) : nullptr;
}

} // namespace

void installTableAccessibility() {
    QAccessible::installFactory(makeInterface);
}

} // namespace grid
