// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Order and search of catalog texts as they are held, in WIN1251: by the Russian alphabet, without regard to
/// case. As in dictionaries ё is the letter е, and comes after it only where two texts have no other
/// difference. Numbers within a text go by value, "37х415" before "140х266"; a comma between digits is a
/// decimal sign, while a point separates numbers, as it does in codes.
namespace grid::collation {

/// The bytes of a text that it is ordered by, one after the other: the places of its characters in the
/// alphabet, where the two cases of a letter share one place, as do е and ё. Before the digits of a number
/// stands how many they are, so that a longer one comes later.
class OrderBytes final {
public:
    explicit OrderBytes(std::string_view text);

    /// The next one; -1 at the end.
    [[nodiscard]] int next();

private:
    void startNumber();
    [[nodiscard]] int placeOfDigit(std::size_t digit) const;

    std::string_view text_;
    std::size_t at_ = 0;     // of the next character
    std::size_t digits_ = 0; // of a number, still to come
    std::size_t length_ = 0; // of that number, still to be told
    bool isTelling_ = false;
    bool isNegative_; // a number as a whole, whose order is turned round
    bool hasEnded_ = false;
};

/// Appends the order bytes of a text.
void appendOrderBytes(std::string_view text, std::vector<std::uint8_t>& bytes);

/// Whether a byte is ё in one of its cases.
[[nodiscard]] constexpr bool isYo(char byte) {
    return byte == '\xA8' || byte == '\xB8';
}

/// Negative, 0 or positive, as `left` comes before, with or after `right`: by the order bytes, then by length
/// (leading zeros), then by ё.
[[nodiscard]] int compare(std::string_view left, std::string_view right);

/// A text that others are searched for, without regard to case and to the dots of ё.
class Needle {
public:
    /// `text` is WIN1251, as what it is searched for in.
    explicit Needle(std::string_view text);

    [[nodiscard]] bool isEmpty() const { return folded_.empty(); }
    /// Where the first occurrence in `text` begins; npos when there is none.
    [[nodiscard]] std::size_t findIn(std::string_view text) const;
    /// Whether `text` begins with it.
    [[nodiscard]] bool isStartOf(std::string_view text) const;

private:
    /// The bytes of a letter's two cases; the same byte twice for anything else.
    struct Cases {
        char one = 0;
        char other = 0;
    };
    /// Places that are looked at together, in a loop that compilers turn into vector instructions.
    static constexpr std::size_t blockSize = 32;

    [[nodiscard]] static Cases casesOf(std::uint8_t place);
    [[nodiscard]] bool mayStartWithin(const char* block) const;

    // Two letters that are looked for first, with their places; not е, which has more than two forms.
    std::size_t firstPlace_ = 0;
    std::size_t lastPlace_ = 0;
    Cases first_;
    Cases last_;
    bool hasAnchors_ = false;
    std::basic_string<std::uint8_t> folded_;
};

} // namespace grid::collation
