# SPDX-License-Identifier: MIT
"""Goes through the steps, each with a line and a screenshot."""
import signal
import sys
import time
from pathlib import Path

from gi.repository import GLib

from tour.catalog import DatabaseError
from tour.desktop import TourError, screenshot, set_keyboard_layouts
from tour.guide import GUIDE
from tour.steps import STEPS, Tour


def main(executable, folder, scale, pictures=None):
    """Where a folder for the guide's pictures is named, only these are made."""
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(128 + signal.SIGTERM))
    set_keyboard_layouts("us", "ru")
    began = time.monotonic()
    steps = GUIDE if pictures else STEPS
    tour = Tour(Path(executable), Path(folder), float(scale), pictures and Path(pictures))
    try:
        for number, (name, step, *arguments) in enumerate(steps, start=1):
            picture = tour.folder / f"{number:02}-{name}.png"
            try:
                outcome = step(tour, *arguments)
            except (TourError, DatabaseError, GLib.Error) as error:
                screenshot(picture.with_stem(picture.stem + "-failed"))
                print(f"{number:02} {name}: FAILED. {error}{tour.program.obituary()}", flush=True)
                return 1
            screenshot(picture)
            print(f"{number:02} {name}: {outcome}", flush=True)
    finally:
        tour.end()
    print(f"The tour is over: {len(steps)} steps in {time.monotonic() - began:.0f} s; "
          f"the screenshots and workbooks are in {tour.folder}")
    return 0


sys.exit(main(*sys.argv[1:]))
