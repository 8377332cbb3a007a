#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

/// Order and search of catalog texts as they are held, in WIN1251: by the Russian alphabet, without regard to
/// case. As in dictionaries ё is the letter е, and comes after it only where two texts have no other
/// difference.
namespace grid::collation {

/// The place of every byte in the alphabetical order; the two cases of a letter share one place, as do е and
/// ё.
[[nodiscard]] const std::array<std::uint8_t, 256>& weights();

/// Whether a byte is ё in one of its cases.
[[nodiscard]] constexpr bool isYo(char byte) {
    return byte == '\xA8' || byte == '\xB8';
}

/// Negative, 0 or positive, as `left` comes before, with or after `right`.
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
