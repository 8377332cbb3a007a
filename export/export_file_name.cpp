#include "export/export_file_name.h"

#include "base/file_name.h"

namespace exporter {

QString workbookFileName(const QString& name) {
    return base::withExtension(name, QStringLiteral(".xlsx"));
}

QString exportName(const QString& fileName) {
    return base::withExtension(fileName.sliced(base::folderOf(fileName).size()), {});
}

} // namespace exporter
