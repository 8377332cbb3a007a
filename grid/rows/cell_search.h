// SPDX-License-Identifier: MIT

#pragma once

#include "grid/text/text_matcher.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace db {
class Field;
}

namespace grid {

class TableModel;

/// A cell of a table, by row and column of the model.
struct CellPlace {
    int row = -1;
    int column = -1;
    bool operator==(const CellPlace&) const = default;
};

/// Looks for words in the cells of a table; a cell that holds all of them is a hit. The rows are gone through
/// step by step, so that the window can be served in between. Holds for the rows and columns as they are when
/// it is made.
class CellSearch final {
public:
    /// `columns` are looked through in this order; `model` must outlive the search.
    CellSearch(const TableModel& model, std::vector<int> columns, const QString& words);

    [[nodiscard]] const std::vector<int>& columns() const { return columns_; }

    /// Goes through some thousand more rows.
    void goOn();
    [[nodiscard]] bool isComplete() const { return nextRow_ == hitsOfRow_.size(); }
    /// How many hits there are; up to now while the search is not complete.
    [[nodiscard]] std::int64_t hitCount() const { return hitCount_; }
    /// Which hit a cell is, from 1; nothing when it is none or the search is not complete.
    [[nodiscard]] std::optional<std::int64_t> numberOf(CellPlace place) const;

    /// What is known of the next hit.
    struct Next {
        bool isKnown = false;           ///< all rows up to it have been gone through
        std::optional<CellPlace> place; ///< nothing when there is no hit at all
    };
    /// The next hit in a direction, and round the end: after a cell, or, if `includeFrom`, there itself. Goes
    /// through some thousand rows on its way; where these do not suffice, it comes further the next time.
    [[nodiscard]] Next next(CellPlace from, bool forward, bool includeFrom);

private:
    /// The rows of one step.
    static constexpr int stepRows = 2048;
    static constexpr std::uint8_t notYet = 255;
    static constexpr std::uint8_t notShown = 254;

    [[nodiscard]] bool isHit(int dataSetRow, const db::Field* field) const;
    [[nodiscard]] int hitsOf(int row) const;
    void count(std::size_t dataSetRow);
    [[nodiscard]] std::optional<CellPlace> hitWithin(int row, std::ptrdiff_t first, std::ptrdiff_t end,
                                                     bool forward) const;
    [[nodiscard]] std::ptrdiff_t columnPlace(int column) const;

    const TableModel& model_;
    std::vector<int> columns_;
    std::vector<const db::Field*> fields_; // of the columns; null where there can be no hit
    TextMatcher matcher_;
    // By row of the dataset, whose order is that of the memory: sorted rows are slow to reach.
    std::vector<std::uint8_t> hitsOfRow_;
    std::size_t nextRow_ = 0;
    std::int64_t hitCount_ = 0;
};

} // namespace grid
