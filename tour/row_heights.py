#!/usr/bin/python3
# SPDX-License-Identifier: MIT
"""Holds the row heights of workbooks against those that LibreOffice finds itself.

Usage: row_heights.py WORKBOOK...   with the package libreoffice-calc-nogui

LibreOffice takes over the heights of a workbook, but works out those of a document of its own that names none. So each
workbook is converted twice: as it is, and again without its heights.
"""
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ElementTree
from pathlib import Path

OFFICE_TIMEOUT = 300  # seconds
TABLE = "{urn:oasis:names:tc:opendocument:xmlns:table:1.0}"
STYLE = "{urn:oasis:names:tc:opendocument:xmlns:style:1.0}"
POINTS = {"in": 72, "cm": 72 / 2.54, "mm": 72 / 25.4, "pt": 1}

# Points: a line of Carlito 11 in LibreOffice and what it adds to a row; a line in our workbooks and their tallest row.
OFFICE_LINE, OFFICE_PADDING = 11.2, 1.44
LINE, TALLEST = 15, 409.5


def convert(paths, folder):
    """Converts documents to flat OpenDocument files in `folder`."""
    folder.mkdir(exist_ok=True)
    subprocess.run(
        ["soffice", f"-env:UserInstallation={(folder.parent / 'profile').as_uri()}", "--headless",
         "--convert-to", "fods", "--outdir", folder, *paths],
        capture_output=True, timeout=OFFICE_TIMEOUT, check=True)
    return [folder / (path.stem + ".fods") for path in paths]


def without_heights(path):
    text = path.read_text(encoding="utf-8")
    text = re.sub(r'(<style:table-row-properties[^>]*?) style:row-height="[^"]*"', r"\1", text)
    path.write_text(text.replace('use-optimal-row-height="false"', 'use-optimal-row-height="true"'), encoding="utf-8")


def row_heights(path):
    """The heights in points of the rows in which something stands."""
    root = ElementTree.parse(path).getroot()
    heights = {}
    for style in root.iter(STYLE + "style"):
        properties = style.find(STYLE + "table-row-properties")
        if properties is not None:
            number, unit = re.fullmatch(r"([0-9.]+)([a-z]+)", properties.get(STYLE + "row-height")).groups()
            heights[style.get(STYLE + "name")] = float(number) * POINTS[unit]
    return [heights[row.get(TABLE + "style-name")] for row in root.iter(TABLE + "table-row")
            if "".join(row.itertext()).strip()]


def compare(given, needed):
    """The numbers of the rows that are too low, and of those that are more than one line too high."""
    low, high = [], []
    # The header leaves room for the buttons of the filter.
    for number, (ours, office) in enumerate(zip(given[1:], needed[1:]), start=2):
        lines = round((office - OFFICE_PADDING) / OFFICE_LINE)
        if ours < min(lines * LINE, TALLEST) - 1:
            low.append(number)
        elif ours > (max(lines, 1) + 1) * LINE + 1:
            high.append(number)
    return low, high


def check(paths):
    """Prints the outcome for each workbook; tells whether all heights are right."""
    right = True
    with tempfile.TemporaryDirectory() as name:
        given = convert(paths, Path(name) / "given")
        documents = convert(given, Path(name) / "copies")
        for path in documents:
            without_heights(path)
        needed = convert(documents, Path(name) / "needed")
        for path, ours, office in zip(paths, given, needed):
            rows = row_heights(ours)
            low, high = compare(rows, row_heights(office))
            print(f"{path.name}: {len(rows)} rows, too low {low[:20]}, too high {high[:20]}")
            right = right and bool(rows) and not low and not high
    return right


if __name__ == "__main__":
    sys.exit(0 if check([Path(argument).absolute() for argument in sys.argv[1:]]) else 1)
