// SPDX-License-Identifier: MIT

#pragma once

#include <QAccessibleWidget>
#include <QModelIndex>
#include <QObject>
#include <QPointer>

#include <cstdint>
#include <functional>
#include <unordered_map>

namespace grid {

class RowView;

/// A row or a cell of a view, or a section of its header, for assistive technology. It has no children.
class AccessiblePart : public QAccessibleInterface {
public:
    explicit AccessiblePart(RowView& view) : view_(&view) {}

    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QRect rect() const override;
    void setText(QAccessible::Text, const QString&) override {}
    [[nodiscard]] QAccessible::State state() const override;
    [[nodiscard]] QAccessibleInterface* parent() const override;
    [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }

protected:
    /// Null once the view is gone.
    [[nodiscard]] RowView* view() const { return view_; }
    /// What can be selected and get the focus; invalid for a section of the header.
    [[nodiscard]] virtual QModelIndex index() const = 0;
    /// The place in the viewport of a part that is valid.
    [[nodiscard]] virtual QRect area() const = 0;

private:
    QPointer<RowView> view_;
};

/// A view for assistive technology. Its parts are made when they are asked for and kept until the rows are
/// replaced, or until there are too many of them.
class AccessibleRowView : public QAccessibleWidget {
public:
    using QAccessibleWidget::QAccessibleWidget;
    ~AccessibleRowView() override;

protected:
    /// The part of that key, made by `make` when it is not kept.
    [[nodiscard]] QAccessibleInterface* part(std::int64_t key,
                                             const std::function<AccessiblePart*()>& make) const;

private:
    void forgetParts() const;

    mutable std::unordered_map<std::int64_t, QAccessible::Id> parts_;
    mutable QMetaObject::Connection modelReset_;
    mutable QObject context_; ///< of what is done later, or by a signal
};

} // namespace grid
