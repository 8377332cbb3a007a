// SPDX-License-Identifier: MIT

#pragma once

#include <QWidget>

class QLabel;

namespace grid {

class TableModel;

/// Says in words which filter is in force and takes it away; hidden while there is none.
class FilterBar final : public QWidget {
    Q_OBJECT

public:
    FilterBar(TableModel& model, QWidget* parent);

private:
    void showFilters();

    TableModel& model_;
    QLabel* words_;
};

/// The filters in force as the user reads them, in the order of the columns.
[[nodiscard]] QString filterInWords(const TableModel& model);

} // namespace grid
