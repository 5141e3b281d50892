"""Records the client commands that vxshow runs, so that the client can be timed on them."""

import json
import os
import shlex
import sys

SCRIPT = """#!{python}
import json, os, sys
with open({log!r}, "a", encoding="utf-8") as log:
    log.write(json.dumps(sys.argv[1:]) + "\\n")
os.execvp({client!r}, [{client!r}, *sys.argv[1:]])
"""


def executable(path, text):
    with open(path, "w", encoding="utf-8") as file:
        file.write(text)
    os.chmod(path, 0o755)
    return path


class Recording:
    """A program that runs the client and records its arguments."""

    def __init__(self, client, folder):
        self._client = client
        self._folder = folder
        self._log = os.path.join(folder, "runs")
        script = SCRIPT.format(python=sys.executable, log=self._log, client=client)
        self.program = executable(os.path.join(folder, "recording"), script)

    def runs(self):
        """The commands recorded so far."""
        with open(self._log, encoding="utf-8") as file:
            return [[self._client, *json.loads(line)] for line in file]

    def replay(self):
        """A program that runs all of them, one after the other."""
        *others, last = map(shlex.join, self.runs())
        lines = ["#!/bin/sh", "set -e", *others, "exec " + last, ""]
        return executable(os.path.join(self._folder, "replay"), "\n".join(lines))
