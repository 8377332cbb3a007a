// SPDX-License-Identifier: MIT

#include "grid/rows/tree_model.h"

#include "base/win1251.h"
#include "db/data_set.h"
#include "grid/rows/column.h"
#include "grid/rows/row_order.h"
#include "grid/text/collation.h"

#include <QLocale>

#include <algorithm>
#include <numeric>

namespace grid {

TreeModel::TreeModel(db::DataSet& dataSet, std::vector<Column*> columns, const QString& keyField,
                     const QString& parentField, QObject* parent)
    : QAbstractItemModel(parent),
      dataSet_(dataSet),
      columns_(std::move(columns)),
      keyField_(dataSet.field(keyField).index()),
      parentField_(dataSet.field(parentField).index()),
      decimalPoint_(QLocale().decimalPoint().front()) {
    connect(&dataSet_, &db::DataSet::aboutToReset, this, [this] { beginResetModel(); });
    connect(&dataSet_, &db::DataSet::reset, this, [this] {
        build();
        endResetModel();
    });
    build();
}

void TreeModel::build() {
    std::vector<TreeKey> keys(static_cast<std::size_t>(dataSet_.rowCount()));
    const auto value = [this](int row, int field) -> std::optional<std::int64_t> {
        const db::RowStore& rows = dataSet_.rows();
        return rows.isNull(row, field) ? std::nullopt : std::optional(rows.integer(row, field));
    };
    for (int row = 0; row < dataSet_.rowCount(); ++row) {
        keys[static_cast<std::size_t>(row)] = {value(row, keyField_), value(row, parentField_)};
    }
    structure_ = TreeStructure(keys);
    applySort();
    applySearch();
}

void TreeModel::applySort() {
    const db::Field* const field = sortColumn_ ? column(*sortColumn_).field() : nullptr;
    if (!field || !dataSet_.isOpen()) {
        structure_.sort({});
        return;
    }
    std::vector<std::int32_t> order(static_cast<std::size_t>(dataSet_.rowCount()));
    std::iota(order.begin(), order.end(), 0);
    const RowOrderKey key{field->index(), field->isNumber(), descending_};
    sortRows(order, dataSet_.rows(), {&key, 1});
    structure_.sort(std::move(order));
}

void TreeModel::applySearch() {
    if (!search_) {
        return;
    }
    std::vector<const db::Field*> searched;
    for (const Column* shown : columns_) {
        if (shown->isVisible() && shown->field()) {
            searched.push_back(shown->field());
        }
    }
    isHit_.assign(static_cast<std::size_t>(structure_.rowCount()), false);
    structure_.showOnly([&](int node) {
        const bool isHit = std::ranges::any_of(searched, [&](const db::Field* field) {
            return search_->matches(cellView(dataSet_.rows(), node, *field), field->fractionDigits());
        });
        isHit_[static_cast<std::size_t>(node)] = isHit;
        return isHit;
    });
    collectHits();
}

void TreeModel::collectHits() {
    hits_.clear();
    if (!search_) {
        return;
    }
    for (int node = structure_.next(TreeStructure::root); node != TreeStructure::root;
         node = structure_.next(node)) {
        if (isHit_[static_cast<std::size_t>(node)]) {
            hits_.push_back(node);
        }
    }
}

int TreeModel::node(const QModelIndex& index) {
    return index.isValid() ? static_cast<int>(index.internalId()) : TreeStructure::root;
}

QModelIndex TreeModel::indexOf(int node, int column) const {
    if (node == TreeStructure::root || !structure_.isShown(node)) {
        return {};
    }
    return createIndex(structure_.position(node), column, static_cast<quintptr>(node));
}

QModelIndex TreeModel::index(int row, int column, const QModelIndex& parent) const {
    if (!hasIndex(row, column, parent)) {
        return {};
    }
    const int child = structure_.children(node(parent))[static_cast<std::size_t>(row)];
    return createIndex(row, column, static_cast<quintptr>(child));
}

QModelIndex TreeModel::parent(const QModelIndex& child) const {
    return child.isValid() ? indexOf(structure_.parent(node(child))) : QModelIndex();
}

int TreeModel::rowCount(const QModelIndex& parent) const {
    return parent.column() > 0 ? 0 : static_cast<int>(structure_.children(node(parent)).size());
}

int TreeModel::columnCount(const QModelIndex&) const {
    return static_cast<int>(columns_.size());
}

QVariant TreeModel::data(const QModelIndex& index, int role) const {
    return index.isValid() && role == Qt::DisplayRole ? text(node(index), index.column()) : QVariant();
}

QVariant TreeModel::headerData(int section, Qt::Orientation orientation, int role) const {
    const bool exists = orientation == Qt::Horizontal && section >= 0 && section < columnCount();
    return exists && role == Qt::DisplayRole ? column(section).headerText() : QVariant();
}

void TreeModel::sort(int column, Qt::SortOrder order) {
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    sortColumn_ = column < 0 ? std::nullopt : std::optional(column);
    descending_ = order == Qt::DescendingOrder;
    applySort();
    collectHits();
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    after.reserve(before.size());
    for (const QModelIndex& index : before) {
        after.append(indexOf(node(index), index.column()));
    }
    changePersistentIndexList(before, after);
    emit layoutChanged({}, VerticalSortHint);
}

void TreeModel::setSearch(const TextMatcher& words) {
    beginResetModel();
    if (words.isEmpty()) {
        search_.reset();
        collectHits();
        structure_.showAll();
    } else {
        search_ = words;
        applySearch();
    }
    endResetModel();
}

void TreeModel::searchAgain() {
    beginResetModel();
    applySearch();
    endResetModel();
}

QString TreeModel::text(int node, int column) const {
    const db::Field* const field = this->column(column).field();
    return field ? dataSet_.text(node, *field, decimalPoint_) : QString();
}

std::vector<TextRange> TreeModel::marks(int node, int column) const {
    const db::Field* const field = this->column(column).field();
    return search_ && field
               ? search_->marksIn(cellView(dataSet_.rows(), node, *field), field->fractionDigits())
               : std::vector<TextRange>();
}

int TreeModel::findStartingWith(const QString& text, int column, int from) const {
    const db::Field* const field = this->column(column).field();
    const int first = structure_.next(TreeStructure::root);
    if (!field || first == TreeStructure::root) {
        return TreeStructure::root;
    }
    const std::optional<QByteArray> bytes = base::win1251::tryEncode(text);
    const collation::Needle needle(bytes.value_or(QByteArray()).toStdString());
    const auto matches = [&](int node) {
        return field->isNumber() ? this->text(node, column).startsWith(text)
                                 : bytes && needle.isStartOf(dataSet_.rows().string(node, field->index()));
    };
    const int start = from == TreeStructure::root ? first : from;
    int node = start;
    do {
        if (matches(node)) {
            return node;
        }
        node = structure_.next(node);
        node = node == TreeStructure::root ? first : node;
    } while (node != start);
    return TreeStructure::root;
}

} // namespace grid
