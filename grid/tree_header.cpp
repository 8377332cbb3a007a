#include "grid/tree_header.h"

#include "grid/cell_text.h"
#include "grid/column.h"
#include "grid/column_widths.h"
#include "grid/tree_model.h"

#include <QPainter>
#include <QScopedValueRollback>

#include <algorithm>

namespace grid {

namespace {

constexpr int leastSectionWidth = 24;
constexpr int markWidth = 16; // of the sort mark, with the room around it

} // namespace

TreeHeader::TreeHeader(TreeModel& model, QWidget* parent)
    : QHeaderView(Qt::Horizontal, parent), model_(model) {
    setModel(&model);
    setSectionsClickable(true);
    setSectionsMovable(true);
    setFirstSectionMovable(true);
    setHighlightSections(false);
    setMinimumSectionSize(leastSectionWidth);
    setFocusPolicy(Qt::NoFocus);
    for (int column = 0; column < count(); ++column) {
        weights_.push_back(model.column(column).designWidth());
        setSectionHidden(column, !model.column(column).isVisible());
    }
    connect(this, &QHeaderView::sectionClicked, this, &TreeHeader::toggleSort);
    connect(this, &QHeaderView::sectionMoved, this, &TreeHeader::layoutChanged);
    connect(this, &QHeaderView::sectionResized, this, [this](int column, int /*before*/, int after) {
        if (!applying_) {
            takeUserWidth(column, after);
        }
    });
}

std::vector<int> TreeHeader::visibleColumns() const {
    std::vector<int> columns;
    for (int place = 0; place < count(); ++place) {
        const int column = logicalIndex(place);
        if (!isSectionHidden(column)) {
            columns.push_back(column);
        }
    }
    return columns;
}

std::vector<double> TreeHeader::visibleWeights() const {
    std::vector<double> weights;
    for (const int column : visibleColumns()) {
        weights.push_back(weights_[static_cast<std::size_t>(column)]);
    }
    return weights;
}

bool TreeHeader::fitWidth(int width) {
    if (width == width_) {
        return false;
    }
    width_ = width;
    applyWeights();
    return true;
}

void TreeHeader::applyWeights() {
    const QScopedValueRollback applying(applying_, true);
    const std::vector<int> columns = visibleColumns();
    const std::vector<int> widths = shareWidth(visibleWeights(), width_, leastSectionWidth);
    for (std::size_t place = 0; place < columns.size(); ++place) {
        resizeSection(columns[place], widths[place]);
        model_.columns()[static_cast<std::size_t>(columns[place])]->setWidth(widths[place]);
    }
}

void TreeHeader::takeUserWidth(int column, int width) {
    const std::vector<int> columns = visibleColumns();
    std::vector<double> weights = visibleWeights();
    const auto place =
        static_cast<std::size_t>(std::find(columns.begin(), columns.end(), column) - columns.begin());
    dragEdge(weights, place, width, width_, leastSectionWidth);
    for (std::size_t index = 0; index < columns.size(); ++index) {
        weights_[static_cast<std::size_t>(columns[index])] = weights[index];
    }
    applyWeights();
    emit layoutChanged();
}

int TreeHeader::textWidth(int column) const {
    return sectionSize(column) - (model_.sortColumn() == column ? markWidth : 0);
}

int TreeHeader::fittedHeight() const {
    int height = 0;
    for (const int column : visibleColumns()) {
        height =
            std::max(height, cellText::height(model_.column(column).headerText(), textWidth(column), font()));
    }
    return height + 2 * cellText::verticalPadding;
}

QSize TreeHeader::sectionSizeFromContents(int /*logicalIndex*/) const {
    return {leastSectionWidth, fittedHeight()};
}

void TreeHeader::toggleSort(int column) {
    const bool descend = model_.sortColumn() == column && !model_.isDescending();
    model_.sort(column, descend ? Qt::DescendingOrder : Qt::AscendingOrder);
    emit layoutChanged();
    viewport()->update();
}

void TreeHeader::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const {
    painter->save();
    const QColor base = palette().color(QPalette::Button);
    QLinearGradient shade(rect.topLeft(), rect.bottomLeft());
    shade.setColorAt(0, base.lighter(106));
    shade.setColorAt(1, base);
    painter->fillRect(rect, shade);
    painter->setPen(QPen(palette().color(QPalette::Mid), 0));
    painter->drawLine(rect.bottomLeft(), rect.bottomRight());
    painter->drawLine(rect.topRight(), rect.bottomRight());

    painter->setPen(palette().color(QPalette::ButtonText));
    const Column& column = model_.column(logicalIndex);
    const QRect cell(rect.left(), rect.top() + cellText::verticalPadding, textWidth(logicalIndex),
                     rect.height());
    cellText::draw(*painter, cell, column.headerText(), column.headerAlignment());
    if (model_.sortColumn() == logicalIndex) {
        const QPointF centre(rect.right() - markWidth / 2.0, rect.center().y() + 0.5);
        const double up = model_.isDescending() ? -1.0 : 1.0;
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(Qt::NoPen);
        painter->setBrush(palette().color(QPalette::ButtonText));
        painter->drawPolygon(QPolygonF(
            {centre + QPointF(-4, 2.5 * up), centre + QPointF(4, 2.5 * up), centre + QPointF(0, -2.5 * up)}));
    }
    painter->restore();
}

} // namespace grid
