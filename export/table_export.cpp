#include "export/table_export.h"

#include "db/data_set.h"
#include "db/decimal.h"
#include "export/exact_number.h"
#include "export/export_error.h"
#include "export/export_file_name.h"
#include "export/replacement_file.h"
#include "export/sheet_name.h"
#include "export/sheet_text.h"
#include "export/workbook_writer.h"
#include "grid/rows/column.h"
#include "grid/rows/table_model.h"

#include <algorithm>

namespace exporter {

namespace {

constexpr int sheetRows = 1'048'576; // what the workbook format allows

using Columns = std::vector<const grid::Column*>;

std::vector<SheetColumn> sheetColumns(const Columns& columns) {
    std::vector<SheetColumn> result;
    for (const grid::Column* column : columns) {
        const db::Field* const field = column->field();
        const bool number = field != nullptr && field->isNumber();
        result.push_back({column->headerText(), column->width(), column->headerAlignment(),
                          column->alignment(),
                          number ? std::optional(field->fractionDigits()) : std::nullopt});
    }
    return result;
}

/// Writes the values of a dataset's rows as cells. NULL and what the dataset lacks stay blank.
class RowExport final {
public:
    RowExport(WorkbookWriter& writer, const grid::TableModel& model, const Columns& columns)
        : writer_(writer), rows_(model.dataSet().rows()), decimalPoint_(model.decimalPoint()) {
        for (const grid::Column* column : columns) {
            fields_.push_back(column->field());
        }
    }

    void write(int sheetRow, int dataSetRow) {
        for (std::size_t i = 0; i < fields_.size(); ++i) {
            const db::Field* const field = fields_[i];
            if (field == nullptr || rows_.isNull(dataSetRow, field->index())) {
                continue;
            }
            if (field->isNumber()) {
                writeNumber(sheetRow, static_cast<int>(i), rows_.integer(dataSetRow, field->index()),
                            field->fractionDigits());
            } else {
                writer_.writeText(sheetRow, static_cast<int>(i),
                                  text_.encode(rows_.string(dataSetRow, field->index())));
            }
        }
        writer_.endRow();
    }

private:
    void writeNumber(int row, int column, std::int64_t units, int digits) {
        if (const std::optional<double> number = exactNumber(units, digits)) {
            writer_.writeNumber(row, column, *number);
        } else {
            // As a number it would lose its last digits without a word.
            writer_.writeText(row, column,
                              db::decimalText(units, digits, decimalPoint_).toUtf8().constData());
        }
    }

    WorkbookWriter& writer_;
    const db::RowStore& rows_;
    QChar decimalPoint_;
    std::vector<const db::Field*> fields_;
    SheetText text_;
};

void writeRows(WorkbookWriter& writer, const grid::TableModel& model, const Columns& columns) {
    if (!model.dataSet().isOpen()) {
        return;
    }
    RowExport rows(writer, model, columns);
    for (int row = 0; row < model.rowCount(); ++row) {
        rows.write(row + 1, model.dataSetRow(row));
    }
}

void checkRowCount(const TableExtract& extract, const QString& fileName) {
    if (extract.model.rowCount() > sheetRows - 2) {
        throw ExportError(fileName,
                          QStringLiteral("строк %1, а на листе с шапкой и итогом помещается только %2")
                              .arg(extract.model.rowCount())
                              .arg(sheetRows - 2));
    }
}

} // namespace

void exportTable(const TableExtract& extract, const QString& folder, const QString& name) {
    const QString fileName = workbookFileName(name);
    checkRowCount(extract, folder + fileName);
    ReplacementFile file(folder + fileName);
    {
        const int rowCount = extract.model.rowCount();
        WorkbookWriter writer(file, sheetName(exportName(fileName)), sheetColumns(extract.columns), rowCount);
        writeRows(writer, extract.model, extract.columns);
        const auto footer = std::ranges::find(extract.columns, extract.footerColumn);
        if (footer != extract.columns.end()) {
            writer.writeFooter(rowCount + 1, static_cast<int>(footer - extract.columns.begin()), rowCount);
        }
        writer.finish();
    }
    file.commit();
}

} // namespace exporter
