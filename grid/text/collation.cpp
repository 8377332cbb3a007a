// SPDX-License-Identifier: MIT

#include "grid/text/collation.h"

#include <algorithm>
#include <iterator>
#include <utility>

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
constexpr auto cyrillicLetters = std::to_array<Letter>({
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
});

constexpr unsigned char lowerYe = 0xE5;

constexpr std::string_view decimalDigits = "0123456789";
constexpr std::uint8_t lastPlace = 255; // behind all characters

constexpr bool isDigit(int byte) {
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
        if (!isDigit(static_cast<int>(byte)) && !isLatin(byte) && !isCyrillic(byte)) {
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

/// Whether a text is nothing but digits, with a decimal comma among them or not.
bool isUnsigned(std::string_view text) {
    const std::size_t comma = std::min(text.size(), text.find_first_not_of(decimalDigits));
    const std::string_view fraction = text.substr(std::min(text.size(), comma + 1));
    return comma > 0 && fraction.find_first_not_of(decimalDigits) == text.npos &&
           (comma == text.size() || (text[comma] == ',' && !fraction.empty()));
}

} // namespace

OrderBytes::OrderBytes(std::string_view text)
    : text_(text), isNegative_(text.starts_with('-') && isUnsigned(text.substr(1))) {}

int OrderBytes::next() {
    if (digits_ == 0) {
        if (at_ == text_.size()) {
            // Of two negative numbers the one with more digits is less.
            return std::exchange(hasEnded_, true) || !isNegative_ ? -1 : lastPlace;
        }
        if (!isDigit(text_[at_])) {
            return weight(text_[at_++]);
        }
        startNumber();
    }
    if (isTelling_) {
        const std::size_t told = std::min<std::size_t>(length_, 9);
        length_ -= told;
        isTelling_ = told == 9;
        return placeOfDigit(told);
    }
    --digits_;
    return placeOfDigit(static_cast<std::size_t>(text_[at_++] - '0'));
}

/// The digits behind a decimal sign tell their value by themselves.
void OrderBytes::startNumber() {
    const bool isFraction = at_ >= 2 && text_[at_ - 1] == ',' && isDigit(text_[at_ - 2]);
    const std::size_t end = std::min(text_.size(), text_.find_first_not_of(decimalDigits, at_));
    if (!isFraction) {
        at_ = std::min(end - 1, text_.find_first_not_of('0', at_));
    }
    digits_ = end - at_;
    length_ = digits_;
    isTelling_ = !isFraction;
}

int OrderBytes::placeOfDigit(std::size_t digit) const {
    return weight(decimalDigits[isNegative_ ? 9 - digit : digit]);
}

void appendOrderBytes(std::string_view text, std::vector<std::uint8_t>& bytes) {
    OrderBytes places(text);
    for (int place = places.next(); place >= 0; place = places.next()) {
        bytes.push_back(static_cast<std::uint8_t>(place));
    }
}

int compare(std::string_view left, std::string_view right) {
    OrderBytes one(left);
    OrderBytes other(right);
    for (;;) {
        const int place = one.next();
        const int difference = place - other.next();
        if (difference != 0) {
            return difference;
        }
        if (place < 0) {
            break;
        }
    }
    if (left.size() != right.size()) {
        return left.size() < right.size() ? -1 : 1;
    }
    const auto [dotted, plain] = std::ranges::mismatch(left, right, {}, isYo, isYo);
    return dotted == left.end() ? 0 : isYo(*dotted) ? 1 : -1;
}

Needle::Needle(std::string_view text) {
    folded_.reserve(text.size());
    std::ranges::transform(text, std::back_inserter(folded_), weight);
    const auto isAnchor = [](std::uint8_t place) { return place != weightTable[lowerYe]; };
    const auto first = std::ranges::find_if(folded_, isAnchor);
    hasAnchors_ = first != folded_.end();
    if (hasAnchors_) {
        const auto last = std::ranges::find_if(folded_.rbegin(), folded_.rend(), isAnchor);
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
            if (weight(text[place]) == folded_.front() && isStartOf(text.substr(place))) {
                return place;
            }
        }
    }
    return std::string_view::npos;
}

bool Needle::isStartOf(std::string_view text) const {
    return std::ranges::equal(folded_, text.substr(0, folded_.size()), {}, {}, weight);
}

} // namespace grid::collation
