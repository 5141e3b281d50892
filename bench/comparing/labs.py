"""Sets up and takes down the labs on which live sources are measured."""

import json
import os
import shutil
import subprocess
import sys
import tempfile

from comparing.refusal import Refusal

LABS = os.path.join(
    os.path.dirname(os.path.dirname(os.path.dirname(os.path.realpath(__file__)))), "tests", "labs"
)


def _run(words, **more):
    done = subprocess.run(words, capture_output=True, text=True, check=False, **more)
    if done.returncode != 0:
        lines = filter(None, map(str.strip, done.stderr.splitlines()))
        said = "; ".join(lines) or f"exit status {done.returncode}"
        raise Refusal(f"{os.path.basename(words[0])} {words[1]}: {said}")
    return done.stdout


def ovsdb_lab(*words):
    return _run([os.path.join(LABS, "ovsdb-lab"), *words])


def _report(failures, exception):
    """Raises a Refusal if labs did not go down, unless an exception is already being handled."""
    if failures and exception is None:
        raise Refusal("; ".join(failures))
    for failure in failures:
        print(f"live: {failure}", file=sys.stderr)


class Scratch:
    """A folder for labs and output, removed at the end of the block. It is kept if a lab in it
    did not go down, since the lab needs its files for that."""

    def __enter__(self):
        self._path = tempfile.mkdtemp(prefix="vx")
        # The FRR daemons run as their own user.
        os.chmod(self._path, 0o755)
        return self._path

    def __exit__(self, *_):
        left = [name for name in sorted(os.listdir(self._path)) if self._is_lab(name)]
        if left:
            what = ", ".join(left)
            print(f"live: {self._path} is kept, a lab is still there: {what}", file=sys.stderr)
        else:
            shutil.rmtree(self._path)

    def _is_lab(self, name):
        """A lab has a file that is removed last when it goes down."""
        return any(
            os.path.exists(os.path.join(self._path, name, mark)) for mark in ("lab.json", "made")
        )


class Databases:
    """Database servers, stopped at the end of the block."""

    def __init__(self):
        self._folders = []

    def __enter__(self):
        return self

    def __exit__(self, kind, *_):
        failures = []
        for folder in self._folders:
            try:
                ovsdb_lab("down", folder)
            except Refusal as refusal:
                failures.append(f"{folder}: {refusal}")
        _report(failures, kind)

    def single(self, folder, macs, vnis, seed=1):
        """The remote of one server with this many MAC addresses."""
        file = folder + ".db"
        ovsdb_lab("make", file, "--vnis", str(vnis), "--macs", str(macs), "--seed", str(seed))
        return self._up("single", folder, file)

    def cluster(self, folder, macs, vnis):
        """The remotes of three servers."""
        file = folder + ".db"
        ovsdb_lab("make", file, "--vnis", str(vnis), "--macs", str(macs), "--seed", "1")
        return self._up("cluster", folder, file)

    def _up(self, kind, folder, file):
        remote = ovsdb_lab(
            kind, folder, "--from", file, "--parent", str(os.getpid())
        ).splitlines()[0]
        self._folders.append(folder)
        os.remove(file)
        return remote

    @staticmethod
    def terms(folder):
        """The election terms of the servers."""
        return {line.split()[3] for line in ovsdb_lab("nodes", folder).splitlines()}


class Evpn:
    """Three VTEPs that run FRR, taken down at the end of the block."""

    def __init__(self, folder):
        # Namespaces and path spaces are machine-wide, so two measurements need two names.
        self._prefix = f"bench{os.getpid()}-"
        self._environment = {
            **os.environ,
            "EVPN_LAB_DIR": os.path.join(folder, "evpn"),
            "EVPN_LAB_PREFIX": self._prefix,
        }

    def __enter__(self):
        self._lab("up", "--parent", str(os.getpid()))
        return self

    def __exit__(self, kind, *_):
        try:
            self._lab("down")
        except Refusal as refusal:
            _report([str(refusal)], kind)

    def grow(self, vnis, macs):
        self._lab("grow", str(vnis), str(macs))

    def path_space(self, number):
        return f"{self._prefix}vtep{number}"

    def _lab(self, *words):
        return _run([os.path.join(LABS, "evpn-lab"), *words], env=self._environment)


def logical_switches(remote):
    """The names of the logical switches, as the server itself reports them."""
    request = [
        "hardware_vtep",
        {"op": "select", "table": "Logical_Switch", "where": [], "columns": ["name"]},
    ]
    answer = _run(["ovsdb-client", "-vconsole:off", "query", remote, json.dumps(request)])
    return [row["name"] for row in json.loads(answer)[0]["rows"]]
