// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QtGlobal>

#include <memory>
#include <vector>

class QIODevice;
struct isal_zstream;

namespace xlsx {

/// What an archive knows of one of its parts.
struct ZipPart {
    QByteArray name;
    qint64 offset = 0;
    qint64 size = 0;
    qint64 packedSize = 0;
    quint32 checksum = 0;
};

/// A ZIP archive whose parts are packed while they are written, one after the other. Parts and archives may
/// exceed 4 GiB. Everything throws base::Error with the device's reason when that refuses bytes.
class ZipArchive final {
public:
    /// Writes from the device's position on; the device is random-access and open for writing.
    explicit ZipArchive(QIODevice& device);
    ~ZipArchive();
    Q_DISABLE_COPY_MOVE(ZipArchive)

    /// Ends the part before; `name` is plain ASCII with "/" between folders.
    void beginPart(const QByteArray& name);
    void write(QByteArrayView bytes) { pack(bytes, false); }

    /// Ends the last part and closes the archive with the directory of its parts.
    void finish();

private:
    void endPart();
    void require(bool done) const;
    void append(QByteArrayView bytes);
    void pack(QByteArrayView bytes, bool last);

    QIODevice& device_;
    std::unique_ptr<isal_zstream> stream_;
    std::vector<unsigned char> workspace_;
    std::vector<unsigned char> packed_;
    std::vector<ZipPart> parts_;
};

} // namespace xlsx
