# SPDX-License-Identifier: MIT
"""Exported workbooks, read by programs that have nothing to do with the exporter."""
import csv
import subprocess
from decimal import Decimal

import openpyxl
from openpyxl.utils import get_column_letter
from openpyxl.utils.escape import unescape

from tour import workbook_format
from tour.desktop import TourError

LONGEST_SHEET_NAME = 31  # the workbook format's own limit
OFFICE_TIMEOUT = 120  # seconds


def require(condition, what):
    if not condition:
        raise TourError(what)


def file_name(tab, selection):
    """The name without folder and extension; like the program, it loses what follows the last point."""
    name = f"   {selection.edition.caption}{tab.file_text}"
    if tab.per_selection:
        name += selection.region + selection.period
    return name.rpartition(".")[0] if "." in name else name


def _value(cell):
    if isinstance(cell.value, str):
        return unescape(cell.value)
    # repr() is the shortest text that names the number: what a user reads in a spreadsheet.
    return None if cell.value is None else Decimal(repr(cell.value))


def _check_header(path, cells, columns):
    require([cell.value for cell in cells] == [column.label for column in columns],
            f"{path.name}: the header is {[cell.value for cell in cells]}")
    require(all(cell.font.bold for cell in cells), f"{path.name}: the header is not bold")


def _check_style(path, cell, column):
    if cell.value is None:
        return
    is_number = column.digits is not None
    wanted_format = "@" if not is_number else "0." + "0" * column.digits if column.digits else "0"
    wanted_side = "right" if column.digits else "left"
    require(cell.number_format == wanted_format and cell.alignment.horizontal == wanted_side,
            f"{path.name}: {cell.coordinate} has the format {cell.number_format}, {cell.alignment.horizontal}")
    require(cell.data_type == ("n" if is_number else "s"),
            f"{path.name}: {cell.coordinate} has the type {cell.data_type}")


def _check_footer(path, cells, columns, counted, count):
    wanted = [count if column.label == counted else None for column in columns]
    require([cell.value for cell in cells] == wanted, f"{path.name}: the footer is {[cell.value for cell in cells]}")


def _check_rows(path, found, wanted, keys):
    require(len(found) == len(wanted), f"{path.name}: {len(found)} rows where the database has {len(wanted)}")
    if keys is not None:
        # The database leaves open how rows of equal keys follow each other.
        require([[row[key] for key in keys] for row in found] == [[row[key] for key in keys] for row in wanted],
                f"{path.name}: the rows stand in another order")
        found, wanted = sorted(found, key=repr), sorted(wanted, key=repr)
    for number, (row, wanted_row) in enumerate(zip(found, wanted), start=2):
        require(row == wanted_row, f"{path.name}: row {number} is {row} where the database has {wanted_row}")


def check(path, tab, columns, wanted, keys=None):
    """Compares a workbook with the rows of the database: every value, type, format, the order, the footer.

    With `keys`, places in a row, only they settle the order. Returns how many rows there are.
    """
    mistakes = workbook_format.mistakes(path)
    require(not mistakes, f"{path.name}: {mistakes[:5]}")
    workbook = openpyxl.load_workbook(path)
    require(workbook.sheetnames == [path.stem[:LONGEST_SHEET_NAME]], f"{path.name}: sheets {workbook.sheetnames}")
    sheet = workbook.active
    header, *cells, footer = list(sheet.iter_rows(max_col=max(len(columns), sheet.max_column)))
    _check_header(path, header, columns)
    for row in cells:
        for cell, column in zip(row, columns):
            _check_style(path, cell, column)
    _check_rows(path, [[_value(cell) for cell in row] for row in cells], wanted, keys)
    _check_footer(path, footer, columns, tab.counted, len(wanted))
    last = f"{get_column_letter(len(columns))}{len(wanted) + 1}"
    require((sheet.freeze_panes, sheet.auto_filter.ref) == ("A2", f"A1:{last}"),
            f"{path.name}: frozen at {sheet.freeze_panes}, filter over {sheet.auto_filter.ref}")
    return len(wanted)


def check_in_office(row_counts, folder):
    """Lets LibreOffice open workbooks and write them as text; each must have its rows, a header and a footer."""
    texts = folder / "office"
    text_filter = "csv:Text - txt - csv (StarCalc):44,34,76,1"
    outcome = subprocess.run(
        ["soffice", f"-env:UserInstallation={(folder / 'office-profile').as_uri()}", "--headless",
         "--convert-to", text_filter, "--outdir", texts, *row_counts],
        capture_output=True, timeout=OFFICE_TIMEOUT, check=False)
    for path, row_count in row_counts.items():
        text = texts / (path.stem + ".csv")
        require(text.exists(), f"LibreOffice does not open {path.name}: {outcome.stderr.decode(errors='replace')}")
        with open(text, encoding="utf-8", newline="") as lines:
            found = len(list(csv.reader(lines)))
        require(found == row_count + 2, f"LibreOffice reads {found} rows from {path.name}, not {row_count + 2}")
