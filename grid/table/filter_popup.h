// SPDX-License-Identifier: MIT

#pragma once

#include "grid/rows/row_filter.h"
#include "grid/table/filter_values.h"

#include <QFrame>

#include <vector>

class QLineEdit;
class QPushButton;

namespace grid {

class Column;
class FilterList;
class OutcomeLabel;

/// The window in which the user chooses what a column must hold: a text, a number condition, or some of its
/// values, of which the text or the condition leaves some to choose from. Closes and deletes itself.
class FilterPopup final : public QFrame {
    Q_OBJECT

public:
    /// `values` are offered, those of the filter in force, `present`, among them. The column must have a
    /// field. `takesConditions` tells whether a text such as ">1000" compares numbers.
    FilterPopup(const Column& column, std::vector<CountedValue> values, const ColumnFilter& present,
                bool takesConditions, QChar decimalPoint, QWidget* parent);

signals:
    /// The user wants this filter.
    void accepted(const grid::ColumnFilter& filter);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void layOut();
    void readText();
    void judge();
    /// Why the filter cannot be accepted; empty when it can.
    [[nodiscard]] QString objection() const;
    [[nodiscard]] QString listInWords() const;
    void showWord(const QString& word, bool isObjection);
    void accept();

    FilterValues values_;
    bool takesConditions_;
    ColumnFilter typed_; // what the text says
    QString mistake_;    // or why it says nothing
    QLineEdit* text_;
    OutcomeLabel* word_;
    FilterList* list_;
    QPushButton* ok_;
};

} // namespace grid
