#!/usr/bin/env python3
"""Checks that the source tree keeps its architecture.

    check_includes.py ROOT

- A file includes headers of its own room and of the rooms below it, as `ROOMS` lists them.
- No two headers under vxshow/ have the same name, and none has the name of a platform header.

Prints one line for each violation and exits with status 1 if there are any.
"""

import collections
import pathlib
import re
import sys

VALUES = ["platform/Vex", "platform/Nolt", "platform/Vxlan", "platform/Bridging", "platform/Quay"]
PLATFORM = VALUES + ["platform/outfmt", "platform/Trace", "platform/Pelo", "platform/state"]
LIBRARY = PLATFORM + ["VxlanController"]
STATE = LIBRARY + ["vxshow/system", "vxshow/text", "vxshow/state", "vxshow/state/snapshot",
                   "vxshow/state/tables", "vxshow/state/narrow"]
SOURCES = STATE + ["vxshow/sources"]
ALL_SOURCES = SOURCES + ["vxshow/sources/ovsdb", "vxshow/sources/frr", "vxshow/sources/fabric"]

# Each room with the rooms that its files may include, from the lowest room to the highest. A
# room may use only rooms that stand before it, so there can be no circle.
ROOMS = {
    "platform/Vex": [],
    "platform/Nolt": ["platform/Vex"],
    "platform/Vxlan": ["platform/Vex"],
    "platform/Bridging": ["platform/Vex"],
    "platform/Quay": ["platform/Vex"],
    "platform/outfmt": ["platform/Vex"],
    "platform/Trace": ["platform/Vex", "platform/outfmt"],
    "platform/Pelo": ["platform/Vex"],
    "platform/state": VALUES + ["platform/Pelo"],
    "VxlanController": PLATFORM,
    "modelc": [],
    "vxshow/system": ["platform/Vex", "platform/outfmt"],
    "vxshow/text": VALUES + ["platform/outfmt", "vxshow/system"],
    "vxshow/config": VALUES + ["vxshow/system", "vxshow/text"],
    "vxshow/state": LIBRARY + ["vxshow/system", "vxshow/text"],
    "vxshow/state/snapshot": LIBRARY + ["vxshow/system", "vxshow/text", "vxshow/state"],
    "vxshow/state/tables": LIBRARY + ["vxshow/system", "vxshow/state"],
    "vxshow/state/narrow": LIBRARY + ["vxshow/state"],
    "vxshow/sources": STATE,
    # One kind of source does not know the other.
    "vxshow/sources/ovsdb": SOURCES,
    "vxshow/sources/frr": SOURCES,
    "vxshow/sources/fabric": SOURCES + ["vxshow/sources/ovsdb", "vxshow/sources/frr"],
    "vxshow/terminal": STATE,
    "vxshow/listing": LIBRARY + ["vxshow/system", "vxshow/text", "vxshow/state", "vxshow/terminal"],
    "vxshow/cli/filter": VALUES + ["vxshow/state", "vxshow/state/narrow"],
    "vxshow/cli": ALL_SOURCES + ["vxshow/config", "vxshow/terminal", "vxshow/listing", "vxshow/cli/filter"],
    "vxshow/cli/command": ALL_SOURCES + ["vxshow/config", "vxshow/terminal", "vxshow/listing",
                                         "vxshow/cli/filter", "vxshow/cli"],
    "vxshow/cli/completion": ALL_SOURCES + ["vxshow/config", "vxshow/terminal", "vxshow/cli",
                                            "vxshow/cli/command"],
    "vxshow": ALL_SOURCES + ["vxshow/config", "vxshow/terminal", "vxshow/listing", "vxshow/cli",
                             "vxshow/cli/command", "vxshow/cli/completion"],
}

TREES = ("platform", "VxlanController", "modelc", "vxshow")

# These folders are one room with everything below them.
WHOLE = ("VxlanController", "modelc")

INCLUDE = re.compile(r'^\s*#\s*include\s*(["<])([^">]+)[">]', re.MULTILINE)


def room_of(path):
    """The room of a file: its folder, as a path relative to the root."""
    first = path.parts[0]
    return first if first in WHOLE else str(path.parent)


def platform_folders(root):
    folders = [path.name for path in (root / "platform").iterdir() if path.is_dir()]
    return set(folders) | {room.split("/")[1] for room in PLATFORM}


def included_path(quote, name, folders):
    """The path of an included project header, relative to the root; None for any other."""
    first = name.split("/")[0]
    if first in folders:
        return pathlib.PurePath("platform", name)
    if quote == '"' or first in TREES:
        return pathlib.PurePath(name)
    return None


def source_files(root):
    for tree in TREES:
        for path in sorted((root / tree).rglob("*")):
            if path.suffix in (".h", ".cpp") and path.is_file():
                yield path.relative_to(root)


def include_violations(root, rooms):
    folders = platform_folders(root)
    for path in source_files(root):
        room = room_of(path)
        if room not in rooms:
            yield f"{path}: {room} is not in the table of rooms"
            continue
        text = (root / path).read_text(encoding="utf-8")
        for match in INCLUDE.finditer(text):
            included = included_path(*match.groups(), folders)
            if included is None:
                continue
            target = room_of(included)
            if target != room and target not in rooms[room]:
                line = text.count("\n", 0, match.start(2)) + 1
                yield f"{path}:{line}: {room} must not include {included}"


def duplicate_names(root):
    in_platform = {path.name: path for path in source_files(root) if path.parts[0] == "platform"}
    found = collections.defaultdict(list)
    for path in source_files(root):
        if path.parts[0] == "vxshow" and path.suffix == ".h":
            found[path.name].append(path)
    for name, paths in sorted(found.items()):
        if len(paths) > 1:
            yield f"{name}: several headers have this name: {', '.join(map(str, paths))}"
        if name in in_platform:
            yield f"{paths[0]}: has the name of {in_platform[name]}"


def order_violations(rooms):
    before = set()
    for room, allowed in rooms.items():
        for other in allowed:
            if other not in before:
                yield f"table of rooms: {room} uses {other}, which does not stand before it"
        before.add(room)


def violations(root, rooms=None):
    rooms = ROOMS if rooms is None else rooms
    yield from order_violations(rooms)
    yield from include_violations(root, rooms)
    yield from duplicate_names(root)


def main():
    root = pathlib.Path(sys.argv[1])
    if not list(source_files(root)):
        sys.exit(f"{root}: no source files found")
    found = list(violations(root))
    for line in found:
        print(line)
    sys.exit(1 if found else 0)


if __name__ == "__main__":
    main()
