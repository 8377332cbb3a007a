#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Holds the parts of a workbook against the format: ECMA-376, transitional, as far as the writer uses it.

Usage: workbook_format.py WORKBOOK   prints what is wrong, one line each
"""
import re
import sys
import xml.etree.ElementTree as ElementTree
import zipfile

MAIN = "{http://schemas.openxmlformats.org/spreadsheetml/2006/main}"
RELATION = "{http://schemas.openxmlformats.org/officeDocument/2006/relationships}id"
NUMBER, TEXT, FLAG = r"\d+", r"(?s).*", "[01]"
RANGE = r"A1:[A-Z]{1,3}\d+"

# Element: its children in the order of the schema, its attributes with what they may hold.
SCHEMA = {
    "worksheet": ("sheetPr dimension sheetViews sheetFormatPr cols sheetData autoFilter printOptions pageMargins"
                  " pageSetup headerFooter ignoredErrors", {}),
    "sheetPr": ("tabColor outlinePr pageSetUpPr", {}),
    "pageSetUpPr": ("", {"fitToPage": FLAG}),
    "sheetViews": ("sheetView", {}),
    "sheetView": ("pane selection", {"tabSelected": FLAG, "workbookViewId": NUMBER}),
    "pane": ("", {"ySplit": NUMBER, "topLeftCell": "A2", "activePane": "bottomLeft", "state": "frozen"}),
    "selection": ("", {"pane": "bottomLeft"}),
    "sheetFormatPr": ("", {"defaultRowHeight": NUMBER}),
    "cols": ("col", {}),
    "col": ("", {"min": NUMBER, "max": NUMBER, "width": r"\d+(\.\d+)?", "customWidth": FLAG}),
    "sheetData": ("row", {}),
    "row": ("c", {"r": NUMBER, "ht": r"\d+(\.\d+)?"}),
    "c": ("f v is", {"r": r"[A-Z]{1,3}\d+", "s": NUMBER, "t": "inlineStr"}),
    "is": ("t", {}),
    "t": ("", {"{http://www.w3.org/XML/1998/namespace}space": "preserve"}),
    "v": ("", {}),
    "autoFilter": ("", {"ref": RANGE}),
    "pageMargins": ("", dict.fromkeys("left right top bottom header footer".split(), r"\d\.\d+")),
    "pageSetup": ("", {"paperSize": "9", "fitToHeight": "0", "orientation": "landscape"}),
    "headerFooter": ("oddHeader oddFooter", {}),
    "oddHeader": ("", {}),
    "oddFooter": ("", {}),
    "ignoredErrors": ("ignoredError", {}),
    "ignoredError": ("", {"sqref": RANGE, "numberStoredAsText": FLAG}),
    "workbook": ("workbookPr bookViews sheets definedNames calcPr", {}),
    "bookViews": ("workbookView", {}),
    "workbookView": ("", {}),
    "sheets": ("sheet", {}),
    "sheet": ("", {"name": TEXT, "sheetId": "1", RELATION: "rId1"}),
    "definedNames": ("definedName", {}),
    "definedName": ("", {"name": r"_xlnm\.\w+", "localSheetId": "0", "hidden": FLAG}),
    "styleSheet": ("numFmts fonts fills borders cellStyleXfs cellXfs cellStyles dxfs", {}),
    "numFmts": ("numFmt", {"count": NUMBER}),
    "numFmt": ("", {"numFmtId": NUMBER, "formatCode": r"0\.0+"}),
    "fonts": ("font", {"count": NUMBER}),
    "font": ("b sz name family", {}),
    "fills": ("fill", {"count": NUMBER}),
    "fill": ("patternFill", {}),
    "patternFill": ("", {"patternType": "none|gray125"}),
    "borders": ("border", {"count": NUMBER}),
    "border": ("left right top bottom diagonal", {}),
    **dict.fromkeys(("left", "right", "top", "bottom", "diagonal"), ("color", {"style": "thin"})),
    "color": ("", {"rgb": "[0-9A-F]{8}"}),
    "b": ("", {}), "sz": ("", {"val": NUMBER}), "name": ("", {"val": TEXT}), "family": ("", {"val": NUMBER}),
    "cellStyleXfs": ("xf", {"count": NUMBER}),
    "cellXfs": ("xf", {"count": NUMBER}),
    "xf": ("alignment", {**dict.fromkeys("numFmtId fontId fillId borderId xfId".split(), NUMBER),
                         **dict.fromkeys(("apply" + x for x in "NumberFormat Font Border Alignment".split()), FLAG)}),
    "alignment": ("", {"horizontal": "left|right", "vertical": "top", "wrapText": FLAG, "indent": NUMBER}),
    "cellStyles": ("cellStyle", {"count": NUMBER}),
    "cellStyle": ("", {"name": "Normal", "xfId": "0", "builtinId": "0"}),
}


def check_element(element):
    name = element.tag.removeprefix(MAIN)
    children, attributes = SCHEMA.get(name, (None, None))
    if children is None:
        return [f"<{name}> is unknown"]
    order = children.split()
    found = [child.tag.removeprefix(MAIN) for child in element]
    wrong = [f"<{name}> holds <{child}>" for child in found if child not in order]
    if not wrong and [order.index(child) for child in found] != sorted(order.index(child) for child in found):
        wrong.append(f"<{name}> holds {found}")
    wrong += [f'<{name} {key}="{value}">' for key, value in element.items()
              if not re.fullmatch(attributes.get(key, "(?!)"), value)]
    if element.get("count", str(len(found))) != str(len(found)):
        wrong.append(f"<{name}> counts {element.get('count')} of {len(found)}")
    return wrong + [line for child in element for line in check_element(child)]


def column_name(index):
    """The letters of a column, A for 0; up to ZZ."""
    return (chr(ord("A") + index // 26 - 1) if index > 25 else "") + chr(ord("A") + index % 26)


def check_cells(sheet, styles):
    """Rows and cells follow one another, each cell under its own name and with a style that exists."""
    wrong = []
    last = len(styles.find(MAIN + "cellXfs")) - 1
    for number, row in enumerate(sheet.iter(MAIN + "row"), start=1):
        names = [cell.get("r") for cell in row]
        wanted = [column_name(i) + str(number) for i in range(len(row))]
        if row.get("r") != str(number) or names != wanted or not 15 <= float(row.get("ht")) <= 409.5:
            wrong.append(f"row {number}: {row.attrib}, {names}")
        wrong += [f"row {number}: style {cell.get('s')}" for cell in row if not 0 < int(cell.get("s")) <= last]
        wrong += [f"row {number}: {cell.attrib}" for cell in row
                  if (cell.get("t") == "inlineStr") != (cell.find(MAIN + "is") is not None)]
    return wrong


def check_names(workbook, sheet):
    """The names by which a spreadsheet finds the filtered table and the row that it prints on every page."""
    quoted = "'" + workbook.find(f"{MAIN}sheets/{MAIN}sheet").get("name").replace("'", "''") + "'!"
    table = sheet.find(MAIN + "autoFilter").get("ref")
    wanted = {"_xlnm._FilterDatabase": ("1", quoted + re.sub(r"([A-Z]+)(\d+)", r"$\1$\2", table)),
              "_xlnm.Print_Titles": (None, quoted + "$1:$1")}
    found = {name.get("name"): (name.get("hidden"), name.text) for name in workbook.iter(MAIN + "definedName")}
    rows = sheet.find(MAIN + "sheetData")
    last = rows[-2][-1].get("r")  # above the footer
    wrong = [] if found == wanted else [f"names {found}"]
    return wrong if table == f"A1:{last}" else wrong + [f"the table is {table}"]


def mistakes(path):
    """What is wrong with a workbook, one line each."""
    archive = zipfile.ZipFile(path)
    parts = {name: ElementTree.fromstring(archive.read(name)) for name in archive.namelist()}
    wrong = [archive.testzip()] if archive.testzip() else []
    types = parts["[Content_Types].xml"]
    typed = {entry.get("PartName") for entry in types} | {"/[Content_Types].xml"}
    wrong += [f"{name} has no content type" for name in parts if f"/{name}" not in typed and not name.endswith(".rels")]
    for name in ("_rels/.rels", "xl/_rels/workbook.xml.rels"):
        folder = name.split("_rels")[0]
        wrong += [f"{name} leads nowhere" for entry in parts[name] if folder + entry.get("Target") not in parts]
    sheet, styles = parts["xl/worksheets/sheet1.xml"], parts["xl/styles.xml"]
    for part in (sheet, styles, parts["xl/workbook.xml"]):
        wrong += check_element(part)
    return wrong + check_cells(sheet, styles) + check_names(parts["xl/workbook.xml"], sheet)


if __name__ == "__main__":
    print("\n".join(mistakes(sys.argv[1])), end="")
