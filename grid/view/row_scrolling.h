#pragma once

#include <qrgb.h>

#include <functional>

class QScrollBar;
class QWheelEvent;
class QWidget;

namespace grid {

class RowLayout;

/// The lines between rows and between columns.
inline constexpr QRgb gridLineColor = qRgb(192, 192, 192);

/// Milliseconds between two rows while a selection is drawn beyond the edge of a view.
inline constexpr int dragScrollInterval = 50;

/// Sets range, page and value of a view's vertical scroll bar by the layout of its rows.
void adjustScrollBar(QScrollBar& bar, const RowLayout& layout);

/// Arranges a view for the width of its viewport, and again where that changes it: the scroll bar's coming
/// narrows the columns, which heightens header and rows; its going does the reverse.
void arrangeForWidth(const QWidget& viewport, const std::function<void(int width)>& arrange);

/// Adds up turns of the mouse wheel, which may be finer than a row.
class WheelRows final {
public:
    /// The rows to scroll down, or up when negative.
    [[nodiscard]] int take(const QWheelEvent& event);

private:
    int rest_ = 0; // eighths of a degree, times lines, that did not make a row yet
};

} // namespace grid
