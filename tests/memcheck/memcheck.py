#!/usr/bin/env python3
"""Checks with Valgrind that vxshow uses no memory that was never written, and loses none.

    memcheck.py --vxshow PROGRAM [--jobs N]

All commands in all forms, `capture` and `model --of` on the example, and some commands on odd
and on broken documents. MemorySanitizer would be faster, but reports false errors unless the C++
standard library was built with it as well, and Debian has none that was; AddressSanitizer does
not notice that memory was never written.
"""

import argparse
import concurrent.futures
import os
import shutil
import subprocess
import sys
import tempfile

HERE = os.path.dirname(os.path.realpath(__file__))
ROOT = os.path.join(HERE, "..", "..")
EXAMPLE = os.path.join(ROOT, "examples", "fabric.json")
MAKE_STATE = os.path.join(ROOT, "bench", "make-state")

FOUND = 99  # the exit status of Valgrind, which vxshow never has

COMMANDS = [
    "mac received",
    "mac advertised",
    "arp received",
    "arp advertised",
    "router map",
    "router detail",
    "router routes",
]

OF_THE_EXAMPLE = [
    *([*form, *command.split()] for command in COMMANDS for form in ([], ["--json"])),
    *(["-o", form, *command.split()] for command in COMMANDS for form in ("wide", "csv", "jsonl")),
    ["-o", "wide", "mac", "received", "--sort", "-moveCount,macAddr", "--top", "3"],
    ["-o", "csv", "mac", "received", "--sort", "vtepIp", "--columns", "vni,source"],
    ["-o", "jsonl", "mac", "received", "--count"],
    ["schema", "mac-received"],
    *([*form, "model", "--of", command] for command in COMMANDS for form in ([], ["--json"])),
    ["capture", "-"],
    ["--pretty", "capture", "-"],
    ["mac", "received", "--source", "leaf1", "--vni", "10", "--vtep", "10.0.0.1"],
    ["arp", "received", "--ip", "2001:db8:10::11"],
    ["router", "routes", "--prefix", "10.20.0.0/16"],
    ["mac", "received", "--source", "leaf*,evpn", "--vni", "10,20-30", "--mac", "00:00:5e:*"],
    ["mac", "advertised", "--vni", "10,20-30", "--vtep", "10.0.0.0/24"],
    ["arp", "received", "--ip", "2001:db8:10::/64,192.0.2.0/24", "--switch", "leaf?"],
    ["router", "map", "--switch", "00005e0053e1,0000.5e00.53e2", "--vtep", "10.0.0.0/24"],
    ["router", "routes", "--router", "p*,storage", "--prefix", "10.20.0.0/16,::/0"],
]

BEGINNING = b'{"format":"vxlan-controller-state","version":1,'


def broken_documents():
    """Each is refused."""
    with open(EXAMPLE, "rb") as file:
        example = file.read()
    for length in 0, 1, 40, len(example) // 3, len(example) - 3:
        yield f"the first {length} bytes of the example", example[:length]
    yield "zeros", bytes(4096)
    yield "a byte that is not UTF-8", BEGINNING + b'"received":{"switches":{"\xff":{}}}}'
    yield "half a surrogate pair", BEGINNING + b'"received":{"switches":{"\\ud83c":{}}}}'
    yield "deep nesting", BEGINNING + b'"received":' + b"[" * 100_000
    yield "a number without an end", BEGINNING[:-2] + b"9" * 10_000 + b"}"
    yield "a wrong address", BEGINNING + b'"routers":{"vteps":{"1::2::3":{"active":true}}}}'
    yield "a repeated member", BEGINNING + b'"received":{},"received":{}}'


def odd_documents():
    """Each is listed by every command."""
    for seed in range(1, 5):
        words = [sys.executable, "-E", MAKE_STATE, "random", "--seed", str(seed)]
        made = subprocess.run(words, stdout=subprocess.PIPE, check=True)
        yield f"random state {seed}", made.stdout
    yield "nothing but its format", BEGINNING[:-1] + b"}"
    for length in 17, 960, 1024, 70_000:
        name = b"x" * length
        yield (
            f"a name of {length} bytes",
            BEGINNING + b'"received":{"switches":{"' + name + b'":{"10":{"unicast":'
            b'{"02:00:00:00:00:01":{"vtep":"10.0.0.1"}},"arp":{"::1":'
            b'{"mac":"02:00:00:00:00:01"}}}}}}}',
        )


def cases(folder):
    """Yield (what is run, words, the exit statuses that are right)."""
    for words in OF_THE_EXAMPLE:
        yield " ".join(words), ["--state", EXAMPLE, *words], [0]

    number = 0
    for documents, statuses, commands in (
        (broken_documents(), [1], [["mac", "received"]]),
        (odd_documents(), [0], [*map(str.split, COMMANDS), ["capture", "-"],
                                ["-o", "wide", "mac", "received"],
                                ["-o", "jsonl", "arp", "received"]]),
    ):
        for name, content in documents:
            number += 1
            path = os.path.join(folder, f"state{number}.json")
            with open(path, "wb") as file:
                file.write(content)
            for command in commands:
                yield f"{' '.join(command)}, {name}", ["--state", path, *command], statuses


def problem(words, statuses):
    """What is wrong with a run; None if nothing is."""
    finished = subprocess.run(
        ["valgrind", "--tool=memcheck", "--quiet", f"--error-exitcode={FOUND}", "--leak-check=full",
         "--errors-for-leak-kinds=definite", *words],
        stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, check=False,
    )
    said = finished.stderr.decode(errors="backslashreplace")[:4000]
    if finished.returncode == FOUND:
        return said
    if finished.returncode not in statuses:
        return f"exit status {finished.returncode}, expected {statuses}; standard error:\n{said}"
    return None


def main():
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    parser.add_argument("--vxshow", required=True)
    parser.add_argument("--jobs", type=int, default=len(os.sched_getaffinity(0)), metavar="N")
    arguments = parser.parse_args()
    if not shutil.which("valgrind"):
        sys.exit("valgrind is missing: scripts/setup test installs it")

    failed = 0
    with tempfile.TemporaryDirectory() as folder:
        listed = list(cases(folder))
        with concurrent.futures.ThreadPoolExecutor(arguments.jobs) as workers:
            problems = workers.map(
                lambda case: problem([arguments.vxshow, *case[1]], case[2]), listed
            )
            for (title, _, _), found in zip(listed, problems):
                if found is not None:
                    failed += 1
                    print(f"{title}:\n{found}", flush=True)
    print(f"{len(listed)} runs, {failed} failed")
    return 1 if failed or not listed else 0


if __name__ == "__main__":
    sys.exit(main())
