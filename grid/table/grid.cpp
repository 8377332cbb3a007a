// SPDX-License-Identifier: MIT

#include "grid/table/grid.h"

#include "grid/table/filter_bar.h"
#include "grid/table/table_find_bar.h"
#include "grid/table/table_view.h"
#include "ui/tight_layout.h"

#include <QShortcut>
#include <QVBoxLayout>

namespace grid {

Grid::Grid(const GridSpec& spec, db::DataSource& dataSource, QWidget* parent) : QFrame(parent) {
    setObjectName(spec.grid.toString());
    setFrameShape(NoFrame);
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    auto* const level = new QWidget(this);
    level->setObjectName(spec.level.toString());
    view_ = new TableView(spec, dataSource, level);
    findBar_ = new TableFindBar(*view_, level);
    auto* const layout = ui::makeTightLayout<QVBoxLayout>(level);
    layout->addWidget(findBar_);
    layout->addWidget(view_, 1);
    layout->addWidget(new FilterBar(view_->tableModel(), level));
    ui::makeTightLayout<QVBoxLayout>(this)->addWidget(level);
    level->setFocusProxy(view_);
    setFocusProxy(view_);

    connect(view_, &TableView::findRequested, findBar_, &TableFindBar::open);
    const auto addShortcut = [&](QKeySequence::StandardKey key, void (TableFindBar::*action)()) {
        auto* const shortcut = new QShortcut(key, this);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, findBar_, action);
    };
    addShortcut(QKeySequence::Find, &TableFindBar::open);
    addShortcut(QKeySequence::FindNext, &TableFindBar::findNext);
    addShortcut(QKeySequence::FindPrevious, &TableFindBar::findPrevious);
}

void Grid::openFind() {
    findBar_->open();
}

void Grid::setCoveredBy(Grid& other) {
    covered_ = true;
    view_->setFocusPolicy(Qt::NoFocus);
    setFocusProxy(&other);
}

} // namespace grid
