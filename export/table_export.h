// SPDX-License-Identifier: MIT

#pragma once

#include "base/error.h"

#include <QString>

#include <vector>

namespace grid {
class Column;
class TableModel;
} // namespace grid

namespace exporter {

/// A grid could not be written to its workbook; an earlier workbook of that name is still whole.
class ExportError : public base::Error {
public:
    /// `reason` is the system's or the workbook writer's text.
    ExportError(const QString& fileName, const QString& reason)
        : base::Error(QStringLiteral("Не удалось выгрузить таблицу в файл «%1»: %2").arg(fileName, reason)) {}
};

/// What is written of a table.
struct TableExtract {
    const grid::TableModel& model;            ///< the rows in their order and under their filter
    std::vector<const grid::Column*> columns; ///< from left to right, at least one
    const grid::Column* footerColumn;         ///< the one that the count of rows stands under, or null
    QString pageHeader;                       ///< printed above every page
};

/// Writes a table with its footer to a workbook in `folder` (which ends in its delimiter), replacing an
/// earlier one. It is called `name`, where ".xlsx" stands in the place of everything from the last point on,
/// and so, without that, are its sheet and the document. Throws ExportError; an earlier workbook is then left
/// whole, and nothing else is left.
void exportTable(const TableExtract& extract, const QString& folder, const QString& name);

} // namespace exporter
