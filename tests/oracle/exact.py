"""For the tests of the reference: running it, and comparing whole outputs."""

import json
import pathlib
import subprocess
import sys
import unittest

HERE = pathlib.Path(__file__).resolve().parent
REFERENCE = HERE / "reference.py"
FABRIC = HERE.parent.parent / "examples" / "fabric.json"


def process(members, *words):
    """The finished process of the reference on a snapshot of these members."""
    document = {"format": "vxlan-controller-state", "version": 1, **members}
    return subprocess.run(
        [sys.executable, str(REFERENCE), "--state", "-", *words],
        input=json.dumps(document).encode(),
        stdout=subprocess.PIPE,
        stderr=subprocess.PIPE,
        check=False,
    )


def run_bytes(members, *words):
    finished = process(members, *words)
    if finished.returncode != 0:
        raise AssertionError(finished.stderr.decode())
    return finished.stdout


def run(members, *words):
    return run_bytes(members, *words).decode()


class Exact(unittest.TestCase):
    maxDiff = None

    def check_failure(self, members, *words):
        """Nothing on standard output, one line on standard error, and status 1."""
        finished = process(members, *words)
        self.assertEqual((finished.returncode, finished.stdout), (1, b""))
        self.assertEqual(finished.stderr.count(b"\n"), 1, finished.stderr.decode())
