// SPDX-License-Identifier: MIT

#include "fuzz/fuzzing.h"

#include <cstdint>
#include <cstdlib>

namespace fuzz {

void check(bool holds) {
    if (!holds) {
        std::abort();
    }
}

QString takeText(Input& input) {
    const bool isUtf8 = input.ConsumeBool();
    const std::string bytes = input.ConsumeRandomLengthString();
    return isUtf8 ? QString::fromStdString(bytes)
                  : QString::fromUtf16(reinterpret_cast<const char16_t*>(bytes.data()),
                                       static_cast<qsizetype>(bytes.size() / 2));
}

} // namespace fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    fuzz::Input input(bytes, size);
    fuzz::run(input);
    return 0;
}
