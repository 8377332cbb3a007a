#include "grid/tree/tree_accessibility.h"

#include "grid/rows/column.h"
#include "grid/rows/tree_model.h"
#include "grid/tree/tree_header.h"
#include "grid/tree/tree_view.h"

#include <QAccessibleWidget>
#include <QPointer>

#include <unordered_map>

namespace grid {

namespace {

QAccessibleInterface* interfaceOf(TreeView* view) {
    return QAccessible::queryAccessibleInterface(view);
}

/// A node; valid as long as it has a row.
class AccessibleNode final : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    AccessibleNode(TreeView* view, int node) : view_(view), node_(node) {}

    [[nodiscard]] bool isValid() const override { return view_ != nullptr && row() >= 0; }
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::TreeItem; }
    [[nodiscard]] QRect rect() const override {
        const QRect area = isValid() ? view_->rowRect(row()) : QRect();
        return area.isEmpty() ? QRect() : area.translated(view_->viewport()->mapToGlobal(QPoint()));
    }

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        if (!isValid()) {
            return {};
        }
        const std::vector<int> columns = view_->header().visibleColumns();
        const TreeModel& model = view_->treeModel();
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
    void setText(QAccessible::Text /*kind*/, const QString& /*text*/) override {}

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state;
        if (!isValid()) {
            state.invalid = true;
            return state;
        }
        const bool hasChildren = view_->rows().hasChildren(node_);
        state.focusable = true;
        state.selectable = true;
        state.multiSelectable = true;
        state.extSelectable = true;
        state.readOnly = true;
        state.selected = view_->isRowSelected(row());
        state.focused = view_->hasFocus() && view_->currentRow() == row();
        state.expandable = hasChildren;
        state.expanded = hasChildren && view_->rows().isExpanded(node_);
        state.collapsed = hasChildren && !view_->rows().isExpanded(node_);
        state.offscreen = view_->rowRect(row()).isEmpty();
        return state;
    }

    [[nodiscard]] QAccessibleInterface* parent() const override {
        return view_ == nullptr ? nullptr : interfaceOf(view_);
    }
    [[nodiscard]] QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                    : nullptr;
    }
    [[nodiscard]] QStringList actionNames() const override {
        QStringList names{setFocusAction()};
        if (isValid() && view_->rows().hasChildren(node_)) {
            names.append(toggleAction());
        }
        return names;
    }
    void doAction(const QString& name) override {
        if (!isValid()) {
            return;
        }
        if (name == setFocusAction()) {
            view_->setCurrentIndex(
                view_->treeModel().indexOf(node_, view_->header().visibleColumns().front()));
        } else if (name == toggleAction()) {
            view_->setExpanded(node_, !view_->rows().isExpanded(node_));
        }
    }
    [[nodiscard]] QStringList keyBindingsForAction(const QString& /*name*/) const override { return {}; }

    [[nodiscard]] int row() const { return view_->rows().rowOf(node_); }

private:
    QPointer<TreeView> view_;
    int node_;
};

class AccessibleTree final : public QAccessibleWidget {
public:
    explicit AccessibleTree(TreeView* view) : QAccessibleWidget(view, QAccessible::Tree), view_(view) {
        // The numbers of nodes stand for other rows afterwards.
        modelReset_ = QObject::connect(&view->treeModel(), &QAbstractItemModel::modelReset, view,
                                       [this] { forgetNodes(); });
    }
    ~AccessibleTree() override {
        QObject::disconnect(modelReset_);
        forgetNodes();
    }

    [[nodiscard]] int childCount() const override { return view_ == nullptr ? 0 : view_->rows().count(); }

    [[nodiscard]] QAccessibleInterface* child(int index) const override {
        if (index < 0 || index >= childCount()) {
            return nullptr;
        }
        const int node = view_->rows().at(index).node;
        const auto known = nodes_.find(node);
        if (known != nodes_.end()) {
            return QAccessible::accessibleInterface(known->second);
        }
        auto* const created = new AccessibleNode(view_, node);
        nodes_.emplace(node, QAccessible::registerAccessibleInterface(created));
        return created;
    }

    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override {
        if (view_ == nullptr) {
            return nullptr;
        }
        const QModelIndex index = view_->indexAt(view_->viewport()->mapFromGlobal(QPoint(x, y)));
        return index.isValid() ? child(view_->rows().rowOf(TreeModel::node(index))) : nullptr;
    }

    [[nodiscard]] QAccessibleInterface* focusChild() const override {
        return view_ == nullptr ? nullptr : child(view_->currentRow());
    }

    [[nodiscard]] int indexOfChild(const QAccessibleInterface* sought) const override {
        const auto* const node = dynamic_cast<const AccessibleNode*>(sought);
        return node != nullptr && node->isValid() ? node->row() : -1;
    }

private:
    void forgetNodes() {
        for (const auto& [node, id] : nodes_) {
            QAccessible::deleteAccessibleInterface(id);
        }
        nodes_.clear();
    }

    QPointer<TreeView> view_;
    QMetaObject::Connection modelReset_;
    mutable std::unordered_map<int, QAccessible::Id> nodes_; // those that have been asked for
};

QAccessibleInterface* makeInterface(const QString& /*className*/, QObject* object) {
    auto* const view = qobject_cast<TreeView*>(object);
    return view == nullptr ? nullptr : new AccessibleTree(view);
}

} // namespace

void installTreeAccessibility() {
    QAccessible::installFactory(makeInterface);
}

} // namespace grid
