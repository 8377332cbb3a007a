#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Holds exported workbooks, as LibreOffice and Gnumeric read them, against the database.

Usage: read_back.py EXPORTER   with the packages libreoffice-calc-nogui and gnumeric

EXPORTER is the program exported_grids, built along with the tests. It exports the eight grids of two editions, sorted
and filtered, from a private server whose catalog holds the texts and numbers that a spreadsheet may take amiss.
"""
import csv
import os
import subprocess
import sys
import tempfile
from decimal import Decimal
from pathlib import Path

from openpyxl.utils.escape import unescape

ROOT = Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT))
from tour import catalog  # noqa: E402

ADDRESS = "127.0.0.41"
READER_TIMEOUT = 300  # seconds
EDITIONS = {"Action1": catalog.TER, "Action8": catalog.FER2020}
# The text that the first column of texts of each grid is filtered by; empty: all rows.
FILTERS = ("", "", "e", "e", "e", "е", "", "н")
# What isql cannot print, or parts values with, travels under another name.
MARKED = {0: "<#0>", 2: "<#2>", 30: "<#30>", 31: "<#31>"}


def run(*command, **settings):
    subprocess.run(list(map(str, command)), check=True, timeout=READER_TIMEOUT, stdout=subprocess.DEVNULL,
                   **{"stderr": subprocess.DEVNULL, **settings})


def marked(field):
    for code, mark in MARKED.items():
        field = f"replace({field}, ascii_char({code}), '{mark}')"
    return field


def unmarked(value):
    if isinstance(value, str):
        for code, mark in MARKED.items():
            value = value.replace(mark, chr(code))
    return value


def wanted_rows(tab, edition, text):
    filtered = next(column for column in tab.columns if column.digits is None)
    condition = f"{filtered.field} containing {catalog.literal(text)}" if text else None
    columns = tuple(column._replace(field=marked(column.field)) if column.digits is None else column
                    for column in tab.columns)
    rows = catalog.rows(tab._replace(columns=columns), catalog.Selection(edition, "В пределах", "202403"), condition,
                        f"{tab.columns[-1].field} desc nulls last")
    return [[unmarked(value) for value in row] for row in rows]


def comparable(value):
    """Spreadsheets know one kind of line break, and a text is empty or there."""
    return (value.replace("\r\n", "\n") or None) if isinstance(value, str) else value


def differences(found, wanted, tab):
    """Lines about what a reader shows of a workbook and the database does not, or the other way round."""
    header, *rows, footer = found
    counted = [str(len(wanted)) if column.label == tab.counted else "" for column in tab.columns]
    lines = []
    if header != [column.label for column in tab.columns] or footer != counted:
        lines.append(f"header {header}, footer {footer}")
    if len(rows) != len(wanted):
        return lines + [f"{len(rows)} rows, not {len(wanted)}"]

    shown = [[comparable(text if column.digits is None or text == "" else Decimal(text))
              for text, column in zip(row, tab.columns)] for row in rows]
    expected = [[comparable(cell) for cell in row] for row in wanted]
    if [row[-1] for row in shown] != [row[-1] for row in expected]:
        lines.append("another order")
    for row, expected_row in zip(sorted(shown, key=repr), sorted(expected, key=repr)):
        lines += [f"{column.label}: {cell!r} is {expected_cell!r} in the database"
                  for column, cell, expected_cell in zip(tab.columns, row, expected_row) if cell != expected_cell]
    return lines


def rows_of(path):
    with open(path, encoding="utf-8", newline="") as lines:
        return list(csv.reader(lines))


def read_by_libreoffice(books, folder):
    texts = folder / "libreoffice"
    run("soffice", f"-env:UserInstallation={(folder / 'profile').as_uri()}", "--headless", "--convert-to",
        "csv:Text - txt - csv (StarCalc):44,34,76,1", "--outdir", texts, *books)
    return {book: rows_of(texts / f"{book.stem}.csv") for book in books}


def read_by_gnumeric(books, folder):
    """Gnumeric leaves escaped characters as they are and shows the minus of a formatted number as a printer sets it."""
    found = {}
    for book in books:
        text = folder / f"{book.stem}.txt"
        run("ssconvert", "-T", "Gnumeric_stf:stf_assistant", "-O", "separator=, format=preserve", book, text)
        found[book] = [[unescape(value.replace("\N{MINUS SIGN}", "-")) for value in row] for row in rows_of(text)]
    return found


def export(program, folder):
    for suffix in ("KATALOGKTC", "KATOGLAVLENIE", "MASH", "TRUD"):
        run("isql-fb", "-bail", "-ch", "UTF8", "-user", "SYSDBA", "-password", catalog.PASSWORD, catalog.DATABASE,
            text=True, input=f"insert into FER20{suffix}_TABLE select * from TER{suffix}_TABLE; commit;")
    run(program, stderr=None,
        env={**os.environ, "QT_QPA_PLATFORM": "offscreen", "LC_ALL": "C.UTF-8", "TARVELO_SERVER": ADDRESS,
             "TARVELO_EXPORT": str(folder), "TARVELO_FILTERS": "|".join(FILTERS)})


def main(program):
    catalog.DATABASE = catalog.DATABASE.replace(catalog.SERVER, ADDRESS, 1)
    failed = False
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        server = ROOT / "database/private-server"
        run(server, "start", "--root", folder / "server", "--address", ADDRESS, "--lifetime", "900",
            "--catalog", ROOT / "tests/support/limits.sql")
        try:
            export(program, folder)
            books = {folder / f"{action}-{number}.xlsx": (tab, wanted_rows(tab, edition, FILTERS[number]))
                     for action, edition in EDITIONS.items() for number, tab in enumerate(catalog.GRID_TABS)}
        finally:
            run(server, "stop", "--root", folder / "server")
        for read in (read_by_libreoffice, read_by_gnumeric):
            for book, found in read(books, folder).items():
                tab, wanted = books[book]
                wrong = differences(found, wanted, tab)
                print(f"{read.__name__}: {book.stem} ({tab.caption}): {len(wanted)} rows, {len(wrong)} differences")
                print("".join(f"    {line}\n" for line in wrong), end="")
                failed = failed or bool(wrong)
    return failed


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    sys.exit(main(sys.argv[1]))
