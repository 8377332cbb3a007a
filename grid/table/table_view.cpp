#include "grid/table/table_view.h"

#include "base/text.h"
#include "db/data_set.h"
#include "db/data_source.h"
#include "grid/rows/column.h"
#include "grid/rows/table_model.h"
#include "grid/table/filter_popup.h"
#include "grid/table/table_accessibility.h"
#include "grid/table/table_footer.h"
#include "grid/table/table_header.h"
#include "grid/view/cell_text.h"
#include "grid/view/cut_text_tip.h"

#include <QApplication>
#include <QClipboard>
#include <QHelpEvent>
#include <QScopedValueRollback>
#include <QScreen>
#include <QScrollBar>

#include <algorithm>

namespace grid {
namespace {

/// Values that a filter offers for choosing one by one.
constexpr std::size_t filterValueLimit = 1000;

} // namespace

TableView::TableView(const GridSpec& spec, db::DataSource& dataSource, QWidget* parent)
    : QAbstractItemView(parent),
      keyField_(base::toQString(spec.keyField)),
      layout_([this](int row) { return measureRow(row); }) {
    installTableAccessibility();
    setObjectName(base::toQString(spec.view));
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

    connect(tableModel_, &TableModel::modelAboutToBeReset, this, [this] { replacingRows_ = true; });
    connect(tableModel_, &TableModel::modelReset, this, &TableView::rowsReplaced);
    connect(tableModel_, &TableModel::arrangementChanged, this, &TableView::updateGeometries);
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
    replacingRows_ = false;
    layout_.reset(tableModel_->rowCount());
    anchorRow_ = -1;
    adjustScrollBar(*verticalScrollBar(), layout_);
    viewport()->update();
    followDataSet();
    // Where a filter hides the dataset's current row, the first shown row becomes current.
    if (!currentIndex().isValid()) {
        goToFirstRow();
    }
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
    arrangeForWidth(*viewport(), [this](int width) {
        header_->fitWidth(width);
        const int headerHeight = header_->fittedHeight();
        const int footerHeight = footer_->sizeHint().height();
        setViewportMargins(0, headerHeight, 0, footerHeight);
        const QRect area = viewport()->geometry();
        header_->setGeometry(area.left(), area.top() - headerHeight, width, headerHeight);
        footer_->setGeometry(area.left(), area.bottom() + 1, width, footerHeight);
        layout_.setViewportHeight(area.height());
        adjustScrollBar(*verticalScrollBar(), layout_);
    });
    QAbstractItemView::updateGeometries();
}

void TableView::resizeEvent(QResizeEvent* event) {
    QAbstractItemView::resizeEvent(event);
    updateGeometries();
}

void TableView::scrollContentsBy(int, int) {
    const int value = verticalScrollBar()->value();
    if (value != layout_.scrollValue()) {
        scrollToPosition(layout_.positionAt(value));
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
    verticalScrollBar()->setValue(layout_.scrollValue());
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

void TableView::followDataSet() {
    // Another view may move the dataset on before this one's rows are there.
    if (replacingRows_) {
        return;
    }
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
    auto* const popup =
        new FilterPopup(source, distinctValues(dataSet, *source.field(), present.values, filterValueLimit),
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

} // namespace grid
