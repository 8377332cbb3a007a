#include "export/table_export.h"

#include "db/data_set.h"
#include "export/export_error.h"
#include "export/export_file_name.h"
#include "export/replacement_file.h"
#include "export/sheet_name.h"
#include "grid/rows/column.h"
#include "grid/rows/table_model.h"
#include "xlsx/sheet_writer.h"

#include <algorithm>

namespace exporter {

namespace {

using Columns = std::vector<const grid::Column*>;

std::vector<xlsx::Column> sheetColumns(const Columns& columns) {
    std::vector<xlsx::Column> result;
    for (const grid::Column* column : columns) {
        const db::Field* const field = column->field();
        const bool number = field != nullptr && field->isNumber();
        result.push_back({column->headerText(), column->width(), column->headerAlignment(),
                          column->alignment(),
                          number ? std::optional(field->fractionDigits()) : std::nullopt});
    }
    return result;
}

/// NULL and what the dataset lacks stay blank.
void writeRow(xlsx::SheetWriter& writer, const db::RowStore& rows, int row,
              const std::vector<const db::Field*>& fields) {
    for (const db::Field* field : fields) {
        if (field == nullptr || rows.isNull(row, field->index())) {
            writer.blank();
        } else if (field->isNumber()) {
            writer.number(rows.integer(row, field->index()));
        } else {
            writer.text(rows.string(row, field->index()));
        }
    }
    writer.endRow();
}

void writeRows(xlsx::SheetWriter& writer, const grid::TableModel& model, const Columns& columns) {
    if (!model.dataSet().isOpen()) {
        return;
    }
    std::vector<const db::Field*> fields;
    for (const grid::Column* column : columns) {
        fields.push_back(column->field());
    }
    for (int row = 0; row < model.rowCount(); ++row) {
        writeRow(writer, model.dataSet().rows(), model.dataSetRow(row), fields);
    }
}

void checkRowCount(const TableExtract& extract, const QString& fileName) {
    constexpr int mostRows = xlsx::sheetRows - 2;
    if (extract.model.rowCount() > mostRows) {
        throw ExportError(fileName,
                          QStringLiteral("строк %1, а на листе с шапкой и итогом помещается только %2")
                              .arg(extract.model.rowCount())
                              .arg(mostRows));
    }
}

} // namespace

void exportTable(const TableExtract& extract, const QString& folder, const QString& name) {
    const QString fileName = workbookFileName(name);
    const QString stem = exportName(fileName);
    const grid::TableModel& model = extract.model;
    checkRowCount(extract, folder + fileName);
    ReplacementFile file(folder + fileName);
    xlsx::SheetWriter writer(file,
                             {sheetName(stem), stem.trimmed(), extract.pageHeader, model.decimalPoint()},
                             sheetColumns(extract.columns));
    writeRows(writer, model, extract.columns);
    const auto footer = std::ranges::find(extract.columns, extract.footerColumn);
    if (footer != extract.columns.end()) {
        writer.footer(static_cast<std::size_t>(footer - extract.columns.begin()), model.rowCount());
    }
    writer.finish();
    file.commit();
}

} // namespace exporter
