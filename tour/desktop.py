# SPDX-License-Identifier: MIT
"""The program on its screen: what it shows, read from the accessibility tree, and a user's mouse and keyboard.

Places are looked up in the tree each time; nothing is done through it, so that only what a user can reach counts.
"""
import os
import signal
import subprocess
import time
from pathlib import Path

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

PATIENCE = 15  # seconds until something that should appear counts as missing
TAB_SCROLLS = 20  # more than there are tabs
IN_ROOT = Path(__file__).parent.parent / "scripts/in-root"
TABLE_ROLES = ("table", "tree")  # their children are rows; they are asked for one by one


class TourError(Exception):
    """The program does not show what it should."""


class NotShown(TourError):
    """Something is not on the screen (yet)."""


def expect(what, read, wanted, seconds=PATIENCE):
    """Waits until read() returns the wanted value."""
    deadline = time.monotonic() + seconds
    while True:
        try:
            shown = read()
        except (NotShown, GLib.Error) as error:
            shown = error
        if shown == wanted:
            return
        if time.monotonic() > deadline:
            raise TourError(f"{what}: {shown!r} where {wanted!r} should be")
        time.sleep(0.05)


def wait_for(read, seconds=PATIENCE):
    """What read() returns, as soon as it finds it on the screen."""
    deadline = time.monotonic() + seconds
    while True:
        try:
            return read()
        except (NotShown, GLib.Error) as error:
            if time.monotonic() > deadline:
                raise TourError(str(error)) from error
        time.sleep(0.05)


class Element:
    """A node of the accessibility tree."""

    def __init__(self, node, scale):
        self.node = node
        self.scale = scale

    @property
    def role(self):
        return self.node.get_role_name()

    @property
    def name(self):
        return self.node.get_name()

    @property
    def description(self):
        return self.node.get_description()

    @property
    def text(self):
        """What an input field holds."""
        return Atspi.Text.get_text(self.node, 0, -1)

    @property
    def box(self):
        """Left, top, width and height in pixels of the screen."""
        extents = self.node.get_extents(Atspi.CoordType.SCREEN)
        return tuple(round(each * self.scale) for each in (extents.x, extents.y, extents.width, extents.height))

    @property
    def parent(self):
        return Element(self.node.get_parent(), self.scale)

    def has(self, *states):
        present = self.node.get_state_set()
        return all(present.contains(state) for state in states)

    @property
    def showing(self):
        return self.has(Atspi.StateType.SHOWING)

    @property
    def focused(self):
        return self.has(Atspi.StateType.FOCUSED)

    @property
    def enabled(self):
        return self.has(Atspi.StateType.ENABLED)

    @property
    def selected(self):
        return self.has(Atspi.StateType.SELECTED)

    def child(self, index):
        node = self.node.get_child_at_index(index)
        if node is None:
            raise NotShown(f"{self.role} '{self.name}' has no child {index}")
        return Element(node, self.scale)

    def children(self):
        for index in range(self.node.get_child_count()):
            yield self.child(index)

    def descendants(self):
        """All that is on the screen, without the rows of tables."""
        for child in self.children():
            if child.showing:
                yield child
                if child.role not in TABLE_ROLES:
                    yield from child.descendants()

    def find(self, role, name=None, description=None):
        for each in self.descendants():
            if (each.role == role and name in (None, each.name) and description in (None, each.description)):
                return each
        raise NotShown(f"no {role} {name or description or ''!r} on the screen")

    def shows(self, role, name=None):
        try:
            self.find(role, name)
        except NotShown:
            return False
        return True


class Table:
    """A grid: header sections, rows of cells, and a footer."""

    def __init__(self, element):
        self.element = element

    @property
    def columns(self):
        """The header texts from left to right."""
        return [self.element.child(i).name for i in range(Atspi.Table.get_n_columns(self.element.node))]

    @property
    def row_count(self):
        return Atspi.Table.get_n_rows(self.element.node)

    @property
    def footer(self):
        return self.element.child(self.element.node.get_child_count() - 1).name

    @property
    def current_row(self):
        rows = Atspi.Table.get_selected_rows(self.element.node)
        return rows[0] if len(rows) == 1 else None

    def header(self, label):
        return self.element.child(self.columns.index(label))

    def cell(self, row, column):
        node = Atspi.Table.get_accessible_at(self.element.node, row, column)
        if node is None:
            raise NotShown(f"{self.element.name} has no cell in row {row}, column {column}")
        return Element(node, self.element.scale)

    def column(self, label, rows):
        """The texts of a column in the given rows."""
        index = self.columns.index(label)
        return [self.cell(row, index).name for row in rows]

    def row(self, row):
        return [self.cell(row, column).name for column in range(len(self.columns))]


class Program:
    """The running program. Its windows are scaled by `scale`, which the accessibility tree does not tell."""

    def __init__(self, executable, scale):
        Atspi.init()
        Atspi.set_timeout(10_000, 30_000)
        self.scale = scale
        self._focus = None
        self._listener = Atspi.EventListener.new(self._hear_focus)
        self._listener.register("object:state-changed:focused")
        self._heard_names = []
        self._name_listener = Atspi.EventListener.new(self._hear_name)
        self._name_listener.register("object:property-change:accessible-name")
        self._log = open(executable.parent.parent / "program-output.txt", "a", encoding="utf-8")
        root = os.environ.get("TOUR_ROOT")
        command = [IN_ROOT, root, executable] if root else [executable]
        self.process = subprocess.Popen(command, stdout=self._log, stderr=subprocess.STDOUT)
        self.root = wait_for(self._find_root, seconds=60)
        # The tree is asked about things that have just changed.
        self.root.node.set_cache_mask(Atspi.Cache.NONE)

    def _find_root(self):
        if self.process.poll() is not None:
            raise TourError(f"the program has ended at once with status {self.process.returncode}")
        desktop = Atspi.get_desktop(0)
        for index in range(desktop.get_child_count()):
            node = desktop.get_child_at_index(index)
            if node is not None and node.get_process_id() == self.process.pid and node.get_child_count() > 0:
                return Element(node, self.scale)
        raise NotShown("the program is not on the screen")

    def _hear_focus(self, event):
        if event.detail1 and event.source.get_process_id() == self.process.pid:
            self._focus = event.source

    def _hear_name(self, event):
        if event.source.get_process_id() == self.process.pid:
            self._heard_names.append(event.source.get_name())

    @staticmethod
    def _listen():
        context = GLib.MainContext.default()
        while context.pending():
            context.iteration(False)

    @property
    def heard_names(self):
        """The new names of elements that have told of them."""
        self._listen()
        return self._heard_names

    @property
    def focus(self):
        """The element that told last that it has the keyboard focus; popups stand nowhere else in the tree."""
        self._listen()
        if self._focus is None:
            raise NotShown("nothing has the keyboard focus")
        return Element(self._focus, self.scale)

    def find(self, role, name=None, description=None):
        """Waits for an element of any of the windows, the uppermost first."""
        def look():
            for window in reversed(list(self.root.children())):
                try:
                    return window.find(role, name, description)
                except NotShown:
                    pass
            raise NotShown(f"no {role} {name or description or ''!r} on the screen")
        return wait_for(look)

    def shows(self, role, name=None):
        return any(window.shows(role, name) for window in self.root.children())

    def dialog(self, caption):
        def look():
            for window in self.root.children():
                if window.role in ("dialog", "alert") and window.name == caption and window.showing:
                    return window
            raise NotShown(f"no dialog '{caption}' on the screen")
        return wait_for(look)

    def dialogs(self):
        """The captions of the open dialogs."""
        return [window.name for window in self.root.children() if window.role in ("dialog", "alert")]

    def window_count(self):
        """How many windows are on the screen, tool tips included, which stand nowhere in the tree."""
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--pid", str(self.process.pid), ""],
                               check=True, capture_output=True)
        return len(found.stdout.split())

    def table(self):
        """The table of the tab in front."""
        return Table(self.find("table"))

    def obituary(self):
        """What to add to a failure when the program has ended."""
        status = self.process.poll()
        return "" if status is None else f" The program has ended with status {status}."

    def exit_status(self):
        try:
            return self.process.wait(PATIENCE)
        except subprocess.TimeoutExpired:
            raise TourError("the program does not end") from None

    def end(self):
        if self.process.poll() is None:
            self.process.send_signal(signal.SIGKILL)
            self.process.wait()
        self._log.close()


def set_keyboard_layouts(*layouts):
    subprocess.run(["setxkbmap", "-layout", ",".join(layouts)], check=True)


def _xdotool(*arguments):
    subprocess.run(["xdotool", *map(str, arguments)], check=True)


def _place(element, across=0.5):
    """A pixel at half the element's height; `across` 0 is its left edge and 1 its right one."""
    left, top, width, height = element.box
    if width <= 0 or height <= 0:
        raise TourError(f"{element.role} '{element.name}' has no place on the screen")
    return left + round(width * across), top + height // 2


def point(element, across=0.5):
    _xdotool("mousemove", *_place(element, across), "sleep", 0.05)


def click(element, across=0.5, held_key=None):
    point(element, across)
    if held_key:
        _xdotool("keydown", held_key, "click", 1, "keyup", held_key)
    else:
        _xdotool("click", 1)


def right_click(element):
    point(element)
    _xdotool("click", 3)


def double_click_right_edge(element):
    left, top, width, height = element.box
    _xdotool("mousemove", left + width, top + height // 2, "sleep", 0.05, "click", "--repeat", 2, "--delay", 60, 1)


def clipboard():
    return subprocess.run(["xclip", "-selection", "clipboard", "-o"], check=True, capture_output=True).stdout.decode()


def click_tab(tab):
    """Clicks a tab; where its bar shows only a part of it, by the bar's arrows first."""
    bar_left, _, bar_width, _ = tab.parent.box
    arrows = [child for child in tab.parent.children() if child.role == "push button" and child.showing]
    for _ in range(TAB_SCROLLS if arrows else 0):
        back, forth = arrows
        left, _, width, _ = tab.box
        if left + width > back.box[0]:
            click(forth)
        elif left < bar_left:
            click(back)
        else:
            break
    click(tab)


def click_near_right_edge(element, distance):
    """Clicks something that stands `distance` unscaled pixels left of the element's right edge."""
    point(element)  # some things show only under the mouse
    click(element, across=1 - distance * element.scale / element.box[2])


def drag(source, target):
    """Takes the source with the mouse and drops it on the left half of the target."""
    x, y = _place(source)
    to_x, to_y = _place(target, across=0.25)
    _xdotool("mousemove", x, y, "mousedown", 1)
    for step in range(1, 11):
        _xdotool("mousemove", x + (to_x - x) * step // 10, y + (to_y - y) * step // 10, "sleep", 0.02)
    _xdotool("mouseup", 1)


def close_by_title_bar(window):
    """Clicks the rightmost button of the title bar, which stands above the window."""
    button = 12  # pixels to its middle
    left, top, width, _ = window.box
    _xdotool("mousemove", left + width - button, top - button, "sleep", 0.05, "click", 1)


def press(*keys):
    _xdotool("key", "--delay", 40, *keys)


def type_text(text):
    """Types on the keyboard's Latin and Russian layouts."""
    _xdotool("type", "--delay", 25, text)


def screenshot(path):
    subprocess.run(["import", "-window", "root", path], check=True)


def picture(path):
    """A screenshot for a page, in a third of the bytes."""
    subprocess.run(["import", "-window", "root", *_small(path)], check=True)


def picture_of_page(document, path, width, height):
    """The upper part of a document's first page, in as few."""
    pixels = subprocess.run(
        ["pdftoppm", "-singlefile", "-scale-to-x", str(width), "-scale-to-y", "-1",
         "-x", "0", "-y", "0", "-W", str(width), "-H", str(height), document],
        check=True, capture_output=True).stdout
    subprocess.run(["convert", "ppm:-", *_small(path)], input=pixels, check=True)


def _small(path):
    """What makes ImageMagick write few bytes: a palette, and nothing about the time or the tool."""
    return ["+dither", "-colors", "128", "-strip", "-define", "png:exclude-chunks=date,time",
            "-define", "png:compression-level=9", f"PNG8:{path}"]


def colours(element):
    """The colours of the pixels that an element takes on the screen, as (red, green, blue)."""
    left, top, width, height = element.box
    pixels = subprocess.run(
        ["import", "-window", "root", "-crop", f"{width}x{height}+{left}+{top}", "-depth", "8", "rgb:-"],
        check=True, capture_output=True).stdout
    return {tuple(pixels[i:i + 3]) for i in range(0, len(pixels), 3)}
