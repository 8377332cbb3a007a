// SPDX-License-Identifier: MIT

#pragma once

#include <QHeaderView>

#include <functional>
#include <optional>
#include <vector>

namespace grid {

class Column;

/// A header whose visible sections always fill the width: each keeps its share of it, texts wrap, and a
/// dragged edge divides what is to its right anew.
class FittedHeader : public QHeaderView {
    Q_OBJECT

public:
    /// The column of a section, by its index in the model.
    [[nodiscard]] const Column& column(int index) const { return *columns_[static_cast<std::size_t>(index)]; }
    /// Visible columns (indices of the model) from left to right.
    [[nodiscard]] std::vector<int> visibleColumns() const;

    /// Lays the sections out over `width` pixels.
    void fitWidth(int width);
    /// The height in pixels that shows every text whole, whatever marks stand with it.
    [[nodiscard]] int fittedHeight() const;

    /// Makes a visible column so wide that cells of `width` pixels and the words of its caption stay whole,
    /// as far as those that share the rest do not need the room: for their captions, and for what
    /// `leastWidth` says of their cells.
    void fitColumn(int column, int width, const std::function<int(int column)>& leastWidth);

    /// Columns that the user has hidden.
    [[nodiscard]] std::vector<int> hiddenByUser() const;
    /// Whether a column is visible and not the last one that is.
    [[nodiscard]] bool canHide(int column) const;
    /// Hides a column that canHide() allows, or shows one that the user has hidden.
    void setColumnHidden(int column, bool hidden);

    /// Whether order, widths and visible columns are those of the start.
    [[nodiscard]] bool hasInitialLayout() const;
    /// Brings them back.
    void restoreInitialLayout();

    /// Whether sort() would change the order of the rows.
    [[nodiscard]] virtual bool canSort(int column, std::optional<Qt::SortOrder> order) const = 0;
    /// Sorts by one column alone; without an order nothing is sorted any more, whatever the column.
    virtual void sort(int column, std::optional<Qt::SortOrder> order) = 0;

signals:
    /// A section has been resized, moved, hidden or shown.
    void layoutChanged();
    /// The user has hidden columns or shown them again.
    void hiddenColumnsChanged();
    /// The user wants a menu for a column, or for none (-1); the place is global.
    void menuRequested(int column, const QPoint& place);

protected:
    /// `columns` are those of `model`, in its order.
    FittedHeader(QAbstractItemModel& model, std::vector<Column*> columns, QWidget* parent);

    /// Where the parts of a section stand.
    struct Parts {
        QRect text;
        QRect marks;
    };

    /// Pixels that the marks now shown in a section take.
    [[nodiscard]] virtual int marksWidth(int column) const = 0;
    /// The same together with marks that come with the pointer.
    [[nodiscard]] virtual int widestMarks(int column) const { return marksWidth(column); }
    /// Divides a section among its text and marks of that width. They stand to the right of the text, or
    /// beneath it where they would break it into more lines.
    [[nodiscard]] Parts partsOf(int column, const QRect& section, int marksWidth) const;
    /// Where a section is, in the viewport.
    [[nodiscard]] QRect sectionRect(int column) const;

    /// Draws a section with its text in `textArea`; `lit` brightens it.
    void drawSection(QPainter& painter, const QRect& section, int column, const QRect& textArea,
                     bool lit) const;
    /// Draws the triangle of a sorted column.
    void drawSortMark(QPainter& painter, const QPointF& center, bool descending) const;
    /// Draws a triangle of `halfHeight` pixels above and below its center; it points down, or up when that is
    /// negative.
    static void drawTriangle(QPainter& painter, const QPointF& center, qreal halfHeight, const QColor& color);

    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// A press of the mouse that may become a dragging of a column or of its edge.
    struct Press {
        QPointF place;
        std::vector<double> weights;
        bool isDrag = false;
    };

    [[nodiscard]] bool marksFitBeside(int column, int width, int marksWidth) const;
    void cancelDrag();
    void applyWeights();
    void takeUserWidth(int column, int width);
    [[nodiscard]] int captionWidth(int column) const;
    void hideSections();
    [[nodiscard]] std::vector<double> weightsOf(const std::vector<int>& columns) const;
    void setWeights(const std::vector<int>& columns, const std::vector<double>& weights);

    std::vector<Column*> columns_;
    std::vector<double> weights_; // of every column, by index
    int width_ = 0;
    bool applying_ = false;
    std::optional<Press> press_; // while the button is down
};

} // namespace grid
