#include "export/grid_export.h"

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
#include "grid/table/grid.h"
#include "grid/table/table_view.h"
#include "ui/screen_cursor.h"

#include <QPointer>

#include <algorithm>

namespace exporter {

namespace {

constexpr int sheetRows = 1'048'576; // what the workbook format allows

/// Keeps a grid from being used and painted.
class SuspendedGrid final {
public:
    explicit SuspendedGrid(grid::Grid& grid)
        : grid_(grid), enabled_(grid.isEnabledTo(grid.parentWidget())), focus_(grid.window()->focusWidget()) {
        grid_.setExporting(true);
        grid_.setUpdatesEnabled(false);
        grid_.setEnabled(false);
    }
    ~SuspendedGrid() {
        grid_.setEnabled(enabled_);
        // A widget that is disabled hands the focus on.
        if (focus_ && focus_ != grid_.window()->focusWidget()) {
            focus_->setFocus(Qt::OtherFocusReason);
        }
        grid_.setUpdatesEnabled(true);
        grid_.setExporting(false);
    }
    SuspendedGrid(const SuspendedGrid&) = delete;
    SuspendedGrid& operator=(const SuspendedGrid&) = delete;

private:
    grid::Grid& grid_;
    bool enabled_;
    QPointer<QWidget> focus_;
};

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

void writeView(const grid::TableView& view, const QString& fileName) {
    const grid::TableModel& model = view.tableModel();
    const Columns columns = view.visibleColumns();
    const int footerRow = model.rowCount() + 1;
    if (footerRow >= sheetRows) {
        throw ExportError(fileName,
                          QStringLiteral("строк %1, а на листе с шапкой и итогом помещается только %2")
                              .arg(model.rowCount())
                              .arg(sheetRows - 2));
    }
    ReplacementFile file(fileName);
    {
        WorkbookWriter writer(file, sheetName(exportName(fileName)), sheetColumns(columns), model.rowCount());
        writeRows(writer, model, columns);
        const auto footer = std::find(columns.begin(), columns.end(), view.footerColumn());
        if (footer != columns.end()) {
            writer.writeFooter(footerRow, static_cast<int>(footer - columns.begin()), view.footerCount());
        }
        writer.finish();
    }
    file.commit();
}

} // namespace

void exportGrid(const QString& fileName, grid::Grid* grid) {
    if (grid == nullptr) {
        return;
    }
    const ui::NestedHourglass hourglass;
    const SuspendedGrid suspended(*grid);
    writeView(grid->view(), workbookFileName(fileName));
}

} // namespace exporter
