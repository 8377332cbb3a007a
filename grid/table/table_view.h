#pragma once

#include "grid/rows/clipboard_text.h"
#include "grid/rows/text_matcher.h"
#include "grid/table/grid_spec.h"
#include "grid/view/row_layout.h"
#include "grid/view/row_scrolling.h"

#include <QAbstractItemView>
#include <QBasicTimer>

#include <optional>
#include <vector>

namespace db {
class DataSource;
}

namespace grid {

class TableFooter;
class TableHeader;
class TableModel;

/// A read-only table of a dataset's rows with header and footer. Columns fill the width, rows grow with their
/// texts. The row in focus is the dataset's current row, both ways.
///
/// Rows are measured when they come into view and laid out downwards from the top row, which is the value of
/// the vertical scroll bar: nothing depends on the number of rows.
class TableView final : public QAbstractItemView {
    Q_OBJECT

public:
    TableView(const GridSpec& spec, db::DataSource& dataSource, QWidget* parent);

    /// What the view shows: rows in order and under filter.
    [[nodiscard]] TableModel& tableModel() const { return *tableModel_; }
    [[nodiscard]] TableHeader& header() const { return *header_; }
    /// Column name of the field that tells the rows apart.
    [[nodiscard]] const QString& keyField() const { return keyField_; }

    /// The visible columns from left to right, as the user arranged them.
    [[nodiscard]] std::vector<const Column*> visibleColumns() const;
    /// The column that the count of rows stands under, or null.
    [[nodiscard]] const Column* footerColumn() const;
    /// The count in the footer: the rows shown.
    [[nodiscard]] int footerCount() const;

    /// Makes the first row current and scrolls to it; nothing when there is none.
    void goToFirstRow();
    /// Puts the selected rows (the current row if none is) on the clipboard as tab separated text.
    void copySelection() const;

    /// Marks the occurrences of a text; an empty one takes the marks away.
    void setMarkedText(const QString& text);
    /// Makes the next cell that holds the marked text current, from the current row on (`forward`) or back,
    /// going round at the end. `includeCurrent` lets the current cell itself count. Tells whether there is
    /// one.
    bool findMarked(bool forward, bool includeCurrent);

    [[nodiscard]] QRect visualRect(const QModelIndex& index) const override;
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
    [[nodiscard]] QModelIndex indexAt(const QPoint& point) const override;
    void doItemsLayout() override;
    void keyboardSearch(const QString& search) override;

public slots:
    /// Opens the filter of a column (index of the model).
    void openFilter(int column);

protected:
    [[nodiscard]] QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    [[nodiscard]] int horizontalOffset() const override { return 0; }
    [[nodiscard]] int verticalOffset() const override { return 0; }
    [[nodiscard]] bool isIndexHidden(const QModelIndex& index) const override;
    void setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command) override;
    [[nodiscard]] QRegion visualRegionForSelection(const QItemSelection& selection) const override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void updateGeometries() override;
    void scrollContentsBy(int dx, int dy) override;
    void resizeEvent(QResizeEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    [[nodiscard]] int measureRow(int row) const;
    void scrollToPosition(ScrollPosition position);
    void rowsReplaced();
    void columnsLaidOut();
    void followDataSet();
    void updateRow(int row);
    [[nodiscard]] bool scrollWithin(int row, bool down, int pixels);
    void makeCurrent(const QModelIndex& index, Qt::KeyboardModifiers modifiers);
    [[nodiscard]] int startColumn() const;
    [[nodiscard]] QModelIndex neighbour(const QModelIndex& index, int columnStep) const;
    [[nodiscard]] QModelIndex indexNear(const QPoint& point) const;
    [[nodiscard]] std::vector<RowRange> selectedRanges() const;
    void drawRow(QPainter& painter, const ShownRow& shown, const QRect& exposed) const;
    void drawCell(QPainter& painter, const QRect& cell, int row, int column) const;

    TableModel* tableModel_ = nullptr;
    TableHeader* header_ = nullptr;
    TableFooter* footer_ = nullptr;
    QString keyField_;
    RowLayout layout_;
    std::optional<TextMatcher> marked_;
    int anchorRow_ = -1;   ///< where a selection of several rows began
    int focusColumn_ = -1; ///< kept while there is no row
    WheelRows wheel_;
    bool dragging_ = false; ///< a press on a row goes on to others
    bool replacingRows_ = false;
    bool following_ = false;
    bool fitting_ = false;
    QBasicTimer dragScroll_;
};

} // namespace grid
