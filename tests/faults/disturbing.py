"""Runs vxshow with one fault."""

import dataclasses
import os
import pty
import re
import shutil
import struct
import subprocess
import termios

import errors
import workloads
from promises import Good, Run


@dataclasses.dataclass(frozen=True)
class Fault:
    """One disturbance. `kind` is call (`error` says how it fails), short (as many bytes), pause (every
    other call is interrupted), or once or on (an allocation; from there on all of them)."""

    kind: str
    call: str = ""
    number: int = 0
    error: str = ""

    @property
    def is_allocation(self):
        return self.kind in ("once", "on")

    @property
    def is_of_memory(self):
        memory = self.call in ("brk", "mmap", "mremap", "mprotect", "munmap")
        return self.is_allocation or memory or self.error == "ENOMEM"

    @property
    def is_writing(self):
        return self.call in ("write", "pwritev2")

    @property
    def is_of_output(self):
        return self.is_writing or self.call == "poll"

    @property
    def is_pause(self):
        return self.error == "EINTR" or self.kind in ("pause", "short")

    def __str__(self):
        if self.is_allocation:
            return f"allocation {self.number} fails" + (" and all after it" * (self.kind == "on"))
        if self.kind == "pause":
            return f"every other call of {self.call} is interrupted"
        which = f"{self.call} {self.number}" if self.number else f"every {self.call}"
        if self.kind == "short":
            return f"{which} transfers {self.error} bytes at most"
        return f"{which} fails with {self.error}"

    def options(self):
        """Those of fault_injector, for a system call."""
        if self.kind == "call":
            return ["--fail", self.call, str(self.number), self.error]
        if self.kind == "short":
            return ["--shorten", self.call, str(self.number), self.error]
        return ["--pause", self.call] if self.kind == "pause" else []


NOTHING = Fault("nothing")


_TIME = re.compile(rb'"20\d\d-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z"')


def _files_of(folder):
    found = {}
    for path, folders, names in os.walk(folder):
        for name in folders:
            found[os.path.relpath(os.path.join(path, name), folder)] = None
        for name in names:
            full = os.path.join(path, name)
            with open(full, "rb") as file:
                # A capture says when it was made, which differs from run to run.
                found[os.path.relpath(full, folder)] = _TIME.sub(b'"(a time)"', file.read())
    return found


class Runner:
    """Runs one workload after the other in a folder of its own."""

    def __init__(self, tools, folder):
        self._tools = tools
        self._folder = folder
        self._out = os.path.join(folder, "out")
        self._report = os.path.join(folder, "report")
        self._count = os.path.join(folder, "count")
        self._environment = {"PATH": f"{folder}/bin:/usr/bin:/bin", "LC_ALL": "C.UTF-8"}
        workloads.make_folder(folder, self._run_plainly)

    def _run_plainly(self, words):
        subprocess.run([self._tools.vxshow, *words], cwd=self._folder, env=self._environment,
                       stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, check=True)

    def _reset(self, workload):
        shutil.rmtree(self._out, ignore_errors=True)
        os.mkdir(self._out)
        for name, content in workload.old:
            with open(os.path.join(self._out, name), "w", encoding="utf-8") as file:
                file.write(content)

    def _command(self, workload, fault, more):
        command = [self._tools.injector, *fault.options(), *more]
        if not workload.unnamed_files:
            command.append("--no-unnamed-files")
        if fault.is_allocation or fault.kind == "count":
            with open(self._count, "wb") as file:
                file.write(bytes(8))
            settings = {"LD_PRELOAD": self._tools.allocations, "FAULT_KIND": fault.kind,
                        "FAULT_NUMBER": fault.number, "FAULT_REPORT": self._count}
            for name, value in settings.items():
                command += ["--environment", f"{name}={value}"]
        if workload.fixed_seed:
            command += ["--environment", "VEX_HASH_SEED=1"]
        return [*command, self._report, "--", self._tools.vxshow, *workload.words]

    def _start(self, command, workload):
        """(standard output, standard error)"""
        with open(os.path.join(self._folder, workload.standard_input), "rb") as given:
            common = {"cwd": self._folder, "env": self._environment, "stdin": given,
                      "stderr": subprocess.PIPE, "check": False}
            return self._start_with(command, workload.output, common)

    def _start_with(self, command, output, common):
        if output == "pipe":
            done = subprocess.run(command, stdout=subprocess.PIPE, **common)
            return done.stdout, done.stderr
        if output == "file":
            path = os.path.join(self._folder, "output")
            with open(path, "wb") as file:
                done = subprocess.run(command, stdout=file, **common)
            with open(path, "rb") as file:
                return file.read(), done.stderr
        return self._start_on_terminal(command, common)

    @staticmethod
    def _start_on_terminal(command, common):
        master, slave = pty.openpty()
        try:
            # The listing fits into the terminal's buffer, from which it is read afterwards.
            attributes = termios.tcgetattr(slave)
            attributes[1] &= ~termios.OPOST
            termios.tcsetattr(slave, termios.TCSANOW, attributes)
            done = subprocess.run(command, stdout=slave, **common)
            os.close(slave)
            slave = -1
            pieces = []
            try:
                while piece := os.read(master, 65536):
                    pieces.append(piece)
            except OSError:
                pass  # how the end of a terminal is reported
            return b"".join(pieces), done.stderr
        finally:
            os.close(master)
            if slave >= 0:
                os.close(slave)

    def run(self, workload, fault, more=()):
        """(the run, the calls it made if `more` has --list)"""
        self._reset(workload)
        if os.path.exists(self._report):
            os.unlink(self._report)
        command = self._command(workload, fault, more)
        out, err = self._start(command, workload)
        calls, survivors, disturbed = [], [], (0, -1)
        try:
            with open(self._report, encoding="utf-8") as report:
                *lines, last = report.read().splitlines()
        except OSError as error:
            raise RuntimeError(f"{' '.join(command)}: {err.decode()}") from error
        for line in lines:
            kind, rest = line.split(" ", 1)
            if kind == "call":
                calls.append(rest.split()[0])
            elif kind == "survivor":
                survivors.append(rest)
            elif kind == "disturbed":
                disturbed = tuple(map(int, rest.split()))
        if fault.is_allocation:
            disturbed = (int(self.allocations() >= fault.number), -1)
        ended, number = last.split()
        files = _files_of(self._out)
        return Run(ended, int(number), out, err, files, tuple(survivors), *disturbed), calls

    def allocations(self):
        """How many the last run made that counted them."""
        with open(self._count, "rb") as file:
            return struct.unpack("Q", file.read(8))[0]

    def use(self, answer):
        """Sets what the scripted database answers."""
        workloads.set_answer(self._folder, answer)

    def answer(self, workload):
        """What the scripted database is to answer to this workload; None if it is not asked."""
        if workloads.DATABASE not in workload.sources:
            return None
        self.use(None)
        self.run(workload, NOTHING)
        with open(workloads.question_file(self._folder), encoding="utf-8") as file:
            return workloads.database_answer(file.read())

    def good(self, workload):
        """What the workload does without a fault, and with each set of sources missing."""
        self._reset(workload)
        before = _files_of(self._out)
        run, _ = self.run(workload, NOTHING)
        partial = []
        for bits in range(1, 1 << len(workload.sources)):
            missing = [name for place, name in enumerate(workload.sources) if bits >> place & 1]
            for name in missing:
                os.unlink(os.path.join(self._folder, "bin", name))
            partial.append(self.run(workload, NOTHING)[0])
            for name in missing:
                with open(os.path.join(self._folder, "bin", name), "wb"):
                    pass
        return Good(run, before, tuple(partial), workload.output == "terminal")

    def faults(self, workload):
        """All that can fail in this workload, one at a time."""
        _, calls = self.run(workload, NOTHING, ["--list"])
        seen = {}
        for call in calls:
            number = seen[call] = seen.get(call, 0) + 1
            for error in errors.errors_of(call):
                if not (workload.optional_files and (call, error) == ("openat", "ENOENT")):
                    yield Fault("call", call, number, error)
            if call in errors.TRANSFERS:
                yield Fault("short", call, number, "1")
        for call in errors.TRANSFERS:
            if call in seen:
                yield Fault("short", call, 0, "7")
        for call in errors.INTERRUPTED:
            if call in seen:
                yield Fault("pause", call)
        yield Fault("pause", ",".join(errors.INTERRUPTED))
        self.run(workload, Fault("count"))
        for number in range(1, self.allocations() + 1):
            yield Fault("once", number=number)
            yield Fault("on", number=number)
