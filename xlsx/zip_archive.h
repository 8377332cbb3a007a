#pragma once

#include <QByteArrayView>
#include <QtGlobal>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class QIODevice;
struct isal_zstream;

namespace xlsx {

/// What an archive knows of one of its parts.
struct ZipPart {
    std::string name;
    std::uint64_t offset = 0;
    std::uint64_t size = 0;
    std::uint64_t packedSize = 0;
    std::uint32_t checksum = 0;
};

/// A ZIP archive whose parts are packed while they are written, one after the other. Parts and archives may
/// exceed 4 GiB. Everything throws base::Error with the device's reason when that refuses bytes.
class ZipArchive final {
public:
    /// Writes from the device's position on; the device is random-access and open for writing.
    explicit ZipArchive(QIODevice& device);
    ~ZipArchive();
    Q_DISABLE_COPY_MOVE(ZipArchive)

    /// `name` is plain ASCII with "/" between folders.
    void beginPart(std::string_view name);
    void write(QByteArrayView bytes) { pack(bytes, false); }
    void endPart();

    void writePart(std::string_view name, QByteArrayView bytes);

    /// Closes the archive with the directory of its parts.
    void finish();

private:
    [[nodiscard]] std::uint64_t position() const;
    void seek(std::uint64_t position);
    void append(QByteArrayView bytes);
    void pack(QByteArrayView bytes, bool last);

    QIODevice& device_;
    std::unique_ptr<isal_zstream> stream_;
    std::vector<unsigned char> workspace_;
    std::vector<unsigned char> packed_;
    std::vector<ZipPart> parts_;
};

} // namespace xlsx
