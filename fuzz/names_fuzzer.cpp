// SPDX-License-Identifier: MIT

// Names that users choose by regions and periods: of files, sheets and documents.

#include "base/error.h"
#include "base/file_name.h"
#include "export/replacement_file.h"
#include "fuzz/fuzzing.h"
#include "xlsx/workbook_parts.h"

#include <QDir>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include <algorithm>
#include <array>

namespace {

using fuzz::check;

void checkPath(const QString& name) {
    const QString folder = base::folderOf(name);
    check(name.startsWith(folder) && (folder.isEmpty() || base::isPathDelimiter(folder.back())));
    const QString rest = name.sliced(folder.size());
    check(std::ranges::none_of(rest, base::isPathDelimiter));
    const QString renamed = base::withExtension(name, QStringLiteral(".xlsx"));
    check(renamed.startsWith(folder) && renamed.endsWith(QStringLiteral(".xlsx")));
    check(renamed.chopped(5) ==
          folder + rest.left(rest.contains(u'.') ? rest.lastIndexOf(u'.') : rest.size()));
}

void checkWellFormed(const QByteArray& xml) {
    QXmlStreamReader reader(xml);
    while (!reader.atEnd()) {
        reader.readNext();
    }
    check(!reader.hasError());
}

void checkSheet(const QString& name) {
    const QString sheet = xlsx::sheetName(name);
    check(!sheet.trimmed().isEmpty() && sheet.size() <= 31 && sheet.isValidUtf16());
    check(!sheet.startsWith(u'\'') && !sheet.endsWith(u'\''));
    check(std::ranges::none_of(
        sheet, [](QChar each) { return QStringView(u"[]:*?/\\").contains(each) || each.unicode() < 0x20; }));
    check(xlsx::sheetName(sheet) == sheet);

    const std::array columns{xlsx::Column{name, 64, Qt::AlignLeft, Qt::AlignRight, 2}};
    const xlsx::Page page{name, name, name, u','};
    for (const xlsx::Part& part : xlsx::partsBesideSheet(page, columns, 3)) {
        checkWellFormed(part.bytes);
    }
    checkWellFormed(xlsx::beforeRows(columns) + xlsx::afterRows(page, 1, 3));
}

/// The file of that name, and no other, is there in the end; or it is refused and none is.
void checkFile(const QString& name) {
    static const QTemporaryDir folder;
    bool isWritten = false;
    try {
        exporter::ReplacementFile file(folder.path() + u'/' + name);
        file.commit();
        isWritten = true;
    } catch (const base::Error&) {
        // Not every text is a file's name.
    }
    const QStringList files = QDir(folder.path()).entryList(QDir::Files | QDir::Hidden);
    check(files == (isWritten ? QStringList(name) : QStringList()));
    check(!isWritten || QFile::remove(folder.path() + u'/' + name));
}

} // namespace

void fuzz::run(Input& input) {
    const QString name = takeText(input);
    checkPath(name);
    checkSheet(name);
    // An export takes a name with "/" for one that cannot be.
    if (!name.contains(u'/')) {
        checkFile(name);
    }
}
