#include "xlsx/resources.h"

#include "base/error.h"

#include <QFile>
#include <QTextStream>

namespace xlsx {

QByteArray resource(const QString& name) {
    QFile file(QStringLiteral(":/xlsx/") + name);
    if (!file.open(QIODevice::ReadOnly)) {
        throw base::ResourceError(file.fileName(), file.errorString());
    }
    return file.readAll();
}

FontWidths fontWidths(const QString& style) {
    FontWidths widths;
    QTextStream numbers(resource(style + QStringLiteral("_widths")));
    for (int& width : widths) {
        numbers >> width;
    }
    return widths;
}

} // namespace xlsx
