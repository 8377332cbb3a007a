#include "grid/view/row_scrolling.h"

#include "grid/view/row_layout.h"

#include <QApplication>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>

namespace grid {

void adjustScrollBar(QScrollBar& bar, const RowLayout& layout) {
    bar.setSingleStep(1);
    bar.setPageStep(std::max(1, static_cast<int>(layout.shownRows().size()) - 1));
    bar.setRange(0, layout.scrollMaximum());
    bar.setValue(layout.scrollValue());
}

void arrangeForWidth(const QWidget& viewport, const std::function<void(int width)>& arrange) {
    int width = -1;
    for (int pass = 0; pass < 3 && viewport.width() != width; ++pass) {
        width = viewport.width();
        arrange(width);
    }
}

int WheelRows::take(const QWheelEvent& event) {
    constexpr int notch = 120;
    rest_ += event.angleDelta().y() * QApplication::wheelScrollLines();
    const int rows = rest_ / notch;
    rest_ -= rows * notch;
    return -rows;
}

} // namespace grid
