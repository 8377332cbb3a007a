# SPDX-License-Identifier: MIT
"""What stands on the screen, read by text recognition: Wine tells assistive technology nothing of its windows."""
import csv
import os
import subprocess
from difflib import SequenceMatcher
from typing import NamedTuple

from tour.desktop import NotShown

# Letters of a screen are too small for the recognition, which misreads others at each size.
ENLARGED = (3, 2, 4)
ALIKE = 0.8  # of a text must be read rightly: underlined digits and small points seldom are
SPARSE, BLOCK = 11, 6  # texts anywhere; lines one below the other


class Text(NamedTuple):
    """A text with its left, top, width and height in pixels of the screen."""
    name: str
    box: tuple[int, int, int, int]
    role: str = "text"


class Area(NamedTuple):
    """A part of the screen or of a window."""
    left: int
    top: int
    width: int
    height: int
    window: str = "root"


def run(*arguments, **options):
    return subprocess.run([str(each) for each in arguments], check=True, capture_output=True, **options).stdout


def active_window():
    """The title of the window with the keyboard focus, and its whole area."""
    try:
        window = run("xdotool", "getactivewindow").decode().strip()
        title = run("xdotool", "getwindowname", window).decode().strip()
        lines = run("xdotool", "getwindowgeometry", "--shell", window).decode().split()
    except subprocess.CalledProcessError as error:
        raise NotShown("no window is active") from error
    size = dict(line.split("=") for line in lines)
    return title, Area(0, 0, int(size["WIDTH"]), int(size["HEIGHT"]), window)


def _lines(area, layout, enlarged, language="rus"):
    """The recognised words, line by line."""
    picture = run("import", "-window", area.window, "-crop", "{2}x{3}+{0}+{1}".format(*area), "+repage",
                  "-colorspace", "gray", "-resize", f"{enlarged * 100}%", "png:-")
    # One thread is faster than several that wait for each other.
    table = run("tesseract", "-", "-", "-l", language, "--psm", layout, "tsv", input=picture,
                env={**os.environ, "OMP_THREAD_LIMIT": "1"}).decode()
    lines = {}
    for row in csv.DictReader(table.splitlines(), delimiter="\t", quoting=csv.QUOTE_NONE):
        if row["text"].strip():
            box = [int(row[name]) // enlarged for name in ("left", "top", "width", "height")]
            word = Text(row["text"], (area.left + box[0], area.top + box[1], box[2], box[3]))
            lines.setdefault((row["block_num"], row["par_num"], row["line_num"]), []).append(word)
    return list(lines.values())


def read(area, layout=SPARSE):
    """The text of an area, line by line."""
    return _joined(_lines(area, layout, ENLARGED[0]))


def _joined(lines):
    return "\n".join(" ".join(word.name for word in line) for line in lines)


def is_number(number, area):
    """Whether a number, and nothing else, stands in an area."""
    return any("".join(_joined(_lines(area, BLOCK, enlarged)).split()) == str(number) for enlarged in ENLARGED)


def find(text, area, layout=SPARSE):
    """The words in a line that come closest to a text."""
    for enlarged in ENLARGED:
        found = _closest(text, _lines(area, layout, enlarged))
        if found:
            return found
    raise NotShown(f"'{text}' is not to be read on the screen")


def _closest(text, lines):
    count = len(text.split())
    runs = [line[start:start + count] for line in lines for start in range(len(line))]
    words = max(runs, key=lambda run: _likeness(run, text), default=None)
    if words is None or _likeness(words, text) < ALIKE:
        return None
    left, top = (min(word.box[side] for word in words) for side in (0, 1))
    right, bottom = (max(word.box[side] + word.box[side + 2] for word in words) for side in (0, 1))
    return Text(" ".join(word.name for word in words), (left, top, right - left, bottom - top))


def _likeness(words, text):
    read_text = "".join(word.name for word in words).casefold()
    return SequenceMatcher(None, read_text, text.casefold().replace(" ", "")).ratio()


def shows(words, area, language="rus"):
    """Whether a longer text, which may be broken anywhere, is on the screen."""
    for enlarged in ENLARGED:
        found = _joined(_lines(area, BLOCK, enlarged, language)).replace("\n", " ")
        matching = SequenceMatcher(None, words.casefold(), found.casefold(), autojunk=False).get_matching_blocks()
        if sum(block.size for block in matching) >= ALIKE * len(words):
            return True
    return False
