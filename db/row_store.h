// SPDX-License-Identifier: MIT

#pragma once

#include "db/field.h"
#include "db/load.h"

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace db {

/// The rows of a query's result, packed: beside the bytes of its values a row costs one bit a field, two
/// bytes a text and four bytes for its place. Rows are appended until the store is sealed; meanwhile the
/// first ones can be read already.
class RowStore final {
public:
    explicit RowStore(std::span<const FieldKind> kinds);

    /// A row under construction; every field is put once, in field order.
    class RowWriter final {
    public:
        explicit RowWriter(RowStore& store);
        void putNull(int field);
        void putInteger(int field, std::int64_t value);
        void putString(int field, std::string_view bytes);
        /// Makes the row part of the store.
        void finish();

    private:
        RowStore& store_;
        std::size_t rowStart_;
    };

    /// Ends the appending; gives back the memory held for growth. All rows can be read from now on.
    void seal();

    /// So many rows before their turn is the best time for prefetch().
    static constexpr std::size_t prefetchAhead = 12;
    /// Has the processor fetch a row that is going to be read; rows that lie apart are waited for otherwise.
    void prefetch(int row) const noexcept;

    [[nodiscard]] int rowCount() const noexcept { return rowCount_; }
    /// The rows that can be read: those of complete stretches, and once the store is sealed all.
    [[nodiscard]] int readableCount() const noexcept {
        return rowCount_ - static_cast<int>(openStarts_.size());
    }
    [[nodiscard]] bool isNull(int row, int field) const noexcept;
    /// The number of a numeric field (a decimal's in units of its last digit); 0 where it is NULL.
    [[nodiscard]] std::int64_t integer(int row, int field) const noexcept;
    /// The least and the greatest number of a numeric field; 0 counts too.
    [[nodiscard]] std::pair<std::int64_t, std::int64_t> integerRange(int field) const noexcept;
    /// The bytes of a text field as they came; empty where it is NULL. Valid as long as the store.
    [[nodiscard]] std::string_view string(int row, int field) const noexcept;

private:
    struct Place {
        FieldKind kind;
        std::uint16_t offset; ///< of the number, or of the two bytes of a text's length, from the row's start
    };

    /// Rows of one stretch lie in one exactly fitting piece of memory, so that growth never copies old rows.
    struct Stretch {
        std::unique_ptr<std::uint8_t[]> bytes;
        std::unique_ptr<std::uint32_t[]> rowStarts;
    };

    static constexpr int stretchShift = 10;
    static constexpr int rowsPerStretch = 1 << stretchShift;

    [[nodiscard]] const std::uint8_t* rowBytes(int row) const noexcept;
    void closeStretch();

    std::vector<Place> places_;
    std::size_t fixedSize_ = 0;   ///< bytes of the null bits, numbers and text lengths at a row's start
    std::size_t firstLength_ = 0; ///< where the lengths of the texts begin, which stand side by side
    std::vector<Stretch> stretches_;
    std::vector<std::uint8_t> openBytes_;
    std::vector<std::uint32_t> openStarts_;
    int rowCount_ = 0;
};

// Whole columns are gone through by these, cell by cell.

inline const std::uint8_t* RowStore::rowBytes(int row) const noexcept {
    const Stretch& stretch = stretches_[static_cast<std::size_t>(row >> stretchShift)];
    return stretch.bytes.get() + stretch.rowStarts[static_cast<std::size_t>(row & (rowsPerStretch - 1))];
}

inline bool RowStore::isNull(int row, int field) const noexcept {
    return (rowBytes(row)[field / 8] >> (field % 8) & 1) != 0;
}

inline std::int64_t RowStore::integer(int row, int field) const noexcept {
    const Place place = places_[static_cast<std::size_t>(field)];
    const std::uint8_t* const source = rowBytes(row) + place.offset;
    return place.kind == FieldKind::Integer32 ? load<std::int32_t>(source) : load<std::int64_t>(source);
}

inline std::string_view RowStore::string(int row, int field) const noexcept {
    const std::uint8_t* const bytes = rowBytes(row);
    const std::size_t ownLength = places_[static_cast<std::size_t>(field)].offset;
    std::size_t start = fixedSize_;
    for (std::size_t length = firstLength_; length < ownLength; length += sizeof(std::uint16_t)) {
        start += load<std::uint16_t>(bytes + length);
    }
    return {reinterpret_cast<const char*>(bytes + start), load<std::uint16_t>(bytes + ownLength)};
}

} // namespace db
