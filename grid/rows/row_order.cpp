// SPDX-License-Identifier: MIT

#include "grid/rows/row_order.h"

#include "db/row_store.h"
#include "grid/text/collation.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace grid {

namespace {

/// A row with the part of its value that is being compared, such that smaller words come first.
struct Entry {
    std::uint64_t word;
    std::int32_t row;
    std::uint32_t text; // its place among those that are being sorted
};

using Entries = std::span<Entry>;

/// From how many entries on a radix sort, which reads them once a byte that differs, beats comparing.
constexpr std::size_t radixThreshold = 2048;

/// Bytes of a text that one word holds; its last byte says how many of them there are, so that a text comes
/// before its continuations.
constexpr std::size_t bytesPerWord = 7;

/// Letters of which one word tells whether they are ё.
constexpr std::size_t dotsPerWord = 64;

void radixSort(Entries entries, std::vector<Entry>& scratch) {
    constexpr int byteCount = sizeof(Entry::word);
    std::array<std::array<std::uint32_t, 256>, byteCount> counts{};
    for (const Entry& entry : entries) {
        for (std::size_t byte = 0; byte < byteCount; ++byte) {
            ++counts[byte][(entry.word >> (8 * byte)) & 0xFF];
        }
    }
    scratch.resize(std::max(scratch.size(), entries.size()));
    Entry* from = entries.data();
    Entry* to = scratch.data();
    for (std::size_t byte = 0; byte < byteCount; ++byte) {
        auto& count = counts[byte];
        if (count[(from->word >> (8 * byte)) & 0xFF] == entries.size()) {
            continue; // the same in all of them
        }
        std::uint32_t next = 0;
        for (std::uint32_t& start : count) {
            start = std::exchange(next, next + start);
        }
        for (std::size_t i = 0; i < entries.size(); ++i) {
            to[count[(from[i].word >> (8 * byte)) & 0xFF]++] = from[i];
        }
        std::swap(from, to);
    }
    if (from != entries.data()) {
        std::ranges::copy_n(from, std::ssize(entries), entries.data());
    }
}

/// Sorts by the most significant part first: a run of rows that are equal so far is split by the next part of
/// their values. Within a run the rows ascend.
class Sorter final {
public:
    Sorter(const db::RowStore& store, std::span<const RowOrderKey> keys) : store_(store), keys_(keys) {}

    void sortByKey(Entries run, std::size_t keyIndex) {
        if (run.size() < 2 || keyIndex == keys_.size()) {
            return;
        }
        const RowOrderKey& key = keys_[keyIndex];
        const auto [nulls, values] = splitNulls(run, key);
        sortByKey(nulls, keyIndex + 1);
        if (key.isNumber) {
            sortNumbers(values, keyIndex);
        } else {
            sortTexts(values, keyIndex);
        }
    }

private:
    struct Split {
        Entries nulls;
        Entries values;
    };

    [[nodiscard]] Split splitNulls(Entries run, const RowOrderKey& key) const {
        const auto belongsFirst = [&](const Entry& entry) {
            return store_.isNull(entry.row, key.field) != key.descending;
        };
        const auto middle = std::ranges::stable_partition(run, belongsFirst).begin();
        const Entries first(run.begin(), middle);
        const Entries second(middle, run.end());
        return key.descending ? Split{second, first} : Split{first, second};
    }

    void sortNumbers(Entries run, std::size_t keyIndex) {
        const RowOrderKey& key = keys_[keyIndex];
        constexpr std::uint64_t signBit = std::uint64_t{1} << 63;
        for (Entry& entry : run) {
            const std::uint64_t word =
                static_cast<std::uint64_t>(store_.integer(entry.row, key.field)) ^ signBit;
            entry.word = key.descending ? ~word : word;
        }
        sortWords(run);
        forEachEqualRun(run, [&](Entries equal) { sortByKey(equal, keyIndex + 1); });
    }

    /// The order bytes of a run's texts, which its entries name by their place.
    struct Texts {
        std::vector<std::uint8_t> bytes;
        std::vector<std::size_t> starts;

        [[nodiscard]] std::span<const std::uint8_t> of(const Entry& entry, std::size_t depth) const {
            const std::size_t start = starts[entry.text] + depth;
            return {bytes.data() + start, starts[entry.text + 1] - start};
        }
    };

    void sortTexts(Entries run, std::size_t keyIndex) {
        if (run.size() < 2) {
            return;
        }
        Texts texts;
        texts.starts.reserve(run.size() + 1);
        texts.bytes.reserve(run.size() * typicalLength(run, keys_[keyIndex].field));
        for (std::size_t index = 0; index < run.size(); ++index) {
            prefetchBeyond(run, index);
            run[index].text = static_cast<std::uint32_t>(index);
            texts.starts.push_back(texts.bytes.size());
            collation::appendOrderBytes(store_.string(run[index].row, keys_[keyIndex].field), texts.bytes);
        }
        texts.starts.push_back(texts.bytes.size());
        sortTexts(run, keyIndex, texts, 0);
    }

    /// The average length of some texts of a run, with room for what the order bytes of numbers add.
    [[nodiscard]] std::size_t typicalLength(Entries run, int field) const {
        constexpr std::size_t samples = 256;
        constexpr std::size_t added = 4;
        const std::size_t step = std::max<std::size_t>(1, run.size() / samples);
        std::size_t total = 0;
        std::size_t count = 0;
        for (std::size_t index = 0; index < run.size(); index += step, ++count) {
            total += store_.string(run[index].row, field).size() + added;
        }
        return total / count + 1;
    }

    void sortTexts(Entries run, std::size_t keyIndex, const Texts& texts, std::size_t depth) {
        const RowOrderKey& key = keys_[keyIndex];
        depth += commonLength(run, texts, depth);
        for (Entry& entry : run) {
            const std::uint64_t word = packed(texts.of(entry, depth));
            entry.word = key.descending ? ~word : word;
        }
        sortWords(run);
        forEachEqualRun(run, [&](Entries equal) {
            const std::uint64_t word = key.descending ? ~equal.front().word : equal.front().word;
            if ((word & 0xFF) < bytesPerWord) {
                sortByLength(equal, keyIndex); // the texts have ended
            } else {
                sortTexts(equal, keyIndex, texts, depth + bytesPerWord);
            }
        });
    }

    /// Sorts texts that differ by case, by leading zeros and by the dots of ё at most.
    void sortByLength(Entries run, std::size_t keyIndex) {
        const RowOrderKey& key = keys_[keyIndex];
        if (isSameText(run, key.field)) {
            sortByKey(run, keyIndex + 1);
            return;
        }
        for (Entry& entry : run) {
            const std::uint64_t word = store_.string(entry.row, key.field).size();
            entry.word = key.descending ? ~word : word;
        }
        sortWords(run);
        forEachEqualRun(run, [&](Entries equal) { sortDots(equal, keyIndex, 0); });
    }

    /// Sorts texts of one length from `depth` on by the dots of ё.
    void sortDots(Entries run, std::size_t keyIndex, std::size_t depth) {
        const RowOrderKey& key = keys_[keyIndex];
        const std::string_view first = store_.string(run.front().row, key.field);
        if (depth >= first.size()) {
            sortByKey(run, keyIndex + 1);
            return;
        }
        for (Entry& entry : run) {
            const std::uint64_t word = packDots(store_.string(entry.row, key.field).substr(depth));
            entry.word = key.descending ? ~word : word;
        }
        sortWords(run);
        forEachEqualRun(run, [&](Entries equal) { sortDots(equal, keyIndex, depth + dotsPerWord); });
    }

    /// Whether the texts are the same to the byte, which equal texts nearly always are.
    [[nodiscard]] bool isSameText(Entries run, int field) const {
        const std::string_view first = store_.string(run.front().row, field);
        for (std::size_t index = 1; index < run.size(); ++index) {
            prefetchBeyond(run, index);
            if (store_.string(run[index].row, field) != first) {
                return false;
            }
        }
        return true;
    }

    [[nodiscard]] static std::uint64_t packDots(std::string_view text) {
        std::uint64_t word = 0;
        for (std::size_t i = 0; i < std::min(text.size(), dotsPerWord); ++i) {
            word |= std::uint64_t{collation::isYo(text[i])} << (dotsPerWord - 1 - i);
        }
        return word;
    }

    /// Sets the row of a later entry on its way; texts are read in the order of the run, not of the store.
    void prefetchBeyond(Entries run, std::size_t index) const {
        if (index + db::RowStore::prefetchAhead < run.size()) {
            store_.prefetch(run[index + db::RowStore::prefetchAhead].row);
        }
    }

    /// How many order bytes from `depth` on all the texts share.
    [[nodiscard]] static std::size_t commonLength(Entries run, const Texts& texts, std::size_t depth) {
        const auto first = texts.of(run.front(), depth);
        std::size_t common = first.size();
        for (std::size_t index = 1; index < run.size() && common > 0; ++index) {
            const auto text = texts.of(run[index], depth);
            const auto end = std::ranges::mismatch(first.first(common), text).in1;
            common = static_cast<std::size_t>(end - first.begin());
        }
        return common;
    }

    [[nodiscard]] static std::uint64_t packed(std::span<const std::uint8_t> bytes) {
        const std::size_t count = std::min(bytes.size(), bytesPerWord);
        std::uint64_t word = 0;
        for (std::size_t i = 0; i < count; ++i) {
            word |= std::uint64_t{bytes[i]} << (8 * (bytesPerWord - i));
        }
        return word | count;
    }

    void sortWords(Entries run) {
        if (run.size() < radixThreshold) {
            std::ranges::sort(run, {}, [](const Entry& entry) { return std::pair(entry.word, entry.row); });
        } else {
            radixSort(run, scratch_);
        }
    }

    template <typename Action>
    void forEachEqualRun(Entries run, Action action) {
        for (std::size_t start = 0; start < run.size();) {
            std::size_t end = start + 1;
            while (end < run.size() && run[end].word == run[start].word) {
                ++end;
            }
            if (end - start > 1) {
                action(run.subspan(start, end - start));
            }
            start = end;
        }
    }

    const db::RowStore& store_;
    std::span<const RowOrderKey> keys_;
    std::vector<Entry> scratch_;
};

} // namespace

void sortRows(std::vector<std::int32_t>& rows, const db::RowStore& store, std::span<const RowOrderKey> keys) {
    std::vector<Entry> entries;
    entries.reserve(rows.size());
    for (const std::int32_t row : rows) {
        entries.push_back({0, row, 0});
    }
    Sorter(store, keys).sortByKey(entries, 0);
    std::ranges::transform(entries, rows.begin(), &Entry::row);
}

} // namespace grid
