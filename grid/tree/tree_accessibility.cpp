// SPDX-License-Identifier: MIT

#include "grid/tree/tree_accessibility.h"

#include "grid/rows/column.h"
#include "grid/rows/tree_model.h"
#include "grid/tree/tree_header.h"
#include "grid/tree/tree_view.h"
#include "grid/view/row_accessibility.h"

#include <algorithm>

namespace grid {

namespace {

/// A node; valid as long as it has a row.
class AccessibleNode final : public AccessiblePart, public QAccessibleActionInterface {
public:
    AccessibleNode(TreeView& view, int node) : AccessiblePart(view), node_(node) {}

    [[nodiscard]] bool isValid() const override { return view() && row() >= 0; }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::TreeItem; }
    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        if (!isValid()) {
            return {};
        }
        const std::vector<int> columns = tree().header().visibleColumns();
        const TreeModel& model = tree().treeModel();
        if (kind == QAccessible::Name) {
            return model.text(node_, columns.front());
        }
        QStringList others;
        for (std::size_t place = 1; kind == QAccessible::Description && place < columns.size(); ++place) {
            others.append(model.column(columns[place]).headerText() + QStringLiteral(": ") +
                          model.text(node_, columns[place]));
        }
        return others.join(QStringLiteral("; "));
    }

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = AccessiblePart::state();
        if (isValid() && tree().rows().hasChildren(node_)) {
            state.expandable = true;
            state.expanded = tree().rows().isExpanded(node_);
            state.collapsed = !state.expanded;
        }
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }
    [[nodiscard]] QStringList actionNames() const override {
        QStringList names{setFocusAction()};
        if (isValid() && tree().rows().hasChildren(node_)) {
            names.append(toggleAction());
        }
        return names;
    }
    void doAction(const QString& name) override {
        if (!isValid()) {
            return;
        }
        if (name == setFocusAction()) {
            tree().setCurrentIndex(
                tree().treeModel().indexOf(node_, tree().header().visibleColumns().front()));
        } else if (name == toggleAction()) {
            tree().setExpanded(node_, !tree().rows().isExpanded(node_));
        }
    }
    [[nodiscard]] QStringList keyBindingsForAction(const QString&) const override { return {}; }

    [[nodiscard]] int row() const { return tree().rows().rowOf(node_); }

protected:
    [[nodiscard]] QModelIndex index() const override {
        return tree().treeModel().indexOf(node_, std::max(0, tree().currentIndex().column()));
    }
    [[nodiscard]] QRect area() const override { return tree().rowRect(row()); }

private:
    [[nodiscard]] TreeView& tree() const { return static_cast<TreeView&>(*view()); }

    int node_;
};

class AccessibleTree final : public AccessibleRowView {
public:
    explicit AccessibleTree(TreeView* view) : AccessibleRowView(view, QAccessible::Tree), view_(view) {}

    [[nodiscard]] int childCount() const override { return view_ ? view_->rows().count() : 0; }

    [[nodiscard]] QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= childCount()) {
            return nullptr;
        }
        const int node = view_->rows().at(index).node;
        return part(node, [=, this] { return new AccessibleNode(*view_, node); });
    }

    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override {
        if (!view_) {
            return nullptr;
        }
        const QModelIndex index = view_->indexAt(view_->viewport()->mapFromGlobal(QPoint(x, y)));
        return index.isValid() ? child(view_->rows().rowOf(TreeModel::node(index))) : nullptr;
    }

    [[nodiscard]] QAccessibleInterface* focusChild() const override {
        return view_ ? child(view_->currentRow()) : nullptr;
    }

    [[nodiscard]] int indexOfChild(const QAccessibleInterface* sought) const override {
        const auto* const node = dynamic_cast<const AccessibleNode*>(sought);
        return node && node->isValid() ? node->row() : -1;
    }

private:
    QPointer<TreeView> view_;
};

QAccessibleInterface* makeInterface(const QString&, QObject* object) {
    auto* const view = qobject_cast<TreeView*>(object);
    return view ? new AccessibleTree(view) : nullptr;
}

} // namespace

void installTreeAccessibility() {
    QAccessible::installFactory(makeInterface);
}

} // namespace grid
