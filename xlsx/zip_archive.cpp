#include "xlsx/zip_archive.h"

#include "base/error.h"

#include <QIODevice>

#include <algorithm>
#include <stdexcept>

#include <isa-l/crc.h>
#include <isa-l/igzip_lib.h>

namespace xlsx {

namespace {

constexpr int level = 1; // the higher ones gain a few per cent of size for much more time
constexpr std::size_t packedBytes = 64 * 1024;

// The numbers are those of PKWARE's APPNOTE.TXT 6.3.
constexpr std::uint32_t localSignature = 0x04034b50;
constexpr std::uint32_t directorySignature = 0x02014b50;
constexpr std::uint32_t endSignature = 0x06054b50;
constexpr std::uint32_t end64Signature = 0x06064b50;
constexpr std::uint32_t locator64Signature = 0x07064b50;
constexpr std::uint16_t version = 20;
constexpr std::uint16_t version64 = 45;
constexpr std::uint16_t deflated = 8;
constexpr std::uint16_t noDate = (1 << 5) | 1; // the first day that the format knows, 1980-01-01
constexpr std::uint16_t sizesTag = 0x0001;     // sizes and offsets of 64 bits
constexpr std::uint64_t limit32 = 0xFFFFFFFF;

// Open packaging conventions, ECMA-376 part 2: room that a part keeps for growing.
constexpr std::uint16_t growthTag = 0xA220;
constexpr std::uint16_t growthSignature = 0xA028;

/// Numbers one after the other, the lowest byte first.
class Record final {
public:
    Record& u16(std::uint64_t value) { return add(value, 2); }
    Record& u32(std::uint64_t value) { return add(value, 4); }
    Record& u64(std::uint64_t value) { return add(value, 8); }
    Record& bytes(const std::string& bytes) {
        bytes_ += bytes;
        return *this;
    }
    [[nodiscard]] const std::string& all() const { return bytes_; }

private:
    Record& add(std::uint64_t value, int count) {
        for (int i = 0; i < count; ++i) {
            bytes_ += static_cast<char>((value >> (8 * i)) & 0xFF);
        }
        return *this;
    }

    std::string bytes_;
};

/// What a part's own header and its entry in the directory have in common.
std::string commonFields(const ZipPart& part, bool large, std::size_t extraBytes) {
    Record fields;
    fields.u16(large ? version64 : version).u16(0).u16(deflated).u16(0).u16(noDate).u32(part.checksum);
    fields.u32(large ? limit32 : part.packedSize).u32(large ? limit32 : part.size);
    return fields.u16(part.name.size()).u16(extraBytes).all();
}

/// As long for a part of any size, since it is written before the size is known.
std::string localHeader(const ZipPart& part) {
    const bool large = std::max(part.size, part.packedSize) >= limit32;
    Record extra;
    if (large) {
        extra.u16(sizesTag).u16(16).u64(part.size).u64(part.packedSize);
    } else {
        extra.u16(growthTag).u16(16).u16(growthSignature).u16(12).u64(0).u32(0);
    }
    Record header;
    header.u32(localSignature).bytes(commonFields(part, large, extra.all().size()));
    return header.bytes(part.name).bytes(extra.all()).all();
}

std::string directoryEntry(const ZipPart& part) {
    const bool large = std::max({part.offset, part.size, part.packedSize}) >= limit32;
    Record extra;
    if (large) {
        extra.u16(sizesTag).u16(24).u64(part.size).u64(part.packedSize).u64(part.offset);
    }
    Record entry;
    entry.u32(directorySignature).u16(large ? version64 : version);
    entry.bytes(commonFields(part, large, extra.all().size()));
    entry.u16(0).u16(0).u16(0).u32(0); // comment, disk, attributes
    entry.u32(large ? limit32 : part.offset);
    return entry.bytes(part.name).bytes(extra.all()).all();
}

/// What closes the directory that lies from `start` to `end`.
std::string endRecords(std::uint64_t count, std::uint64_t start, std::uint64_t end) {
    Record records;
    if (end >= limit32) {
        records.u32(end64Signature).u64(44); // bytes that follow
        records.u16(version64).u16(version64).u32(0).u32(0);
        records.u64(count).u64(count).u64(end - start).u64(start);
        records.u32(locator64Signature).u32(0).u64(end).u32(1);
    }
    records.u32(endSignature).u16(0).u16(0).u16(count).u16(count);
    return records.u32(end - start).u32(std::min(start, limit32)).u16(0).all();
}

} // namespace

ZipArchive::ZipArchive(QIODevice& device)
    : device_(device),
      stream_(std::make_unique<isal_zstream>()),
      workspace_(ISAL_DEF_LVL1_DEFAULT),
      packed_(packedBytes) {}

ZipArchive::~ZipArchive() = default;

void ZipArchive::beginPart(std::string_view name) {
    ZipPart& part = parts_.emplace_back();
    part.name = name;
    part.offset = position();
    append(localHeader(part));
    isal_deflate_init(stream_.get());
    stream_->level = level;
    stream_->level_buf = workspace_.data();
    stream_->level_buf_size = static_cast<std::uint32_t>(workspace_.size());
}

void ZipArchive::endPart() {
    pack({}, true);
    const ZipPart& part = parts_.back();
    const std::uint64_t end = position();
    seek(part.offset);
    append(localHeader(part));
    seek(end);
}

void ZipArchive::writePart(std::string_view name, QByteArrayView bytes) {
    beginPart(name);
    write(bytes);
    endPart();
}

void ZipArchive::finish() {
    const std::uint64_t start = position();
    for (const ZipPart& part : parts_) {
        append(directoryEntry(part));
    }
    append(endRecords(parts_.size(), start, position()));
}

std::uint64_t ZipArchive::position() const {
    return static_cast<std::uint64_t>(device_.pos());
}

void ZipArchive::seek(std::uint64_t position) {
    if (!device_.seek(static_cast<qint64>(position))) {
        throw base::Error(device_.errorString());
    }
}

void ZipArchive::append(QByteArrayView bytes) {
    while (!bytes.isEmpty()) {
        // A disk that fills up takes a part first and refuses the rest with its reason.
        const qint64 written = device_.write(bytes.data(), bytes.size());
        if (written <= 0) {
            throw base::Error(device_.errorString());
        }
        bytes = bytes.sliced(written);
    }
}

void ZipArchive::pack(QByteArrayView bytes, bool last) {
    ZipPart& part = parts_.back();
    // The library only reads from there.
    stream_->next_in = reinterpret_cast<unsigned char*>(const_cast<char*>(bytes.data()));
    stream_->avail_in = static_cast<std::uint32_t>(bytes.size());
    stream_->end_of_stream = last ? 1 : 0;
    part.checksum = crc32_gzip_refl(part.checksum, stream_->next_in, stream_->avail_in);
    part.size += stream_->avail_in;
    do {
        stream_->next_out = packed_.data();
        stream_->avail_out = static_cast<std::uint32_t>(packed_.size());
        if (isal_deflate(stream_.get()) != COMP_OK) {
            throw std::runtime_error("the bytes of a workbook cannot be packed");
        }
        const QByteArrayView packed(packed_.data(), stream_->next_out);
        append(packed);
        part.packedSize += static_cast<std::uint64_t>(packed.size());
    } while (stream_->avail_out == 0);
}

} // namespace xlsx
