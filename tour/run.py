# SPDX-License-Identifier: MIT
"""Goes through steps, each with a line and a screenshot."""
import signal
import sys
import time

from gi.repository import GLib

from tour.catalog import DatabaseError
from tour.desktop import TourError, screenshot, set_keyboard_layouts


def run(steps, make_user):
    """Each step is a name, a function of the user, and its further arguments; the user has a folder for what comes of
    it. Tells whether all have passed."""
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(128 + signal.SIGTERM))
    set_keyboard_layouts("us", "ru")
    began = time.monotonic()
    user = make_user()
    try:
        for number, (name, step, *arguments) in enumerate(steps, start=1):
            picture = user.folder / f"{number:02}-{name}.png"
            try:
                outcome = step(user, *arguments)
            except (TourError, DatabaseError, GLib.Error) as error:
                screenshot(picture.with_stem(picture.stem + "-failed"))
                print(f"{number:02} {name}: FAILED. {error}{user.obituary()}", flush=True)
                return False
            screenshot(picture)
            print(f"{number:02} {name}: {outcome}", flush=True)
    finally:
        user.end()
    print(f"The tour is over: {len(steps)} steps in {time.monotonic() - began:.0f} s; "
          f"the screenshots and workbooks are in {user.folder}")
    return True
