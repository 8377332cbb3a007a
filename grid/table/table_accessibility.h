#pragma once

namespace grid {

class TableView;

/// Makes assistive technology see every TableView as a table of its visible columns with their headers. May
/// be called any number of times.
void installTableAccessibility();

/// Tells assistive technology that the current cell of a view has the focus.
void reportFocusedCell(TableView& view);

} // namespace grid
