"""Time and memory against size, drawn by gnuplot."""

import os
import shutil
import subprocess

from comparing import markdown, snapshots
from comparing.comparison import text_and_floor
from comparing.refusal import Refusal

SIZES = (10_000, 30_000, 100_000, 300_000, 1_000_000, 3_000_000, 10_000_000)

# Runs that take only milliseconds are repeated more often.
SMALL = 300_000
SMALL_REPEATS = 10

# The background is part of the picture, so that it is as legible on a dark page.
SCRIPT = """
set terminal svg size 880,400 dynamic font "sans-serif,13" background "#ffffff" name "vxshow"
set encoding utf8
set multiplot layout 1,2
set logscale xy
set key top left
set xlabel "unicast MACs in the snapshot"
set xtics ({labels})
set xrange [{first}:{last}]
set border 3
set tics nomirror
set grid xtics ytics linecolor rgb "#cccccc"
set style line 1 linewidth 2 linecolor rgb "#0060a8" pointtype 7 pointsize 0.6
set style line 2 linewidth 2 linecolor rgb "#c05000" pointtype 5 pointsize 0.6 dashtype 2
set ylabel "time of the whole process (seconds)"
set format y "%g"
plot $measured using 1:2 with linespoints linestyle 1 title "vxshow mac received", \\
     $measured using 1:3 with linespoints linestyle 2 title "floor"
set ylabel "peak memory (MiB)"
plot $measured using 1:4 with linespoints linestyle 1 title "vxshow mac received", \\
     $measured using 1:5 with linespoints linestyle 2 title "floor"
"""


class Plot:
    def __init__(self, measuring, tools, turns, scale):
        self._measuring = measuring
        self._tools = tools
        self._turns = turns
        self._scale = scale
        self._points = []

    def measure(self):
        for size in SIZES:
            repeats = SMALL_REPEATS if size < SMALL else 1
            sizes = snapshots.grid(max(10, size // self._scale))
            with snapshots.made(self._measuring.folder, "switches", **sizes) as path:
                programs = text_and_floor(self._measuring, self._tools, path, repeats)
                self._measuring.take_turns(programs, self._turns)
            self._points.append((snapshots.entries_of(sizes), *programs))

    def paragraphs(self):
        yield (
            f"`vxshow mac received` and the floor, medians of {self._turns} runs in turn on"
            f" {os.cpu_count()} processors, {SMALL_REPEATS} times as many of the smallest three:"
        )
        head = (
            "unicast MACs",
            "vxshow (seconds)",
            "floor (seconds)",
            "ratio",
            "vxshow (MiB)",
            "floor (MiB)",
            "ratio",
        )
        rows = [
            (
                f"{entries:,}",
                markdown.seconds(vxshow.seconds),
                markdown.seconds(floor.seconds),
                markdown.ratio(vxshow.seconds / floor.seconds),
                markdown.mib(vxshow.mib),
                markdown.mib(floor.mib),
                markdown.ratio(vxshow.kib / floor.kib),
            )
            for entries, vxshow, floor in self._points
        ]
        yield markdown.table("rrrrrrr", head, *rows)

    def draw(self, path):
        points = [
            f"{entries} {vxshow.seconds:.5f} {floor.seconds:.5f} {vxshow.mib:.2f} {floor.mib:.2f}"
            for entries, vxshow, floor in self._points
        ]
        sizes = [entries for entries, *_ in self._points]
        script = SCRIPT.format(
            labels=", ".join(f'"{_short(size)}" {size}' for size in sizes),
            first=sizes[0] / 1.5,
            last=sizes[-1] * 1.5,
        )
        text = "\n".join(["$measured << end", *points, "end", script])
        # -d: ignore the personal gnuplot settings.
        drawn = subprocess.run(
            [_gnuplot(), "-d", "-"],
            input=text.encode(),
            capture_output=True,
            env={**os.environ, "LC_ALL": "C.UTF-8"},
            check=False,
        )
        if drawn.returncode != 0 or not drawn.stdout:
            said = " ".join(drawn.stderr.decode(errors="replace").split())
            raise Refusal(f"gnuplot failed: {said}")
        try:
            with open(path, "wb") as file:
                file.write(drawn.stdout)
        except OSError as error:
            raise Refusal(f"{path}: {error.strerror}") from error


def require_drawing(path):
    """Refuses before measuring, which takes minutes."""
    _gnuplot()
    folder = os.path.dirname(path) or "."
    taken = os.path.isdir(path) or (os.path.exists(path) and not os.access(path, os.W_OK))
    if taken or not os.access(folder, os.W_OK):
        raise Refusal(f"no picture can be written to {path}")


def _gnuplot():
    program = shutil.which("gnuplot")
    if program is None:
        raise Refusal("no gnuplot: install the package gnuplot-nox")
    return program


def _short(size):
    for unit, letter in (1_000_000, "M"), (1_000, "k"):
        if size >= unit and size % unit == 0:
            return f"{size // unit}{letter}"
    return str(size)
