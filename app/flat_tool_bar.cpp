#include "app/flat_tool_bar.h"

#include <QLayout>
#include <QPainter>

namespace app {

FlatToolBar::FlatToolBar(QWidget* parent) : QToolBar(parent) {
    layout()->setContentsMargins(0, 0, 0, 0);
    layout()->setSpacing(0);
}

void FlatToolBar::paintEvent(QPaintEvent*) {
    QPainter(this).fillRect(rect(), palette().color(QPalette::Window));
}

} // namespace app
