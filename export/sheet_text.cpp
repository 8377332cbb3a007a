#include "export/sheet_text.h"

#include "base/win1251.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace exporter {

namespace {

/// What stands for one byte.
struct Encoded {
    std::array<char, 7> bytes{};
    std::uint8_t length = 0;
};
static_assert(sizeof(Encoded) == 8);

constexpr char escapeStart = '_';

Encoded encoded(QByteArrayView bytes) {
    Encoded result;
    std::copy(bytes.begin(), bytes.end(), result.bytes.begin());
    result.length = static_cast<std::uint8_t>(bytes.size());
    return result;
}

Encoded escaped(unsigned char byte) {
    return encoded("_x00" + QByteArray::number(byte, 16).rightJustified(2, '0').toUpper() + "_");
}

using EncodingTable = std::array<Encoded, 256>;

EncodingTable makeTable() {
    EncodingTable table;
    for (unsigned value = 0; value < table.size(); ++value) {
        const auto byte = static_cast<unsigned char>(value);
        const bool needsEscape = byte < 0x20 && byte != '\t' && byte != '\n';
        table[value] =
            needsEscape ? escaped(byte) : encoded(QString(QChar(base::win1251::characters[byte])).toUtf8());
    }
    return table;
}

/// Made with the first export.
const EncodingTable& encodingTable() {
    static const EncodingTable table = makeTable();
    return table;
}

bool isHexDigit(char byte) {
    return (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'F') || (byte >= 'a' && byte <= 'f');
}

/// Whether a reader would take the beginning of `text` (which is a "_") for an escaped character.
bool looksEscaped(std::string_view text, const EncodingTable& table) {
    return text.size() > 6 && text[1] == 'x' && std::all_of(text.begin() + 2, text.begin() + 6, isHexDigit) &&
           table[static_cast<unsigned char>(text[6])].bytes.front() == escapeStart;
}

} // namespace

const char* SheetText::encode(std::string_view win1251) {
    static const Encoded escapedStart = escaped(escapeStart);
    const EncodingTable& table = encodingTable();
    // Every step copies a whole entry, of which `length` bytes count.
    const std::size_t needed = (win1251.size() + 1) * sizeof(Encoded);
    if (buffer_.size() < needed) {
        buffer_.resize(needed);
    }
    char* out = buffer_.data();
    for (std::size_t i = 0; i < win1251.size(); ++i) {
        const bool plain = win1251[i] != escapeStart || !looksEscaped(win1251.substr(i), table);
        const Encoded& entry = plain ? table[static_cast<unsigned char>(win1251[i])] : escapedStart;
        std::memcpy(out, entry.bytes.data(), entry.bytes.size());
        out += entry.length;
    }
    *out = '\0';
    return buffer_.data();
}

} // namespace exporter
