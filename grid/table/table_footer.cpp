#include "grid/table/table_footer.h"

#include "grid/header/cell_text.h"
#include "grid/rows/column.h"
#include "grid/rows/table_model.h"
#include "grid/table/table_header.h"

#include <QPainter>

#include <algorithm>

namespace grid {

TableFooter::TableFooter(const TableModel& model, const TableHeader& header, int column, QWidget* parent)
    : QWidget(parent), model_(model), header_(header), column_(column) {
    const auto follow = [this] {
        setAccessibleName(text());
        update();
    };
    connect(&model, &TableModel::modelReset, this, follow);
    connect(&header, &TableHeader::layoutChanged, this, qOverload<>(&QWidget::update));
    if (column_ >= 0) {
        setAccessibleDescription(QStringLiteral("Количество строк"));
    }
    follow();
}

QString TableFooter::text() const {
    return column_ < 0 ? QString() : QString::number(model_.rowCount());
}

QSize TableFooter::sizeHint() const {
    constexpr int frame = 2;
    return {0, fontMetrics().height() + 2 * (cellTextPaddingY + frame)};
}

void TableFooter::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Active, QPalette::Button));
    painter.setPen(QPen(palette().color(QPalette::Mid), 0));
    painter.drawLine(rect().topLeft(), rect().topRight());
    if (column_ < 0) {
        return;
    }
    const QRect section(header_.sectionViewportPosition(column_), 0, header_.sectionSize(column_), height());
    QRect cell = section.adjusted(1, 2, -2, -2);
    // Half a count would be another one, and what stands beside it is empty.
    const int needed = fontMetrics().horizontalAdvance(text()) + 2 * cellTextPaddingX;
    cell.setWidth(std::clamp(needed, cell.width(), std::max(cell.width(), width() - cell.left() - 2)));
    painter.drawRect(cell);
    painter.setPen(palette().color(QPalette::Active, QPalette::ButtonText));
    drawCellText(painter, cell, text(), model_.column(column_).alignment());
}

} // namespace grid
