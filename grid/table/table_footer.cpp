// SPDX-License-Identifier: MIT

#include "grid/table/table_footer.h"

#include "db/data_set.h"
#include "grid/header/cell_text.h"
#include "grid/rows/column.h"
#include "grid/table/table_header.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStringList>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace grid {

TableFooter::TableFooter(const TableModel& model, const TableHeader& header, int column, QWidget* parent)
    : QWidget(parent), model_(model), header_(header), column_(column) {
    for (int index = 0; column_ >= 0 && index < model_.columnCount(); ++index) {
        const db::Field* const field = model_.column(index).field();
        if (field && field->isAmount() && model_.column(index).isVisible()) {
            summedColumns_.push_back(index);
        }
    }
    announcement_.setSingleShot(true);
    announcement_.setInterval(0);
    connect(&announcement_, &QTimer::timeout, this, &TableFooter::announce);
    connect(&model, &TableModel::modelReset, this, [this] {
        selection_.clear();
        follow();
    });
    connect(&model, &TableModel::rowsInserted, this, &TableFooter::follow);
    connect(&header, &TableHeader::layoutChanged, this, &TableFooter::follow);
    if (column_ >= 0) {
        setAccessibleDescription(QStringLiteral("Количество строк"));
    }
    announce();
}

void TableFooter::setSelection(std::vector<RowStretch> selection) {
    const bool isSeveral =
        selection.size() > 1 || (selection.size() == 1 && selection.front().first < selection.front().last);
    if (!isSeveral) {
        selection.clear();
    }
    // Whoever walks from row to row has one row selected all the time.
    if (isSeveral || !selection_.empty()) {
        selection_ = std::move(selection);
        follow();
    }
}

void TableFooter::follow() {
    sums_.reset();
    announcement_.start();
    update();
}

/// Tells assistive technology, which hears of a name only when it is another one.
void TableFooter::announce() {
    QStringList parts{text()};
    for (const int column : summedColumns_) {
        if (const QString shown = sum(column); !shown.isEmpty() && model_.column(column).isVisible()) {
            parts.append(model_.column(column).headerText() + QStringLiteral(": ") + shown);
        }
    }
    if (const QString name = parts.join(QStringLiteral("; ")); name != accessibleName()) {
        setAccessibleName(name);
    }
}

int TableFooter::column() const {
    const bool isHidden = column_ >= 0 && header_.isSectionHidden(column_);
    return isHidden ? header_.visibleColumns().front() : column_;
}

int TableFooter::selectedCount() const {
    int count = 0;
    for (const RowStretch& stretch : selection_) {
        count += stretch.count();
    }
    return count;
}

QString TableFooter::text() const {
    if (column_ < 0) {
        return {};
    }
    const int shown = model_.rowCount();
    if (!selection_.empty()) {
        return QStringLiteral("выделено %1 из %2").arg(selectedCount()).arg(shown);
    }
    return model_.filters().empty() || !model_.dataSet().isOpen()
               ? QString::number(shown)
               : QStringLiteral("%1 из %2").arg(shown).arg(model_.dataSet().rowCount());
}

QString TableFooter::sum(int column) const {
    const auto found = std::ranges::find(summedColumns_, column);
    if (selection_.empty() || found == summedColumns_.end()) {
        return {};
    }
    if (!sums_) {
        sums_ = model_.sums(summedColumns_, selection_);
    }
    return (*sums_)[static_cast<std::size_t>(found - summedColumns_.begin())];
}

QSize TableFooter::sizeHint() const {
    constexpr int frame = 2;
    return {0, fontMetrics().height() + 2 * (cellTextPaddingY + frame)};
}

/// What stands in the footer, from left to right.
std::vector<TableFooter::Item> TableFooter::items() const {
    std::vector<Item> items;
    const int countColumn = column();
    for (const int column : header_.visibleColumns()) {
        const QString shown = column == countColumn ? text() : sum(column);
        if (!shown.isEmpty()) {
            const QRect section(header_.sectionViewportPosition(column), 0, header_.sectionSize(column),
                                height());
            items.push_back({column, shown, section.adjusted(1, 2, -2, -2)});
        }
    }
    widen(items);
    return items;
}

/// Half a number would be another one: what its column is too narrow for takes the free room beside it, at
/// first on the side that its text does not lean on.
void TableFooter::widen(std::vector<Item>& items) const {
    for (std::size_t i = 0; i < items.size(); ++i) {
        QRect& place = items[i].place;
        const int leftEnd = i == 0 ? 1 : items[i - 1].place.right() + 2;
        const int rightEnd = i + 1 == items.size() ? width() - 2 : items[i + 1].place.left() - 2;
        int missing = std::max(0, cellTextWidth(items[i].text, font()) - place.width());
        const auto take = [&missing](int room) {
            const int taken = std::clamp(missing, 0, std::max(0, room));
            missing -= taken;
            return taken;
        };
        if (model_.column(items[i].column).alignment() & Qt::AlignRight) {
            place.setLeft(place.left() - take(place.left() - leftEnd));
            place.setRight(place.right() + take(rightEnd - place.right()));
        } else {
            place.setRight(place.right() + take(rightEnd - place.right()));
            place.setLeft(place.left() - take(place.left() - leftEnd));
        }
    }
}

/// The font, condensed where that lets the text fit: sums are longer than the prices above them.
QFont TableFooter::fontFor(const Item& item) const {
    QFont fitting = font();
    for (const int stretch : {100, 90, 80}) {
        fitting.setStretch(stretch);
        if (cellTextWidth(item.text, fitting) <= item.place.width()) {
            break;
        }
    }
    return fitting;
}

bool TableFooter::isCut(const Item& item) const {
    return cellTextWidth(item.text, fontFor(item)) > item.place.width();
}

void TableFooter::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Active, QPalette::Button));
    painter.setPen(QPen(palette().color(QPalette::Mid), 0));
    painter.drawLine(rect().topLeft(), rect().topRight());
    for (const Item& item : items()) {
        painter.setPen(QPen(palette().color(QPalette::Mid), 0));
        painter.drawRect(item.place);
        painter.setPen(palette().color(QPalette::Active, QPalette::ButtonText));
        painter.setFont(fontFor(item));
        drawCellText(painter, item.place, isCut(item) ? QStringLiteral("…") : item.text,
                     model_.column(item.column).alignment());
    }
}

bool TableFooter::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) {
        return QWidget::event(event);
    }
    const auto& help = static_cast<const QHelpEvent&>(*event);
    const std::vector<Item> shown = items();
    const auto pointed =
        std::ranges::find_if(shown, [&](const Item& item) { return item.place.contains(help.pos()); });
    const bool isNeeded = pointed != shown.end() && isCut(*pointed);
    QToolTip::showText(help.globalPos(), isNeeded ? pointed->text : QString(), this,
                       isNeeded ? pointed->place : QRect());
    return true;
}

} // namespace grid
