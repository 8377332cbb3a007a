#include "grid/table_view.h"

#include "db/data_set.h"
#include "grid/cell_text.h"
#include "grid/column.h"
#include "grid/cut_text_tip.h"
#include "grid/data_source.h"
#include "grid/filter_popup.h"
#include "grid/table_accessibility.h"
#include "grid/table_footer.h"
#include "grid/table_header.h"
#include "grid/table_model.h"

#include <QApplication>
#include <QClipboard>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScreen>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>

namespace grid {
namespace {

constexpr QRgb gridLineColor = qRgb(192, 192, 192);
/// Values that a filter offers for choosing one by one.
constexpr std::size_t filterValueLimit = 1000;
/// Milliseconds between two rows while a selection is drawn beyond the edge.
constexpr int dragScrollInterval = 40;

QString toQString(std::u16string_view text) {
    return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

QColor mixed(const QColor& first, const QColor& second, double share) {
    const auto mix = [share](int one, int other) { return qRound(one * share + other * (1 - share)); };
    return {mix(first.red(), second.red()), mix(first.green(), second.green()),
            mix(first.blue(), second.blue())};
}

} // namespace

TableView::TableView(const GridSpec& spec, DataSource& dataSource, QWidget* parent)
    : QAbstractItemView(parent),
      keyField_(toQString(spec.keyField)),
      layout_([this](int row) { return measureRow(row); }) {
    installTableAccessibility();
    setObjectName(toQString(spec.view));
    setAccessibleName(objectName());
    setFrameShape(NoFrame);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(ExtendedSelection);
    setSelectionBehavior(SelectRows);
    setTabKeyNavigation(false);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(ScrollPerItem);

    db::DataSet& dataSet = dataSource.dataSet();
    std::vector<Column*> columns;
    int footerColumn = -1;
    for (const ColumnSpec& column : spec.columns) {
        if (!spec.footerField.empty() && column.field == spec.footerField) {
            footerColumn = static_cast<int>(columns.size());
        }
        columns.push_back(new Column(column, dataSet, this));
    }
    tableModel_ = new TableModel(dataSet, std::move(columns), this);
    setModel(tableModel_);
    header_ = new TableHeader(*tableModel_, this);
    footer_ = new TableFooter(*tableModel_, *header_, footerColumn, this);
    header_->setObjectName(objectName() + QStringLiteral("Header"));
    footer_->setObjectName(objectName() + QStringLiteral("Footer"));

    connect(tableModel_, &TableModel::modelReset, this, &TableView::rowsReplaced);
    connect(tableModel_, &TableModel::arrangementChanged, this, [this] {
        // A filter that hides the dataset's current row makes the first shown row current.
        if (!currentIndex().isValid()) {
            goToFirstRow();
        }
        updateGeometries();
    });
    connect(&dataSet, &db::DataSet::currentRowChanged, this, &TableView::followDataSet);
    connect(header_, &TableHeader::layoutChanged, this, &TableView::columnsLaidOut);
    connect(header_, &TableHeader::filterRequested, this, &TableView::openFilter);
    rowsReplaced();
}

std::vector<const Column*> TableView::visibleColumns() const {
    std::vector<const Column*> columns;
    for (const int column : header_->visibleColumns()) {
        columns.push_back(&tableModel_->column(column));
    }
    return columns;
}

const Column* TableView::footerColumn() const {
    return footer_->column() < 0 ? nullptr : &tableModel_->column(footer_->column());
}

int TableView::footerCount() const {
    return tableModel_->rowCount();
}

// ---- rows and columns in the viewport

int TableView::measureRow(int row) const {
    int height = cellText::height(QString(), 1, font());
    for (const int index : header_->visibleColumns()) {
        const Column& column = tableModel_->column(index);
        if (column.field() && !column.field()->isNumber()) {
            height =
                std::max(height, cellText::height(tableModel_->text(row, index), column.width(), font()));
        }
    }
    return height + 1; // the line below
}

void TableView::rowsReplaced() {
    layout_.reset(tableModel_->rowCount());
    anchorRow_ = -1;
    updateScrollBar();
    viewport()->update();
    followDataSet();
}

void TableView::columnsLaidOut() {
    layout_.reset(tableModel_->rowCount());
    if (!fitting_) {
        updateGeometries();
    }
    viewport()->update();
}

void TableView::doItemsLayout() {
    layout_.reset(tableModel_->rowCount());
    QAbstractItemView::doItemsLayout();
}

void TableView::updateGeometries() {
    if (fitting_ || !footer_) {
        return;
    }
    const QScopedValueRollback guard(fitting_, true);
    header_->fitWidth(viewport()->width());
    const int headerHeight = header_->fittedHeight();
    const int footerHeight = footer_->sizeHint().height();
    setViewportMargins(0, headerHeight, 0, footerHeight);
    const QRect area = viewport()->geometry();
    header_->setGeometry(area.left(), area.top() - headerHeight, area.width(), headerHeight);
    footer_->setGeometry(area.left(), area.bottom() + 1, area.width(), footerHeight);
    layout_.setViewportHeight(area.height());
    updateScrollBar();
    QAbstractItemView::updateGeometries();
}

void TableView::resizeEvent(QResizeEvent* event) {
    QAbstractItemView::resizeEvent(event);
    updateGeometries();
}

// A last row that is taller than the viewport gets a value of its own, for its end.
int TableView::scrollBarValue() const {
    const ScrollPosition top = layout_.top();
    return top.row + (top.offset > 0 && top == layout_.lastPosition() ? 1 : 0);
}

void TableView::updateScrollBar() {
    const ScrollPosition last = layout_.lastPosition();
    verticalScrollBar()->setSingleStep(1);
    verticalScrollBar()->setPageStep(std::max(1, static_cast<int>(layout_.shownRows().size()) - 1));
    verticalScrollBar()->setRange(0, last.row + (last.offset > 0 ? 1 : 0));
    verticalScrollBar()->setValue(scrollBarValue());
}

void TableView::scrollContentsBy(int, int) {
    const int value = verticalScrollBar()->value();
    if (value != scrollBarValue()) {
        const ScrollPosition last = layout_.lastPosition();
        scrollToPosition(value > last.row ? last : ScrollPosition{value, 0});
    }
}

void TableView::scrollToPosition(ScrollPosition position) {
    const std::vector<ShownRow> before = layout_.shownRows();
    layout_.setTop(position);
    const auto stillShown =
        std::ranges::find_if(before, [this](const ShownRow& shown) { return layout_.shown(shown.row); });
    if (stillShown == before.end()) {
        viewport()->update();
    } else if (const int shift = layout_.shown(stillShown->row)->y - stillShown->y; shift != 0) {
        viewport()->scroll(0, shift);
    }
    verticalScrollBar()->setValue(scrollBarValue());
}

bool TableView::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip) {
        return QAbstractItemView::viewportEvent(event);
    }
    const auto& help = static_cast<const QHelpEvent&>(*event);
    const QModelIndex index = indexAt(help.pos());
    showCutTextTip(help, *viewport(), visualRect(index),
                   index.isValid() ? tableModel_->text(index.row(), index.column()) : QString());
    return true;
}

QRect TableView::visualRect(const QModelIndex& index) const {
    const ShownRow* const shown = index.isValid() ? layout_.shown(index.row()) : nullptr;
    if (!shown || isIndexHidden(index)) {
        return {};
    }
    return {header_->sectionViewportPosition(index.column()), shown->y, header_->sectionSize(index.column()),
            shown->height};
}

QModelIndex TableView::indexAt(const QPoint& point) const {
    const int row = layout_.rowAt(point.y());
    const int column = header_->logicalIndexAt(point.x());
    return row < 0 || column < 0 || point.y() < 0 ? QModelIndex() : tableModel_->index(row, column);
}

/// The cell at a point that may lie outside of the viewport.
QModelIndex TableView::indexNear(const QPoint& point) const {
    const std::vector<ShownRow>& rows = layout_.shownRows();
    if (rows.empty()) {
        return {};
    }
    const int row = layout_.rowAt(std::max(0, std::min(point.y(), viewport()->height() - 1)));
    const int column = header_->logicalIndexAt(std::clamp(point.x(), 0, viewport()->width() - 1));
    return tableModel_->index(row < 0 ? rows.back().row : row, column < 0 ? startColumn() : column);
}

bool TableView::isIndexHidden(const QModelIndex& index) const {
    return header_->isSectionHidden(index.column());
}

void TableView::scrollTo(const QModelIndex& index, ScrollHint hint) {
    if (!index.isValid()) {
        return;
    }
    if (hint == PositionAtTop) {
        scrollToPosition({index.row(), 0});
    } else if (hint == PositionAtBottom) {
        scrollToPosition(layout_.positionEndingWith(index.row()));
    } else if (hint == PositionAtCenter && !layout_.shown(index.row())) {
        const ScrollPosition atBottom = layout_.positionEndingWith(index.row());
        scrollToPosition({(atBottom.row + index.row()) / 2, 0});
    } else {
        scrollToPosition(layout_.positionShowing(index.row()));
    }
}

// ---- current row and selection

void TableView::followDataSet() {
    const int row = tableModel_->rowOfDataSetRow(tableModel_->dataSet().currentRow());
    if (row == currentIndex().row()) {
        return;
    }
    const QScopedValueRollback guard(following_, true);
    selectionModel()->setCurrentIndex(tableModel_->index(row, startColumn()),
                                      QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    anchorRow_ = row;
}

void TableView::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QAbstractItemView::currentChanged(current, previous);
    updateRow(previous.row());
    updateRow(current.row());
    if (!current.isValid()) {
        return;
    }
    focusColumn_ = current.column();
    if (!following_) {
        tableModel_->dataSet().moveTo(tableModel_->dataSetRow(current.row()));
    }
    reportFocusedCell(*this);
}

void TableView::updateRow(int row) {
    if (const ShownRow* const shown = layout_.shown(row)) {
        viewport()->update(0, shown->y, viewport()->width(), shown->height);
    }
}

/// The column in focus, or the first one.
int TableView::startColumn() const {
    const std::vector<int> columns = header_->visibleColumns();
    if (std::ranges::find(columns, focusColumn_) != columns.end()) {
        return focusColumn_;
    }
    return columns.empty() ? -1 : columns.front();
}

void TableView::goToFirstRow() {
    if (tableModel_->rowCount() > 0) {
        makeCurrent(tableModel_->index(0, startColumn()), Qt::NoModifier);
        scrollToPosition({0, 0});
    }
}

void TableView::makeCurrent(const QModelIndex& index, Qt::KeyboardModifiers modifiers) {
    if (!index.isValid()) {
        return;
    }
    constexpr auto rows = QItemSelectionModel::Rows;
    if (modifiers & Qt::ShiftModifier) {
        const int anchor = anchorRow_ < 0 ? std::max(0, currentIndex().row()) : anchorRow_;
        selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
        const QItemSelection range(tableModel_->index(std::min(anchor, index.row()), index.column()),
                                   tableModel_->index(std::max(anchor, index.row()), index.column()));
        selectionModel()->select(range, QItemSelectionModel::ClearAndSelect | rows);
        anchorRow_ = anchor;
        return;
    }
    anchorRow_ = index.row();
    selectionModel()->setCurrentIndex(index,
                                      modifiers & Qt::ControlModifier
                                          ? QItemSelectionModel::SelectionFlags(QItemSelectionModel::NoUpdate)
                                          : QItemSelectionModel::ClearAndSelect | rows);
}

void TableView::setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command) {
    const QModelIndex first = indexNear(rect.normalized().topLeft());
    const QModelIndex last = indexNear(rect.normalized().bottomRight());
    if (first.isValid() && last.isValid()) {
        selectionModel()->select(QItemSelection(first, last), command);
    }
}

QRegion TableView::visualRegionForSelection(const QItemSelection& selection) const {
    QRegion region;
    for (const ShownRow& shown : layout_.shownRows()) {
        const bool isTouched = std::ranges::any_of(selection, [&](const QItemSelectionRange& range) {
            return range.top() <= shown.row && shown.row <= range.bottom();
        });
        if (isTouched) {
            region += QRect(0, shown.y, viewport()->width(), shown.height);
        }
    }
    return region;
}

std::vector<RowRange> TableView::selectedRanges() const {
    std::vector<RowRange> ranges;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        ranges.push_back({range.top(), range.bottom()});
    }
    if (ranges.empty() && currentIndex().isValid()) {
        ranges.push_back({currentIndex().row(), currentIndex().row()});
    }
    std::ranges::sort(ranges, {}, &RowRange::first);
    return ranges;
}

void TableView::copySelection() const {
    const std::vector<RowRange> ranges = selectedRanges();
    if (!ranges.empty()) {
        QApplication::clipboard()->setText(clipboardText(*tableModel_, header_->visibleColumns(), ranges));
    }
}

// ---- search and filter

void TableView::setMarkedText(const QString& text) {
    marked_.reset();
    if (!text.isEmpty()) {
        marked_.emplace(text, tableModel_->decimalPoint());
    }
    viewport()->update();
}

bool TableView::findMarked(bool forward, bool includeCurrent) {
    const std::vector<int> columns = header_->visibleColumns();
    const auto width = static_cast<std::int64_t>(columns.size());
    const std::int64_t total = tableModel_->rowCount() * width;
    if (!marked_ || total == 0) {
        return false;
    }
    const int step = forward ? 1 : -1;
    std::int64_t place = forward ? -1 : total;
    if (const QModelIndex current = currentIndex(); current.isValid()) {
        place = current.row() * width + (std::ranges::find(columns, startColumn()) - columns.begin());
        place -= includeCurrent ? step : 0;
    }
    for (std::int64_t seen = 0; seen < total; ++seen) {
        place = (place + step + total) % total;
        const int row = static_cast<int>(place / width);
        const int column = columns[static_cast<std::size_t>(place % width)];
        const db::Field* const field = tableModel_->column(column).field();
        if (field && marked_->findIn(tableModel_->dataSet(), tableModel_->dataSetRow(row), *field)) {
            makeCurrent(tableModel_->index(row, column), Qt::NoModifier);
            return true;
        }
    }
    return false;
}

void TableView::openFilter(int column) {
    const Column& source = tableModel_->column(column);
    if (!source.field()) {
        return;
    }
    const db::DataSet& dataSet = tableModel_->dataSet();
    const auto found = tableModel_->filters().find(column);
    const ColumnFilter present = found == tableModel_->filters().end() ? ColumnFilter() : found->second;
    auto* const popup = new FilterPopup(source, distinctValues(dataSet, *source.field(), filterValueLimit),
                                        present, tableModel_->decimalPoint(), this);
    connect(popup, &FilterPopup::accepted, this,
            [this, column](const ColumnFilter& filter) { tableModel_->setFilter(column, filter); });

    const QRect free = screen()->availableGeometry();
    popup->adjustSize();
    QPoint place = header_->mapToGlobal(QPoint(header_->sectionViewportPosition(column), header_->height()));
    place.setX(std::clamp(place.x(), free.left(), std::max(free.left(), free.right() + 1 - popup->width())));
    place.setY(std::min(place.y(), std::max(free.top(), free.bottom() + 1 - popup->height())));
    popup->move(place);
    popup->show();
}

// ---- keyboard, mouse, wheel

QModelIndex TableView::neighbour(const QModelIndex& index, int columnStep) const {
    const int last = header_->count() - 1;
    int visual = header_->visualIndex(index.column()) + columnStep;
    while (visual >= 0 && visual <= last && header_->isSectionHidden(header_->logicalIndex(visual))) {
        visual += columnStep;
    }
    return visual < 0 || visual > last ? index : index.siblingAtColumn(header_->logicalIndex(visual));
}

QModelIndex TableView::moveCursor(CursorAction action, Qt::KeyboardModifiers) {
    const int lastRow = tableModel_->rowCount() - 1;
    const QModelIndex current = currentIndex();
    if (!current.isValid()) {
        return tableModel_->index(lastRow < 0 ? -1 : 0, startColumn());
    }
    const auto toRow = [&](int row) { return current.siblingAtRow(std::clamp(row, 0, lastRow)); };
    switch (action) {
    case MoveUp:
    case MovePrevious:
        return toRow(current.row() - 1);
    case MoveDown:
    case MoveNext:
        return toRow(current.row() + 1);
    case MoveLeft:
        return neighbour(current, -1);
    case MoveRight:
        return neighbour(current, 1);
    case MoveHome:
        return toRow(0);
    case MoveEnd:
        return toRow(lastRow);
    case MovePageUp:
        return toRow(layout_.rowOnePageFrom(current.row(), false));
    case MovePageDown:
        return toRow(layout_.rowOnePageFrom(current.row(), true));
    }
    return current;
}

/// Shows more of a row that is taller than the viewport; false when its end on that side is in view already.
bool TableView::scrollWithin(int row, bool down, int pixels) {
    const ShownRow* const shown = layout_.shown(row);
    if (!shown || shown->height <= viewport()->height()) {
        return false;
    }
    const int hidden = down ? shown->y + shown->height - viewport()->height() : -shown->y;
    if (hidden <= 0) {
        return false;
    }
    const int step = std::min(hidden, pixels);
    scrollToPosition({row, std::max(0, -shown->y + (down ? step : -step))});
    return true;
}

void TableView::keyPressEvent(QKeyEvent* event) {
    struct Move {
        int key;
        CursorAction action;
    };
    static constexpr Move moves[] = {
        {Qt::Key_Up, MoveUp},         {Qt::Key_Down, MoveDown},         {Qt::Key_Left, MoveLeft},
        {Qt::Key_Right, MoveRight},   {Qt::Key_Home, MoveHome},         {Qt::Key_End, MoveEnd},
        {Qt::Key_PageUp, MovePageUp}, {Qt::Key_PageDown, MovePageDown},
    };
    if (event->matches(QKeySequence::Copy)) {
        copySelection();
    } else if (event->key() == Qt::Key_Down && event->modifiers() & Qt::AltModifier) {
        openFilter(startColumn());
    } else if (event->key() == Qt::Key_Space && event->modifiers() & Qt::ControlModifier) {
        selectionModel()->select(currentIndex(), QItemSelectionModel::Toggle | QItemSelectionModel::Rows);
    } else if (const auto* const move = std::ranges::find(moves, event->key(), &Move::key);
               move != std::end(moves)) {
        const bool isPage = move->action == MovePageUp || move->action == MovePageDown;
        const bool down = move->action == MoveDown || move->action == MovePageDown;
        if (isPage || move->action == MoveUp || move->action == MoveDown) {
            const int height = viewport()->height();
            if (scrollWithin(currentIndex().row(), down, std::max(1, isPage ? height : height / 4))) {
                return;
            }
        }
        const bool leavesSelection =
            event->modifiers() & Qt::ControlModifier && (move->action == MoveUp || move->action == MoveDown);
        makeCurrent(moveCursor(move->action, event->modifiers()),
                    event->modifiers() & (leavesSelection ? Qt::ControlModifier : Qt::ShiftModifier));
    } else {
        QAbstractItemView::keyPressEvent(event);
    }
}

// Typing does not search here; the search of the base class would walk through all rows.
void TableView::keyboardSearch(const QString&) {}

void TableView::mousePressEvent(QMouseEvent* event) {
    const QModelIndex index = indexAt(event->position().toPoint());
    if (event->button() != Qt::LeftButton || !index.isValid()) {
        return;
    }
    makeCurrent(index, event->modifiers());
    if (event->modifiers() & Qt::ControlModifier) {
        selectionModel()->select(index, QItemSelectionModel::Toggle | QItemSelectionModel::Rows);
    }
}

void TableView::mouseMoveEvent(QMouseEvent* event) {
    if (!(event->buttons() & Qt::LeftButton) || anchorRow_ < 0) {
        return;
    }
    const QPoint position = event->position().toPoint();
    if (viewport()->rect().contains(position)) {
        dragScroll_.stop();
        if (indexNear(position).row() != currentIndex().row()) {
            makeCurrent(indexNear(position), Qt::ShiftModifier);
        }
    } else if (!dragScroll_.isActive()) {
        dragScroll_.start(dragScrollInterval, this);
    }
}

void TableView::mouseReleaseEvent(QMouseEvent*) {
    dragScroll_.stop();
}

void TableView::timerEvent(QTimerEvent* event) {
    if (event->timerId() != dragScroll_.timerId()) {
        QAbstractItemView::timerEvent(event);
        return;
    }
    const int y = viewport()->mapFromGlobal(QCursor::pos()).y();
    if (y < 0 || y >= viewport()->height()) {
        makeCurrent(moveCursor(y < 0 ? MoveUp : MoveDown, Qt::NoModifier), Qt::ShiftModifier);
    }
}

void TableView::wheelEvent(QWheelEvent* event) {
    constexpr int notch = 120;
    wheelRest_ += event->angleDelta().y() * QApplication::wheelScrollLines();
    const int rows = wheelRest_ / notch;
    wheelRest_ -= rows * notch;
    if (rows != 0) {
        scrollToPosition(layout_.moved(layout_.top(), -rows));
    }
    event->accept();
}

void TableView::focusInEvent(QFocusEvent* event) {
    QAbstractItemView::focusInEvent(event);
    viewport()->update();
}

void TableView::focusOutEvent(QFocusEvent* event) {
    QAbstractItemView::focusOutEvent(event);
    viewport()->update();
}

// ---- painting

void TableView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    painter.setFont(font());
    painter.fillRect(event->rect(), palette().color(QPalette::Active, QPalette::Base));
    for (const ShownRow& shown : layout_.shownRows()) {
        if (event->region().intersects(QRect(0, shown.y, viewport()->width(), shown.height))) {
            drawRow(painter, shown, event->rect());
        }
    }
}

void TableView::drawRow(QPainter& painter, const ShownRow& shown, const QRect& exposed) const {
    // The disabled colours are left out: a grid is only ever disabled while it is exported.
    const QColor base = palette().color(QPalette::Active, QPalette::Base);
    const QColor highlight = palette().color(QPalette::Active, QPalette::Highlight);
    const bool isCurrent = shown.row == currentIndex().row();
    const bool isSelected = selectionModel()->isRowSelected(shown.row);
    const QRect row(0, shown.y, viewport()->width(), shown.height);
    QColor text = palette().color(QPalette::Active, QPalette::Text);
    if (isSelected && hasFocus()) {
        painter.fillRect(row, highlight);
        text = palette().color(QPalette::Active, QPalette::HighlightedText);
    } else if (isSelected || isCurrent) {
        painter.fillRect(row, mixed(highlight, base, 0.25));
    }

    const QPen linePen(QColor(gridLineColor), 0);
    for (const int column : header_->visibleColumns()) {
        const QRect cell(header_->sectionViewportPosition(column), shown.y, header_->sectionSize(column),
                         shown.height);
        if (!cell.intersects(exposed)) {
            continue;
        }
        painter.setPen(text);
        drawCell(painter, cell, shown.row, column);
        painter.setPen(linePen);
        painter.drawLine(cell.topRight(), cell.bottomRight());
        if (isCurrent && column == currentIndex().column() && hasFocus()) {
            painter.setPen(QPen(text, 1, Qt::DotLine));
            painter.drawRect(cell.adjusted(0, 0, -2, -2));
        }
    }
    painter.setPen(linePen);
    painter.drawLine(row.bottomLeft(), row.bottomRight());
}

void TableView::drawCell(QPainter& painter, const QRect& cell, int row, int columnIndex) const {
    const Column& column = tableModel_->column(columnIndex);
    if (!column.field()) {
        return;
    }
    std::optional<qsizetype> mark;
    if (marked_) {
        mark = marked_->findIn(tableModel_->dataSet(), tableModel_->dataSetRow(row), *column.field());
    }
    const qsizetype markEnd = mark ? *mark + marked_->length() : 0;
    cellText::draw(painter, cell, tableModel_->text(row, columnIndex), column.alignment(), mark.value_or(0),
                   markEnd);
}

} // namespace grid
