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
    auto* const find = new QShortcut(QKeySequence::Find, this);
    find->setContext(Qt::WidgetWithChildrenShortcut);
    connect(find, &QShortcut::activated, this, &TreeList::openFind);
}

void TreeList::openFind() {
    findPanel_->open();
}

} // namespace grid
