#pragma once

#include "base/error.h"

namespace exporter {

/// A grid could not be written to its workbook; an earlier workbook of that name is still whole.
class ExportError : public base::Error {
public:
    /// `reason` is the system's or the workbook writer's text.
    ExportError(const QString& fileName, const QString& reason)
        : base::Error(QStringLiteral("Не удалось выгрузить таблицу в файл «%1»: %2").arg(fileName, reason)) {}
};

} // namespace exporter
