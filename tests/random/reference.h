// SPDX-License-Identifier: MIT

#pragma once

#include <QString>
#include <QStringList>

#include <compare>
#include <cstdint>
#include <optional>
#include <vector>

/// What order, search and conditions mean, written out on whole texts, however long it takes.
namespace reference {

/// A cell as it is shown, with what it holds where that does not show.
struct Cell {
    QString text;
    bool isNull = false;
    bool isNumber = false;
};

/// Where a cell stands among others: NULL first, numbers by value, texts by the alphabet with numbers by
/// value, then by length, then by the dots of ё.
struct Place {
    bool isHeld;
    std::vector<std::int64_t> letters;
    qsizetype length;
    std::vector<bool> dots;

    explicit Place(const Cell& cell);
    auto operator<=>(const Place&) const = default;
};

/// Whether a cell holds every word, without regard to case and to the dots of ё.
[[nodiscard]] bool holdsWords(const Cell& cell, const QStringList& words);

/// One of < <= > >= = <> with its bound.
struct Comparison {
    QString sign;
    QString bound;
};

/// Whether a cell is a number that fulfils all comparisons.
[[nodiscard]] bool holdsComparisons(const Cell& cell, const std::vector<Comparison>& comparisons);

/// The trees of rows that hang beneath the first row with their parent's id, or stand at the top.
struct Key {
    std::optional<std::int64_t> id;
    std::optional<std::int64_t> parent;
};
[[nodiscard]] std::vector<int> parentsOf(const std::vector<Key>& keys);

} // namespace reference
