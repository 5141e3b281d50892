"""Times whole processes from start to end, since that is what an operator waits for.

Programs that are compared take turns, so that a busy moment of the machine affects them all.
"""

import os
import resource
import shutil
import signal
import statistics
import time

from comparing.refusal import Refusal


class Program:
    """A command and the times of its runs, `repeats` of them in each turn."""

    def __init__(self, title, command, repeats=1):
        self.title = title
        self.command = command
        self.repeats = repeats
        self.wall = []
        self.processor = []
        self.kib = 0

    @property
    def seconds(self):
        return statistics.median(self.wall)

    @property
    def processor_seconds(self):
        return statistics.median(self.processor)

    @property
    def mib(self):
        return self.kib / 1024


class Measuring:
    """Runs programs, with their output in files in one folder."""

    def __init__(self, folder):
        self.folder = folder
        self._environment = {**os.environ, "LC_ALL": "C.UTF-8"}
        self._environment.pop("VXSHOW_STATE", None)
        self._time = shutil.which("time")
        if self._time is None:
            raise Refusal("no GNU time: install the package time")

    def listing(self, program, name):
        """Makes the first run, which is not timed; returns the path of the program's output.

        The memory that the system reports for a child includes that of its parent process,
        and a Python process is larger than vxshow with a small snapshot. So this run is started
        by GNU time, which is small.
        """
        peak = os.path.join(self.folder, "peak")
        path = os.path.join(self.folder, name)
        command = [self._time, "-f", "%M", "-o", peak, *program.command]
        self._run(program.title, command, path)
        with open(peak, encoding="ascii") as file:
            program.kib = max(program.kib, int(file.read()))
        return path

    def take_turns(self, programs, turns):
        """Time the programs in turn, one after the other."""
        path = os.path.join(self.folder, "output")
        for _ in range(turns):
            for repeat in range(max(program.repeats for program in programs)):
                for program in programs:
                    if repeat < program.repeats:
                        self._timed(program, path)
        os.remove(path)

    def _timed(self, program, path):
        seconds, used = self._run(program.title, program.command, path)
        program.wall.append(seconds)
        program.processor.append(used.ru_utime + used.ru_stime)
        # A value below this process's own memory can be that of this process.
        if used.ru_maxrss > resource.getrusage(resource.RUSAGE_SELF).ru_maxrss:
            program.kib = max(program.kib, used.ru_maxrss)

    def _run(self, title, command, path):
        errors_path = os.path.join(self.folder, "errors")
        # The previous run's output is removed before the clock starts.
        with open(path, "wb") as output, open(errors_path, "wb") as errors:
            files = [
                (os.POSIX_SPAWN_OPEN, 0, os.devnull, os.O_RDONLY, 0),
                (os.POSIX_SPAWN_DUP2, output.fileno(), 1),
                (os.POSIX_SPAWN_DUP2, errors.fileno(), 2),
            ]
            begin = time.monotonic()
            try:
                process = os.posix_spawnp(
                    command[0],
                    command,
                    self._environment,
                    file_actions=files,
                    setsigdef=[signal.SIGPIPE],
                )
            except OSError as error:
                raise Refusal(f"{title} does not start: {error}") from None
            _, status, used = os.wait4(process, 0)
            seconds = time.monotonic() - begin
        if status != 0:
            with open(errors_path, encoding="utf-8", errors="replace") as file:
                said = file.readline().strip()
            raise Refusal(f"{title} failed" + (f": {said}" if said else ""))
        return seconds, used
