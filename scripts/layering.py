# SPDX-License-Identifier: MIT
"""Holds every #include against the folders that its own folder may know, and those against what is included.

Usage: layering.py SOURCE_DIR LAYERS, where LAYERS has a line for each folder, followed by the folders it may know.
"""

import re
import sys
from pathlib import Path

INCLUDE = re.compile(r'^#include "([a-z/]+)/[a-z0-9_]+\.h"', re.MULTILINE)


def faults_of(source: Path, folder: str, known: set[str]) -> list[str]:
    """What is wrong with the files of one folder."""
    faults = []
    included = set()
    for file in sorted([*(source / folder).glob("*.h"), *(source / folder).glob("*.cpp")]):
        for other in INCLUDE.findall(file.read_text(encoding="utf-8")):
            included.add(other)
            if other != folder and other not in known:
                faults.append(f"{file.relative_to(source)} includes {other}/, which {folder}/ must not know")
    faults += [f"{folder}/ names {unused}/ among its uses without including it" for unused in known - included]
    return faults


def main() -> int:
    source = Path(sys.argv[1])
    layers = [line.split() for line in Path(sys.argv[2]).read_text(encoding="utf-8").splitlines()]
    faults = [fault for folder, *known in layers for fault in faults_of(source, folder, set(known))]
    print("\n".join(faults) or f"{len(layers)} folders include what they may")
    return 1 if faults or not layers else 0


sys.exit(main())
