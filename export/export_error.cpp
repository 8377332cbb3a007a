#include "export/export_error.h"

namespace exporter {

ExportError::ExportError(const QString& fileName, const QString& reason)
    : base::Error(QStringLiteral("Не удалось выгрузить таблицу в файл «%1»: %2").arg(fileName, reason)) {}

} // namespace exporter
