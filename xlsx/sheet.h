#pragma once

#include <QChar>
#include <QString>

#include <cstdint>
#include <optional>

/// Workbooks in the format of ECMA-376 (Office Open XML, transitional) with one sheet that holds one table.
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
    QString sheetName;  ///< fit for a sheet: 1 to 31 UTF-16 units, none of []:*?/\ among them
    QString title;      ///< of the document
    QString header;     ///< printed above every page
    QChar decimalPoint; ///< in numbers that have to be written as texts
};

} // namespace xlsx
