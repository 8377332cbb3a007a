# SPDX-License-Identifier: MIT
"""Uses the archive's program under Wine, by mouse and keyboard, and holds what it shows and writes against the server.

Usage: python3 -m windows.check PROGRAM CLIENT HOLDER FOLDER, with the folder of the unpacked archive, the client
library, the program that holds files open, and a folder to work in
"""
import sys
from pathlib import Path

from tour.run import run
from windows.check.steps import STEPS, Check

sys.exit(0 if run(STEPS, lambda: Check(*map(Path, sys.argv[1:]))) else 1)
