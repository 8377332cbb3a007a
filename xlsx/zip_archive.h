#pragma once

#include "xlsx/deflater.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace xlsx {

class Output;

/// A ZIP archive whose parts are packed while they are written, one after the other. Parts and archives may
/// exceed 4 GiB. Everything throws what the output throws.
class ZipArchive final {
public:
    explicit ZipArchive(Output& output) : output_(output) {}

    /// `name` is plain ASCII with "/" between folders.
    void beginPart(std::string_view name);
    void write(QByteArrayView bytes);
    void endPart();

    void writePart(std::string_view name, QByteArrayView bytes);

    /// Closes the archive with the directory of its parts.
    void finish();

private:
    struct Part {
        std::string name;
        std::uint64_t offset = 0;
        std::uint64_t size = 0;
        std::uint64_t packedSize = 0;
        std::uint32_t checksum = 0;
    };

    [[nodiscard]] static std::string commonFields(const Part& part, bool large, std::size_t extraBytes);
    [[nodiscard]] static std::string localHeader(const Part& part);
    [[nodiscard]] static std::string directoryEntry(const Part& part);
    void append(QByteArrayView bytes);
    void pack(QByteArrayView bytes, bool last);

    Output& output_;
    Deflater deflater_;
    std::vector<Part> parts_;
    std::uint64_t length_ = 0;
};

} // namespace xlsx
