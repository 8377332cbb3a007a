// SPDX-License-Identifier: MIT

#include "grid/view/row_accessibility.h"

#include "grid/view/row_view.h"

namespace grid {

namespace {

/// Parts that are kept for assistive technology at a time.
constexpr std::size_t partLimit = 40'000;

} // namespace

QRect AccessiblePart::rect() const {
    const QRect place = isValid() ? area() : QRect();
    return place.isEmpty() ? QRect() : place.translated(view_->viewport()->mapToGlobal(QPoint()));
}

QAccessible::State AccessiblePart::state() const {
    QAccessible::State state;
    if (!isValid()) {
        state.invalid = true;
        return state;
    }
    state.readOnly = true;
    state.offscreen = !view_->isVisible() || rect().isEmpty();
    if (const QModelIndex own = index(); own.isValid()) {
        state.focusable = true;
        state.selectable = true;
        state.multiSelectable = true;
        state.extSelectable = true;
        state.selected = view_->selectionModel()->isSelected(own);
        state.focused = view_->hasFocus() && view_->currentIndex() == own;
    }
    return state;
}

QAccessibleInterface* AccessiblePart::parent() const {
    return view_ ? QAccessible::queryAccessibleInterface(view_.data()) : nullptr;
}

AccessibleRowView::~AccessibleRowView() {
    forgetParts();
}

QAccessibleInterface* AccessibleRowView::part(std::int64_t key,
                                              const std::function<AccessiblePart*()>& make) const {
    if (const auto known = parts_.find(key); known != parts_.end()) {
        return QAccessible::accessibleInterface(known->second);
    }
    if (!modelReset_) {
        // A number stands for another row afterwards.
        const auto* const view = static_cast<const RowView*>(widget());
        modelReset_ = QObject::connect(view->model(), &QAbstractItemModel::modelReset, &context_,
                                       [this] { forgetParts(); });
    }
    if (parts_.size() == partLimit) {
        // Not at once: whoever asks may hold, or be, one of the parts.
        QMetaObject::invokeMethod(
            &context_, [this] { forgetParts(); }, Qt::QueuedConnection);
    }
    AccessiblePart* const made = make();
    parts_.emplace(key, QAccessible::registerAccessibleInterface(made));
    return made;
}

void AccessibleRowView::forgetParts() const {
    for (const auto& [key, id] : parts_) {
        QAccessible::deleteAccessibleInterface(id);
    }
    parts_.clear();
}

} // namespace grid
