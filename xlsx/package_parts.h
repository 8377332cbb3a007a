#pragma once

#include "xlsx/sheet.h"

#include <QByteArray>

#include <array>

/// The parts of a workbook beside its sheet and its styles.
namespace xlsx {

inline constexpr auto sheetPartName = "xl/worksheets/sheet1.xml";
inline constexpr auto stylesPartName = "xl/styles.xml";

struct Part {
    const char* name;
    QByteArray bytes;
};

/// Parts that are the same in every workbook but for the document's title and date.
[[nodiscard]] std::array<Part, 4> fixedParts(const Page& page);

/// The part that names the sheet, the filter over `table`, a range such as $A$1:$B$9, and the repeated row.
[[nodiscard]] Part workbookPart(const Page& page, const QByteArray& table);

} // namespace xlsx
