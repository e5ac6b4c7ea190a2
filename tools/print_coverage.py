#!/usr/bin/env python3
"""Prints the line coverage of each source folder from gcovr's JSON summary.

usage: print_coverage.py SUMMARY.json
"""
import json
import sys
from collections import defaultdict
from pathlib import Path


def print_line(name, covered, total):
    print(f"{name:<24}{covered:>7} of {total:>6} lines  {100 * covered / max(total, 1):5.1f} %")


def main():
    summary = json.loads(Path(sys.argv[1]).read_text(encoding="utf-8"))
    folders = defaultdict(lambda: [0, 0])
    for file in summary["files"]:
        counts = folders[Path(file["filename"]).parent.as_posix()]
        counts[0] += file["line_covered"]
        counts[1] += file["line_total"]
    for folder, (covered, total) in sorted(folders.items()):
        print_line(folder, covered, total)
    covered, total = (sum(counts[i] for counts in folders.values()) for i in (0, 1))
    print_line("all", covered, total)
    return 0 if total > 0 else 1


if __name__ == "__main__":
    sys.exit(main())
