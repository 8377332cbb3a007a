// SPDX-License-Identifier: MIT

#include "grid/table/filter_list.h"

#include "grid/table/filter_values.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>

#include <algorithm>

namespace grid {

namespace {

// Pixels.
constexpr int listHeight = 260;
constexpr int narrowestList = 280;
constexpr int widestList = 560;
constexpr int countMargin = 6;

class ValueDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        QStyleOptionViewItem item(option);
        initStyleOption(&item, index);
        const QStyle& style = *option.widget->style();
        const QString count = QString::number(index.data(FilterValues::rowsRole).toInt());
        const int room = style.subElementRect(QStyle::SE_ItemViewItemText, &item, option.widget).width() -
                         item.fontMetrics.horizontalAdvance(count) - 2 * countMargin;
        item.text = item.fontMetrics.elidedText(item.text, Qt::ElideRight, room);
        style.drawControl(QStyle::CE_ItemViewItem, &item, painter, option.widget);

        const bool isSelected = item.state & QStyle::State_Selected;
        const auto group = item.state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
        painter->setPen(
            item.palette.color(group, isSelected ? QPalette::HighlightedText : QPalette::PlaceholderText));
        painter->drawText(item.rect.adjusted(0, 0, -countMargin, 0), Qt::AlignRight | Qt::AlignVCenter,
                          count);
    }

    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem&,
                     const QModelIndex& index) override {
        const bool isClick = event->type() == QEvent::MouseButtonRelease &&
                             static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton;
        const bool isKey =
            event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Space;
        if (!isClick && !isKey) {
            return false;
        }
        const bool isTicked = index.data(Qt::CheckStateRole).toInt() == Qt::Checked;
        return model->setData(index, isTicked ? Qt::Unchecked : Qt::Checked, Qt::CheckStateRole);
    }
};

} // namespace

FilterList::FilterList(FilterValues& values, QWidget* parent) : QListView(parent), values_(values) {
    setModel(&values);
    setItemDelegate(new ValueDelegate(this));
    setUniformItemSizes(true);
    setEditTriggers(NoEditTriggers);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setMinimumSize(narrowestList, listHeight / 2);
}

QSize FilterList::sizeHint() const {
    const int checkBox = style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, this);
    const int wanted =
        checkBox + fontMetrics().horizontalAdvance(values_.longestText()) +
        fontMetrics().horizontalAdvance(values_.index(0).data(FilterValues::rowsRole).toString()) +
        5 * countMargin + verticalScrollBar()->sizeHint().width() + 2 * frameWidth();
    return {std::clamp(wanted, narrowestList, widestList), listHeight};
}

void FilterList::keyboardSearch(const QString& search) {
    const bool isText = std::ranges::all_of(search, [](QChar each) { return each.isPrint(); });
    if (isText && !search.trimmed().isEmpty()) {
        emit typed(search);
    }
}

} // namespace grid
