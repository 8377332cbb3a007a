#include "grid/table_header.h"

#include "grid/cell_text.h"
#include "grid/column.h"
#include "grid/column_widths.h"
#include "grid/table_model.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

namespace grid {
namespace {

// Pixels.
constexpr int minimumColumnWidth = 24;
constexpr int filterButtonSize = 15;
constexpr int sortMarkWidth = 11;
constexpr int sortNumberWidth = 8;
/// Leaves the edge free, where columns are dragged to another width.
constexpr int marksMargin = 5;

QRect filterButtonRect(const QRect& section) {
    return {section.right() + 1 - marksMargin - filterButtonSize,
            section.top() + (section.height() - filterButtonSize) / 2, filterButtonSize, filterButtonSize};
}

QPolygonF triangle(const QPointF& center, qreal halfWidth, qreal halfHeight) {
    return QPolygonF({{center.x() - halfWidth, center.y() - halfHeight},
                      {center.x() + halfWidth, center.y() - halfHeight},
                      {center.x(), center.y() + halfHeight}});
}

} // namespace

TableHeader::TableHeader(TableModel& model, QWidget* parent)
    : QHeaderView(Qt::Horizontal, parent), model_(model) {
    for (const Column* const column : model.columns()) {
        weights_.push_back(column->designWidth());
    }
    setModel(&model);
    setSectionsMovable(true);
    setSectionsClickable(true);
    setHighlightSections(false);
    setFocusPolicy(Qt::NoFocus);
    setMinimumSectionSize(1);
    setSectionResizeMode(Interactive);
    viewport()->setMouseTracking(true);
    for (int i = 0; i < count(); ++i) {
        setSectionHidden(i, !model.column(i).isVisible());
    }
    connect(this, &QHeaderView::sectionResized, this,
            [this](int column, int, int width) { takeUserWidth(column, width); });
    connect(this, &QHeaderView::sectionMoved, this, &TableHeader::applyWeights);
    connect(this, &QHeaderView::sectionClicked, this, &TableHeader::toggleSort);
    connect(&model, &TableModel::arrangementChanged, viewport(), qOverload<>(&QWidget::update));
}

std::vector<int> TableHeader::visibleColumns() const {
    std::vector<int> columns;
    for (int visual = 0; visual < count(); ++visual) {
        if (!isSectionHidden(logicalIndex(visual))) {
            columns.push_back(logicalIndex(visual));
        }
    }
    return columns;
}

void TableHeader::fitWidth(int width) {
    if (width != width_) {
        width_ = width;
        applyWeights();
    }
}

void TableHeader::applyWeights() {
    const std::vector<int> columns = visibleColumns();
    std::vector<double> weights;
    for (const int column : columns) {
        weights.push_back(weights_[static_cast<std::size_t>(column)]);
    }
    const std::vector<int> widths = shareWidth(weights, width_, minimumColumnWidth);
    applying_ = true;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        resizeSection(columns[i], widths[i]);
        model_.columns()[static_cast<std::size_t>(columns[i])]->setWidth(widths[i]);
    }
    applying_ = false;
    emit layoutChanged();
}

void TableHeader::takeUserWidth(int column, int width) {
    if (applying_ || isSectionHidden(column)) {
        return;
    }
    const std::vector<int> columns = visibleColumns();
    std::vector<double> weights;
    for (const int each : columns) {
        weights.push_back(weights_[static_cast<std::size_t>(each)]);
    }
    const auto place = static_cast<std::size_t>(std::ranges::find(columns, column) - columns.begin());
    dragEdge(weights, place, width, width_, minimumColumnWidth);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        weights_[static_cast<std::size_t>(columns[i])] = weights[i];
    }
    applyWeights();
}

int TableHeader::fittedHeight() const {
    int height = 0;
    for (const int column : visibleColumns()) {
        const int width = std::max(1, sectionSize(column) - marksWidth(column));
        height = std::max(height, cellText::height(model_.column(column).headerText(), width, font()));
    }
    return height + 2 * cellText::verticalPadding;
}

void TableHeader::toggleSort(int column) {
    std::vector<SortColumn> sort = model_.sortColumns();
    const auto found = std::ranges::find(sort, column, &SortColumn::column);
    const Qt::KeyboardModifiers modifiers = QApplication::keyboardModifiers();
    if (modifiers & Qt::ControlModifier) {
        std::erase_if(sort, [=](const SortColumn& each) { return each.column == column; });
    } else if (modifiers & Qt::ShiftModifier) {
        if (found != sort.end()) {
            found->descending = !found->descending;
        } else {
            sort.push_back({column});
        }
    } else {
        const bool descending = found != sort.end() && !found->descending;
        sort = {{column, descending}};
    }
    model_.sortBy(std::move(sort));
}

bool TableHeader::isFiltered(int column) const {
    return model_.filters().contains(column);
}

int TableHeader::marksWidth(int column) const {
    const auto& sort = model_.sortColumns();
    const bool isSorted = std::ranges::find(sort, column, &SortColumn::column) != sort.end();
    return (isFiltered(column) ? filterButtonSize + marksMargin : 0) +
           (isSorted ? sortMarkWidth + (sort.size() > 1 ? sortNumberWidth : 0) : 0);
}

QRect TableHeader::sectionRect(int column) const {
    return {sectionViewportPosition(column), 0, sectionSize(column), height()};
}

QRect TableHeader::textRect(int column, const QRect& section) const {
    const QRect beside = section.adjusted(0, cellText::verticalPadding, -marksWidth(column), 0);
    if (column != hovered_ || isFiltered(column)) {
        return beside;
    }
    // The button that the mouse brings up stands beside the text where that leaves the text whole.
    const QRect narrower = beside.adjusted(0, 0, -filterButtonSize - marksMargin, 0);
    const QString& text = model_.column(column).headerText();
    const bool fits = narrower.width() > fontMetrics().horizontalAdvance(text) &&
                      cellText::height(text, narrower.width(), font()) <= section.height();
    return fits ? narrower : beside;
}

bool TableHeader::isOverFilterButton(const QPoint& position) const {
    const int column = logicalIndexAt(position);
    return column >= 0 && model_.column(column).field() &&
           filterButtonRect(sectionRect(column)).contains(position);
}

void TableHeader::paintSection(QPainter* painter, const QRect& rect, int column) const {
    painter->save();
    const QColor base = palette().color(QPalette::Button);
    QLinearGradient gradient(rect.topLeft(), rect.bottomLeft());
    gradient.setColorAt(0, base.lighter(column == hovered_ ? 112 : 106));
    gradient.setColorAt(1, base);
    painter->fillRect(rect, gradient);
    painter->setPen(QPen(palette().color(QPalette::Mid), 0));
    painter->drawLine(rect.bottomLeft(), rect.bottomRight());
    painter->drawLine(rect.topRight(), rect.bottomRight());

    painter->setPen(palette().color(QPalette::Active, QPalette::ButtonText));
    cellText::draw(*painter, textRect(column, rect), model_.column(column).headerText(),
                   model_.column(column).headerAlignment());
    painter->setRenderHint(QPainter::Antialiasing);
    drawSortMark(*painter, rect, column);
    if (model_.column(column).field() && (column == hovered_ || isFiltered(column))) {
        drawFilterButton(*painter, rect, column);
    }
    painter->restore();
}

void TableHeader::drawSortMark(QPainter& painter, const QRect& section, int column) const {
    const auto& sort = model_.sortColumns();
    const auto found = std::ranges::find(sort, column, &SortColumn::column);
    if (found == sort.end()) {
        return;
    }
    const QRect area(textRect(column, section).right() + 1, section.top(), marksWidth(column),
                     section.height());
    const QPointF center(area.left() + sortMarkWidth / 2.0, area.center().y() + 0.5);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().color(QPalette::Active, QPalette::ButtonText));
    painter.drawPolygon(triangle(center, 4, found->descending ? 2.5 : -2.5));
    if (sort.size() > 1) {
        QFont small = font();
        small.setPixelSize(std::max(9, fontMetrics().height() * 3 / 5));
        painter.setFont(small);
        painter.setPen(palette().color(QPalette::Active, QPalette::ButtonText));
        painter.drawText(area.adjusted(sortMarkWidth - 1, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                         QString::number(found - sort.begin() + 1));
    }
}

void TableHeader::drawFilterButton(QPainter& painter, const QRect& section, int column) const {
    const QRect button = filterButtonRect(section);
    const bool inForce = isFiltered(column);
    painter.setPen(QPen(palette().color(QPalette::Mid), 0));
    painter.setBrush(palette().color(inForce ? QPalette::Highlight : QPalette::Base));
    painter.drawRoundedRect(QRectF(button).adjusted(0.5, 0.5, -0.5, -0.5), 2, 2);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().color(inForce ? QPalette::HighlightedText : QPalette::Text));
    const QPointF center = QRectF(button).center();
    painter.drawPolygon(triangle(center, 4, 2.5));
    if (inForce) {
        painter.drawRect(QRectF(center.x() - 1, center.y() - 1, 2, 5)); // the neck makes it a funnel
    }
}

void TableHeader::setHovered(int column) {
    if (column != hovered_) {
        hovered_ = column;
        viewport()->update();
    }
}

void TableHeader::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && isOverFilterButton(event->pos())) {
        emit filterRequested(logicalIndexAt(event->pos()));
        return;
    }
    QHeaderView::mousePressEvent(event);
}

void TableHeader::mouseMoveEvent(QMouseEvent* event) {
    setHovered(event->buttons() == Qt::NoButton ? logicalIndexAt(event->pos()) : -1);
    QHeaderView::mouseMoveEvent(event);
}

bool TableHeader::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::Leave) {
        setHovered(-1);
    }
    return QHeaderView::viewportEvent(event);
}

} // namespace grid
