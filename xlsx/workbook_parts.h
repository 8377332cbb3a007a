// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <span>
#include <vector>

/// Workbooks in the format of ECMA-376 (Office Open XML, transitional) with one sheet that holds one table:
/// their parts, but for the rows of the sheet.
namespace xlsx {

inline constexpr int sheetRows = 1'048'576;        ///< what the format allows, the header among them
inline constexpr std::size_t longestText = 32'767; ///< characters of a cell that the format allows

/// A column of the table.
struct Column {
    QString header;
    int width; ///< pixels at 96 dpi
    Qt::Alignment headerAlignment;
    Qt::Alignment alignment;
    std::optional<int> fractionDigits; ///< of numbers, 0 to 18; none for texts, which wrap
};

/// What surrounds the table.
struct Page {
    QString name;       ///< of the sheet, as far as it may be one's
    QString title;      ///< of the document
    QString header;     ///< printed above every page
    QChar decimalPoint; ///< in numbers that have to be written as texts
};

/// Each column has a style for every kind of its cells.
enum class CellKind { Header, Footer, Text, NumberOrBlank };
inline constexpr std::size_t cellKinds = 4;

/// The style that a cell of a column names.
[[nodiscard]] std::size_t styleOf(std::size_t column, CellKind kind);

/// "A" for column 0.
[[nodiscard]] QByteArray columnLetters(std::size_t column);

/// The columns in a width that a sheet allows. Where one is wider all shrink, so that their proportions stay.
[[nodiscard]] std::vector<Column> fittedToSheet(std::vector<Column> columns);

/// The name of a sheet that comes closest to `name`: at most 31 UTF-16 units, what sheet names may not hold
/// replaced by "_", never empty and never the one that spreadsheets keep for themselves. Blanks stay.
[[nodiscard]] QString sheetName(const QString& name);

/// What resources/xlsx holds. Throws base::ResourceError when it is missing.
[[nodiscard]] QByteArray resource(const QString& name);

struct Part {
    QByteArray name;
    QByteArray bytes;
};

/// The parts beside the sheet; `lastRow` ends the table that the filter covers.
[[nodiscard]] std::vector<Part> partsBesideSheet(const Page& page, std::span<const Column> columns,
                                                 int lastRow);

[[nodiscard]] QByteArray beforeRows(std::span<const Column> columns);
[[nodiscard]] QByteArray afterRows(const Page& page, std::size_t columnCount, int lastRow);

} // namespace xlsx
