// SPDX-License-Identifier: MIT

#include "export/table_export.h"

#include "base/file_name.h"
#include "db/data_set.h"
#include "export/replacement_file.h"
#include "grid/rows/column.h"
#include "grid/rows/table_model.h"
#include "xlsx/sheet_writer.h"

#include <QDir>

#include <algorithm>

namespace exporter {

namespace {

constexpr int mostRows = xlsx::sheetRows - 2;

/// Pixels in which a spreadsheet shows all numbers of a field; in fewer they would become "###".
int neededWidth(const db::RowStore& rows, const db::Field& field) {
    constexpr int pixelsOfDigit = 8;
    const auto [least, greatest] = rows.integerRange(field.index());
    const auto digits = std::max(std::to_string(least).size(), std::to_string(greatest).size());
    // Beside them the decimal sign and the margins of the cell.
    return pixelsOfDigit * (std::max(static_cast<int>(digits), 1 + field.fractionDigits()) + 2);
}

std::vector<xlsx::Column> sheetColumns(const TableExtract& extract) {
    const db::DataSet& dataSet = extract.model.dataSet();
    std::vector<xlsx::Column> result;
    for (const grid::Column* column : extract.columns) {
        const db::Field* const field = column->field();
        const bool number = field && field->isNumber();
        const int needed = number && dataSet.isOpen() ? neededWidth(dataSet.rows(), *field) : 0;
        result.push_back({column->headerText(), std::max(column->width(), needed), column->headerAlignment(),
                          column->alignment(),
                          number ? std::optional(field->fractionDigits()) : std::nullopt});
    }
    return result;
}

/// NULL and what the dataset lacks stay blank.
void writeCell(xlsx::SheetWriter& writer, const db::RowStore& rows, int row, const db::Field* field) {
    if (!field || rows.isNull(row, field->index())) {
        writer.blank();
    } else if (field->isNumber()) {
        writer.number(rows.integer(row, field->index()));
    } else {
        writer.text(rows.string(row, field->index()));
    }
}

void writeTable(xlsx::SheetWriter& writer, const TableExtract& extract) {
    const grid::TableModel& model = extract.model;
    for (int row = 0; row < model.rowCount(); ++row) {
        const int stored = model.dataSetRow(row);
        for (const grid::Column* column : extract.columns) {
            writeCell(writer, model.dataSet().rows(), stored, column->field());
        }
        writer.endRow();
    }
    const auto footer = std::ranges::find(extract.columns, extract.footerColumn);
    const auto place = static_cast<std::size_t>(footer - extract.columns.begin());
    writer.finish(footer == extract.columns.end() ? std::nullopt : std::optional(place));
}

} // namespace

void exportTable(const TableExtract& extract, const QString& folder, const QString& name) {
    const QString fileName = folder + base::withExtension(name, QStringLiteral(".xlsx"));
    const QString stem = base::withExtension(name.sliced(base::folderOf(name).size()), {});
    try {
        if (extract.model.rowCount() > mostRows) {
            const auto reason = QStringLiteral("строк %1, а на листе с шапкой и итогом помещается только %2");
            throw base::Error(reason.arg(extract.model.rowCount()).arg(mostRows));
        }
        for (const QChar delimiter : {QChar(u'/'), QDir::separator()}) {
            if (fileName.sliced(folder.size()).contains(delimiter)) {
                throw base::Error(QStringLiteral("в имени файла не может быть знака «%1»").arg(delimiter));
            }
        }
        ReplacementFile file(fileName);
        const xlsx::Page page{stem, stem.trimmed(), extract.pageHeader, extract.model.decimalPoint()};
        xlsx::SheetWriter writer(file.device(), page, sheetColumns(extract));
        writeTable(writer, extract);
        file.commit();
    } catch (const base::Error& error) {
        throw ExportError(fileName, error.message());
    }
}

} // namespace exporter
