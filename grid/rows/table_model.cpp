// SPDX-License-Identifier: MIT

#include "grid/rows/table_model.h"

#include "db/data_set.h"
#include "db/decimal.h"
#include "grid/rows/column.h"
#include "grid/rows/row_order.h"

#include <QLocale>

#include <algorithm>
#include <bit>
#include <numeric>

namespace grid {

TableModel::TableModel(db::DataSet& dataSet, std::vector<Column*> columns, QObject* parent)
    : QAbstractTableModel(parent),
      dataSet_(dataSet),
      columns_(std::move(columns)),
      decimalPoint_(QLocale().decimalPoint().front()),
      available_(dataSet.rowCount()) {
    connect(&dataSet_, &db::DataSet::rowsArrived, this, &TableModel::takeArrived);
    connect(&dataSet_, &db::DataSet::aboutToReset, this, [this] { beginResetModel(); });
    connect(&dataSet_, &db::DataSet::reset, this, [this] {
        available_ = dataSet_.rowCount();
        arrange();
        endResetModel();
    });
}

int TableModel::rowCount(const QModelIndex& parent) const {
    if (parent.isValid()) {
        return 0;
    }
    return order_ ? static_cast<int>(order_->size()) : available_;
}

int TableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant TableModel::data(const QModelIndex& index, int role) const {
    const bool exists = checkIndex(index, CheckIndexOption::IndexIsValid);
    return exists && role == Qt::DisplayRole ? text(index.row(), index.column()) : QVariant();
}

QVariant TableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    const bool exists = orientation == Qt::Horizontal && section >= 0 && section < columnCount();
    return exists && role == Qt::DisplayRole ? column(section).headerText() : QVariant();
}

QString TableModel::text(int row, int columnIndex) const {
    const db::Field* const field = column(columnIndex).field();
    return field ? dataSet_.text(dataSetRow(row), *field, decimalPoint_) : QString();
}

CellValue TableModel::value(int row, int columnIndex) const {
    const db::Field* const field = column(columnIndex).field();
    return field ? toValue(cellView(dataSet_.rows(), dataSetRow(row), *field)) : CellValue();
}

std::vector<QString> TableModel::sums(std::span<const int> columns, std::span<const RowStretch> rows) const {
    std::vector<int> fields;
    for (const int each : columns) {
        fields.push_back(column(each).field()->index());
    }
    // Sorted rows lie apart in memory; a sum may as well take them in the order in which they lie.
    constexpr std::size_t wordBits = 64;
    std::vector<std::uint64_t> chosen(static_cast<std::size_t>(dataSet_.rowCount()) / wordBits + 1);
    for (const RowStretch& stretch : rows) {
        for (int row = stretch.first; row <= stretch.last; ++row) {
            const auto source = static_cast<std::size_t>(dataSetRow(row));
            chosen[source / wordBits] |= std::uint64_t{1} << (source % wordBits);
        }
    }
    std::vector<base::WideInteger> totals(fields.size());
    for (std::size_t word = 0; word < chosen.size(); ++word) {
        for (std::uint64_t bits = chosen[word]; bits != 0; bits &= bits - 1) {
            const int row = static_cast<int>(word * wordBits) + std::countr_zero(bits);
            for (std::size_t i = 0; i < fields.size(); ++i) {
                totals[i] += dataSet_.rows().integer(row, fields[i]); // 0 for NULL
            }
        }
    }
    std::vector<QString> texts;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        texts.push_back(
            db::wideDecimalText(totals[i], column(columns[i]).field()->fractionDigits(), decimalPoint_));
    }
    return texts;
}

int TableModel::dataSetRow(int row) const {
    return order_ ? (*order_)[static_cast<std::size_t>(row)] : row;
}

int TableModel::rowOfDataSetRow(int dataSetRow) const {
    if (!order_) {
        return dataSetRow >= 0 && dataSetRow < dataSet_.rowCount() ? dataSetRow : -1;
    }
    const auto found = std::ranges::find(*order_, dataSetRow);
    return found == order_->end() ? -1 : static_cast<int>(found - order_->begin());
}

void TableModel::sortBy(std::vector<SortColumn> sortColumns) {
    std::erase_if(sortColumns, [this](const SortColumn& sort) { return !column(sort.column).field(); });
    if (sortColumns != sortColumns_) {
        sortColumns_ = std::move(sortColumns);
        rearrange();
    }
}

void TableModel::setFilter(int columnIndex, ColumnFilter filter) {
    if (filter.isEmpty() || !column(columnIndex).field()) {
        if (filters_.erase(columnIndex) == 0) {
            return;
        }
    } else {
        filters_[columnIndex] = std::move(filter);
    }
    rearrange();
}

void TableModel::clearFilters() {
    if (!filters_.empty()) {
        filters_.clear();
        rearrange();
    }
}

void TableModel::takeArrived(int count) {
    // Rows that will stand elsewhere, or nowhere, would only mislead.
    if (!sortColumns_.empty() || !filters_.empty()) {
        return;
    }
    if (available_ > 0 && count > available_) {
        beginInsertRows({}, available_, count - 1);
        available_ = count;
        endInsertRows();
    } else {
        beginResetModel();
        available_ = count;
        endResetModel();
    }
}

void TableModel::rearrange() {
    beginResetModel();
    arrange();
    endResetModel();
    emit arrangementChanged();
}

void TableModel::arrange() {
    order_.reset();
    if (!dataSet_.isOpen() || (sortColumns_.empty() && filters_.empty())) {
        return;
    }
    std::vector<std::int32_t> rows = rowsLeftBy(filters_);
    std::vector<RowOrderKey> keys;
    for (const SortColumn& sort : sortColumns_) {
        const db::Field& field = *column(sort.column).field();
        keys.push_back({field.index(), field.isNumber(), sort.descending});
    }
    sortRows(rows, dataSet_.rows(), keys);
    rows.shrink_to_fit();
    order_ = std::move(rows);
}

std::vector<std::int32_t> TableModel::rowsLeftBy(const std::map<int, ColumnFilter>& filters) const {
    if (filters.empty()) {
        std::vector<std::int32_t> rows(static_cast<std::size_t>(dataSet_.rowCount()));
        std::iota(rows.begin(), rows.end(), 0);
        return rows;
    }
    std::vector<FieldFilter> fieldFilters;
    fieldFilters.reserve(filters.size());
    for (const auto& [columnIndex, filter] : filters) {
        fieldFilters.push_back({column(columnIndex).field(), &filter});
    }
    return filteredRows(dataSet_, fieldFilters);
}

std::vector<CountedValue> TableModel::valuesToFilter(int columnIndex) const {
    std::map<int, ColumnFilter> others = filters_;
    const auto own = others.extract(columnIndex);
    return distinctValues(dataSet_, *column(columnIndex).field(), rowsLeftBy(others),
                          own ? own.mapped().values : std::set<CellValue>());
}

} // namespace grid
