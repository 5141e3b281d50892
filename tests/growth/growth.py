#!/usr/bin/env python3
"""Checks that no command and no collection takes more than proportionally longer for more entries.

    growth.py --vxshow PROGRAM [--collections PROGRAM] [--modelc PROGRAM] [--only TEXT] [--jobs N]

Each row grows one dimension of the input, such as the MACs of a VNI, to n, 2n, 4n and 8n while
everything else stays as it is. Counted are the instructions that the program executes, by
Valgrind, so that a busy machine gives the same figures. What a run with a dimension of 1 takes is
subtracted: it is the start of the process.

An exponent of 1 is linear growth, 2 quadratic: the binary logarithm of how much more one doubling
takes, for the last one and for the average of all three. Either above 1.2 is a failure; sorting
stays below that. A program that fails, or whose count does not grow with its input, has not been
measured, which is a failure too.

--only limits the rows to those whose dimension, a comma and what is run contain the text; several
can be given.
"""

import argparse
import concurrent.futures
import math
import os
import re
import shutil
import subprocess
import sys
import tempfile

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.dirname(os.path.realpath(__file__)))
import collections_rows  # noqa: E402
import live_rows  # noqa: E402
import model_rows  # noqa: E402
import snapshot_rows  # noqa: E402

LIMIT = 1.2
FACTORS = 1, 2, 4, 8


class NotMeasured(Exception):
    """A run whose count means nothing, and why."""


def executed(words, error, folder, path):
    """How many instructions the program executes, which must fail with this error, if any."""
    log = os.path.join(folder, "callgrind.log")
    valgrind = ["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null"]
    finished = subprocess.run(
        [*valgrind, f"--log-file={log}", *words],
        env={**os.environ, "LC_ALL": "C.UTF-8", "PATH": path},
        stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, check=False,
    )
    said = finished.stderr.decode(errors="backslashreplace").strip()
    if finished.returncode != (1 if error else 0) or error not in said:
        expected = f"1 and {error!r}" if error else "0"
        raise NotMeasured(
            f"exit status {finished.returncode}, expected {expected}; standard error: {said[-300:]}"
        )
    with open(log, encoding="utf-8", errors="replace") as file:
        counts = re.findall(r"Collected : (\d+)", file.read())
    if len(counts) != 1:
        raise NotMeasured(f"Valgrind reported {len(counts)} counts, expected 1")
    return int(counts[0])


def count(row, size, programs):
    with tempfile.TemporaryDirectory() as folder:
        words = row.command(size, programs[row.program], folder)
        path = os.pathsep.join([folder, os.environ.get("PATH", os.defpath)])
        return executed(words, row.error, folder, path)


def exponents(counts):
    """(of the last doubling, of all three)"""
    return math.log2(counts[-1] / counts[-2]), math.log2(counts[-1] / counts[0]) / 3


def measure(row, programs):
    """(whether the row holds, its line of the table)"""
    title = f"{row.dimension:36} {row.title:40}"
    try:
        start = count(row, 1, programs)
        counts = [count(row, row.smallest * factor, programs) - start for factor in FACTORS]
        if not 0 < counts[0] < counts[1] < counts[2] < counts[3]:
            raise NotMeasured(f"the counts do not grow: {counts}")
    except NotMeasured as reason:
        return False, f"{title} {reason}"
    last, overall = exponents(counts)
    figures = " ".join(f"{figure:13,}" for figure in counts)
    holds = last <= LIMIT and overall <= LIMIT
    line = f"{title} {row.smallest:6} {figures} {last:6.2f} {overall:8.2f}"
    return holds, line if holds else f"{line}  grows too fast"


def selected(rows, texts):
    """The rows whose names contain any of the texts; all without texts."""
    names = [f"{row.dimension}, {row.title}" for row in rows]
    for text in texts or []:
        if not any(text in name for name in names):
            sys.exit(f"growth.py: no row contains {text!r}")
    if not texts:
        return rows
    return [row for row, name in zip(rows, names) if any(text in name for text in texts)]


def main():
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    parser.add_argument("--vxshow", required=True)
    parser.add_argument("--collections")
    parser.add_argument("--modelc")
    parser.add_argument("--only", action="append", metavar="TEXT")
    parser.add_argument("--jobs", type=int, default=len(os.sched_getaffinity(0)), metavar="N")
    arguments = parser.parse_args()
    if not shutil.which("valgrind"):
        sys.exit("valgrind is missing: scripts/setup test installs it")

    programs = {"vxshow": os.path.abspath(arguments.vxshow)}
    rows = snapshot_rows.ROWS + live_rows.ROWS
    if arguments.modelc:
        programs["modelc"] = os.path.abspath(arguments.modelc)
        rows += model_rows.ROWS
    if arguments.collections:
        programs["collections"] = os.path.abspath(arguments.collections)
        rows += collections_rows.rows(programs["collections"])
    rows = selected(rows, arguments.only)

    size = " ".join(f"{f'at {factor}n' if factor > 1 else 'at n':>13}" for factor in FACTORS)
    print(f"{'dimension':36} {'what is run':40} {'n':>6} {size} {'last':>6} {'overall':>8}")
    failed = []
    with concurrent.futures.ThreadPoolExecutor(arguments.jobs) as workers:
        for holds, line in workers.map(lambda row: measure(row, programs), rows):
            print(line, flush=True)
            if not holds:
                failed.append(line)
    dimensions = len({row.dimension for row in rows})
    print(f"{len(rows)} rows of {dimensions} dimensions, {len(failed)} failed")
    for line in failed:
        print(f"failed: {line}")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
