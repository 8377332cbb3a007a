// SPDX-License-Identifier: MIT

#include "base/heap.h"

#include <cstdlib>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace base {

void trimHeap() {
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

} // namespace base
