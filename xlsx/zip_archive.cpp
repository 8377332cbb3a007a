#include "xlsx/zip_archive.h"

#include "xlsx/output.h"

#include <algorithm>

#include <isa-l/crc.h>

namespace xlsx {

namespace {

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
    [[nodiscard]] const std::string& bytes() const { return bytes_; }

private:
    Record& add(std::uint64_t value, int count) {
        for (int i = 0; i < count; ++i) {
            bytes_ += static_cast<char>((value >> (8 * i)) & 0xFF);
        }
        return *this;
    }

    std::string bytes_;
};

} // namespace

/// What a part's own header and its entry in the directory have in common.
std::string ZipArchive::commonFields(const Part& part, bool large, std::size_t extraBytes) {
    return Record()
        .u16(large ? version64 : version)
        .u16(0) // flags
        .u16(deflated)
        .u16(0) // time
        .u16(noDate)
        .u32(part.checksum)
        .u32(large ? limit32 : part.packedSize)
        .u32(large ? limit32 : part.size)
        .u16(part.name.size())
        .u16(extraBytes)
        .bytes();
}

/// As long for a part of any size, since it is written before the size is known.
std::string ZipArchive::localHeader(const Part& part) {
    const bool large = std::max(part.size, part.packedSize) >= limit32;
    Record extra;
    if (large) {
        extra.u16(sizesTag).u16(16).u64(part.size).u64(part.packedSize);
    } else {
        extra.u16(growthTag).u16(16).u16(growthSignature).u16(12).u64(0).u32(0);
    }
    return Record().u32(localSignature).bytes() + commonFields(part, large, extra.bytes().size()) +
           part.name + extra.bytes();
}

std::string ZipArchive::directoryEntry(const Part& part) {
    const bool large = std::max({part.offset, part.size, part.packedSize}) >= limit32;
    Record extra;
    if (large) {
        extra.u16(sizesTag).u16(24).u64(part.size).u64(part.packedSize).u64(part.offset);
    }
    // Comment, disk, attributes, place.
    const Record place = Record().u16(0).u16(0).u16(0).u32(0).u32(large ? limit32 : part.offset);
    return Record().u32(directorySignature).u16(large ? version64 : version).bytes() +
           commonFields(part, large, extra.bytes().size()) + place.bytes() + part.name + extra.bytes();
}

void ZipArchive::beginPart(std::string_view name) {
    Part& part = parts_.emplace_back();
    part.name = name;
    part.offset = length_;
    append(localHeader(part));
    deflater_.restart();
}

void ZipArchive::write(QByteArrayView bytes) {
    pack(bytes, false);
}

void ZipArchive::endPart() {
    pack({}, true);
    const Part& part = parts_.back();
    output_.overwrite(static_cast<std::int64_t>(part.offset), localHeader(part));
}

void ZipArchive::writePart(std::string_view name, QByteArrayView bytes) {
    beginPart(name);
    write(bytes);
    endPart();
}

void ZipArchive::finish() {
    const std::uint64_t start = length_;
    for (const Part& part : parts_) {
        append(directoryEntry(part));
    }
    const std::uint64_t end = length_;
    const std::uint64_t size = end - start;
    const std::uint64_t count = parts_.size();
    if (end >= limit32) {
        append(Record()
                   .u32(end64Signature)
                   .u64(44) // bytes that follow
                   .u16(version64)
                   .u16(version64)
                   .u32(0)
                   .u32(0)
                   .u64(count)
                   .u64(count)
                   .u64(size)
                   .u64(start)
                   .u32(locator64Signature)
                   .u32(0)
                   .u64(end)
                   .u32(1) // disks
                   .bytes());
    }
    append(Record()
               .u32(endSignature)
               .u16(0)
               .u16(0)
               .u16(count)
               .u16(count)
               .u32(size)
               .u32(std::min(start, limit32))
               .u16(0)
               .bytes());
}

void ZipArchive::append(QByteArrayView bytes) {
    output_.append(bytes);
    length_ += static_cast<std::uint64_t>(bytes.size());
}

void ZipArchive::pack(QByteArrayView bytes, bool last) {
    Part& part = parts_.back();
    part.checksum = crc32_gzip_refl(part.checksum, reinterpret_cast<const unsigned char*>(bytes.data()),
                                    static_cast<std::uint64_t>(bytes.size()));
    part.size += static_cast<std::uint64_t>(bytes.size());
    deflater_.pack(bytes, last, [this, &part](QByteArrayView packed) {
        append(packed);
        part.packedSize += static_cast<std::uint64_t>(packed.size());
    });
}

} // namespace xlsx
