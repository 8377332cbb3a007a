// SPDX-License-Identifier: MIT

#include "grid/table/filter_values.h"

#include "base/decimal.h"
#include "db/field.h"

#include <algorithm>
#include <numeric>

namespace grid {

namespace {

std::size_t length(const CellValue& value) {
    if (const auto* const text = std::get_if<std::string>(&value)) {
        return text->size();
    }
    const auto* const number = std::get_if<std::int64_t>(&value);
    return number ? base::DecimalCharacters(*number, 0).view().size() : 0;
}

} // namespace

FilterValues::FilterValues(const db::Field& field, std::vector<CountedValue> values,
                           const ColumnFilter& present, QChar decimalPoint, QObject* parent)
    : QAbstractListModel(parent),
      field_(field),
      decimalPoint_(decimalPoint),
      values_(std::move(values)),
      present_(present),
      isTakenFromAll_(present.rule != ColumnFilter::Values::Only) {
    using enum ColumnFilter::Values;
    ticked_.reserve(values_.size());
    for (const CountedValue& each : values_) {
        ticked_.push_back(present.rule == Any ||
                          present.values.contains(each.value) == (present.rule == Only));
    }
    narrow(present);
}

void FilterValues::narrow(const ColumnFilter& filter) {
    beginResetModel();
    const ContentsCheck contents(filter, field_);
    left_.clear();
    for (std::uint32_t value = 0; value < values_.size(); ++value) {
        if (contents.holdsFor(toView(values_[value].value))) {
            left_.push_back(value);
        }
    }
    count();
    endResetModel();
}

void FilterValues::count() {
    tickedCount_ =
        static_cast<int>(std::ranges::count_if(left_, [this](auto value) { return ticked_[value]; }));
    rowsLeft_ = std::transform_reduce(left_.begin(), left_.end(), 0, std::plus(),
                                      [this](auto value) { return values_[value].rows; });
}

QString FilterValues::longestText() const {
    const auto longest =
        std::ranges::max_element(values_, {}, [](const CountedValue& each) { return length(each.value); });
    return longest == values_.end() ? QString()
                                    : valueText(static_cast<std::size_t>(longest - values_.begin()));
}

ColumnFilter FilterValues::chosenFilter() const {
    using enum ColumnFilter::Values;
    ColumnFilter filter;
    if (!isChanged_) {
        filter.rule = present_.rule;
        filter.values = present_.values;
        return filter;
    }
    if (tickedCount_ == leftCount()) {
        return filter;
    }
    // Few that are unticked mean all but these, so that what another region brings is not hidden. What has
    // not been left has no say: it is hidden by the text or the condition anyway.
    const int uncertain = 2 * tickedCount_ - leftCount();
    const bool isAllBut = uncertain > 0 || (uncertain == 0 && isTakenFromAll_);
    filter.rule = isAllBut ? AllBut : Only;
    for (const std::uint32_t value : left_) {
        if (ticked_[value] != isAllBut) {
            filter.values.insert(values_[value].value);
        }
    }
    return filter;
}

int FilterValues::rowCount(const QModelIndex& parent) const {
    return parent.isValid() || left_.empty() ? 0 : leftCount() + 1;
}

QVariant FilterValues::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const int row = index.row();
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return row == 0 ? QStringLiteral("(Все)") : valueText(valueIn(row));
    case Qt::CheckStateRole:
        return stateOf(row);
    case Qt::AccessibleDescriptionRole:
        // Qt has no word for a half-ticked item of a list.
        return (stateOf(row) == Qt::PartiallyChecked ? QStringLiteral("Выбраны не все, строк: %1")
                                                     : QStringLiteral("Строк: %1"))
            .arg(rowsOf(row));
    case rowsRole:
        return rowsOf(row);
    default:
        return {};
    }
}

bool FilterValues::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::CheckStateRole || !checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return false;
    }
    isChanged_ = true;
    const bool ticked = value.toInt() == Qt::Checked;
    if (index.row() == 0) {
        tickAll(ticked);
    } else {
        tick(index.row(), ticked);
    }
    return true;
}

Qt::ItemFlags FilterValues::flags(const QModelIndex& index) const {
    return index.isValid()
               ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable | Qt::ItemNeverHasChildren
               : Qt::NoItemFlags;
}

void FilterValues::tickAll(bool ticked) {
    for (const std::uint32_t value : left_) {
        ticked_[value] = ticked;
    }
    tickedCount_ = ticked ? leftCount() : 0;
    isTakenFromAll_ = ticked;
    emit dataChanged(index(0), index(leftCount()), {Qt::CheckStateRole});
}

void FilterValues::tick(int row, bool ticked) {
    const std::size_t value = valueIn(row);
    if (ticked_[value] != ticked) {
        ticked_[value] = ticked;
        tickedCount_ += ticked ? 1 : -1;
    }
    emit dataChanged(index(row), index(row), {Qt::CheckStateRole});
    emit dataChanged(index(0), index(0), {Qt::CheckStateRole});
}

std::size_t FilterValues::valueIn(int row) const {
    return left_[static_cast<std::size_t>(row - 1)];
}

QString FilterValues::valueText(std::size_t value) const {
    const CellValue& held = values_[value].value;
    return std::holds_alternative<std::monostate>(held)
               ? QStringLiteral("(Пустые)")
               : cellValueText(held, field_, decimalPoint_).simplified();
}

Qt::CheckState FilterValues::stateOf(int row) const {
    if (row > 0) {
        return ticked_[valueIn(row)] ? Qt::Checked : Qt::Unchecked;
    }
    return tickedCount_ == leftCount() ? Qt::Checked
           : tickedCount_ > 0          ? Qt::PartiallyChecked
                                       : Qt::Unchecked;
}

int FilterValues::rowsOf(int row) const {
    return row == 0 ? rowsLeft_ : values_[valueIn(row)].rows;
}

} // namespace grid
