#include "grid/rows/clipboard_text.h"

#include "grid/rows/table_model.h"

#include <algorithm>

namespace grid {

QString clipboardCell(QString cell) {
    const bool isPlain = std::ranges::none_of(cell, [](QChar character) {
        return character == u'\t' || character == u'"' || character == u'\n' || character == u'\r';
    });
    if (isPlain) {
        return cell;
    }
    return u'"' + cell.replace(u'"', QStringLiteral("\"\"")) + u'"';
}

QString clipboardText(const TableModel& model, std::span<const int> columns, std::span<const RowRange> rows) {
    QString result;
    for (const RowRange& range : rows) {
        for (int row = range.first; row <= range.last; ++row) {
            for (std::size_t i = 0; i < columns.size(); ++i) {
                if (i > 0) {
                    result += u'\t';
                }
                result += clipboardCell(model.text(row, columns[i]));
            }
            result += u'\n';
        }
    }
    return result;
}

} // namespace grid
