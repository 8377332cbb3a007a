// SPDX-License-Identifier: MIT

#pragma once

namespace grid {

/// Makes assistive technology see every TreeView as a tree with one item a row. May be called any number of
/// times.
void installTreeAccessibility();

} // namespace grid
