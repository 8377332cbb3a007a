#include "grid/table/grid.h"

#include "grid/table/filter_bar.h"
#include "grid/table/table_find_bar.h"
#include "grid/table/table_view.h"
#include "ui/tight_layout.h"

#include <QShortcut>
#include <QVBoxLayout>

namespace grid {

Level::Level(const GridSpec& spec, db::DataSource& dataSource, QWidget* parent) : QWidget(parent) {
    setObjectName(spec.level.toString());
    view_ = new TableView(spec, dataSource, this);
    findBar_ = new TableFindBar(*view_, this);
    setFocusProxy(view_);
    QVBoxLayout* const layout = ui::makeTightLayout<QVBoxLayout>(this);
    layout->addWidget(findBar_);
    layout->addWidget(view_, 1);
    layout->addWidget(new FilterBar(view_->tableModel(), this));
}

Grid::Grid(const GridSpec& spec, db::DataSource& dataSource, QWidget* parent) : QFrame(parent) {
    setObjectName(spec.grid.toString());
    setFrameShape(NoFrame);
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    level_ = new Level(spec, dataSource, this);
    ui::makeTightLayout<QVBoxLayout>(this)->addWidget(level_);
    setFocusProxy(&level_->view());

    const auto addShortcut = [this](QKeySequence::StandardKey key, void (TableFindBar::*action)()) {
        auto* const shortcut = new QShortcut(key, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, &level_->findBar(), action);
    };
    addShortcut(QKeySequence::Find, &TableFindBar::open);
    addShortcut(QKeySequence::FindNext, &TableFindBar::findNext);
    addShortcut(QKeySequence::FindPrevious, &TableFindBar::findPrevious);
}

} // namespace grid
