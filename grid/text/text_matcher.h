// SPDX-License-Identifier: MIT

#pragma once

#include "grid/text/cell_value.h"
#include "grid/text/collation.h"

#include <QString>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace grid {

/// A half-open range of a text's characters.
struct TextRange {
    qsizetype start = 0;
    qsizetype end = 0;
    [[nodiscard]] bool isEmpty() const { return start >= end; }
    bool operator==(const TextRange&) const = default;
};

/// Finds words in values as they are shown, in any order and without regard to case; in numbers by a point as
/// well as by a comma. Texts are searched in the bytes in which they are held, so that whole columns can be
/// gone through.
class TextMatcher final {
public:
    /// The words of `text` are parted by blanks. A quotation mark before a word keeps it together with all
    /// that follows up to one after a word, or to the end; others are looked for like letters.
    explicit TextMatcher(const QString& text);

    /// Whether there is no word.
    [[nodiscard]] bool isEmpty() const { return words_.empty(); }
    /// Whether every word has only characters of numbers.
    [[nodiscard]] bool mayMatchNumbers() const { return mayMatchNumbers_; }
    /// Whether the value has every word; a number in units of so many fraction digits.
    [[nodiscard]] bool matches(const CellView& value, int fractionDigits) const;
    /// Where the words stand in a value that matches, from left to right, each character once.
    [[nodiscard]] std::vector<TextRange> marksIn(const CellView& value, int fractionDigits) const;

private:
    class Word final {
    public:
        explicit Word(const QString& text);

        [[nodiscard]] bool mayBeInNumber() const { return mayBeInNumber_; }
        [[nodiscard]] std::size_t length() const { return number_.size(); }
        /// Where the first occurrence begins; npos when there is none.
        [[nodiscard]] std::size_t findInText(std::string_view text) const;
        [[nodiscard]] std::size_t findInNumber(std::string_view characters) const;

    private:
        bool mayBeInText_; // the code page has all its letters
        bool mayBeInNumber_;
        collation::Needle needle_;
        std::string number_; // a byte for each character, with a point for a comma
    };

    std::vector<Word> words_; // longest first: the rest need not be looked for where it is missing
    bool mayMatchNumbers_;
};

} // namespace grid
