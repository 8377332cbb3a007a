#pragma once

#include <QHeaderView>

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

signals:
    /// A section has been resized or moved.
    void layoutChanged();

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
    [[nodiscard]] std::vector<double> weightsOf(const std::vector<int>& columns) const;

    std::vector<Column*> columns_;
    std::vector<double> weights_; // of every column, by index
    int width_ = 0;
    bool applying_ = false;
    std::optional<Press> press_; // while the button is down
};

} // namespace grid
