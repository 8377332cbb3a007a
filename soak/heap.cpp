// SPDX-License-Identifier: MIT

#include "soak/heap.h"

#ifdef __SANITIZE_ADDRESS__
// Part of the sanitizer's runtime, whose header the compiler does not bring.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
extern "C" void __sanitizer_purge_allocator();
#else
#include <malloc.h>
#endif

namespace soak {

std::size_t allocatedBytes() {
#ifdef __SANITIZE_ADDRESS__
    // What is freed stays in quarantine and counts until it is purged.
    __sanitizer_purge_allocator();
    return __sanitizer_get_current_allocated_bytes();
#else
    const auto heap = mallinfo2();
    return heap.uordblks + heap.hblkhd;
#endif
}

} // namespace soak
