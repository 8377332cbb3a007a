// SPDX-License-Identifier: MIT

#include "grid/header/fitted_header.h"

#include "grid/header/cell_text.h"
#include "grid/header/column_widths.h"
#include "grid/header/cut_text_tip.h"
#include "grid/rows/column.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>

#include <algorithm>
#include <cmath>
#include <utility>

namespace grid {

namespace {

// Pixels.
constexpr int minimumColumnWidth = 24;
constexpr int marksHeight = 19; // where they stand beneath the text

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
    hideSections();
    connect(this, &QHeaderView::sectionResized, this,
            [this](int index, int, int width) { takeUserWidth(index, width); });
    connect(this, &QHeaderView::sectionMoved, this, &FittedHeader::applyWeights);
}

void FittedHeader::hideSections() {
    const QScopedValueRollback applying(applying_, true);
    for (int index = 0; index < count(); ++index) {
        setSectionHidden(index, !column(index).isVisible());
    }
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
    if (applying_) {
        return;
    }
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
    setWeights(columns, weights);
}

void FittedHeader::setWeights(const std::vector<int>& columns, const std::vector<double>& weights) {
    for (std::size_t i = 0; i < columns.size(); ++i) {
        weights_[static_cast<std::size_t>(columns[i])] = weights[i];
    }
    applyWeights();
}

/// The width that keeps the words of a caption whole.
int FittedHeader::captionWidth(int index) const {
    int widest = minimumColumnWidth;
    for (const QString& word : column(index).headerText().split(u' ')) {
        widest = std::max(widest, cellTextWidth(word, font()));
    }
    return widest;
}

void FittedHeader::fitColumn(int index, int width, const std::function<int(int column)>& leastWidth) {
    const std::vector<int> columns = visibleColumns();
    const auto place = static_cast<std::size_t>(std::ranges::find(columns, index) - columns.begin());
    if (place == columns.size()) {
        return;
    }
    std::vector<int> widths;
    std::vector<int> least;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const bool shares = place + 1 == columns.size() ? i < place : i > place;
        widths.push_back(sectionSize(columns[i]));
        least.push_back(shares ? std::max(captionWidth(columns[i]), leastWidth(columns[i])) : 0);
    }
    std::vector<double> weights = weightsOf(columns);
    grid::fitColumn(weights, widths, place, std::max(width, captionWidth(index)), least);
    setWeights(columns, weights);
}

std::vector<int> FittedHeader::hiddenByUser() const {
    std::vector<int> hidden;
    for (int index = 0; index < count(); ++index) {
        if (column(index).isHiddenByUser()) {
            hidden.push_back(index);
        }
    }
    return hidden;
}

bool FittedHeader::canHide(int index) const {
    return index >= 0 && !isSectionHidden(index) && visibleColumns().size() > 1;
}

void FittedHeader::setColumnHidden(int index, bool hidden) {
    if (hidden ? canHide(index) : column(index).isHiddenByUser()) {
        columns_[static_cast<std::size_t>(index)]->setHiddenByUser(hidden);
        hideSections();
        applyWeights();
        emit hiddenColumnsChanged();
    }
}

bool FittedHeader::hasInitialLayout() const {
    for (int index = 0; index < count(); ++index) {
        if (column(index).isHiddenByUser() || visualIndex(index) != index ||
            weights_[static_cast<std::size_t>(index)] != column(index).designWidth()) {
            return false;
        }
    }
    return true;
}

void FittedHeader::restoreInitialLayout() {
    const bool hadHidden = !hiddenByUser().empty();
    {
        const QScopedValueRollback applying(applying_, true);
        for (int index = 0; index < count(); ++index) {
            columns_[static_cast<std::size_t>(index)]->setHiddenByUser(false);
            weights_[static_cast<std::size_t>(index)] = column(index).designWidth();
            moveSection(visualIndex(index), index);
        }
    }
    hideSections();
    applyWeights();
    if (hadHidden) {
        emit hiddenColumnsChanged();
    }
}

bool FittedHeader::marksFitBeside(int index, int width, int marksWidth) const {
    const QString& text = column(index).headerText();
    const int narrower = width - marksWidth;
    return narrower > 0 && !isCellTextCut(text, narrower, font()) &&
           cellTextHeight(text, narrower, font()) == cellTextHeight(text, width, font());
}

int FittedHeader::fittedHeight() const {
    int height = 0;
    for (const int index : visibleColumns()) {
        const int width = sectionSize(index);
        const int marks = widestMarks(index);
        const bool areBeneath = marks > 0 && !marksFitBeside(index, width, marks);
        height = std::max(height, cellTextHeight(column(index).headerText(), width, font()) +
                                      (areBeneath ? marksHeight : 0));
    }
    return height + 2 * cellTextPaddingY;
}

FittedHeader::Parts FittedHeader::partsOf(int index, const QRect& section, int marksWidth) const {
    const QRect text = section.adjusted(0, cellTextPaddingY, 0, 0);
    const int left = std::max(section.left(), section.right() + 1 - marksWidth);
    if (marksWidth == 0 || marksFitBeside(index, section.width(), marksWidth)) {
        return {text.adjusted(0, 0, -marksWidth, 0), {left, section.top(), marksWidth, section.height()}};
    }
    return {text, {left, section.bottom() + 1 - marksHeight, section.right() + 1 - left, marksHeight}};
}

QRect FittedHeader::sectionRect(int index) const {
    return {sectionViewportPosition(index), 0, sectionSize(index), height()};
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

bool FittedHeader::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip) {
        return QHeaderView::viewportEvent(event);
    }
    const auto& help = static_cast<const QHelpEvent&>(*event);
    const int index = logicalIndexAt(help.pos());
    const QRect section = index < 0 ? QRect() : sectionRect(index);
    showCutTextTip(help, *viewport(),
                   section.isEmpty() ? section : partsOf(index, section, marksWidth(index)).text,
                   index < 0 ? QString() : column(index).headerText());
    return true;
}

void FittedHeader::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        press_.emplace(event->position(), weights_);
        // The keys go to whatever has the focus, never to the header.
        qApp->installEventFilter(this);
    }
    QHeaderView::mousePressEvent(event);
}

void FittedHeader::mouseMoveEvent(QMouseEvent* event) {
    QHeaderView::mouseMoveEvent(event);
    if (press_) {
        const qreal way = std::abs(event->position().x() - press_->place.x());
        press_->isDrag =
            press_->isDrag || way >= QApplication::startDragDistance() || weights_ != press_->weights;
    }
}

void FittedHeader::mouseReleaseEvent(QMouseEvent* event) {
    qApp->removeEventFilter(this);
    press_.reset();
    QHeaderView::mouseReleaseEvent(event);
}

void FittedHeader::contextMenuEvent(QContextMenuEvent* event) {
    emit menuRequested(logicalIndexAt(event->pos()), event->globalPos());
}

bool FittedHeader::eventFilter(QObject* watched, QEvent* event) {
    const bool isEscape =
        event->type() == QEvent::KeyPress && static_cast<const QKeyEvent*>(event)->key() == Qt::Key_Escape;
    if (isEscape && press_ && press_->isDrag) {
        cancelDrag();
        return true;
    }
    return QHeaderView::eventFilter(watched, event);
}

void FittedHeader::cancelDrag() {
    const Press press = *std::exchange(press_, std::nullopt);
    qApp->removeEventFilter(this);
    // What is dropped where it was taken changes nothing.
    const auto mouse = [&](QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons held) {
        return QMouseEvent(type, press.place, viewport()->mapToGlobal(press.place), button, held,
                           Qt::NoModifier);
    };
    QMouseEvent back = mouse(QEvent::MouseMove, Qt::NoButton, Qt::LeftButton);
    QHeaderView::mouseMoveEvent(&back);
    QMouseEvent drop = mouse(QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton);
    QHeaderView::mouseReleaseEvent(&drop);
    weights_ = press.weights;
    applyWeights();
}

} // namespace grid
