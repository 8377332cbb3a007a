#include "xlsx/styles.h"

#include <array>

namespace xlsx {

namespace {

constexpr std::array kinds{CellKind::Header, CellKind::Value, CellKind::NumberAsText, CellKind::Footer};

// Numbers of built-in formats (ECMA-376 part 1, 18.8.30) and the first that a workbook may give.
constexpr int generalFormat = 0;
constexpr int integerFormat = 1;
constexpr int textFormat = 49;
constexpr int firstOwnFormat = 164;

constexpr int mostFractionDigits = 18;
constexpr int filterButtonIndent = 2; // of about 9 pixels each

constexpr auto beforeFormats = R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>
<styleSheet xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main">)";

// Font 1 is the bold one, border 1 the thin lines between cells.
constexpr auto afterFormats =
    R"(<fonts count="2"><font><sz val="11"/><name val="Calibri"/><family val="2"/></font>)"
    R"(<font><b/><sz val="11"/><name val="Calibri"/><family val="2"/></font></fonts>)"
    R"(<fills count="2"><fill><patternFill patternType="none"/></fill>)"
    R"(<fill><patternFill patternType="gray125"/></fill></fills>)"
    R"(<borders count="2"><border><left/><right/><top/><bottom/><diagonal/></border>)"
    R"(<border><left style="thin"><color rgb="FFBFBFBF"/></left><right style="thin"><color rgb="FFBFBFBF"/>)"
    R"(</right><top style="thin"><color rgb="FFBFBFBF"/></top><bottom style="thin"><color rgb="FFBFBFBF"/>)"
    R"(</bottom><diagonal/></border></borders>)"
    R"(<cellStyleXfs count="1"><xf numFmtId="0" fontId="0" fillId="0" borderId="0"/></cellStyleXfs>)";

constexpr auto afterCells =
    R"(<cellStyles count="1"><cellStyle name="Normal" xfId="0" builtinId="0"/></cellStyles></styleSheet>)";

QByteArray formats() {
    QByteArray result = "<numFmts count=\"" + QByteArray::number(mostFractionDigits) + "\">";
    for (int digits = 1; digits <= mostFractionDigits; ++digits) {
        result += "<numFmt numFmtId=\"" + QByteArray::number(firstOwnFormat + digits) + "\" formatCode=\"0." +
                  QByteArray(digits, '0') + "\"/>";
    }
    return result + "</numFmts>";
}

int numberFormat(const Column& column, CellKind kind) {
    switch (kind) {
    case CellKind::Header:
        return generalFormat;
    case CellKind::Footer:
        return integerFormat;
    case CellKind::Value:
        if (column.fractionDigits) {
            return *column.fractionDigits == 0 ? integerFormat : firstOwnFormat + *column.fractionDigits;
        }
        break;
    case CellKind::NumberAsText:
        break;
    }
    return textFormat;
}

QByteArray cellStyle(const Column& column, CellKind kind) {
    const bool header = kind == CellKind::Header;
    const bool right = (header ? column.headerAlignment : column.alignment).testFlag(Qt::AlignRight);
    const bool bold = header || kind == CellKind::Footer;
    const int format = numberFormat(column, kind);
    QByteArray result = "<xf numFmtId=\"" + QByteArray::number(format) + "\" fontId=\"" + (bold ? "1" : "0") +
                        R"(" fillId="0" borderId="1" xfId="0" applyNumberFormat="1" applyFont="1")"
                        R"( applyBorder="1" applyAlignment="1"><alignment horizontal=")" +
                        (right ? "right" : "left") + R"(" vertical="top")";
    if (format == generalFormat || format == textFormat) {
        result += R"( wrapText="1")";
    }
    if (header && right) {
        result += " indent=\"" + QByteArray::number(filterButtonIndent) + '"';
    }
    return result + "/></xf>";
}

} // namespace

int styleOf(std::size_t column, CellKind kind) {
    return 1 + static_cast<int>(column * kinds.size()) + static_cast<int>(kind);
}

QByteArray stylesPart(std::span<const Column> columns) {
    QByteArray result = beforeFormats + formats() + afterFormats + "<cellXfs count=\"" +
                        QByteArray::number(styleOf(columns.size(), CellKind::Header)) +
                        R"("><xf numFmtId="0" fontId="0" fillId="0" borderId="0" xfId="0"/>)";
    for (const Column& column : columns) {
        for (const CellKind kind : kinds) {
            result += cellStyle(column, kind);
        }
    }
    return result + "</cellXfs>" + afterCells;
}

} // namespace xlsx
