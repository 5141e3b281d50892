"""Snapshots, each of which exists only while it is measured."""

import contextlib
import os
import subprocess
import sys
import tempfile

from comparing.refusal import Refusal
from comparing.tools import BENCH


@contextlib.contextmanager
def made(folder, kind, **sizes):
    """The path of a snapshot from `bench/make-state KIND --SIZE N ...`."""
    options = [word for name, size in sizes.items() for word in (f"--{name}", str(size))]
    print("with:", kind, *options, file=sys.stderr, flush=True)
    handle, path = tempfile.mkstemp(".json", dir=folder)
    with open(handle, "wb") as file:
        command = [sys.executable, "-E", os.path.join(BENCH, "make-state"), kind, *options]
        if subprocess.run(command, stdout=file, check=False).returncode != 0:
            raise Refusal(f"no snapshot: make-state {kind} failed")
    try:
        yield path
    finally:
        os.remove(path)


def grid(entries):
    """The sizes for `make-state switches` that give about this many entries, ten to a table."""
    tables = max(1, entries // 10)
    switches = min(100, tables)
    return {"switches": switches, "vnis": tables // switches, "macs": 10}


def entries_of(sizes):
    return sizes["switches"] * sizes["vnis"] * sizes["macs"]
