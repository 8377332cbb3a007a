// SPDX-License-Identifier: MIT

#include "grid/tree/tree_list.h"

#include "db/data_source.h"
#include "grid/rows/column.h"
#include "grid/rows/tree_model.h"
#include "grid/tree/tree_find_panel.h"
#include "grid/tree/tree_view.h"
#include "ui/tight_layout.h"

#include <QShortcut>
#include <QVBoxLayout>

namespace grid {

TreeList::TreeList(const TreeListSpec& spec, db::DataSource& dataSource, QWidget* parent)
    : QFrame(parent), findPanel_(new TreeFindPanel(this)) {
    setObjectName(spec.name.toString());
    auto* const model =
        new TreeModel(dataSource.dataSet(), makeColumns(spec.columns, dataSource.dataSet(), this),
                      spec.keyField.toString(), spec.parentField.toString(), this);
    view_ = new TreeView(*model, this);

    auto* const layout = ui::makeTightLayout<QVBoxLayout>(this);
    layout->addWidget(findPanel_);
    layout->addWidget(view_);
    setFocusProxy(view_);

    connect(findPanel_, &TreeFindPanel::textChanged, view_, &TreeView::setSearch);
    connect(view_, &TreeView::findRequested, this, &TreeList::openFind);
    connect(findPanel_, &TreeFindPanel::left, view_, &TreeView::goToFound);
    connect(view_, &TreeView::searchOutcomeChanged, findPanel_,
            [this] { findPanel_->showOutcome(view_->searchOutcome()); });
    const auto addShortcut = [&](QKeySequence::StandardKey key, auto* receiver, auto action) {
        auto* const shortcut = new QShortcut(key, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, receiver, action);
    };
    addShortcut(QKeySequence::Find, this, &TreeList::openFind);
    addShortcut(QKeySequence::FindNext, view_, &TreeView::findNext);
    addShortcut(QKeySequence::FindPrevious, view_, &TreeView::findPrevious);
}

void TreeList::openFind() {
    findPanel_->open();
}

} // namespace grid
