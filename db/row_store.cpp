// SPDX-License-Identifier: MIT

#include "db/row_store.h"

#include <algorithm>
#include <cstring>

namespace db {

namespace {

template <typename Element>
std::unique_ptr<Element[]> exactCopy(const std::vector<Element>& elements) {
    std::unique_ptr<Element[]> copy(new Element[elements.size()]);
    std::ranges::copy(elements, copy.get());
    return copy;
}

std::size_t storedSize(FieldKind kind) {
    switch (kind) {
    case FieldKind::Integer32:
        return sizeof(std::int32_t);
    case FieldKind::String:
        return sizeof(std::uint16_t);
    case FieldKind::Integer64:
    case FieldKind::Decimal:
        break;
    }
    return sizeof(std::int64_t);
}

} // namespace

RowStore::RowStore(std::span<const FieldKind> kinds) {
    fixedSize_ = (kinds.size() + 7) / 8;
    places_.resize(kinds.size());
    const auto place = [&](bool isText) {
        for (std::size_t field = 0; field < kinds.size(); ++field) {
            if ((kinds[field] == FieldKind::String) == isText) {
                places_[field] = {kinds[field], static_cast<std::uint16_t>(fixedSize_)};
                fixedSize_ += storedSize(kinds[field]);
            }
        }
    };
    place(false);
    firstLength_ = fixedSize_;
    place(true);
}

RowStore::RowWriter::RowWriter(RowStore& store) : store_(store), rowStart_(store.openBytes_.size()) {
    store_.openBytes_.resize(rowStart_ + store_.fixedSize_);
}

void RowStore::RowWriter::putNull(int field) {
    store_.openBytes_[rowStart_ + static_cast<std::size_t>(field) / 8] |=
        static_cast<std::uint8_t>(1U << (field % 8));
}

void RowStore::RowWriter::putInteger(int field, std::int64_t value) {
    const Place place = store_.places_[static_cast<std::size_t>(field)];
    std::uint8_t* const target = store_.openBytes_.data() + rowStart_ + place.offset;
    if (place.kind == FieldKind::Integer32) {
        const auto narrow = static_cast<std::int32_t>(value);
        std::memcpy(target, &narrow, sizeof narrow);
    } else {
        std::memcpy(target, &value, sizeof value);
    }
}

void RowStore::RowWriter::putString(int field, std::string_view bytes) {
    const Place place = store_.places_[static_cast<std::size_t>(field)];
    const auto length = static_cast<std::uint16_t>(bytes.size());
    std::memcpy(store_.openBytes_.data() + rowStart_ + place.offset, &length, sizeof length);
    store_.openBytes_.insert(store_.openBytes_.end(), bytes.begin(), bytes.end());
}

void RowStore::RowWriter::finish() {
    store_.openStarts_.push_back(static_cast<std::uint32_t>(rowStart_));
    ++store_.rowCount_;
    if (store_.openStarts_.size() == rowsPerStretch) {
        store_.closeStretch();
    }
}

void RowStore::closeStretch() {
    stretches_.push_back({exactCopy(openBytes_), exactCopy(openStarts_)});
    openBytes_.clear();
    openStarts_.clear();
}

void RowStore::seal() {
    if (!openStarts_.empty()) {
        closeStretch();
    }
    stretches_.shrink_to_fit();
    openBytes_ = {};
    openStarts_ = {};
}

void RowStore::prefetch(int row) const noexcept {
    constexpr std::size_t cacheLine = 64; // bytes
    const std::uint8_t* const bytes = rowBytes(row);
    for (std::size_t line = 0; line < 3; ++line) {
        __builtin_prefetch(bytes + line * cacheLine);
    }
}

std::pair<std::int64_t, std::int64_t> RowStore::integerRange(int field) const noexcept {
    std::pair<std::int64_t, std::int64_t> range;
    for (int row = 0; row < rowCount_; ++row) {
        const std::int64_t value = integer(row, field);
        range = {std::min(range.first, value), std::max(range.second, value)};
    }
    return range;
}

} // namespace db
