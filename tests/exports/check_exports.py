#!/usr/bin/env python3
"""Compares the exports of a shared library with a checked-in list.

    check_exports.py --vxshow PROGRAM LIBRARY LIST [--write]

The library is the one of that file name that is installed or built with PROGRAM.

Each line of the list is one exported function or object in C++ notation. What any
translation unit can emit (inline functions, templates, vtables, type information) is not
listed: whether it appears depends on the optimiser. With --write the list is rewritten.
"""

import argparse
import difflib
import pathlib
import re
import subprocess
import sys


def emitted_anywhere(name):
    template = "<" in re.sub("operator<(<|=>|=)?", "operator", name.split("(")[0])
    return template or name.startswith((
        ("__odr_asan", "typeinfo ", "vtable ", "guard variable ", "std::")))


def exported(library):
    lines = subprocess.run(
        ["nm", "--dynamic", "--defined-only", "--demangle", library],
        check=True, capture_output=True, text=True).stdout.splitlines()
    strong = set()
    for line in lines:
        _, kind, name = line.split(" ", 2)
        if kind in "TDBR" and not emitted_anywhere(name):
            strong.add(name)
    return sorted(strong)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--vxshow", type=pathlib.Path, required=True)
    parser.add_argument("library")
    parser.add_argument("list")
    parser.add_argument("--write", action="store_true")
    wanted = parser.parse_args()
    library = wanted.vxshow.resolve().parent.parent / "lib" / wanted.library
    now = [name + "\n" for name in exported(library)]
    if wanted.write:
        with open(wanted.list, "w", encoding="utf-8") as out:
            out.writelines(now)
        return 0
    with open(wanted.list, encoding="utf-8") as listed:
        diff = list(difflib.unified_diff(listed.readlines(), now, "listed", "exported", n=0))
    sys.stdout.writelines(diff)
    return 1 if diff else 0


if __name__ == "__main__":
    sys.exit(main())
