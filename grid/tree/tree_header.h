// SPDX-License-Identifier: MIT

#pragma once

#include "grid/header/fitted_header.h"

namespace grid {

class TreeModel;

/// The header of a tree; a click sorts the siblings, and the sorted column bears a mark.
class TreeHeader final : public FittedHeader {
    Q_OBJECT

public:
    TreeHeader(TreeModel& model, QWidget* parent);

    [[nodiscard]] bool canSort(int column, std::optional<Qt::SortOrder> order) const override;
    void sort(int column, std::optional<Qt::SortOrder> order) override;

protected:
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;
    [[nodiscard]] int marksWidth(int column) const override;

private:
    void toggleSort(int column);

    TreeModel& model_;
};

} // namespace grid
