#pragma once

#include <QHeaderView>

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
    /// The height in pixels that shows every text whole.
    [[nodiscard]] int fittedHeight() const;

signals:
    /// A section has been resized or moved.
    void layoutChanged();

protected:
    /// `columns` are those of `model`, in its order.
    FittedHeader(QAbstractItemModel& model, std::vector<Column*> columns, QWidget* parent);

    /// Pixels at the right of a section that marks take from its text.
    [[nodiscard]] virtual int marksWidth(int column) const = 0;
    /// The part of `section` that marks leave to the text.
    [[nodiscard]] QRect besideMarks(int column, const QRect& section) const;

    /// Draws a section with its text in `textArea`; `lit` brightens it.
    void drawSection(QPainter& painter, const QRect& section, int column, const QRect& textArea,
                     bool lit) const;
    /// Draws the triangle of a sorted column.
    void drawSortMark(QPainter& painter, const QPointF& center, bool descending) const;
    /// Draws a triangle of `halfHeight` pixels above and below its center; it points down, or up when that is
    /// negative.
    static void drawTriangle(QPainter& painter, const QPointF& center, qreal halfHeight, const QColor& color);

private:
    void applyWeights();
    void takeUserWidth(int column, int width);
    [[nodiscard]] std::vector<double> weightsOf(const std::vector<int>& columns) const;

    std::vector<Column*> columns_;
    std::vector<double> weights_; // of every column, by index
    int width_ = 0;
    bool applying_ = false;
};

} // namespace grid
