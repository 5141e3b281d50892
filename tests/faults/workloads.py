"""What vxshow is asked to do while something fails."""

import dataclasses
import json
import os
import shutil

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.dirname(os.path.dirname(HERE))
EXAMPLE = os.path.join(ROOT, "examples", "fabric.json")
CAPTURES = os.path.join(ROOT, "tests", "captures")


@dataclasses.dataclass(frozen=True)
class Workload:
    """One run of vxshow.

    It runs in a folder of its own; the files in the folder `out` there are compared. `sources` are the
    files in the folder `bin` there whose absence makes a live source fail.
    """

    name: str
    words: tuple
    old: tuple = ()  # the files in `out` before the run: (name, content)
    output: str = "pipe"  # or file, or terminal
    sources: tuple = ()
    unnamed_files: bool = True  # whether file systems have O_TMPFILE
    standard_input: str = "/dev/null"  # the file that it reads from standard input
    optional_files: bool = False  # whether files that are absent are no error
    fixed_seed: bool = False  # whether the files in `out` depend on the seed of the hashes


COMMANDS = ["mac received", "mac advertised", "arp received", "arp advertised", "router map",
            "router detail", "router routes"]
STATE = ("--state", "state.json")
FABRIC = ("--fabric", "fabric.toml")
DATABASE, DAEMON = "database", "daemon"


def _listings():
    for command in COMMANDS:
        words = command.split()
        yield Workload(command, (*STATE, *words))
        for form in "--json", "--pretty":
            yield Workload(f"{command} {form}", (*STATE, form, *words))


def _rows():
    yield Workload("mac received -o wide", (*STATE, "mac", "received", "-o", "wide"))
    yield Workload("arp received -o csv --sort", (*STATE, "arp", "received", "-o", "csv",
                                                  "--sort", "-ipAddress,vni", "--top", "9"))
    yield Workload("router detail -o jsonl", (*STATE, "router", "detail", "-o", "jsonl"))
    yield Workload("router routes -o wide to a terminal",
                   (*STATE, "router", "routes", "-o", "wide"), output="terminal")
    yield Workload("schema", ("schema", "mac-received"))


def _captures():
    old = (("saved.json", "old\n"),)
    capture = (*STATE, "capture", "out/saved.json")
    yield Workload("capture, new file", capture)
    yield Workload("capture, existing file", capture, old=old)
    yield Workload("capture, named temporary file", capture, old=old, unnamed_files=False)
    yield Workload("capture, new file, named", capture, unnamed_files=False)
    yield Workload("capture -", (*STATE, "capture", "-"))


def _tables():
    old = (("received-hosts", "old\n"), ("advertised-flood", "old\n"))
    yield Workload("tables publish", (*STATE, "tables", "publish", "out/new"),
                   fixed_seed=True)
    yield Workload("tables publish, again", (*STATE, "tables", "publish", "out"), old=old,
                   fixed_seed=True)
    yield Workload("--tables", ("--tables", "tables", "mac", "received"),
                   optional_files=True)


def _models():
    yield Workload("model --of", (*STATE, "model", "--of", "router routes"))
    yield Workload("model", ("model", "MacVtep"))


def _live():
    database = ("--ovsdb", "unix:/nonexistent/sock")
    for command in "mac received", "router map":
        words = command.split()
        yield Workload(f"--ovsdb {command}", (*database, *words), sources=(DATABASE,))
        yield Workload(f"--frr {command}", ("--frr", *words), sources=(DAEMON,))
    both = (DATABASE, DAEMON)
    yield Workload("--fabric", (*FABRIC, "--json", "mac", "received"), sources=both)
    yield Workload("--fabric --all-or-nothing",
                   (*FABRIC, "--all-or-nothing", "mac", "received"), sources=both)
    yield Workload("--fabric capture", (*FABRIC, "capture", "out/saved.json"),
                   old=(("saved.json", "old\n"),), sources=both)


def _others():
    listing = (*STATE, "mac", "received")
    yield Workload("from standard input", ("--state", "-", "mac", "received"),
                   standard_input="state.json")
    yield Workload("to a file", listing, output="file")
    yield Workload("to a terminal", listing, output="terminal")
    yield Workload("--trace", (*STATE, "--trace", "9", "router", "map"))
    yield Workload("--help", ("mac", "received", "--help"))
    yield Workload("usage error", ("mac", "received", "--vni", "x"))
    yield Workload("state error", ("--state", "bad.json", "mac", "received"))


def workloads():
    """All of them."""
    return [*_listings(), *_rows(), *_captures(), *_tables(), *_models(), *_live(), *_others()]


def _write(path, text, mode=0o644):
    with open(path, "w", encoding="utf-8") as file:
        file.write(text)
    os.chmod(path, mode)


def _database_answers():
    """The recorded rows: (table, columns) of each operation, and its answer."""
    folder = os.path.join(CAPTURES, "hardware_vtep")
    with open(os.path.join(folder, "query-request.json"), encoding="utf-8") as file:
        operations = json.load(file)[1:]
    with open(os.path.join(folder, "query.json"), encoding="utf-8") as file:
        return {asked["table"]: answer for asked, answer in zip(operations, json.load(file))}


def database_answer(request):
    """What the recorded database answers to this transaction."""
    recorded = _database_answers()
    answers = []
    for asked in json.loads(request)[1:]:
        rows = recorded[asked["table"]]["rows"]
        answers.append({"rows": [{name: row[name] for name in asked["columns"]} for row in rows]})
    return json.dumps(answers, separators=(",", ":")) + "\n"


_STATUS = json.dumps([{"rows": [{"cid": ["set", []], "connected": True, "index": ["set", []],
                                 "leader": True, "model": "standalone"}]}])
# Both leave a process in the background, which vxshow has to end. A client that is asked what it has
# no answer for keeps the question.
_DATABASE_CLIENT = """#!/bin/sh
sleep 600 </dev/null >/dev/null 2>&1 &
case $4 in *_Server*) echo '{status}'; exit ;; esac
[ -e "{bin}/database" ] || {{ echo 'ovsdb-client: failed to connect' >&2; exit 1; }}
[ -e "{bin}/answer" ] || echo "$4" >"{bin}/question"
exec cat "{bin}/answer"
"""
_VTYSH = """#!/bin/sh
sleep 600 </dev/null >/dev/null 2>&1 &
[ -e "{bin}/daemon" ] || {{ echo 'Exiting: failed to connect to any daemons.' >&2; exit 1; }}
echo=
while [ $# -gt 0 ]; do
    case $1 in
        -E) echo=1 ;;
        -c) [ -z "$echo" ] || echo "fake# $2"
            [ ! -e "{bin}/$2" ] || cat "{bin}/$2"
            shift ;;
    esac
    shift
done
"""
_FABRIC = """
[[source]]
kind = "hardware_vtep"
name = "rack1"
time_limit = 20
remotes = ["unix:/nonexistent/sock"]

[[source]]
kind = "frr"
name = "vtep1"
time_limit = 20
system_id = "00:1c:73:00:00:11"
"""


def make_folder(folder, run):
    """Fills the folder of a worker. `run(words)` runs vxshow undisturbed, with the scripted peers."""
    programs = os.path.join(folder, "bin")
    os.makedirs(programs)
    shutil.copy(EXAMPLE, os.path.join(folder, "state.json"))
    _write(os.path.join(folder, "bad.json"), '{"format":"vxlan-controller-state","version":1,}')
    _write(os.path.join(folder, "fabric.toml"), _FABRIC)
    _write(os.path.join(programs, "ovsdb-client"), _DATABASE_CLIENT.format(bin=programs, status=_STATUS), 0o755)
    _write(os.path.join(programs, "vtysh"), _VTYSH.format(bin=programs), 0o755)
    recorded = os.path.join(CAPTURES, "frr", "vtep1")
    for name in os.listdir(recorded):
        command = name.removesuffix(".json").replace("-", " ").replace("arp cache", "arp-cache")
        shutil.copy(os.path.join(recorded, name), os.path.join(programs, command + " json"))
    for source in DATABASE, DAEMON:
        _write(os.path.join(programs, source), "")
    run([*STATE, "tables", "publish", "tables"])


def question_file(folder):
    """Where the scripted database keeps what it was asked."""
    return os.path.join(folder, "bin", "question")


def set_answer(folder, answer):
    """Makes the scripted database answer that; None: nothing, and it keeps the question."""
    path = os.path.join(folder, "bin", "answer")
    if answer is not None:
        _write(path, answer)
    elif os.path.exists(path):
        os.unlink(path)
