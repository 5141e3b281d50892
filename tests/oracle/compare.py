#!/usr/bin/env python3
"""Compares vxshow with the independent implementation, byte for byte.

    compare.py --vxshow PROGRAM random [--first SEED] [--count N]
    compare.py --vxshow PROGRAM rows [--first SEED] [--count N]
    compare.py --vxshow PROGRAM bench

`random` generates small states that exercise everything, and lists each with a fixed set of
filters and with as many drawn from the contents of the state. `rows` lists the same states with the
same filters in the forms that are made of rows, with options of these forms drawn at random. `bench` uses the large states of
the benchmarks: 1,280,000 received MACs in 128,000 tables, 1,000,000 in one, 1,000,000
advertised, 1,000,000 ARP entries in each direction, 1,000,000 routes of one router and of
1,000, and 10,000 routers on 100 switches each.

Both can be limited to one command, such as --command "arp received". A run that compares
nothing fails.
"""

import argparse
import json
import os
import random
import subprocess
import sys
import tempfile

HERE = os.path.dirname(os.path.abspath(__file__))
MAKE_STATE = os.path.join(HERE, "..", "..", "bench", "make-state")

sys.path.insert(0, HERE)
import reference  # noqa: E402  (the implementation compared with, run within this process)
import rows  # noqa: E402
from listings import LISTINGS, choice_options, drawable, drawn_choice, drawn_listing  # noqa: E402

# The states of `bench`, and the commands that have something to list in each.
BENCH = [
    (["switches", "--switches", "128", "--vnis", "1000", "--macs", "10"], ["mac received"]),
    (["one-vni", "--macs", "1000000"], ["mac received"]),
    (["advertised", "--macs", "1000000"], ["mac advertised"]),
    (["arp", "--entries", "1000000"], ["arp received", "arp advertised"]),
    (["routes", "--routes", "1000000", "--routers", "1"], ["router routes"]),
    (["routes", "--routes", "1000000", "--routers", "1000"], ["router routes"]),
    (["routers", "--routers", "10000", "--switches", "100"], ["router map", "router detail"]),
]


def make_state(path, arguments):
    with open(path, "wb") as out:
        subprocess.run([sys.executable, "-E", MAKE_STATE, *arguments], stdout=out, check=True)


def expected(arguments):
    """(exit status, standard output, beginnings of the lines on standard error)"""
    try:
        output, unknown = reference.listing(arguments)
    except reference.Failure:
        return 1, b"", ["vxshow: "]
    except reference.selecting.Refusal:
        return 2, b"", ["vxshow: "]
    return 4 if unknown else 0, output, unknown


def are_lines(text, beginnings):
    """Whether the bytes are as many lines as `beginnings`, each of which begins so."""
    lines = text.decode("ascii").split("\n")
    return len(lines) == len(beginnings) + 1 and all(map(str.startswith, lines, beginnings))


def differs(vxshow, arguments, status, output, beginnings=()):
    """Whether vxshow exits or prints otherwise; reports the difference."""
    finished = subprocess.run(
        [vxshow, *arguments], stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False
    )
    stderr_expected = are_lines(finished.stderr, beginnings)
    if (finished.returncode, finished.stdout) == (status, output) and stderr_expected:
        return False

    print(f"{arguments}: ", end="")
    if finished.returncode != status or not stderr_expected:
        print(f"exit status {finished.returncode}, expected {status}; standard error:")
        print("  vxshow:   ", finished.stderr[:500])
        print("  reference:", beginnings)
    if finished.stdout != output:
        at = len(os.path.commonprefix([finished.stdout, output]))
        print(f"outputs of {len(finished.stdout)} and {len(output)} bytes differ at byte {at}:")
        print("  vxshow:   ", finished.stdout[max(0, at - 60) : at + 60])
        print("  reference:", output[max(0, at - 60) : at + 60])
    return True


def compare_random(vxshow, commands, first, count):
    compared = failed = 0
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, "state.json")
        for seed in range(first, first + count):
            make_state(path, ["random", "--seed", str(seed)])
            with open(path, encoding="utf-8") as file:
                state = json.load(file)
            for command in commands:
                values = drawable(state, command)
                # The filters drawn for a command do not depend on which others are compared.
                rng = random.Random(f"{seed} {command}")
                drawn = [drawn_listing(rng, command, values) for _ in LISTINGS[command]]
                for options, filters in LISTINGS[command] + drawn:
                    arguments = ["--state", path, *options, *command.split(), *filters]
                    compared += 1
                    if differs(vxshow, arguments, *expected(arguments)):
                        print(f"  seed {seed}", flush=True)
                        failed += 1
    print(f"{compared} listings of {count} states compared, {failed} differ")
    return compared > 0 and failed == 0


def expected_rows(command, arguments, choice):
    """As `expected`, for a listing in a form that is made of rows."""
    try:
        wanted = reference.arguments(arguments)
        output = rows.listing(command, reference.collected(wanted), choice)
    except reference.Failure:
        return 1, b"", ["vxshow: "]
    except reference.selecting.Refusal:
        return 2, b"", ["vxshow: "]
    return 4 if wanted.unknown else 0, output, wanted.unknown


def compare_rows(vxshow, commands, first, count):
    compared = failed = 0
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, "state.json")
        for seed in range(first, first + count):
            make_state(path, ["random", "--seed", str(seed)])
            with open(path, encoding="utf-8") as file:
                state = json.load(file)
            for command in commands:
                values = drawable(state, command)
                rng = random.Random(f"rows {seed} {command}")
                drawn = [drawn_listing(rng, command, values) for _ in LISTINGS[command]]
                for _, filters in LISTINGS[command] + drawn:
                    choice = drawn_choice(rng, command)
                    words = ["--state", path, *command.split(), *filters]
                    dotted = ["--dotted"] if choice.dotted else []
                    expectation = expected_rows(command, words + dotted, choice)
                    compared += 1
                    if differs(vxshow, words + choice_options(choice), *expectation):
                        print(f"  seed {seed}", flush=True)
                        failed += 1
    print(f"{compared} listings of rows of {count} states compared, {failed} differ")
    return compared > 0 and failed == 0


def compare_both_forms(vxshow, state, command):
    """Collecting takes as long as printing, so both forms are printed from one collection."""
    text = ["--state", state, *command.split()]
    collection = reference.collected(reference.arguments(text))
    failed = 0
    for arguments in text, [*text, "--json"]:
        output = reference.printed(collection, reference.arguments(arguments))
        failed += differs(vxshow, arguments, 0, output)
    return failed


def compare_bench(vxshow, commands):
    compared = failed = 0
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, "state.json")
        for arguments, listed in BENCH:
            wanted = [command for command in listed if command in commands]
            if wanted:
                make_state(path, arguments)
            for command in wanted:
                failed += compare_both_forms(vxshow, path, command)
                compared += 2
    print(f"{compared} listings of large states compared, {failed} differ")
    return compared > 0 and failed == 0


def main():
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    parser.add_argument("--vxshow", required=True)
    parser.add_argument("--command", choices=list(LISTINGS))
    parser.add_argument("what", choices=["random", "rows", "bench"])
    parser.add_argument("--first", type=int, default=1)
    parser.add_argument("--count", type=int, default=30)
    arguments = parser.parse_args()
    commands = [arguments.command] if arguments.command else list(LISTINGS)
    if arguments.what != "bench":
        compare = compare_rows if arguments.what == "rows" else compare_random
        same = compare(arguments.vxshow, commands, arguments.first, arguments.count)
    else:
        same = compare_bench(arguments.vxshow, commands)
    return 0 if same else 1


if __name__ == "__main__":
    sys.exit(main())
