#include "export/table_export.h"

#include "db/data_set.h"
#include "export/export_names.h"
#include "export/replacement_file.h"
#include "grid/rows/column.h"
#include "grid/rows/table_model.h"
#include "xlsx/sheet_writer.h"

#include <algorithm>

namespace exporter {

namespace {

std::vector<xlsx::Column> sheetColumns(const std::vector<const grid::Column*>& columns) {
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

void writeTable(xlsx::SheetWriter& writer, const TableExtract& extract) {
    const grid::TableModel& model = extract.model;
    std::vector<const db::Field*> fields;
    for (const grid::Column* column : extract.columns) {
        fields.push_back(column->field());
    }
    for (int row = 0; row < model.rowCount(); ++row) {
        writeRow(writer, model.dataSet().rows(), model.dataSetRow(row), fields);
    }
    const auto footer = std::ranges::find(extract.columns, extract.footerColumn);
    if (footer != extract.columns.end()) {
        writer.footer(static_cast<std::size_t>(footer - extract.columns.begin()), model.rowCount());
    }
    writer.finish();
}

void checkRowCount(int rows) {
    constexpr int mostRows = xlsx::sheetRows - 2;
    if (rows > mostRows) {
        throw base::Error(QStringLiteral("строк %1, а на листе с шапкой и итогом помещается только %2")
                              .arg(rows)
                              .arg(mostRows));
    }
}

} // namespace

void exportTable(const TableExtract& extract, const QString& folder, const QString& name) {
    const QString fileName = workbookFileName(name);
    const QString stem = exportName(fileName);
    try {
        checkRowCount(extract.model.rowCount());
        ReplacementFile file(folder + fileName);
        const xlsx::Page page{sheetName(stem), stem.trimmed(), extract.pageHeader,
                              extract.model.decimalPoint()};
        xlsx::SheetWriter writer(file.device(), page, sheetColumns(extract.columns));
        writeTable(writer, extract);
        file.commit();
    } catch (const base::Error& error) {
        throw ExportError(folder + fileName, error.message());
    }
}

} // namespace exporter
