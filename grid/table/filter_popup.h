#pragma once

#include "grid/rows/row_filter.h"

#include <QFrame>

class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QPushButton;

namespace grid {

class Column;

/// The window in which the user chooses what a column must hold: a text, or some of its values. Closes and
/// deletes itself.
class FilterPopup final : public QFrame {
    Q_OBJECT

public:
    /// `values` are offered, those of the filter in force, `present`, among them. The column must have a
    /// field. `takesConditions` tells whether a text such as ">1000" compares numbers.
    FilterPopup(const Column& column, DistinctValues values, const ColumnFilter& present,
                bool takesConditions, QChar decimalPoint, QWidget* parent);

signals:
    /// The user wants this filter.
    void accepted(const grid::ColumnFilter& filter);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void addItem(const QString& text, bool checked);
    void addItems(const db::Field& field, const ColumnFilter& present, QChar decimalPoint);
    void takeCheck(QListWidgetItem* changed);
    [[nodiscard]] bool isChecked(int item) const;
    [[nodiscard]] ColumnFilter chosenFilter() const;
    void readText();
    void showWord(const QString& word);
    void accept();

    DistinctValues values_;
    bool takesConditions_;
    std::optional<NumberCondition> condition_; // what the text says, if it is one
    QLineEdit* text_;
    QLabel* word_;
    QPushButton* ok_;
    QListWidget* list_; // all, then the values, then the others if the values are not complete
    const QListWidgetItem* changed_ = nullptr; // by the latest click or key
};

} // namespace grid
