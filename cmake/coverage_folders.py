#!/usr/bin/env python3
"""Line and branch coverage per source folder, from a gcovr JSON summary.

The desktop window-system backend is listed apart: only the desktop tests,
under a private X server, run it.
"""
import json
import os
import sys


def main(path):
    with open(path) as f:
        summary = json.load(f)
    folders = {}
    for entry in summary["files"]:
        name = entry["filename"]
        folder = os.path.dirname(name)
        if os.path.basename(name).startswith("desktop_"):
            folder += " (desktop)"
        row = folders.setdefault(folder, [0, 0, 0, 0])
        row[0] += entry["line_covered"]
        row[1] += entry["line_total"]
        row[2] += entry["branch_covered"]
        row[3] += entry["branch_total"]
    rows = sorted(folders.items())
    total = [summary["line_covered"], summary["line_total"],
             summary["branch_covered"], summary["branch_total"]]
    desktop = [0, 0, 0, 0]
    for folder, row in rows:
        if folder.endswith("(desktop)"):
            desktop = [a + b for a, b in zip(desktop, row)]
    rows.append(("total without desktop", [a - b for a, b in zip(total, desktop)]))
    rows.append(("total", total))
    print(f"{'folder':<28} {'lines':>16} {'branches':>16}")
    for folder, (lc, lt, bc, bt) in rows:
        lines = f"{lc}/{lt} {100.0 * lc / lt if lt else 100.0:5.1f}%"
        branches = f"{bc}/{bt} {100.0 * bc / bt if bt else 100.0:5.1f}%"
        print(f"{folder:<28} {lines:>16} {branches:>16}")


if __name__ == "__main__":
    main(sys.argv[1])
