#include "grid/rows/collation.h"

#include <algorithm>
#include <iterator>

namespace grid::collation {

namespace {

/// A letter's two cases in WIN1251.
struct Letter {
    std::uint8_t upper;
    std::uint8_t lower;
};

/// The Cyrillic letters of WIN1251 by the Russian alphabet; the letters of other alphabets stand after the
/// Russian letter that they derive from. Firebird's PXW_CYRL puts those after я and takes ё for a letter of
/// its own.
constexpr std::array<Letter, 48> cyrillicLetters = {{
    {0xC0, 0xE0}, {0xC1, 0xE1}, {0xC2, 0xE2}, {0xC3, 0xE3},               // А Б В Г
    {0xA5, 0xB4}, {0x81, 0x83},                                           // Ґ Ѓ
    {0xC4, 0xE4}, {0x80, 0x90},                                           // Д Ђ
    {0xC5, 0xE5}, {0xA8, 0xB8}, {0xAA, 0xBA},                             // Е Ё Є
    {0xC6, 0xE6}, {0xC7, 0xE7}, {0xBD, 0xBE},                             // Ж З Ѕ
    {0xC8, 0xE8}, {0xB2, 0xB3}, {0xAF, 0xBF}, {0xC9, 0xE9}, {0xA3, 0xBC}, // И І Ї Й Ј
    {0xCA, 0xEA}, {0x8D, 0x9D}, {0xCB, 0xEB}, {0x8A, 0x9A},               // К Ќ Л Љ
    {0xCC, 0xEC}, {0xCD, 0xED}, {0x8C, 0x9C},                             // М Н Њ
    {0xCE, 0xEE}, {0xCF, 0xEF}, {0xD0, 0xF0}, {0xD1, 0xF1},               // О П Р С
    {0xD2, 0xF2}, {0x8E, 0x9E}, {0xD3, 0xF3}, {0xA1, 0xA2},               // Т Ћ У Ў
    {0xD4, 0xF4}, {0xD5, 0xF5}, {0xD6, 0xF6}, {0xD7, 0xF7}, {0x8F, 0x9F}, // Ф Х Ц Ч Џ
    {0xD8, 0xF8}, {0xD9, 0xF9}, {0xDA, 0xFA}, {0xDB, 0xFB}, {0xDC, 0xFC}, // Ш Щ Ъ Ы Ь
    {0xDD, 0xFD}, {0xDE, 0xFE}, {0xDF, 0xFF},                             // Э Ю Я
}};

constexpr unsigned char lowerYe = 0xE5;

constexpr bool isDigit(unsigned byte) {
    return byte >= '0' && byte <= '9';
}

constexpr bool isLatin(unsigned byte) {
    return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
}

constexpr bool isCyrillic(unsigned byte) {
    return std::ranges::any_of(
        cyrillicLetters, [byte](Letter letter) { return letter.upper == byte || letter.lower == byte; });
}

constexpr std::array<std::uint8_t, 256> makeWeights() {
    std::array<std::uint8_t, 256> weights{};
    std::uint8_t next = 0;
    for (unsigned byte = 0; byte < weights.size(); ++byte) {
        if (!isDigit(byte) && !isLatin(byte) && !isCyrillic(byte)) {
            weights[byte] = next++;
        }
    }
    for (unsigned byte = '0'; byte <= '9'; ++byte) {
        weights[byte] = next++;
    }
    for (unsigned upper = 'A'; upper <= 'Z'; ++upper) {
        weights[upper] = weights[upper - 'A' + 'a'] = next++;
    }
    for (const Letter letter : cyrillicLetters) {
        const bool isVariant = isYo(static_cast<char>(letter.upper));
        weights[letter.upper] = weights[letter.lower] = isVariant ? weights[lowerYe] : next++;
    }
    return weights;
}

constexpr std::array<std::uint8_t, 256> weightTable = makeWeights();

std::uint8_t weight(char byte) {
    return weightTable[static_cast<unsigned char>(byte)];
}

} // namespace

const std::array<std::uint8_t, 256>& weights() {
    return weightTable;
}

int compare(std::string_view left, std::string_view right) {
    const std::size_t common = std::min(left.size(), right.size());
    for (std::size_t index = 0; index < common; ++index) {
        const int difference = weight(left[index]) - weight(right[index]);
        if (difference != 0) {
            return difference;
        }
    }
    if (left.size() != right.size()) {
        return left.size() < right.size() ? -1 : 1;
    }
    const auto [one, other] = std::ranges::mismatch(left, right, {}, isYo, isYo);
    return one == left.end() ? 0 : isYo(*one) ? 1 : -1;
}

Needle::Needle(std::string_view text) {
    folded_.reserve(text.size());
    std::transform(text.begin(), text.end(), std::back_inserter(folded_), weight);
    const auto isAnchor = [](std::uint8_t place) { return place != weightTable[lowerYe]; };
    const auto first = std::find_if(folded_.begin(), folded_.end(), isAnchor);
    hasAnchors_ = first != folded_.end();
    if (hasAnchors_) {
        const auto last = std::find_if(folded_.rbegin(), folded_.rend(), isAnchor);
        firstPlace_ = static_cast<std::size_t>(first - folded_.begin());
        lastPlace_ = static_cast<std::size_t>(folded_.rend() - last) - 1;
        first_ = casesOf(*first);
        last_ = casesOf(*last);
    }
}

Needle::Cases Needle::casesOf(std::uint8_t place) {
    const auto one = std::ranges::find(weightTable, place);
    const auto other = std::ranges::find(std::next(one), weightTable.end(), place);
    const auto byteAt = [](auto position) { return static_cast<char>(position - weightTable.begin()); };
    return {byteAt(one), byteAt(other == weightTable.end() ? one : other)};
}

bool Needle::mayStartWithin(const char* block) const {
    const char* const starts = block + firstPlace_;
    const char* const ends = block + lastPlace_;
    unsigned char any = 0;
    for (std::size_t index = 0; index < blockSize; ++index) {
        const auto isFirst =
            static_cast<unsigned char>((starts[index] == first_.one) | (starts[index] == first_.other));
        const auto isLast =
            static_cast<unsigned char>((ends[index] == last_.one) | (ends[index] == last_.other));
        any = static_cast<unsigned char>(any | (isFirst & isLast));
    }
    return any != 0;
}

std::size_t Needle::findIn(std::string_view text) const {
    if (isEmpty() || text.size() < folded_.size()) {
        return isEmpty() ? 0 : std::string_view::npos;
    }
    const std::size_t places = text.size() - folded_.size() + 1;
    for (std::size_t block = 0; block < places; block += blockSize) {
        // The last block reaches back over places that are known to be none.
        const std::size_t start = places < blockSize ? 0 : std::min(block, places - blockSize);
        if (hasAnchors_ && places >= blockSize && !mayStartWithin(text.data() + start)) {
            continue;
        }
        for (std::size_t place = start; place < std::min(start + blockSize, places); ++place) {
            if (isStartOf(text.substr(place))) {
                return place;
            }
        }
    }
    return std::string_view::npos;
}

bool Needle::isStartOf(std::string_view text) const {
    return text.size() >= folded_.size() &&
           std::equal(folded_.begin(), folded_.end(), text.begin(),
                      [](std::uint8_t sought, char byte) { return sought == weight(byte); });
}

} // namespace grid::collation
