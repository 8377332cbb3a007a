#pragma once

#include <QString>

#include <vector>

namespace grid {
class Column;
class TableModel;
} // namespace grid

namespace exporter {

/// What is written of a table.
struct TableExtract {
    const grid::TableModel& model;            ///< the rows in their order and under their filter
    std::vector<const grid::Column*> columns; ///< from left to right, at least one
    const grid::Column* footerColumn;         ///< the one that the count of rows stands under, or null
    QString pageHeader;                       ///< printed above every page
};

/// Writes a table with its footer to the workbook workbookFileName(`name`) in `folder` (which ends in its
/// delimiter), replacing an earlier one; the one sheet is named after it. Throws ExportError; an
/// earlier workbook is then left whole, and nothing else is left.
void exportTable(const TableExtract& extract, const QString& folder, const QString& name);

} // namespace exporter
