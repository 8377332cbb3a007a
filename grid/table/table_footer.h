// SPDX-License-Identifier: MIT

#pragma once

#include "grid/rows/table_model.h"

#include <QTimer>
#include <QWidget>

#include <optional>
#include <vector>

namespace grid {

class TableHeader;

/// The row under a table view: the count of the rows shown, under its column, and the sums of the selected
/// rows under the columns of amounts.
class TableFooter final : public QWidget {
    Q_OBJECT

public:
    /// `column` is the index of the column that the count stands under; -1 for an empty footer.
    TableFooter(const TableModel& model, const TableHeader& header, int column, QWidget* parent);

    /// The column that the count stands under, or the first one while that is hidden; -1 for none.
    [[nodiscard]] int column() const;
    /// The count as it is shown, with what it is part of where rows are filtered or several selected; empty
    /// in an empty footer.
    [[nodiscard]] QString text() const;
    /// The sum shown under a column (index of the model); empty where there is none.
    [[nodiscard]] QString sum(int column) const;
    [[nodiscard]] QSize sizeHint() const override;

    /// The selected rows, without any twice. They count until the rows are replaced.
    void setSelection(std::vector<RowStretch> selection);

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    /// A text with its frame.
    struct Item {
        int column;
        QString text;
        QRect place;
    };

    void follow();
    void announce();
    [[nodiscard]] int selectedCount() const;
    [[nodiscard]] std::vector<Item> items() const;
    void widen(std::vector<Item>& items) const;
    [[nodiscard]] QFont fontFor(const Item& item) const;
    [[nodiscard]] bool isCut(const Item& item) const;

    const TableModel& model_;
    const TableHeader& header_;
    int column_;
    std::vector<int> summedColumns_;
    std::vector<RowStretch> selection_;                // none unless it has several rows
    mutable std::optional<std::vector<QString>> sums_; // of the summed columns, once they have been asked for
    QTimer announcement_;                              // the selection changes row by row while it is drawn
};

} // namespace grid
