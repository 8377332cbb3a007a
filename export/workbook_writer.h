#pragma once

#include "export/numeric_locale.h"

#include <QString>

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

struct lxw_format;
struct lxw_workbook;
struct lxw_worksheet;

namespace exporter {

class ReplacementFile;
class XlsxLibrary;

/// A column of a sheet.
struct SheetColumn {
    QString header;
    int width; ///< pixels at 96 dpi
    Qt::Alignment headerAlignment;
    Qt::Alignment alignment;
    std::optional<int> fractionDigits; ///< of numbers; none for texts
};

/// Writes a workbook of one sheet: a header that stays in view and carries a filter, rows, and a footer.
/// Cells are written row by row and kept in memory no longer than their row. Everything throws ExportError.
class WorkbookWriter final {
public:
    /// The header stands in row 0 and `rowCount` rows follow it. Throws base::FileError without
    /// libxlsxwriter.
    WorkbookWriter(const ReplacementFile& file, const QString& sheetName,
                   std::span<const SheetColumn> columns, int rowCount);
    ~WorkbookWriter();

    /// `text` is what SheetText made of it; it stays a text whatever it looks like.
    void writeText(int row, int column, const char* text);
    void writeNumber(int row, int column, double number);
    /// To be called after the cells of a row.
    void endRow();

    /// Closes the table in row `row` with `count` in column `column`.
    void writeFooter(int row, int column, int count);

    /// Completes the file and makes sure that it is whole.
    void finish();

private:
    struct Discard {
        const XlsxLibrary* library;
        void operator()(lxw_workbook* workbook) const;
    };

    void setUpColumns(std::span<const SheetColumn> columns);
    void setUpPage(int rowCount);
    lxw_format* makeFormat(Qt::Alignment alignment);
    [[nodiscard]] std::int64_t frameSize() const;
    void check(int error) const;
    [[noreturn]] void fail(const QString& reason) const;
    [[noreturn]] void failForTemporaryFile() const;

    QString target_;
    QString path_;
    NumericLocale locale_;
    std::unique_ptr<const XlsxLibrary> xlsx_;
    std::unique_ptr<lxw_workbook, Discard> workbook_;
    lxw_worksheet* sheet_ = nullptr;   // owned by the workbook, as the formats are
    std::vector<lxw_format*> formats_; // of the cells of each column
    std::vector<lxw_format*> footerFormats_;
};

} // namespace exporter
