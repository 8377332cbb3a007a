// SPDX-License-Identifier: MIT

#pragma once

#include <QListView>

namespace grid {

class FilterValues;

/// The list of a column's values in its filter: a click anywhere on a value or the space bar ticks it, and
/// the number of its rows stands at the right.
class FilterList final : public QListView {
    Q_OBJECT

public:
    FilterList(FilterValues& values, QWidget* parent);

    [[nodiscard]] QSize sizeHint() const override;
    void keyboardSearch(const QString& search) override;

signals:
    /// The user types into the list.
    void typed(const QString& text);

private:
    const FilterValues& values_;
};

} // namespace grid
