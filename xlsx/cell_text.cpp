#include "xlsx/cell_text.h"

#include "base/win1251.h"

#include <QString>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstring>

namespace xlsx {

namespace {

constexpr std::int64_t firstTooLong = 1'000'000'000'000'000; // for a spreadsheet's numbers

/// What stands for one byte.
struct Encoded {
    std::array<char, longestCharacter - 1> bytes{};
    std::uint8_t length = 0;

    Encoded() = default;
    explicit Encoded(const QByteArray& text) : length(static_cast<std::uint8_t>(text.size())) {
        std::ranges::copy(text, bytes.begin());
    }
};

QByteArray escaped(char16_t unit) {
    return "_x" + QByteArray::number(unit, 16).rightJustified(4, '0').toUpper() + "_";
}

bool needsEscape(char16_t unit) {
    return (unit < 0x20 && unit != u'\t' && unit != u'\n') || unit >= 0xFFFE;
}

QByteArray encodedUnit(char16_t unit) {
    switch (unit) {
    case u'&':
        return "&amp;";
    case u'<':
        return "&lt;";
    case u'>':
        return "&gt;";
    case u'"': // as it must be in an attribute
        return "&#34;";
    default:
        return needsEscape(unit) ? escaped(unit) : QString(QChar(unit)).toUtf8();
    }
}

std::array<Encoded, 256> makeTable() {
    std::array<Encoded, 256> table;
    std::ranges::transform(base::win1251::characters, table.begin(),
                           [](char16_t unit) { return Encoded(encodedUnit(unit)); });
    return table;
}

/// Whether a reader would take the beginning of `text`, which is a "_", for an escaped character. What is
/// escaped itself begins with a "_" too.
bool looksEscaped(QStringView text) {
    if (text.size() <= 6 || text[1] != u'x') {
        return false;
    }
    const bool hex = std::ranges::all_of(text.sliced(2, 4), [](QChar digit) {
        return QStringView(u"0123456789ABCDEFabcdef").contains(digit);
    });
    return hex && (text[6] == u'_' || needsEscape(text[6].unicode()));
}

} // namespace

char* writeText(char* out, std::string_view win1251) {
    static const std::array<Encoded, 256> table = makeTable();
    static const Encoded start(escaped(u'_'));
    for (std::size_t i = 0; i < win1251.size(); ++i) {
        const bool plain = win1251[i] != '_' || !looksEscaped(base::win1251::decode(win1251.substr(i, 7)));
        const Encoded& entry = plain ? table[static_cast<unsigned char>(win1251[i])] : start;
        // A copy of fixed size is the fastest; `length` bytes of it count.
        std::memcpy(out, entry.bytes.data(), entry.bytes.size());
        out += entry.length;
    }
    return out;
}

QByteArray textOf(QStringView text) {
    QByteArray result;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QStringView rest = text.sliced(i);
        if (rest.size() > 1 && rest[0].isHighSurrogate() && rest[1].isLowSurrogate()) {
            result += rest.first(2).toUtf8();
            ++i;
        } else if (rest[0].isSurrogate() || (rest[0] == u'_' && looksEscaped(rest))) {
            result += escaped(rest[0].unicode());
        } else {
            result += encodedUnit(rest[0].unicode());
        }
    }
    return result;
}

char* writeNumber(char* out, std::int64_t units, int fractionDigits) {
    auto rest = static_cast<std::uint64_t>(units);
    if (units < 0) {
        *out++ = '-';
        // Defined for the smallest value too.
        rest = 0 - rest;
    }
    std::uint64_t one = 1;
    for (int i = 0; i < fractionDigits; ++i) {
        one *= 10;
    }
    out = std::to_chars(out, out + longestNumber, rest / one).ptr;
    if (fractionDigits == 0) {
        return out;
    }
    *out = '.';
    for (int i = fractionDigits; i > 0; --i, rest /= 10) {
        out[i] = static_cast<char>('0' + rest % 10);
    }
    return out + fractionDigits + 1;
}

bool isExactInSpreadsheet(std::int64_t units) {
    while (units <= -firstTooLong || units >= firstTooLong) {
        if (units % 10 != 0) {
            return false;
        }
        units /= 10;
    }
    return true;
}

} // namespace xlsx
