# SPDX-License-Identifier: MIT
"""Draws the table of a soak as curves, one above the other: soak_curve.py TABLE.csv PICTURE.svg"""
import csv
import sys

import matplotlib

matplotlib.use("svg")
matplotlib.rcParams["svg.fonttype"] = "none"
matplotlib.rcParams["svg.hashsalt"] = "soak"
from matplotlib import pyplot  # noqa: E402 (the kind of picture is chosen first)

FIGURES = (("resident", "Resident memory, MB"), ("heap", "Heap in use, MB"), ("files", "Open files"),
           ("statements", "Statements on the server"))


def main(table, picture):
    with open(table, encoding="ascii") as lines:
        samples = list(csv.DictReader(lines))
    changes = [int(sample["changes"]) for sample in samples]
    _, axes = pyplot.subplots(len(FIGURES), sharex=True, figsize=(9, 8), layout="constrained")
    for axis, (name, title) in zip(axes, FIGURES):
        values = [float(sample[name]) for sample in samples]
        axis.plot(changes, values, linewidth=1.5)
        axis.set_ylim(0, 1.25 * max(values))
        axis.set_title(title, loc="left", fontsize=10)
        axis.grid(alpha=0.3)
    axes[-1].set_xlabel("Changes of region, period, tab and edition")
    pyplot.savefig(picture, metadata={"Date": None})


if __name__ == "__main__":
    main(*sys.argv[1:])
