#include "export/sheet_name.h"

namespace exporter {

namespace {

constexpr qsizetype longestSheetName = 31;
constexpr QChar substitute = u'_';

bool isForbidden(QChar character) {
    // Control characters and half surrogate pairs cannot stand in the workbook's XML.
    return QStringView(u"[]:*?/\\\uFFFE\uFFFF").contains(character) ||
           character.category() == QChar::Other_Control;
}

QString withoutForbidden(QString name) {
    for (qsizetype i = 0; i < name.size(); ++i) {
        const bool pair = name[i].isHighSurrogate() && i + 1 < name.size() && name[i + 1].isLowSurrogate();
        if (pair) {
            ++i;
        } else if (name[i].isSurrogate() || isForbidden(name[i])) {
            name[i] = substitute;
        }
    }
    return name;
}

QString shortened(const QString& name) {
    const bool cutsPair = name.size() > longestSheetName && name[longestSheetName].isLowSurrogate();
    return name.left(cutsPair ? longestSheetName - 1 : longestSheetName);
}

} // namespace

QString sheetName(const QString& name) {
    QString sheet = shortened(withoutForbidden(name));
    if (sheet.trimmed().isEmpty()) {
        return QStringLiteral("Лист1");
    }
    if (sheet.compare(u"History", Qt::CaseInsensitive) == 0) {
        return sheet + substitute;
    }
    constexpr QChar apostrophe = u'\'';
    if (sheet.front() == apostrophe) {
        sheet.front() = substitute;
    }
    if (sheet.back() == apostrophe) {
        sheet.back() = substitute;
    }
    return sheet;
}

} // namespace exporter
