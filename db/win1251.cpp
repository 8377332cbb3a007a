#include "db/win1251.h"

#include <QStringDecoder>

#include <array>
#include <unordered_map>

namespace db::win1251 {

namespace {

constexpr unsigned char undefinedByte = 0x98;
constexpr char substitute = 0x1A;

using DecodingTable = std::array<char16_t, 256>;

DecodingTable makeDecodingTable() {
    DecodingTable table{};
    QStringDecoder decoder("windows-1251");
    for (unsigned value = 0; value < table.size(); ++value) {
        const char byte = static_cast<char>(value);
        const QString character = decoder.decode(QByteArrayView(&byte, 1));
        const bool direct = value < 0x80 || value == undefinedByte || character.size() != 1;
        table[value] = direct ? static_cast<char16_t>(value) : character.front().unicode();
    }
    return table;
}

const DecodingTable& decodingTable() {
    static const DecodingTable table = makeDecodingTable();
    return table;
}

std::unordered_map<char16_t, char> makeEncodingTable() {
    std::unordered_map<char16_t, char> table;
    for (unsigned value = 0; value < decodingTable().size(); ++value) {
        table.emplace(decodingTable()[value], static_cast<char>(value));
    }
    return table;
}

} // namespace

QString decode(std::string_view bytes) {
    const DecodingTable& table = decodingTable();
    QString text(static_cast<qsizetype>(bytes.size()), Qt::Uninitialized);
    QChar* out = text.data();
    for (const char byte : bytes) {
        *out++ = QChar(table[static_cast<unsigned char>(byte)]);
    }
    return text;
}

QChar decode(unsigned char byte) {
    return QChar(decodingTable()[byte]);
}

QByteArray encode(QStringView text) {
    static const std::unordered_map<char16_t, char> table = makeEncodingTable();
    QByteArray bytes;
    bytes.reserve(text.size());
    for (const QChar character : text) {
        const auto found = table.find(character.unicode());
        bytes.append(found == table.end() ? substitute : found->second);
    }
    return bytes;
}

} // namespace db::win1251
