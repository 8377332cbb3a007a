// SPDX-License-Identifier: MIT

#include "xlsx/zip_archive.h"

#include "base/error.h"

#include <QDataStream>
#include <QIODevice>

#include <algorithm>
#include <concepts>
#include <stdexcept>

#include <isa-l/crc.h>
#include <isa-l/igzip_lib.h>

namespace xlsx {

namespace {

constexpr int level = 1; // the higher ones gain a few per cent of size for much more time
constexpr std::size_t packedBytes = 65536;

// The numbers are those of PKWARE's APPNOTE.TXT 6.3.
constexpr quint32 localSignature = 0x04034b50;
constexpr quint32 directorySignature = 0x02014b50;
constexpr quint32 endSignature = 0x06054b50;
constexpr quint32 end64Signature = 0x06064b50;
constexpr quint32 locator64Signature = 0x07064b50;
constexpr quint16 version = 20;
constexpr quint16 version64 = 45;
constexpr quint16 deflated = 8;
constexpr quint16 noDate = (1 << 5) | 1; // the first day that the format knows, 1980-01-01
constexpr quint16 sizesTag = 0x0001;     // sizes and offsets of 64 bits
constexpr quint32 limit32 = 0xFFFFFFFF;

// Open packaging conventions, ECMA-376 part 2: room that a part keeps for growing.
constexpr quint16 growthTag = 0xA220;
constexpr quint16 growthSignature = 0xA028;

/// Numbers one after the other, the lowest byte of each first.
template <std::integral... Numbers>
QByteArray record(Numbers... numbers) {
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    (stream << ... << numbers);
    return bytes;
}

/// What a part's own header and its entry in the directory have in common.
QByteArray commonFields(const ZipPart& part, bool large, const QByteArray& extra) {
    return record(large ? version64 : version, quint16(0), deflated, quint16(0), noDate, part.checksum,
                  large ? limit32 : quint32(part.packedSize), large ? limit32 : quint32(part.size),
                  quint16(part.name.size()), quint16(extra.size()));
}

/// As long for a part of any size, since it is written before the size is known.
QByteArray localHeader(const ZipPart& part) {
    const bool large = std::max(part.size, part.packedSize) >= limit32;
    const QByteArray extra =
        large ? record(sizesTag, quint16(16), part.size, part.packedSize)
              : record(growthTag, quint16(16), growthSignature, quint16(12), qint64(0), quint32(0));
    return record(localSignature) + commonFields(part, large, extra) + part.name + extra;
}

QByteArray directoryEntry(const ZipPart& part) {
    const bool large = std::max({part.offset, part.size, part.packedSize}) >= limit32;
    const QByteArray extra =
        large ? record(sizesTag, quint16(24), part.size, part.packedSize, part.offset) : QByteArray();
    return record(directorySignature, large ? version64 : version) + commonFields(part, large, extra) +
           record(quint16(0), quint16(0), quint16(0), quint32(0)) + // comment, disk, attributes
           record(large ? limit32 : quint32(part.offset)) + part.name + extra;
}

/// What closes the directory that lies from `start` to `end`.
QByteArray endRecords(qint64 count, qint64 start, qint64 end) {
    const QByteArray records64 = record(end64Signature, qint64(44), version64, version64, quint32(0),
                                        quint32(0), count, count, end - start,
                                        start) + // 44 bytes follow the second number
                                 record(locator64Signature, quint32(0), end, quint32(1));
    const QByteArray records =
        record(endSignature, quint16(0), quint16(0), quint16(count), quint16(count), quint32(end - start),
               quint32(std::min<qint64>(start, limit32)), quint16(0));
    return end >= limit32 ? records64 + records : records;
}

/// The packing library leaves the upper halves of vector registers in use, which slows down all that follows.
/// Not inlined, since a caller takes it for granted that a call clobbers them.
[[gnu::noinline]] void releaseVectorRegisters() {
#ifdef Q_PROCESSOR_X86
    if (__builtin_cpu_supports("avx")) {
        asm volatile("vzeroupper");
    }
#endif
}

} // namespace

ZipArchive::ZipArchive(QIODevice& device)
    : device_(device),
      stream_(std::make_unique<isal_zstream>()),
      workspace_(ISAL_DEF_LVL1_DEFAULT),
      packed_(packedBytes) {}

ZipArchive::~ZipArchive() = default;

void ZipArchive::beginPart(const QByteArray& name) {
    endPart();
    parts_.push_back({.name = name, .offset = device_.pos()});
    append(localHeader(parts_.back()));
    isal_deflate_init(stream_.get());
    stream_->level = level;
    stream_->level_buf = workspace_.data();
    stream_->level_buf_size = static_cast<quint32>(workspace_.size());
}

void ZipArchive::finish() {
    endPart();
    const qint64 start = device_.pos();
    for (const ZipPart& part : parts_) {
        append(directoryEntry(part));
    }
    append(endRecords(std::ssize(parts_), start, device_.pos()));
}

void ZipArchive::endPart() {
    if (parts_.empty()) {
        return;
    }
    pack({}, true);
    const qint64 end = device_.pos();
    require(device_.seek(parts_.back().offset));
    append(localHeader(parts_.back()));
    require(device_.seek(end));
}

void ZipArchive::require(bool done) const {
    if (!done) {
        throw base::Error(device_.errorString());
    }
}

void ZipArchive::append(QByteArrayView bytes) {
    while (!bytes.isEmpty()) {
        // A disk that fills up takes a part first and refuses the rest with its reason.
        const qint64 written = device_.write(bytes.data(), bytes.size());
        require(written > 0);
        bytes = bytes.sliced(written);
    }
}

void ZipArchive::pack(QByteArrayView bytes, bool last) {
    ZipPart& part = parts_.back();
    // The library only reads from there.
    stream_->next_in = reinterpret_cast<unsigned char*>(const_cast<char*>(bytes.data()));
    stream_->avail_in = static_cast<quint32>(bytes.size());
    stream_->end_of_stream = last ? 1 : 0;
    part.checksum = crc32_gzip_refl(part.checksum, stream_->next_in, stream_->avail_in);
    part.size += bytes.size();
    do {
        stream_->next_out = packed_.data();
        stream_->avail_out = static_cast<quint32>(packed_.size());
        if (isal_deflate(stream_.get()) != COMP_OK) {
            throw std::runtime_error("the bytes of a workbook cannot be packed");
        }
        const QByteArrayView packed(packed_.data(), stream_->next_out);
        append(packed);
        part.packedSize += packed.size();
    } while (stream_->avail_out == 0);
    releaseVectorRegisters();
}

} // namespace xlsx
