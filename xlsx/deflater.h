#pragma once

#include <QByteArrayView>

#include <functional>
#include <memory>
#include <vector>

struct isal_zstream;

namespace xlsx {

/// Packs a stream of bytes by the deflate method (RFC 1951).
class Deflater final {
public:
    Deflater();
    ~Deflater();
    Deflater(const Deflater&) = delete;
    Deflater& operator=(const Deflater&) = delete;

    /// Begins a stream of its own.
    void restart();

    using Receiver = std::function<void(QByteArrayView packed)>;

    /// Packs the next bytes of the stream and hands on what is ready; after the `last` ones that is all.
    void pack(QByteArrayView bytes, bool last, const Receiver& receive);

private:
    std::unique_ptr<isal_zstream> stream_;
    std::vector<unsigned char> workspace_;
    std::vector<unsigned char> packed_;
};

} // namespace xlsx
