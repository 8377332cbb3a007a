#include "grid/tree/tree_list.h"

#include "db/data_source.h"
#include "grid/rows/column.h"
#include "grid/rows/tree_model.h"
#include "grid/tree/tree_find_panel.h"
#include "grid/tree/tree_view.h"

#include <QShortcut>
#include <QVBoxLayout>

namespace grid {

namespace {

std::vector<Column*> makeColumns(std::span<const ColumnSpec> specs, const db::DataSet& dataSet,
                                 QObject* parent) {
    std::vector<Column*> columns;
    columns.reserve(specs.size());
    for (const ColumnSpec& spec : specs) {
        columns.push_back(new Column(spec, dataSet, parent));
    }
    return columns;
}

} // namespace

TreeList::TreeList(const TreeListSpec& spec, db::DataSource& dataSource, QWidget* parent)
    : QFrame(parent), findPanel_(new TreeFindPanel(spec.findPrompt.toString(), this)) {
    setObjectName(spec.name.toString());
    auto* const model =
        new TreeModel(dataSource.dataSet(), makeColumns(spec.columns, dataSource.dataSet(), this),
                      spec.keyField.toString(), spec.parentField.toString(), this);
    view_ = new TreeView(*model, this);

    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(findPanel_);
    layout->addWidget(view_);
    setFocusProxy(view_);

    connect(findPanel_, &TreeFindPanel::textChanged, view_, &TreeView::setSearch);
    connect(findPanel_, &TreeFindPanel::left, this, &TreeList::goToFound);
    auto* const find = new QShortcut(QKeySequence::Find, this);
    find->setContext(Qt::WidgetWithChildrenShortcut);
    connect(find, &QShortcut::activated, findPanel_, &TreeFindPanel::open);
}

void TreeList::goToFound() {
    view_->goToFound();
}

} // namespace grid
