// SPDX-License-Identifier: MIT

#pragma once

namespace grid {

/// Makes assistive technology see every TableView as a table of its visible columns with their headers, and
/// nothing of a Grid that is covered. May be called any number of times.
void installTableAccessibility();

} // namespace grid
