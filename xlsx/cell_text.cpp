// SPDX-License-Identifier: MIT

#include "xlsx/cell_text.h"

#include "base/win1251.h"

#include <QString>

#include <algorithm>
#include <array>
#include <cstring>

namespace xlsx {

namespace {

constexpr std::size_t longestCharacter = 7; // bytes of an escaped one

/// What stands for one byte.
struct Encoded {
    std::array<char, longestCharacter> bytes{};
    std::uint8_t length = 0;

    explicit Encoded(const QByteArray& text = {}) : length(static_cast<std::uint8_t>(text.size())) {
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
    return needsEscape(unit) ? escaped(unit) : QString(QChar(unit)).toHtmlEscaped().toUtf8();
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

void appendText(std::string& xml, std::string_view win1251) {
    static const std::array<Encoded, 256> table = makeTable();
    static const Encoded start(escaped(u'_'));
    std::size_t used = xml.size();
    xml.resize(used + win1251.size() * longestCharacter);
    for (std::size_t i = 0; i < win1251.size(); ++i) {
        const bool plain = win1251[i] != '_' || !looksEscaped(base::win1251::decode(win1251.substr(i, 7)));
        const Encoded& entry = plain ? table[static_cast<unsigned char>(win1251[i])] : start;
        // A copy of fixed size is the fastest; `length` bytes of it count.
        std::memcpy(xml.data() + used, entry.bytes.data(), entry.bytes.size());
        used += entry.length;
    }
    xml.resize(used);
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

} // namespace xlsx
