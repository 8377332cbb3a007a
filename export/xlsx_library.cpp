#include "export/xlsx_library.h"

#include "base/error.h"

namespace exporter {

XlsxLibrary::XlsxLibrary(const QString& fileName) : library_(fileName) {}

QString XlsxLibrary::defaultName() {
#ifdef Q_OS_WIN
    return QStringLiteral("xlsxwriter.dll");
#else
    return QStringLiteral("libxlsxwriter.so." LXW_SOVERSION);
#endif
}

QFunctionPointer XlsxLibrary::resolve(const char* name) {
    const QFunctionPointer found = library_.resolve(name);
    if (found == nullptr) {
        throw base::FileError(QStringLiteral("Не загружается библиотека книг"), library_.fileName(),
                              library_.errorString());
    }
    return found;
}

} // namespace exporter
