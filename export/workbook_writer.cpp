#include "export/workbook_writer.h"

#include "export/export_error.h"
#include "export/replacement_file.h"
#include "export/workbook_check.h"
#include "export/xlsx_library.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <string_view>

namespace exporter {

namespace {

constexpr int widestColumn = 1790; // pixels, the 255 characters that a sheet allows
constexpr int paperA4 = 9;
constexpr std::string_view emptyRows = "<sheetData/>";
constexpr std::string_view rowsFrame = "<sheetData></sheetData>";

QByteArray writerFileName(const QString& path) {
#ifdef Q_OS_WIN
    return path.toUtf8();
#else
    return QFile::encodeName(path);
#endif
}

QByteArray numberFormat(int fractionDigits) {
    return fractionDigits == 0 ? "0" : "0." + QByteArray(fractionDigits, '0');
}

lxw_row_t rowNumber(int row) {
    return static_cast<lxw_row_t>(row);
}

lxw_col_t columnNumber(std::size_t column) {
    return static_cast<lxw_col_t>(column);
}

} // namespace

WorkbookWriter::~WorkbookWriter() = default;

void WorkbookWriter::Discard::operator()(lxw_workbook* workbook) const {
    // The library closes the file of the rows only together with a finished workbook.
    if (lxw_worksheet* const sheet = STAILQ_FIRST(workbook->worksheets)) {
        std::fclose(sheet->optimize_tmpfile);
    }
    library->lxw_workbook_free(workbook);
}

WorkbookWriter::WorkbookWriter(const ReplacementFile& file, const QString& sheetName,
                               std::span<const SheetColumn> columns, int rowCount)
    : target_(file.target()),
      path_(file.path()),
      xlsx_(std::make_unique<XlsxLibrary>()),
      workbook_(nullptr, {xlsx_.get()}) {
    lxw_workbook_options options{};
    options.constant_memory = LXW_TRUE;
    workbook_.reset(xlsx_->workbook_new_opt(writerFileName(path_).constData(), &options));
    if (!workbook_) {
        check(LXW_ERROR_MEMORY_MALLOC_FAILED);
    }
    sheet_ = xlsx_->workbook_add_worksheet(workbook_.get(), sheetName.toUtf8().constData());
    if (sheet_ == nullptr) {
        failForTemporaryFile();
    }
    xlsx_->worksheet_activate(sheet_);
    setUpColumns(columns);
    setUpPage(rowCount);
}

lxw_format* WorkbookWriter::makeFormat(Qt::Alignment alignment) {
    lxw_format* const format = xlsx_->workbook_add_format(workbook_.get());
    if (format == nullptr) {
        check(LXW_ERROR_MEMORY_MALLOC_FAILED);
    }
    xlsx_->format_set_align(format, LXW_ALIGN_VERTICAL_TOP);
    xlsx_->format_set_align(format, alignment.testFlag(Qt::AlignRight) ? LXW_ALIGN_RIGHT : LXW_ALIGN_LEFT);
    return format;
}

void WorkbookWriter::setUpColumns(std::span<const SheetColumn> columns) {
    int widest = widestColumn;
    for (const SheetColumn& column : columns) {
        widest = std::max(widest, column.width);
    }
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const SheetColumn& column = columns[i];
        lxw_format* const header = makeFormat(column.headerAlignment);
        xlsx_->format_set_bold(header);
        xlsx_->format_set_text_wrap(header);
        xlsx_->format_set_bottom(header, LXW_BORDER_THIN);
        check(xlsx_->worksheet_write_string(sheet_, 0, columnNumber(i), column.header.toUtf8().constData(),
                                            header));

        lxw_format* const cell = makeFormat(column.alignment);
        if (column.fractionDigits) {
            xlsx_->format_set_num_format(cell, numberFormat(*column.fractionDigits).constData());
        } else {
            xlsx_->format_set_text_wrap(cell);
        }
        // The library would look the format up by all its properties again for every cell.
        cell->xf_index = xlsx_->lxw_format_get_xf_index(cell);
        formats_.push_back(cell);
        // Wider than a sheet allows: all columns shrink, so that their proportions stay.
        const auto width = static_cast<uint32_t>(qint64{column.width} * widestColumn / widest);
        check(xlsx_->worksheet_set_column_pixels(sheet_, columnNumber(i), columnNumber(i), width, cell));

        lxw_format* const footer = makeFormat(column.alignment);
        xlsx_->format_set_bold(footer);
        xlsx_->format_set_top(footer, LXW_BORDER_THIN);
        xlsx_->format_set_num_format(footer, numberFormat(0).constData());
        footerFormats_.push_back(footer);
    }
}

void WorkbookWriter::setUpPage(int rowCount) {
    const lxw_col_t lastColumn = columnNumber(formats_.size() - 1);
    const lxw_row_t lastRow = rowNumber(rowCount);
    xlsx_->worksheet_freeze_panes(sheet_, 1, 0);
    check(xlsx_->worksheet_autofilter(sheet_, 0, 0, lastRow, lastColumn));
    check(xlsx_->worksheet_repeat_rows(sheet_, 0, 0));
    xlsx_->worksheet_set_landscape(sheet_);
    xlsx_->worksheet_set_paper(sheet_, paperA4);
    xlsx_->worksheet_fit_to_pages(sheet_, 1, 0);
    // Codes such as 00012 are texts on purpose and need no warning mark.
    char range[LXW_MAX_CELL_RANGE_LENGTH];
    xlsx_->lxw_rowcol_to_range(range, 0, 0, lastRow, lastColumn);
    check(xlsx_->worksheet_ignore_errors(sheet_, LXW_IGNORE_NUMBER_STORED_AS_TEXT, range));
}

void WorkbookWriter::writeText(int row, int column, const char* text) {
    const auto index = static_cast<std::size_t>(column);
    check(xlsx_->worksheet_write_string(sheet_, rowNumber(row), columnNumber(index), text, formats_[index]));
}

void WorkbookWriter::writeNumber(int row, int column, double number) {
    const auto index = static_cast<std::size_t>(column);
    check(
        xlsx_->worksheet_write_number(sheet_, rowNumber(row), columnNumber(index), number, formats_[index]));
}

void WorkbookWriter::endRow() {
    if (std::ferror(sheet_->optimize_tmpfile) != 0) {
        failForTemporaryFile();
    }
}

void WorkbookWriter::writeFooter(int row, int column, int count) {
    for (std::size_t i = 0; i < footerFormats_.size(); ++i) {
        check(static_cast<int>(i) == column
                  ? xlsx_->worksheet_write_number(sheet_, rowNumber(row), columnNumber(i), count,
                                                  footerFormats_[i])
                  : xlsx_->worksheet_write_blank(sheet_, rowNumber(row), columnNumber(i), footerFormats_[i]));
    }
}

/// Bytes of the sheet's part of the workbook around its rows.
std::int64_t WorkbookWriter::frameSize() const {
    const std::unique_ptr<std::FILE, decltype(&std::fclose)> frame(std::tmpfile(), &std::fclose);
    if (!frame) {
        failForTemporaryFile();
    }
    // Assembled as if its rows were in memory, where there are none.
    sheet_->file = frame.get();
    sheet_->optimize = LXW_FALSE;
    xlsx_->lxw_worksheet_assemble_xml_file(sheet_);
    sheet_->optimize = LXW_TRUE;
    sheet_->file = nullptr;
    if (std::fflush(frame.get()) != 0 || std::ferror(frame.get()) != 0) {
        failForTemporaryFile();
    }
    return std::ftell(frame.get()) + static_cast<std::int64_t>(rowsFrame.size() - emptyRows.size());
}

void WorkbookWriter::finish() {
    // The library does not notice when its temporary files cannot be written and makes a workbook of what it
    // then reads back, without an error. So the size that the sheet must have is worked out beforehand.
    xlsx_->lxw_worksheet_write_single_row(sheet_);
    if (std::fflush(sheet_->optimize_tmpfile) != 0) {
        failForTemporaryFile();
    }
    endRow();
    const std::int64_t sheetSize = std::ftell(sheet_->optimize_tmpfile) + frameSize();

    errno = 0;
    const lxw_error error = xlsx_->workbook_close(workbook_.release());
    if (error != LXW_NO_ERROR && errno != 0) {
        fail(qt_error_string(errno));
    }
    check(error);
    if (!isCompleteWorkbook(path_, sheetSize)) {
        fail(QStringLiteral("не хватило места для временных файлов в «%1»").arg(QDir::tempPath()));
    }
}

void WorkbookWriter::check(int error) const {
    if (error != LXW_NO_ERROR) {
        fail(QString::fromUtf8(xlsx_->lxw_strerror(static_cast<lxw_error>(error))));
    }
}

void WorkbookWriter::fail(const QString& reason) const {
    throw ExportError(target_, reason);
}

void WorkbookWriter::failForTemporaryFile() const {
    const QString reason = qt_error_string(errno);
    fail(QStringLiteral("временный файл в «%1»: %2").arg(QDir::tempPath(), reason));
}

} // namespace exporter
