#pragma once

#include <QLibrary>

#include <xlsxwriter.h>

namespace exporter {

/// libxlsxwriter, loaded with the first workbook: together with the cryptography that it brings along it
/// would take a twentieth of the program's start. The functions bear the names of its headers.
class XlsxLibrary final {
public:
    /// Throws base::FileError when there is no such library or when it lacks a function.
    explicit XlsxLibrary(const QString& fileName = defaultName());

    /// "xlsxwriter.dll" on Windows, elsewhere "libxlsxwriter.so." and the LXW_SOVERSION of the headers.
    [[nodiscard]] static QString defaultName();

private:
    QLibrary library_;

    [[nodiscard]] QFunctionPointer resolve(const char* name);

    /// One function, under the type that the headers give it.
    template <typename Function>
    [[nodiscard]] Function function(const char* name) {
        return reinterpret_cast<Function>(resolve(name));
    }

public:
#define TARVELO_XLSX_FUNCTION(name) const decltype(&::name) name = function<decltype(&::name)>(#name)
    TARVELO_XLSX_FUNCTION(format_set_align);
    TARVELO_XLSX_FUNCTION(format_set_bold);
    TARVELO_XLSX_FUNCTION(format_set_bottom);
    TARVELO_XLSX_FUNCTION(format_set_num_format);
    TARVELO_XLSX_FUNCTION(format_set_text_wrap);
    TARVELO_XLSX_FUNCTION(format_set_top);
    TARVELO_XLSX_FUNCTION(lxw_format_get_xf_index);
    TARVELO_XLSX_FUNCTION(lxw_rowcol_to_range);
    TARVELO_XLSX_FUNCTION(lxw_strerror);
    TARVELO_XLSX_FUNCTION(lxw_workbook_free);
    TARVELO_XLSX_FUNCTION(lxw_worksheet_assemble_xml_file);
    TARVELO_XLSX_FUNCTION(lxw_worksheet_write_single_row);
    TARVELO_XLSX_FUNCTION(workbook_add_format);
    TARVELO_XLSX_FUNCTION(workbook_add_worksheet);
    TARVELO_XLSX_FUNCTION(workbook_close);
    TARVELO_XLSX_FUNCTION(workbook_new_opt);
    TARVELO_XLSX_FUNCTION(worksheet_activate);
    TARVELO_XLSX_FUNCTION(worksheet_autofilter);
    TARVELO_XLSX_FUNCTION(worksheet_fit_to_pages);
    TARVELO_XLSX_FUNCTION(worksheet_freeze_panes);
    TARVELO_XLSX_FUNCTION(worksheet_ignore_errors);
    TARVELO_XLSX_FUNCTION(worksheet_repeat_rows);
    TARVELO_XLSX_FUNCTION(worksheet_set_column_pixels);
    TARVELO_XLSX_FUNCTION(worksheet_set_landscape);
    TARVELO_XLSX_FUNCTION(worksheet_set_paper);
    TARVELO_XLSX_FUNCTION(worksheet_write_blank);
    TARVELO_XLSX_FUNCTION(worksheet_write_number);
    TARVELO_XLSX_FUNCTION(worksheet_write_string);
#undef TARVELO_XLSX_FUNCTION
};

} // namespace exporter
