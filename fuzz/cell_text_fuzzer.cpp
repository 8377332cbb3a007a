// SPDX-License-Identifier: MIT

// Texts as they stand in a workbook: well-formed whatever they hold, and a reader gets back what they were.

#include "base/win1251.h"
#include "fuzz/fuzzing.h"
#include "xlsx/cell_text.h"

#include <QRegularExpression>
#include <QXmlStreamReader>

namespace {

/// What a reader of workbooks makes of a cell.
QString readBack(const QByteArray& xml) {
    QXmlStreamReader reader("<t xml:space=\"preserve\">" + xml + "</t>");
    reader.readNextStartElement();
    const QString text = reader.readElementText();
    fuzz::check(!reader.hasError());
    static const QRegularExpression escape(QStringLiteral("_x([0-9A-Fa-f]{4})_"));
    QString result;
    qsizetype place = 0;
    for (auto each = escape.globalMatch(text); each.hasNext();) {
        const QRegularExpressionMatch match = each.next();
        result += text.sliced(place, match.capturedStart() - place);
        result += QChar(match.captured(1).toUShort(nullptr, 16));
        place = match.capturedEnd();
    }
    return result + text.sliced(place);
}

} // namespace

void fuzz::run(Input& input) {
    const QString text = takeText(input);
    check(readBack(xlsx::textOf(text)) == text);
    const std::string bytes = input.ConsumeRemainingBytesAsString();
    std::string xml;
    xlsx::appendText(xml, bytes);
    check(readBack(QByteArray::fromStdString(xml)) == base::win1251::decode(bytes));
}
