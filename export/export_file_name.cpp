#include "export/export_file_name.h"

#include "base/executable.h"

namespace exporter {

QString exportFileName(const QString& folder, const QString& banner, const QString& fixedText,
                       const QString& regionAndPeriod) {
    return folder + banner + fixedText + regionAndPeriod;
}

QString workbookFileName(const QString& name) {
    return executable::withExtension(name, QStringLiteral(".xlsx"));
}

QString exportName(const QString& fileName) {
    return executable::withExtension(fileName.sliced(executable::folderOf(fileName).size()), {});
}

} // namespace exporter
