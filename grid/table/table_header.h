#pragma once

#include "grid/view/fitted_header.h"

namespace grid {

class TableModel;

/// The header of a table view. A section shows its sort mark, and a filter button while the mouse is over it
/// or its column is filtered.
class TableHeader final : public FittedHeader {
    Q_OBJECT

public:
    TableHeader(TableModel& model, QWidget* parent);

signals:
    /// The user has pressed the filter button of a column (index of the model).
    void filterRequested(int column);

protected:
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;
    [[nodiscard]] int marksWidth(int column) const override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    void toggleSort(int column);
    void setHovered(int column);
    [[nodiscard]] QRect sectionRect(int column) const;
    [[nodiscard]] QRect textRect(int column, const QRect& section) const;
    [[nodiscard]] bool isOverFilterButton(const QPoint& position) const;
    [[nodiscard]] bool isFiltered(int column) const;
    void drawSortMarks(QPainter& painter, const QRect& section, int column) const;
    void drawFilterButton(QPainter& painter, const QRect& section, int column) const;

    TableModel& model_;
    int hovered_ = -1;
};

} // namespace grid
