#include "grid/rows/clipboard_text.h"

#include <algorithm>

namespace grid {

QString clipboardLine(QStringList cells) {
    for (QString& cell : cells) {
        const bool isPlain = std::ranges::none_of(cell, [](QChar character) {
            return character == u'\t' || character == u'"' || character == u'\n' || character == u'\r';
        });
        if (!isPlain) {
            cell = u'"' + cell.replace(u'"', QStringLiteral("\"\"")) + u'"';
        }
    }
    return cells.join(u'\t') + u'\n';
}

} // namespace grid
