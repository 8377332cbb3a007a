// SPDX-License-Identifier: MIT

#include "grid/table/table_view.h"

#include "db/data_set.h"
#include "db/data_source.h"
#include "grid/rows/column.h"
#include "grid/table/filter_popup.h"
#include "grid/table/table_accessibility.h"
#include "grid/table/table_footer.h"
#include "grid/table/table_header.h"
#include "grid/view/menu.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QScreen>

#include <algorithm>

namespace grid {

namespace {

constexpr QKeyCombination filterKey = Qt::ALT | Qt::Key_Down;

QColor mixed(const QColor& first, const QColor& second, double share) {
    const auto mix = [share](int one, int other) { return qRound(one * share + other * (1 - share)); };
    return {mix(first.red(), second.red()), mix(first.green(), second.green()),
            mix(first.blue(), second.blue())};
}

} // namespace

TableView::TableView(const GridSpec& spec, db::DataSource& dataSource, QWidget* parent) : RowView(parent) {
    installTableAccessibility();
    setObjectName(spec.view.toString());

    db::DataSet& dataSet = dataSource.dataSet();
    model_ = new TableModel(dataSet, makeColumns(spec.columns, dataSet, this), this);
    const auto footer = std::ranges::find(spec.columns, spec.footerField, &ColumnSpec::field);
    const auto place = static_cast<int>(footer - spec.columns.begin());
    auto* const header = new TableHeader(*model_, this);
    footer_ = new TableFooter(*model_, *header, footer == spec.columns.end() ? -1 : place, this);
    header->setObjectName(objectName() + QStringLiteral("Header"));
    footer_->setObjectName(objectName() + QStringLiteral("Footer"));

    tableHeader_ = header;
    assemble(*model_, *header, footer_, dataSet);
    // Where a filter hides the dataset's current row, the first shown row becomes current.
    connect(model_, &TableModel::modelReset, this, [this] {
        if (!currentIndex().isValid()) {
            goToFirstRow();
        }
    });
    // After the model's, which has laid out the rows by then.
    connect(&dataSet, &db::DataSet::rowsArrived, this, &TableView::paintArrived);
    connect(model_, &TableModel::arrangementChanged, this, &TableView::announceArrangement);
    connect(header, &TableHeader::filterRequested, this, &TableView::openFilter);
}

/// No event is handled while rows come, so nothing would be painted by itself. Repainting the footer takes
/// along whatever else of the window has been marked for painting.
void TableView::paintArrived() {
    const bool isSeen = !viewport()->visibleRegion().isEmpty() && !window()->isMinimized();
    if (isSeen && rowCount() > 0) {
        footer_->repaint();
    }
}

/// Tells assistive technology of the marks in the header, whose sections are the first children of the table.
void TableView::announceArrangement() {
    for (std::size_t section = 0; section < header().visibleColumns().size(); ++section) {
        QAccessibleEvent event(this, QAccessible::DescriptionChanged);
        event.setChild(static_cast<int>(section));
        QAccessible::updateAccessibility(&event);
    }
}

QItemSelection TableView::selectionOf(int first, int last) const {
    return {indexOf(first, 0), indexOf(last, model_->columnCount() - 1)};
}

std::vector<TextRange> TableView::marksIn(int row, int column) const {
    const db::Field* const field = model_->column(column).field();
    return marked_ && field ? marked_->marksIn(cellView(model_->dataSet().rows(), dataSetRow(row), *field),
                                               field->fractionDigits())
                            : std::vector<TextRange>();
}

RowView::RowColors TableView::rowColors(int row) const {
    const auto color = [this](QPalette::ColorRole role) { return palette().color(QPalette::Active, role); };
    const bool isSelected = isRowSelected(row);
    if (isSelected && hasFocus()) {
        return {color(QPalette::Highlight), color(QPalette::HighlightedText)};
    }
    const bool isTinted = isSelected || row == currentRow();
    return {isTinted ? mixed(color(QPalette::Highlight), color(QPalette::Base), 0.25) : QColor(),
            color(QPalette::Text)};
}

QString TableView::emptyText() const {
    if (!model_->dataSet().isOpen()) {
        return {};
    }
    return model_->dataSet().rowCount() == 0 ? QStringLiteral("Строк нет")
                                             : QStringLiteral("Фильтр не оставляет ни одной строки");
}

std::vector<const Column*> TableView::visibleColumns() const {
    std::vector<const Column*> columns;
    for (const int column : header().visibleColumns()) {
        columns.push_back(&model_->column(column));
    }
    return columns;
}

const Column* TableView::footerColumn() const {
    return footer_->column() < 0 ? nullptr : &model_->column(footer_->column());
}

void TableView::setMarkedText(const QString& words) {
    TextMatcher matcher(words);
    marked_ = matcher.isEmpty() ? std::nullopt : std::optional(std::move(matcher));
    viewport()->update();
}

void TableView::goTo(CellPlace place) {
    makeCurrent(indexOf(place.row, place.column), Qt::NoModifier);
    // It may have been current before, but out of view.
    scrollTo(currentIndex());
}

void TableView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    RowView::selectionChanged(selected, deselected);
    std::vector<RowStretch> stretches;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        stretches.push_back({range.top(), range.bottom()});
    }
    footer_->setSelection(std::move(stretches));
}

void TableView::keyPressEvent(QKeyEvent* event) {
    const bool isFilterKey = event->key() == filterKey.key() &&
                             (event->modifiers() & ~Qt::KeypadModifier) == filterKey.keyboardModifiers();
    if (isFilterKey) {
        openFilter(focusColumn());
    } else {
        RowView::keyPressEvent(event);
    }
}

void TableView::addCellEntries(QMenu& menu, const QModelIndex& cell) {
    const bool hasValue = cell.isValid() && model_->column(cell.column()).field();
    const CellValue value = hasValue ? model_->value(cell.row(), cell.column()) : CellValue();
    const QString words = quotedForMenu(hasValue ? model_->text(cell.row(), cell.column()) : QString());
    const int column = cell.column();
    addEntry(menu, QStringLiteral("Оставить только ") + words, {}, hasValue,
             [=, this] { showOnly(column, value); });
    addEntry(menu, QStringLiteral("Скрыть ") + words, {}, hasValue, [=, this] { hideValue(column, value); });
    addEntry(menu, QStringLiteral("Сбросить фильтр"), {}, !model_->filters().empty(),
             [this] { model_->clearFilters(); });
}

void TableView::addColumnEntries(QMenu& menu, int column) {
    addEntry(menu, QStringLiteral("Фильтр…"), filterKey, column >= 0 && model_->column(column).field(),
             [=, this] { openFilter(column); });
    addEntry(menu, QStringLiteral("Снять фильтр столбца"), {}, model_->filters().contains(column),
             [=, this] { model_->setFilter(column, {}); });
}

void TableView::showOnly(int column, const CellValue& value) {
    ColumnFilter filter;
    filter.rule = ColumnFilter::Values::Only;
    filter.values = {value};
    model_->setFilter(column, std::move(filter));
}

void TableView::hideValue(int column, const CellValue& value) {
    leaveValue(column, value);
    ColumnFilter filter = filterOf(column);
    if (filter.rule == ColumnFilter::Values::Only) {
        filter.values.erase(value);
    } else {
        filter.rule = ColumnFilter::Values::AllBut;
        filter.values.insert(value);
    }
    model_->setFilter(column, std::move(filter));
}

/// Goes on to the next row with another value in the column, or to the one before: those with it will be
/// hidden.
void TableView::leaveValue(int column, const CellValue& value) {
    const auto hasOther = [&](int row) { return model_->value(row, column) != value; };
    const int start = std::max(0, currentRow());
    int row = start;
    while (row < rowCount() && !hasOther(row)) {
        ++row;
    }
    for (row = row < rowCount() ? row : start; row > 0 && !hasOther(row); --row) {
    }
    makeCurrent(indexOf(row, focusColumn()), Qt::NoModifier);
}

ColumnFilter TableView::filterOf(int column) const {
    const auto found = model_->filters().find(column);
    return found == model_->filters().end() ? ColumnFilter() : found->second;
}

void TableView::openFilter(int column) {
    const Column& source = model_->column(column);
    if (!source.field() || !model_->dataSet().isOpen()) {
        return;
    }
    const ColumnFilter present = filterOf(column);
    const bool comparesNumbers = present.condition || takesConditions(model_->dataSet(), *source.field());
    auto* const popup = new FilterPopup(source, model_->valuesToFilter(column), present, comparesNumbers,
                                        model_->decimalPoint(), this);
    connect(popup, &FilterPopup::accepted, this,
            [this, column](const ColumnFilter& filter) { model_->setFilter(column, filter); });
    // Straight to the header, which goes before a popup that is destroyed with the view.
    connect(popup, &QObject::destroyed, tableHeader_, &TableHeader::followPointer);

    const QRect free = screen()->availableGeometry();
    popup->adjustSize();
    QPoint place = header().mapToGlobal(QPoint(header().sectionViewportPosition(column), header().height()));
    place.setX(std::clamp(place.x(), free.left(), std::max(free.left(), free.right() + 1 - popup->width())));
    place.setY(std::min(place.y(), std::max(free.top(), free.bottom() + 1 - popup->height())));
    popup->move(place);
    popup->show();
}

} // namespace grid
