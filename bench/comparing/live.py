"""The targets for live sources, each measured against the time of the source's own client."""

import os
import re

from comparing import markdown
from comparing.labs import Databases, Evpn, logical_switches, ovsdb_lab
from comparing.measuring import Program
from comparing.recording import Recording
from comparing.refusal import Refusal
from comparing.report import Report

ROWS = "database", "evpn", "many", "cluster"

# The number of sources that vxshow reads in parallel.
AT_ONCE = 16


def cores():
    """The number of processors that this process and its children can use."""
    return len(os.sched_getaffinity(0))


def rounds(sources):
    """The least time for this many sources, as a multiple of one source, using all processors."""
    return max(1, sources / min(cores(), AT_ONCE))


def count(path, pattern):
    """The number of matches of the pattern in a program's output."""
    with open(path, encoding="utf-8", errors="replace") as file:
        return len(re.findall(pattern, file.read(), re.MULTILINE))


class Live:
    def __init__(self, measuring, vxshow, folder, turns, scale):
        self._measuring = measuring
        self._vxshow = vxshow
        self._folder = folder
        self._turns = turns
        self._scale = scale
        self._report = Report()
        self._notes = []

    def measure(self, only):
        for name in ROWS:
            if only in (None, name):
                getattr(self, "_" + name)()

    def paragraphs(self):
        yield from self._report.targets()
        yield from self._notes

    def _path(self, name):
        return os.path.join(self._folder, name)

    def _scaled(self, size):
        return max(1, size // self._scale)

    def _shown(self, title, *words):
        return Program(title, [self._vxshow, *words])

    def _timed(self, *programs):
        """Runs each program once for its output, whose path is returned, then times them."""
        paths = []
        for number, program in enumerate(programs):
            paths.append(self._measuring.listing(program, f"listing{number}"))
        self._measuring.take_turns(programs, self._turns)
        for program in programs:
            self._notes.append(
                f"- {program.title}: {markdown.seconds(program.seconds)} s, "
                f"{markdown.seconds(program.processor_seconds)} s of it this program's own, "
                f"{markdown.mib(program.mib)} MiB"
            )
        return paths

    def _database(self):
        macs, vnis = self._scaled(100_000), self._scaled(100)
        with Databases() as databases:
            remote = databases.single(self._path("n"), macs, vnis)
            client = ["ovsdb-client", "-vconsole:off", "query", remote, ovsdb_lab("request")]
            names = logical_switches(remote)

            def vtep_ctl(*sides):
                words = [f"--db={remote}"]
                for side in sides:
                    for name in names:
                        words += ["--", f"list-{side}-macs", name]
                return Program(f"vtep-ctl, {' and '.join(sides)} MACs", ["vtep-ctl", *words])

            query = Program("ovsdb-client query of everything", client)
            whole = self._shown("vxshow capture", "--ovsdb", remote, "capture", "-")
            received = self._shown("vxshow mac received", "--ovsdb", remote, "mac", "received")
            vni = self._shown(
                "vxshow mac received --vni", *received.command[1:], "--vni", str(10_001)
            )
            both, local = vtep_ctl("local", "remote"), vtep_ctl("local")
            paths = self._timed(query, whole, received, vni, both, local)
        self._require(count(paths[1], '"vtep":'), macs)
        what = f"{macs:,} MACs over {vnis} VNIs, everything"
        self._report.at_most(
            what, "`ovsdb-client query` of the same", whole.seconds / query.seconds, 1.15
        )
        self._report.at_least(
            "`vtep-ctl` listing all MACs of all VNIs in one call",
            "everything, by vxshow",
            both.seconds / whole.seconds,
            2,
        )
        self._report.at_least(
            "`vtep-ctl list-local-macs` of all VNIs in one call",
            "`mac received`",
            local.seconds / received.seconds,
            2,
        )
        self._report.at_most(
            "one VNI of it", "everything", vni.seconds / whole.seconds, 1 / 20
        )

    @staticmethod
    def _require(shown, there):
        if shown != there:
            raise Refusal(f"vxshow shows {shown} MACs of {there}")

    def _evpn(self):
        macs, vnis = self._scaled(50_000), self._scaled(100)
        with Evpn(self._folder) as evpn:
            evpn.grow(vnis, macs)
            space = evpn.path_space(1)
            recording = self._recorded(space)
            runs = len(recording.runs())
            first = Program("vtysh in the first run of vxshow", recording.runs()[0])
            every = Program(f"vtysh in all {runs} runs of vxshow", [recording.replay()])
            shown = self._advertised("vxshow mac advertised", space)
            paths = self._timed(first, every, shown)
        self._require(
            count(paths[2], r"^\d+ +\S{14} +10\.0\.0\.2 +\d+$"),
            count(paths[0], r'"remoteVtep":"10\.0\.0\.2"'),
        )
        what = f"all MACs of a VTEP with {macs:,} behind another"
        self._report.at_most(
            what,
            "`vtysh` printing the JSON that is asked for first",
            shown.seconds / first.seconds,
            1.3,
        )
        self._report.at_most(
            what,
            f"`vtysh` printing all the JSON that is asked for, in {runs} runs",
            shown.seconds / every.seconds,
            1.3,
        )

    def _advertised(self, title, space, command="vtysh"):
        """vxshow listing the MACs that the daemon of a path space has learned from others."""
        fabric = self._path(f"{os.path.basename(command)}.toml")
        with open(fabric, "w", encoding="ascii") as file:
            file.write(
                f'[[source]]\nkind = "frr"\nname = "vtep1"\n'
                f'path_space = "{space}"\ncommand = ["{command}"]\n'
            )
        return self._shown(title, "--fabric", fabric, "mac", "advertised")

    def _recorded(self, space):
        """The client runs of one such listing."""
        recording = Recording("vtysh", self._folder)
        program = self._advertised("vxshow mac advertised", space, recording.program)
        self._measuring.listing(program, "recorded")
        runs = recording.runs()
        if any(runs.count(run) > 1 for run in runs):
            raise Refusal("vxshow asked again, since what it read did not fit together")
        return recording

    def _many(self):
        count, macs = 32, self._scaled(1000)
        with Databases() as databases:
            remotes = [
                databases.single(self._path(f"m{number}"), macs, 10, seed=number)
                for number in range(count)
            ]
            options = [word for remote in remotes for word in ("--ovsdb", remote)]
            every = self._shown(f"vxshow on {count} databases", *options, "mac", "received")
            one = self._shown("vxshow on one of them", *options[:2], "mac", "received")
            self._timed(every, one)
        self._report.at_most(
            f"{count} databases of {macs:,} MACs each, {cores()} cores",
            "one of them",
            every.seconds / one.seconds,
            round(rounds(count) * 1.2, 1),
        )

    def _cluster(self):
        macs = self._scaled(200_000)
        folder = self._path("c")
        with Databases() as databases:
            remotes = databases.cluster(folder, macs, self._scaled(100))
            before = databases.terms(folder)
            shown = self._shown("vxshow on a cluster", "--ovsdb", remotes, "capture", "-")
            for number in range(10):
                self._measuring.listing(shown, f"reading{number}")
            after = databases.terms(folder)
        met = "yes" if before == after else "no"
        elections = "none" if before == after else f"terms {before} to {after}"
        self._report.row(
            f"{macs:,} MACs read from a cluster, ten times", "", elections, "no election", met
        )
