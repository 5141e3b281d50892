"""The speed targets for vxshow, relative to what the same machine can do at that moment."""

import contextlib
import os

from comparing import listings, snapshots
from comparing.comparison import compare, text_and_floor
from comparing.report import Report

# Small snapshots take little more than a process start, and vary as much.
SMALL_REPEATS = 10
TEN_ENTRIES_REPEATS = 20

# Each of these listings has tables of the same number and size as the received MACs that it
# is compared with, since the cost of sorting grows with the table.
TABLES = 100


class Targets:
    def __init__(self, measuring, tools, turns, scale):
        self._measuring = measuring
        self._tools = tools
        self._turns = turns
        self._scale = scale
        self._report = Report()

    def measure(self):
        self._wide()
        self._deep()
        self._sizes()
        self._kinds_in_tables()
        self._kinds_in_one_table()
        self._ten_entries()

    def paragraphs(self):
        yield (
            f"Medians of {self._turns} runs in turn on {os.cpu_count()} processors; in each turn"
            f" the smaller of the two sizes runs {SMALL_REPEATS} times and the ten entries"
            f" {TEN_ENTRIES_REPEATS} times. A time per entry is the time of the whole process"
            " over the entries."
        )
        if self._scale != 1:
            yield f"The targets are for full sizes; here all are divided by {self._scale}."
        yield from self._report.paragraphs()

    def _made(self, kind, **sizes):
        return snapshots.made(self._measuring.folder, kind, **sizes)

    def _scaled(self, size):
        return max(1, size // self._scale)

    def _compared(self, title, path):
        measured = compare(self._measuring, self._tools, path, self._turns)
        self._report.compared(title, measured)
        return measured

    def _wide(self):
        sizes = {"switches": 128, "vnis": self._scaled(1000), "macs": 10}
        title = f"{sizes['switches']} switches x {sizes['vnis']:,} VNIs x {sizes['macs']} MACs"
        with self._made("switches", **sizes) as path:
            measured = self._compared(title, path)
        peaks = measured.programs["text"].kib / measured.programs["floor_text"].kib
        floor, json_floor = "the floor's time", "the JSON floor's time"
        reading = "simdjson reading the file and nothing else"
        report = self._report
        report.at_most(f"{title}, text", floor, measured.ratio("text"), 1.5)
        report.at_most("the same, compact JSON", json_floor, measured.ratio("json"), 1.5)
        report.at_most("the same, peak memory of text", "the floor's peak memory", peaks, 1.7)
        report.at_most("the same, `--vni V`", reading, measured.ratio("vni"), 1.3)
        report.at_least("jq doing the listing", "text", measured.ratio("jq"), 15)
        report.at_least("Python doing the listing", "text", measured.ratio("python"), 7)

    def _deep(self):
        macs = self._scaled(1_000_000)
        title = f"one VNI with {macs:,} MACs"
        with self._made("one-vni", macs=macs) as path:
            measured = self._compared(title, path)
        self._report.at_most(f"{title}, text", "the floor's time", measured.ratio("text"), 1.5)

    def _sizes(self):
        large = snapshots.grid(self._scaled(10_000_000))
        small = snapshots.grid(self._scaled(100_000))
        measuring, tools = self._measuring, self._tools
        with self._made("switches", **large) as large_path, self._made(
            "switches", **small
        ) as small_path:
            of_large = text_and_floor(measuring, tools, large_path)
            of_small = text_and_floor(measuring, tools, small_path, SMALL_REPEATS)
            measuring.take_turns([*of_large, *of_small], self._turns)
        per_entry = {}
        for sizes, programs in (large, of_large), (small, of_small):
            entries = snapshots.entries_of(sizes)
            name = f"received MACs, {entries // sizes['macs']:,} tables"
            for program in programs:
                per_entry[program] = self._report.measured(name, entries, program)
        self._report.at_most(
            f"{snapshots.entries_of(large):,} received MACs, time per entry",
            f"{snapshots.entries_of(small):,}, time per entry",
            per_entry[of_large[0]] / per_entry[of_small[0]],
            1.3,
        )

    def _kinds_in_tables(self):
        each = self._scaled(1_000_000 // TABLES)
        entries = each * TABLES
        self._against_received_macs(
            entries,
            f"{TABLES} tables",
            received=("switches", {"switches": 10, "vnis": TABLES // 10, "macs": each}),
            others={
                "arp received": (
                    "arp",
                    {"entries": entries, "only": "received", "switches": 10, "vnis": TABLES // 10},
                ),
                "arp advertised": (
                    "arp",
                    {"entries": entries, "only": "advertised", "vnis": TABLES},
                ),
                "mac advertised": ("advertised", {"macs": entries, "vnis": TABLES}),
                "router routes": ("routes", {"routes": entries, "routers": TABLES}),
            },
        )

    def _kinds_in_one_table(self):
        entries = self._scaled(1_000_000)
        self._against_received_macs(
            entries,
            "one table",
            received=("one-vni", {"macs": entries}),
            others={"router routes": ("routes", {"routes": entries, "routers": 1})},
        )

    def _against_received_macs(self, entries, tables, received, others):
        """Each snapshot holds the entries that its command lists, and nothing else."""
        measuring = self._measuring
        programs = {}
        with contextlib.ExitStack() as stack:
            for command, (kind, sizes) in {"mac received": received, **others}.items():
                path = stack.enter_context(self._made(kind, **sizes))
                program = self._tools.vxshow(f"vxshow {command}", path, *command.split())
                listings.require_rows(program.title, measuring.listing(program, "text"), entries)
                programs[command] = program
            measuring.take_turns(programs.values(), self._turns)
        per_entry = {
            command: self._report.measured(f"the listed entries alone, {tables}", entries, program)
            for command, program in programs.items()
        }
        for command in others:
            self._report.at_most(
                f"`{command}`, {entries:,} entries in {tables}, time per entry",
                "`mac received` of as many in such tables",
                per_entry[command] / per_entry["mac received"],
                1.3,
            )

    def _ten_entries(self):
        with self._made("switches", switches=1, vnis=1, macs=10) as path:
            text = self._tools.text(path, TEN_ENTRIES_REPEATS)
            cat = self._tools.cat(path, TEN_ENTRIES_REPEATS)
            listings.require_rows(text.title, self._measuring.listing(text, "text"), 10)
            self._measuring.listing(cat, "cat")
            self._measuring.take_turns([text, cat], self._turns)
        for program in text, cat:
            self._report.measured("received MACs, one table", 10, program)
        self._report.milliseconds_more(
            "one switch with ten MACs, the whole process",
            "`cat` of the snapshot",
            text.seconds - cat.seconds,
            5,
        )
