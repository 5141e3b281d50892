"""One snapshot: `vxshow mac received` against the floor, jq and Python listing the same."""

import os

from comparing import listings, markdown
from comparing.refusal import Refusal

AGAINST = {
    "text": "floor_text",
    "json": "floor_json",
    "vni": "read_only",
    "jq": "text",
    "python": "text",
}


class Comparison:
    """The timed programs by short name, and the number of rows that each of them lists."""

    def __init__(self, snapshot, programs, rows):
        self.bytes = os.path.getsize(snapshot)
        self.programs = programs
        self.rows = rows

    def ratio(self, name):
        return self.programs[name].seconds / self.programs[AGAINST[name]].seconds

    def table(self):
        def row(name, program):
            base = self.programs.get(AGAINST.get(name))
            return (
                program.title,
                markdown.seconds(program.seconds),
                markdown.seconds(program.processor_seconds),
                f"{markdown.ratio(self.ratio(name))} x {base.title}" if base else "-",
                markdown.mib(program.mib),
                f"{program.kib * 1024 / self.rows:.0f}",
            )

        head = (
            "program",
            "seconds",
            "processor seconds",
            "ratio",
            "peak memory (MiB)",
            "memory per MAC entry (bytes)",
        )
        rows = [row(name, program) for name, program in self.programs.items()]
        return markdown.table("lrrlrr", head, *rows)


def compare(measuring, tools, snapshot, turns):
    text = tools.text(snapshot)
    listing = measuring.listing(text, "text")
    first = next(listings.vxshow_rows(listing), None)
    if first is None:
        raise Refusal("nothing to compare: the snapshot lists no unicast MAC")
    vni = first[1]
    programs = {
        "text": text,
        "floor_text": tools.floor_text(snapshot),
        "json": tools.json(snapshot),
        "floor_json": tools.floor_json(snapshot),
        "vni": tools.vni(snapshot, vni),
        "read_only": tools.read_only(snapshot),
        "jq": tools.jq(snapshot),
        "python": tools.python(snapshot),
    }
    outputs = {"text": listing}
    for name in [name for name in programs if name != "text"]:
        outputs[name] = measuring.listing(programs[name], name)

    listings.require_same_bytes("text", listing, outputs["floor_text"])
    listings.require_same_bytes("JSON", outputs["json"], outputs["floor_json"])
    for name in "jq", "python":
        listings.require_same_rows(
            (text.title, listings.vxshow_rows(listing)),
            (programs[name].title, listings.script_rows(outputs[name])),
        )
    listings.require_same_rows(
        (text.title, (row for row in listings.vxshow_rows(listing) if row[1] == vni)),
        (programs["vni"].title, listings.vxshow_rows(outputs["vni"])),
    )
    rows = sum(1 for _ in listings.vxshow_rows(listing))
    for path in outputs.values():
        os.remove(path)

    measuring.take_turns(programs.values(), turns)
    return Comparison(snapshot, programs, rows)


def text_and_floor(measuring, tools, snapshot, repeats=1):
    """vxshow and the floor, checked to write the same text but not yet timed."""
    text = tools.text(snapshot, repeats)
    floor = tools.floor_text(snapshot, repeats)
    ours = measuring.listing(text, "text")
    theirs = measuring.listing(floor, "floor_text")
    listings.require_same_bytes("text", ours, theirs)
    os.remove(ours)
    os.remove(theirs)
    return text, floor
