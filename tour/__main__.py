# SPDX-License-Identifier: MIT
"""Usage: python3 -m tour PROGRAM FOLDER SCALE [PICTURES]

Works the program at a scale factor, and leaves screenshots and workbooks in the folder. Where a folder for the guide's
pictures is named, only these are made.
"""
import sys
from pathlib import Path

from tour.guide import GUIDE
from tour.run import run
from tour.steps import STEPS, Tour


def main(executable, folder, scale, pictures=None):
    return run(GUIDE if pictures else STEPS,
               lambda: Tour(Path(executable), Path(folder), float(scale), pictures and Path(pictures)))


sys.exit(0 if main(*sys.argv[1:]) else 1)
