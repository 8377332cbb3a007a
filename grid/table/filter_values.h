// SPDX-License-Identifier: MIT

#pragma once

#include "grid/rows/distinct_values.h"
#include "grid/rows/row_filter.h"

#include <QAbstractListModel>

#include <cstdint>
#include <vector>

namespace grid {

/// The values of a column with a tick each, of which a text or a condition leaves some; the first row, "all",
/// ticks and unticks those that are left.
class FilterValues final : public QAbstractListModel {
    Q_OBJECT

public:
    /// How many rows of the table hold the value of a list row.
    static constexpr int rowsRole = Qt::UserRole;

    /// `values` of the field are ticked as the filter in force, `present`, lets them pass. The field must
    /// outlive the model.
    FilterValues(const db::Field& field, std::vector<CountedValue> values, const ColumnFilter& present,
                 QChar decimalPoint, QObject* parent);

    /// Leaves the values that contain the text and fulfil the condition of a filter.
    void narrow(const ColumnFilter& filter);

    [[nodiscard]] int valueCount() const { return static_cast<int>(values_.size()); }
    [[nodiscard]] int leftCount() const { return static_cast<int>(left_.size()); }
    /// Ticked ones among those that are left.
    [[nodiscard]] int tickedCount() const { return tickedCount_; }
    /// The longest of all values as it is shown.
    [[nodiscard]] QString longestText() const;

    /// The filter that the ticks stand for, with neither text nor condition.
    [[nodiscard]] ColumnFilter chosenFilter() const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    [[nodiscard]] std::size_t valueIn(int row) const;
    [[nodiscard]] QString valueText(std::size_t value) const;
    [[nodiscard]] Qt::CheckState stateOf(int row) const;
    [[nodiscard]] int rowsOf(int row) const;
    void tickAll(bool ticked);
    void tick(int row, bool ticked);
    void count();

    const db::Field& field_;
    QChar decimalPoint_;
    std::vector<CountedValue> values_;
    ColumnFilter present_;
    std::vector<bool> ticked_;        // by value
    std::vector<std::uint32_t> left_; // values in the rows after the first
    int tickedCount_ = 0;
    int rowsLeft_ = 0;
    bool isChanged_ = false;
    bool isTakenFromAll_; // ticks were taken away from all, rather than set one by one
};

} // namespace grid
