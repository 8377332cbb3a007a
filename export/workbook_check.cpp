#include "export/workbook_check.h"

#include <QFile>
#include <QtEndian>
#include <QXmlStreamReader>

#include <zlib.h>

#include <algorithm>
#include <optional>
#include <vector>

namespace exporter {

namespace {

// Records of a ZIP file: their fixed sizes and where their numbers stand (APPNOTE 4.3.7, 4.3.12, 4.3.16).
constexpr qsizetype endRecordSize = 22;
constexpr qsizetype entrySize = 46;
constexpr qsizetype localHeaderSize = 30;

std::uint32_t number32(const QByteArray& bytes, qsizetype offset) {
    return qFromLittleEndian<std::uint32_t>(bytes.constData() + offset);
}

std::uint16_t number16(const QByteArray& bytes, qsizetype offset) {
    return qFromLittleEndian<std::uint16_t>(bytes.constData() + offset);
}

struct Part {
    QByteArray name;
    std::uint32_t packedSize;
    std::uint32_t size;
    std::uint32_t headerOffset;
};

std::optional<QByteArray> readAt(QFile& file, qint64 offset, qsizetype size) {
    if (offset < 0 || !file.seek(offset)) {
        return std::nullopt;
    }
    QByteArray bytes = file.read(size);
    return bytes.size() == size ? std::optional(bytes) : std::nullopt;
}

/// The parts that the directory at the file's end lists; none when there is no such directory.
std::vector<Part> readDirectory(QFile& file) {
    const auto end = readAt(file, file.size() - endRecordSize, endRecordSize);
    if (!end || !end->startsWith("PK\5\6")) {
        return {};
    }
    const auto directory = readAt(file, number32(*end, 16), number32(*end, 12));
    if (!directory) {
        return {};
    }
    std::vector<Part> parts;
    for (qsizetype at = 0; at + entrySize <= directory->size();) {
        const std::uint16_t nameLength = number16(*directory, at + 28);
        parts.push_back({directory->mid(at + entrySize, nameLength), number32(*directory, at + 20),
                         number32(*directory, at + 24), number32(*directory, at + 42)});
        at += entrySize + nameLength + number16(*directory, at + 30) + number16(*directory, at + 32);
    }
    return parts.size() == number16(*end, 10) ? parts : std::vector<Part>();
}

QByteArray unpacked(const QByteArray& packed, std::uint32_t size) {
    QByteArray bytes(static_cast<qsizetype>(size), Qt::Uninitialized);
    z_stream stream{};
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.constData()));
    stream.avail_in = static_cast<uInt>(packed.size());
    stream.next_out = reinterpret_cast<Bytef*>(bytes.data());
    stream.avail_out = size;
    if (inflateInit2(&stream, -MAX_WBITS) != Z_OK) {
        return {};
    }
    const int result = inflate(&stream, Z_FINISH);
    inflateEnd(&stream);
    return result == Z_STREAM_END ? bytes : QByteArray();
}

bool isWellFormed(QFile& file, const Part& part) {
    const auto header = readAt(file, part.headerOffset, localHeaderSize);
    if (!header) {
        return false;
    }
    const qint64 start =
        qint64{part.headerOffset} + localHeaderSize + number16(*header, 26) + number16(*header, 28);
    const auto packed = readAt(file, start, part.packedSize);
    if (!packed) {
        return false;
    }
    QXmlStreamReader xml(unpacked(*packed, part.size));
    while (!xml.atEnd()) {
        xml.readNext();
    }
    return !xml.hasError();
}

} // namespace

bool isCompleteWorkbook(const QString& path, std::int64_t sheetSize) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    const std::vector<Part> parts = readDirectory(file);
    return !parts.empty() && std::all_of(parts.begin(), parts.end(), [&file, sheetSize](const Part& part) {
        return part.name.startsWith("xl/worksheets/sheet") ? part.size == sheetSize
                                                           : isWellFormed(file, part);
    });
}

} // namespace exporter
