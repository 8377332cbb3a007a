#include "export/export_names.h"

#include "base/file_name.h"

#include <QList>

#include <string_view>

namespace exporter {

namespace {

constexpr qsizetype longestSheetName = 31;
constexpr QChar substitute = u'_';

/// Whether a sheet's name or the XML of a workbook cannot hold a character; half a surrogate pair comes
/// as the replacement character.
bool isForbidden(char32_t character) {
    return QChar::category(character) == QChar::Other_Control ||
           std::u32string_view(U"[]:*?/\\\uFFFD\uFFFE\uFFFF").find(character) != std::u32string_view::npos;
}

} // namespace

QString workbookFileName(const QString& name) {
    return base::withExtension(name, QStringLiteral(".xlsx"));
}

QString exportName(const QString& fileName) {
    return base::withExtension(fileName.sliced(base::folderOf(fileName).size()), {});
}

QString sheetName(const QString& name) {
    QString sheet;
    for (const char32_t character : name.toUcs4()) {
        const QString next = isForbidden(character) ? substitute : QString::fromUcs4(&character, 1);
        if (sheet.size() + next.size() > longestSheetName) {
            break;
        }
        sheet += next;
    }
    if (sheet.trimmed().isEmpty()) {
        return QStringLiteral("Лист1");
    }
    if (sheet.compare(u"History", Qt::CaseInsensitive) == 0) {
        return sheet + substitute;
    }
    for (QChar* const end : {&sheet.front(), &sheet.back()}) {
        if (*end == u'\'') {
            *end = substitute;
        }
    }
    return sheet;
}

} // namespace exporter
