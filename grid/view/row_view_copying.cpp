// SPDX-License-Identifier: MIT

#include "db/field.h"
#include "grid/header/fitted_header.h"
#include "grid/rows/column.h"
#include "grid/view/copied_rows.h"
#include "grid/view/row_view.h"

#include <QApplication>
#include <QClipboard>

#include <memory>

namespace grid {

namespace {

CopiedRows::Column kindOf(const Column& column) {
    const db::Field* const field = column.field();
    return field ? CopiedRows::Column{field->isNumber(), field->fractionDigits()} : CopiedRows::Column();
}

} // namespace

void RowView::copySelection(bool withHeadings) const {
    std::vector<int> rows = selectedRows();
    if (!selectionModel()->hasSelection() && currentRow() >= 0) {
        rows.push_back(currentRow());
    }
    if (rows.empty()) {
        return;
    }
    const std::vector<int> columns = header_->visibleColumns();
    std::vector<CopiedRows::Column> kinds;
    QStringList headings;
    for (const int column : columns) {
        kinds.push_back(kindOf(header_->column(column)));
        if (withHeadings) {
            headings.append(header_->column(column).headerText());
        }
    }
    auto copied = std::make_unique<CopiedRows>(std::move(kinds), std::move(headings));
    for (const int row : rows) {
        for (const int column : columns) {
            copied->add(textOf(row, column));
        }
    }
    QApplication::clipboard()->setMimeData(copied.release());
}

void RowView::copyCell() const {
    if (currentRow() >= 0) {
        const int column = currentIndex().column();
        auto copied =
            std::make_unique<CopiedRows>(kindOf(header_->column(column)), textOf(currentRow(), column));
        QApplication::clipboard()->setMimeData(copied.release());
    }
}

} // namespace grid
