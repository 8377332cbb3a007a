// SPDX-License-Identifier: MIT

// What a configured build of the Firebird client would find out about MinGW. The answers for Microsoft's
// compiler come close; these are the differences.
#ifndef FIREBIRD_CLIENT_AUTOCONFIG_H
#define FIREBIRD_CLIENT_AUTOCONFIG_H

// By this name the answers tell the processor.
#define _M_AMD64 100
#include "gen/autoconfig_msvc.h"
#undef i386

// Packing of the line is not worth a library more: the demonstration server does not offer it.
#undef HAVE_ZLIB_H

// Both the sources and the compiler's headers define a function of this name; the headers must come first.
#include <cmath>
#include <math.h>
#define isinf firebird_isinf

// A patch of Debian's has listeners signal their parent process. A client never listens.
#define SIGUSR1 0
inline int kill(int, int) {
    return 0;
}

#endif
