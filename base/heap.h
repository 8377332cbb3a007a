// SPDX-License-Identifier: MIT

#pragma once

namespace base {

/// Hands the memory that the heap holds in reserve back to the system, where it does not do so by itself.
/// Takes some milliseconds after much has been freed.
void trimHeap();

} // namespace base
