# SPDX-License-Identifier: MIT
"""Uses the archive's program under Wine, by mouse and keyboard, and holds what it shows and writes against the server.

Usage: python3 -m windows.check PROGRAM CLIENT HOLDER FOLDER, with the folder of the unpacked archive, the client
library, the program that holds files open, and a folder to work in
"""
import signal
import sys
import time
from pathlib import Path

from tour.catalog import DatabaseError
from tour.desktop import TourError, screenshot, set_keyboard_layouts
from windows.check.steps import STEPS, Check


def main(program, client, holder, folder):
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(128 + signal.SIGTERM))
    set_keyboard_layouts("us", "ru")
    began = time.monotonic()
    check = Check(Path(program), Path(client), Path(holder), Path(folder))
    try:
        for number, (name, step, *arguments) in enumerate(STEPS, start=1):
            picture = check.folder / f"{number:02}-{name}.png"
            try:
                outcome = step(check, *arguments)
            except (TourError, DatabaseError) as error:
                screenshot(picture.with_stem(picture.stem + "-failed"))
                print(f"{number:02} {name}: FAILED. {error}{check.obituary()}", flush=True)
                return 1
            screenshot(picture)
            print(f"{number:02} {name}: {outcome}", flush=True)
    finally:
        check.end()
    print(f"The program has passed {len(STEPS)} steps under Wine in {time.monotonic() - began:.0f} s; "
          f"the screenshots and workbooks are in {check.folder}")
    return 0


sys.exit(main(*sys.argv[1:]))
