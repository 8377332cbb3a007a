#include "xlsx/deflater.h"

#include <stdexcept>

#include <isa-l/igzip_lib.h>

namespace xlsx {

namespace {

constexpr int level = 1; // the higher ones gain a few per cent of size for much more time
constexpr std::size_t packedBytes = 64 * 1024;

} // namespace

Deflater::Deflater()
    : stream_(std::make_unique<isal_zstream>()), workspace_(ISAL_DEF_LVL1_DEFAULT), packed_(packedBytes) {
    restart();
}

Deflater::~Deflater() = default;

void Deflater::restart() {
    isal_deflate_init(stream_.get());
    stream_->level = level;
    stream_->level_buf = workspace_.data();
    stream_->level_buf_size = static_cast<std::uint32_t>(workspace_.size());
    stream_->gzip_flag = IGZIP_DEFLATE;
    stream_->flush = NO_FLUSH;
}

void Deflater::pack(QByteArrayView bytes, bool last, const Receiver& receive) {
    // The library only reads from there.
    stream_->next_in = reinterpret_cast<unsigned char*>(const_cast<char*>(bytes.data()));
    stream_->avail_in = static_cast<std::uint32_t>(bytes.size());
    stream_->end_of_stream = last ? 1 : 0;
    do {
        stream_->next_out = packed_.data();
        stream_->avail_out = static_cast<std::uint32_t>(packed_.size());
        if (isal_deflate(stream_.get()) != COMP_OK) {
            throw std::runtime_error("the bytes of a workbook cannot be packed");
        }
        receive(QByteArrayView(packed_.data(), stream_->next_out));
    } while (stream_->avail_out == 0);
}

} // namespace xlsx
