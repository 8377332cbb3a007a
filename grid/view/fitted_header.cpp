#include "grid/view/fitted_header.h"

#include "grid/rows/column.h"
#include "grid/view/cell_text.h"
#include "grid/view/column_widths.h"

#include <QPainter>
#include <QScopedValueRollback>

#include <algorithm>

namespace grid {
namespace {

constexpr int minimumColumnWidth = 24; // pixels

} // namespace

FittedHeader::FittedHeader(QAbstractItemModel& model, std::vector<Column*> columns, QWidget* parent)
    : QHeaderView(Qt::Horizontal, parent), columns_(std::move(columns)) {
    for (const Column* const each : columns_) {
        weights_.push_back(each->designWidth());
    }
    setModel(&model);
    setSectionsMovable(true);
    setFirstSectionMovable(true);
    setSectionsClickable(true);
    setHighlightSections(false);
    setFocusPolicy(Qt::NoFocus);
    setMinimumSectionSize(1); // the least width is a matter of sharing: a narrow view has no room for it
    setSectionResizeMode(Interactive);
    for (int index = 0; index < count(); ++index) {
        setSectionHidden(index, !column(index).isVisible());
    }
    connect(this, &QHeaderView::sectionResized, this,
            [this](int index, int, int width) { takeUserWidth(index, width); });
    connect(this, &QHeaderView::sectionMoved, this, &FittedHeader::applyWeights);
}

std::vector<int> FittedHeader::visibleColumns() const {
    std::vector<int> columns;
    for (int visual = 0; visual < count(); ++visual) {
        if (!isSectionHidden(logicalIndex(visual))) {
            columns.push_back(logicalIndex(visual));
        }
    }
    return columns;
}

std::vector<double> FittedHeader::weightsOf(const std::vector<int>& columns) const {
    std::vector<double> weights;
    weights.reserve(columns.size());
    for (const int index : columns) {
        weights.push_back(weights_[static_cast<std::size_t>(index)]);
    }
    return weights;
}

void FittedHeader::fitWidth(int width) {
    if (width != width_) {
        width_ = width;
        applyWeights();
    }
}

void FittedHeader::applyWeights() {
    const std::vector<int> columns = visibleColumns();
    const std::vector<int> widths = shareWidth(weightsOf(columns), width_, minimumColumnWidth);
    {
        const QScopedValueRollback applying(applying_, true);
        for (std::size_t i = 0; i < columns.size(); ++i) {
            resizeSection(columns[i], widths[i]);
            columns_[static_cast<std::size_t>(columns[i])]->setWidth(widths[i]);
        }
    }
    emit layoutChanged();
}

void FittedHeader::takeUserWidth(int index, int width) {
    if (applying_ || isSectionHidden(index)) {
        return;
    }
    const std::vector<int> columns = visibleColumns();
    std::vector<double> weights = weightsOf(columns);
    const auto place = static_cast<std::size_t>(std::ranges::find(columns, index) - columns.begin());
    dragEdge(weights, place, width, width_, minimumColumnWidth);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        weights_[static_cast<std::size_t>(columns[i])] = weights[i];
    }
    applyWeights();
}

int FittedHeader::fittedHeight() const {
    int height = 0;
    for (const int index : visibleColumns()) {
        const int width = std::max(1, sectionSize(index) - marksWidth(index));
        height = std::max(height, cellTextHeight(column(index).headerText(), width, font()));
    }
    return height + 2 * cellTextPaddingY;
}

QRect FittedHeader::besideMarks(int index, const QRect& section) const {
    return section.adjusted(0, cellTextPaddingY, -marksWidth(index), 0);
}

void FittedHeader::drawSection(QPainter& painter, const QRect& section, int index, const QRect& textArea,
                               bool lit) const {
    const QColor base = palette().color(QPalette::Button);
    QLinearGradient gradient(section.topLeft(), section.bottomLeft());
    gradient.setColorAt(0, base.lighter(lit ? 112 : 106));
    gradient.setColorAt(1, base);
    painter.fillRect(section, gradient);
    painter.setPen(QPen(palette().color(QPalette::Mid), 0));
    painter.drawLine(section.bottomLeft(), section.bottomRight());
    painter.drawLine(section.topRight(), section.bottomRight());
    painter.setPen(palette().color(QPalette::Active, QPalette::ButtonText));
    drawCellText(painter, textArea, column(index).headerText(), column(index).headerAlignment());
}

void FittedHeader::drawSortMark(QPainter& painter, const QPointF& center, bool descending) const {
    constexpr qreal halfHeight = 2.5;
    drawTriangle(painter, center, descending ? halfHeight : -halfHeight,
                 palette().color(QPalette::Active, QPalette::ButtonText));
}

void FittedHeader::drawTriangle(QPainter& painter, const QPointF& center, qreal halfHeight,
                                const QColor& color) {
    constexpr qreal halfWidth = 4;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawPolygon(
        QPolygonF({center + QPointF(-halfWidth, -halfHeight), center + QPointF(halfWidth, -halfHeight),
                   center + QPointF(0, halfHeight)}));
}

} // namespace grid
