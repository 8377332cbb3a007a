#include "xlsx/package_parts.h"

#include "xlsx/cell_text.h"

#include <QDateTime>

namespace xlsx {

namespace {

constexpr auto contentTypes =
    R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>
<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types">)"
    R"(<Default Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/>)"
    R"(<Default Extension="xml" ContentType="application/xml"/>)"
    R"(<Override PartName="/xl/workbook.xml" ContentType=)"
    R"("application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml"/>)"
    R"(<Override PartName="/xl/worksheets/sheet1.xml" ContentType=)"
    R"("application/vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml"/>)"
    R"(<Override PartName="/xl/styles.xml" ContentType=)"
    R"("application/vnd.openxmlformats-officedocument.spreadsheetml.styles+xml"/>)"
    R"(<Override PartName="/docProps/core.xml" ContentType=)"
    R"("application/vnd.openxmlformats-package.core-properties+xml"/></Types>)";

constexpr auto packageRelations =
    R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>
<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">)"
    R"(<Relationship Id="rId1" Type=)"
    R"("http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument")"
    R"( Target="xl/workbook.xml"/><Relationship Id="rId2" Type=)"
    R"("http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties")"
    R"( Target="docProps/core.xml"/></Relationships>)";

constexpr auto workbookRelations =
    R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>
<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">)"
    R"(<Relationship Id="rId1" Type=)"
    R"("http://schemas.openxmlformats.org/officeDocument/2006/relationships/worksheet")"
    R"( Target="worksheets/sheet1.xml"/><Relationship Id="rId2" Type=)"
    R"("http://schemas.openxmlformats.org/officeDocument/2006/relationships/styles" Target="styles.xml"/>)"
    R"(</Relationships>)";

QByteArray properties(const Page& page) {
    const QByteArray now = QDateTime::currentDateTimeUtc().toString(Qt::ISODate).toLatin1();
    return R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>
<cp:coreProperties xmlns:cp="http://schemas.openxmlformats.org/package/2006/metadata/core-properties")"
           R"( xmlns:dc="http://purl.org/dc/elements/1.1/" xmlns:dcterms="http://purl.org/dc/terms/")"
           R"( xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance"><dc:title>)" +
           textOf(page.title) +
           R"(</dc:title><dc:creator>Tarvelo</dc:creator><dcterms:created xsi:type="dcterms:W3CDTF">)" + now +
           R"(</dcterms:created><dcterms:modified xsi:type="dcterms:W3CDTF">)" + now +
           "</dcterms:modified></cp:coreProperties>";
}

} // namespace

std::array<Part, 4> fixedParts(const Page& page) {
    return {{{"[Content_Types].xml", contentTypes},
             {"_rels/.rels", packageRelations},
             {"docProps/core.xml", properties(page)},
             {"xl/_rels/workbook.xml.rels", workbookRelations}}};
}

Part workbookPart(const Page& page, const QByteArray& table) {
    QString quoted = page.sheetName;
    const QByteArray sheet = '\'' + textOf(quoted.replace(u'\'', QStringLiteral("''"))) + "'!";
    return {"xl/workbook.xml",
            R"(<?xml version="1.0" encoding="UTF-8" standalone="yes"?>
<workbook xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main")"
            R"( xmlns:r="http://schemas.openxmlformats.org/officeDocument/2006/relationships">)"
            R"(<bookViews><workbookView/></bookViews><sheets><sheet name=")" +
                textOf(page.sheetName) +
                R"(" sheetId="1" r:id="rId1"/></sheets><definedNames>)"
                R"(<definedName name="_xlnm._FilterDatabase" localSheetId="0" hidden="1">)" +
                sheet + table + R"(</definedName><definedName name="_xlnm.Print_Titles" localSheetId="0">)" +
                sheet + "$1:$1</definedName></definedNames></workbook>"};
}

} // namespace xlsx
