#pragma once

#include <QWidget>

namespace grid {

class TableHeader;
class TableModel;

/// The row under a table view: the count of the rows shown, under its column.
class TableFooter final : public QWidget {
    Q_OBJECT

public:
    /// `column` is the index of the column that the count stands under; -1 for an empty footer.
    TableFooter(const TableModel& model, const TableHeader& header, int column, QWidget* parent);

    /// The column that the count stands under; -1 for none.
    [[nodiscard]] int column() const { return column_; }
    /// The count as it is shown; empty in an empty footer.
    [[nodiscard]] QString text() const;
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const TableModel& model_;
    const TableHeader& header_;
    int column_;
};

} // namespace grid
