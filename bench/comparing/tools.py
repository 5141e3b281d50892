"""The measured programs and their command lines."""

import os
import sys

from comparing.measuring import Program
from comparing.refusal import Refusal

BENCH = os.path.dirname(os.path.dirname(os.path.realpath(__file__)))


class Tools:
    """vxshow and the floor in one folder, and the programs they are compared with."""

    def __init__(self, folder):
        self._folder = os.path.abspath(folder)
        for name in "vxshow", "floor_received_text", "floor_received_json", "floor_read_only":
            if not os.access(os.path.join(self._folder, name), os.X_OK):
                raise Refusal(f"no program: {os.path.join(folder, name)}")

    def vxshow(self, title, snapshot, *words, repeats=1):
        command = [os.path.join(self._folder, "vxshow"), "--state", snapshot, *words]
        return Program(title, command, repeats)

    def text(self, snapshot, repeats=1):
        return self.vxshow("vxshow, text", snapshot, "mac", "received", repeats=repeats)

    def json(self, snapshot):
        return self.vxshow("vxshow, compact JSON", snapshot, "mac", "received", "--json")

    def vni(self, snapshot, vni):
        return self.vxshow("vxshow --vni", snapshot, "mac", "received", "--vni", vni)

    def floor_text(self, snapshot, repeats=1):
        return self._floor("floor, text", "floor_received_text", snapshot, repeats)

    def floor_json(self, snapshot):
        return self._floor("floor, compact JSON", "floor_received_json", snapshot)

    def read_only(self, snapshot):
        return self._floor("simdjson reading the file", "floor_read_only", snapshot)

    def _floor(self, title, name, snapshot, repeats=1):
        return Program(title, [os.path.join(self._folder, name), snapshot], repeats)

    @staticmethod
    def jq(snapshot):
        return Program("jq", ["jq", "-r", "-f", os.path.join(BENCH, "listing.jq"), snapshot])

    @staticmethod
    def python(snapshot):
        # `python3` can be a launcher script, whose start must not be measured.
        # -E: the caller's PYTHONUNBUFFERED would cost a system call per column.
        script = os.path.join(BENCH, "listing.py")
        return Program("Python", [sys.executable, "-E", script, snapshot])

    @staticmethod
    def cat(snapshot, repeats=1):
        return Program("cat", ["cat", snapshot], repeats)
