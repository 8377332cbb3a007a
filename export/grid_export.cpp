#include "export/grid_export.h"

#include "db/data_set.h"
#include "export/export_error.h"
#include "export/export_file_name.h"
#include "export/replacement_file.h"
#include "export/sheet_name.h"
#include "grid/column.h"
#include "grid/grid.h"
#include "grid/table_model.h"
#include "grid/table_view.h"
#include "ui/screen_cursor.h"
#include "xlsx/sheet_writer.h"

#include <QPointer>

#include <algorithm>

namespace exporter {

namespace {

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

void writeView(const grid::TableView& view, const QString& fileName, const QString& pageHeader) {
    const grid::TableModel& model = view.tableModel();
    const Columns columns = view.visibleColumns();
    constexpr int mostRows = xlsx::sheetRows - 2;
    if (model.rowCount() > mostRows) {
        throw ExportError(fileName,
                          QStringLiteral("строк %1, а на листе с шапкой и итогом помещается только %2")
                              .arg(model.rowCount())
                              .arg(mostRows));
    }
    const QString name = exportName(fileName);
    ReplacementFile file(fileName);
    xlsx::SheetWriter writer(file, {sheetName(name), name.trimmed(), pageHeader, model.decimalPoint()},
                             sheetColumns(columns));
    writeRows(writer, model, columns);
    const auto footer = std::find(columns.begin(), columns.end(), view.footerColumn());
    if (footer != columns.end()) {
        writer.footer(static_cast<std::size_t>(footer - columns.begin()), view.footerCount());
    }
    writer.finish();
    file.commit();
}

} // namespace

void exportGrid(const QString& fileName, grid::Grid* grid, const QString& pageHeader) {
    if (grid == nullptr) {
        return;
    }
    const ui::NestedHourglass hourglass;
    const SuspendedGrid suspended(*grid);
    writeView(grid->view(), workbookFileName(fileName), pageHeader);
}

} // namespace exporter
