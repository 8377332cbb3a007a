#pragma once

#include <QHeaderView>

#include <vector>

namespace grid {

class TableModel;

/// The header of a table view. Its sections always fill the width; texts wrap; a section shows its sort mark,
/// and a filter button while the mouse is over it or its column is filtered.
class TableHeader final : public QHeaderView {
    Q_OBJECT

public:
    TableHeader(TableModel& model, QWidget* parent);

    /// Visible columns (indices of the model) from left to right.
    [[nodiscard]] std::vector<int> visibleColumns() const;

    /// Lays the sections out over `width` pixels.
    void fitWidth(int width);
    /// The height that shows every text whole.
    [[nodiscard]] int fittedHeight() const;

signals:
    /// A section has been resized or moved.
    void layoutChanged();
    void filterRequested(int column);

protected:
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    void toggleSort(int column);
    void takeUserWidth(int column, int width);
    void applyWeights();
    void setHovered(int column);
    [[nodiscard]] QRect sectionRect(int column) const;
    [[nodiscard]] QRect textRect(int column, const QRect& section) const;
    [[nodiscard]] bool isOverFilterButton(const QPoint& position) const;
    [[nodiscard]] bool isFiltered(int column) const;
    [[nodiscard]] int marksWidth(int column) const;
    void drawSortMark(QPainter& painter, const QRect& section, int column) const;
    void drawFilterButton(QPainter& painter, const QRect& section, int column) const;

    TableModel& model_;
    std::vector<double> weights_; // of every column, by index
    int width_ = 0;
    int hovered_ = -1;
    bool applying_ = false;
};

} // namespace grid
