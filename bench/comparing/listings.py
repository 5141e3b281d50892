"""Checks that programs list the same; no time is quoted otherwise.

vxshow and the floor are compared to the byte, jq and Python row by row. The floor and the two
scripts are made for the received MACs of `bench/make-state switches` and `one-vni`; on other
snapshots the listings differ.
"""

import itertools
import re
import subprocess

from comparing.refusal import Refusal


def require_same_bytes(form, ours, floor):
    compared = subprocess.run(["cmp", ours, floor], capture_output=True, text=True, check=False)
    if compared.returncode != 0:
        said = (compared.stdout + compared.stderr).strip().rpartition(": ")[2]
        raise Refusal(f"vxshow and the floor differ in {form}: {said}")


def vxshow_rows(path):
    """The unicast section of the text: source, VNI, MAC, VTEP, moves."""
    with open(path, encoding="utf-8") as file:
        for line in file:
            if re.match("-.* -", line):
                break
        for line in file:
            if line.startswith("Total Mac Addresses"):
                return
            yield _digits_alone(line.split(), ".")


def script_rows(path):
    with open(path, encoding="utf-8") as file:
        for line in file:
            yield _digits_alone(line.rstrip("\n").split("\t"), ":")


def _digits_alone(row, separator):
    row[2:3] = [mac.replace(separator, "") for mac in row[2:3]]
    return row


def require_same_rows(one, other):
    """Each of the two arguments is a title and its rows."""
    pairs = itertools.zip_longest(one[1], other[1])
    for number, (mine, theirs) in enumerate(pairs, 1):
        if mine != theirs:
            raise Refusal(f"{one[0]} and {other[0]} list different rows: row {number}")


def require_rows(title, path, entries):
    """For a listing that no other program makes: each entry must take at least one line."""
    with open(path, "rb") as file:
        lines = sum(1 for _ in file)
    if lines < entries:
        raise Refusal(f"{title} lists {entries} entries in {lines} lines")
