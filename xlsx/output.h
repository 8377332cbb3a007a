#pragma once

#include <QByteArrayView>

#include <cstdint>

namespace xlsx {

/// Where the bytes of a workbook go. Both functions throw when the bytes cannot be written.
class Output {
public:
    Output() = default;
    virtual ~Output() = default;
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    virtual void append(QByteArrayView bytes) = 0;
    /// Replaces bytes that were appended before; `offset` counts from the first byte.
    virtual void overwrite(std::int64_t offset, QByteArrayView bytes) = 0;
};

} // namespace xlsx
