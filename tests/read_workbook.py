#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Prints a workbook as JSON, as a reader of its own sees it."""
import json
import sys

import openpyxl
from openpyxl.utils import get_column_letter
from openpyxl.utils.escape import unescape


def cell(c):
    if c.value is None:
        return None
    text = c.data_type in ("s", "inlineStr")
    return {
        "type": "text" if text else c.data_type,
        "value": unescape(c.value) if text else c.value,
        "format": c.number_format,
        "align": c.alignment.horizontal,
        "wrap": bool(c.alignment.wrap_text),
        "bold": bool(c.font.bold),
    }


workbook = openpyxl.load_workbook(sys.argv[1])
sheet = workbook.active
print(json.dumps({
    "sheets": workbook.sheetnames,
    "rows": [[cell(c) for c in row] for row in sheet.iter_rows()],
    "widths": [sheet.column_dimensions[get_column_letter(i + 1)].width for i in range(sheet.max_column)],
    "heights": [sheet.row_dimensions[i + 1].height for i in range(sheet.max_row)],
    "frozen": sheet.freeze_panes,
    "filter": sheet.auto_filter.ref,
    "titleRows": sheet.print_title_rows,
    "page": [sheet.page_setup.orientation, sheet.page_setup.fitToWidth, sheet.page_setup.fitToHeight,
             sheet.sheet_properties.pageSetUpPr.fitToPage, sheet.page_setup.paperSize],
    "creator": workbook.properties.creator,
    "title": workbook.properties.title,
    "printed": [sheet.oddHeader.center.text, sheet.oddFooter.center.text],
}))
