// SPDX-License-Identifier: MIT

#include "grid/rows/cell_search.h"

#include "db/data_set.h"
#include "grid/rows/column.h"
#include "grid/rows/table_model.h"

#include <algorithm>

namespace grid {

CellSearch::CellSearch(const TableModel& model, std::vector<int> columns, const QString& words)
    : model_(model), columns_(std::move(columns)), matcher_(words) {
    for (const int column : columns_) {
        const db::Field* const field = model_.column(column).field();
        const bool mayHit = field && (!field->isNumber() || matcher_.mayMatchNumbers());
        fields_.push_back(mayHit ? field : nullptr);
    }
    // Rows that are still coming are searched when all are there.
    if (!matcher_.isEmpty() && model_.dataSet().isOpen()) {
        hitsOfRow_.resize(static_cast<std::size_t>(model_.dataSet().rowCount()), notShown);
        for (int row = 0; row < model_.rowCount(); ++row) {
            hitsOfRow_[static_cast<std::size_t>(model_.dataSetRow(row))] = notYet;
        }
    }
}

bool CellSearch::isHit(int dataSetRow, const db::Field* field) const {
    return field &&
           matcher_.matches(cellView(model_.dataSet().rows(), dataSetRow, *field), field->fractionDigits());
}

/// The hits of a shown row that has been gone through.
int CellSearch::hitsOf(int row) const {
    return hitsOfRow_[static_cast<std::size_t>(model_.dataSetRow(row))];
}

void CellSearch::count(std::size_t dataSetRow) {
    const auto hits = std::ranges::count_if(
        fields_, [&](const db::Field* field) { return isHit(static_cast<int>(dataSetRow), field); });
    hitsOfRow_[dataSetRow] = static_cast<std::uint8_t>(hits);
    hitCount_ += hits;
}

void CellSearch::goOn() {
    const std::size_t end = std::min(nextRow_ + stepRows, hitsOfRow_.size());
    for (; nextRow_ < end; ++nextRow_) {
        if (hitsOfRow_[nextRow_] == notYet) {
            count(nextRow_);
        }
    }
}

std::ptrdiff_t CellSearch::columnPlace(int column) const {
    return std::ranges::find(columns_, column) - columns_.begin();
}

std::optional<std::int64_t> CellSearch::numberOf(CellPlace place) const {
    const std::ptrdiff_t column = columnPlace(place.column);
    if (!isComplete() || hitCount_ == 0 || place.row < 0 || !hitWithin(place.row, column, column + 1, true)) {
        return std::nullopt;
    }
    std::int64_t number = 1;
    for (int row = 0; row < place.row; ++row) {
        number += hitsOf(row);
    }
    const int source = model_.dataSetRow(place.row);
    return number + std::count_if(fields_.begin(), fields_.begin() + column,
                                  [&](const db::Field* field) { return isHit(source, field); });
}

/// A hit in some columns of a row, by their places.
std::optional<CellPlace> CellSearch::hitWithin(int row, std::ptrdiff_t first, std::ptrdiff_t end,
                                               bool forward) const {
    const std::ptrdiff_t last = std::min(end, std::ssize(columns_)) - 1;
    for (std::ptrdiff_t step = 0; step <= last - first; ++step) {
        const auto place = static_cast<std::size_t>(forward ? first + step : last - step);
        if (isHit(model_.dataSetRow(row), fields_[place])) {
            return CellPlace{row, columns_[place]};
        }
    }
    return std::nullopt;
}

CellSearch::Next CellSearch::next(CellPlace from, bool forward, bool includeFrom) {
    const int rowCount = hitsOfRow_.empty() ? 0 : model_.rowCount();
    const int step = forward ? 1 : rowCount - 1;
    const bool isSomewhere = from.row >= 0;
    int row = isSomewhere ? from.row : forward ? 0 : rowCount - 1;
    int counted = 0;
    // The first row has its turn twice: the part beyond the cell at once, all of it at the end.
    for (int visited = 0; visited <= rowCount && rowCount > 0; ++visited, row = (row + step) % rowCount) {
        if (hitsOf(row) == notYet) {
            if (counted++ == stepRows) {
                return {false, std::nullopt};
            }
            count(static_cast<std::size_t>(model_.dataSetRow(row)));
        }
        if (hitsOf(row) == 0) {
            continue;
        }
        std::ptrdiff_t first = 0;
        std::ptrdiff_t end = std::ssize(columns_);
        if (visited == 0 && isSomewhere) {
            const std::ptrdiff_t place = columnPlace(from.column);
            const std::ptrdiff_t skipped = includeFrom ? 0 : 1;
            (forward ? first : end) = forward ? place + skipped : place + 1 - skipped;
        }
        if (const auto hit = hitWithin(row, first, end, forward)) {
            return {true, hit};
        }
    }
    return {true, std::nullopt};
}

} // namespace grid
