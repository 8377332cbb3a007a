// SPDX-License-Identifier: MIT

#pragma once

#include "grid/header/fitted_header.h"

namespace grid {

class TableModel;

/// The header of a table view. A section shows its sort mark, and a filter button while the mouse is over it
/// or its column is filtered.
class TableHeader final : public FittedHeader {
    Q_OBJECT

public:
    TableHeader(TableModel& model, QWidget* parent);

    [[nodiscard]] bool canSort(int column, std::optional<Qt::SortOrder> order) const override;
    void sort(int column, std::optional<Qt::SortOrder> order) override;

    /// Shows the filter button where the pointer is now. To be called after something had covered the header.
    void followPointer();

signals:
    /// The user has pressed the filter button of a column (index of the model).
    void filterRequested(int column);

protected:
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;
    [[nodiscard]] int marksWidth(int column) const override;
    [[nodiscard]] int widestMarks(int column) const override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    void toggleSort(int column);
    void setHovered(int column);
    [[nodiscard]] int sortMarksWidth(int column) const;
    [[nodiscard]] bool isOverFilterButton(const QPoint& position) const;
    [[nodiscard]] bool isFiltered(int column) const;
    [[nodiscard]] bool showsFilterButton(int column) const;
    void drawSortMarks(QPainter& painter, const QRect& area, int column) const;
    void drawFilterButton(QPainter& painter, const QRect& button, int column) const;

    TableModel& model_;
    int hovered_ = -1;
};

} // namespace grid
