#!/usr/bin/env python3
"""Holds vxshow against the independent implementation, byte for byte.

    compare.py --vxshow PROGRAM random [--first SEED] [--count N]
    compare.py --vxshow PROGRAM bench

`random` draws small states that exercise everything, and lists each under the filters below
and under as many that are drawn from what the state holds. `bench` takes the big states that
are measured: 1,280,000 received MACs in 128,000 tables, 1,000,000 in one, 1,000,000 that are
advertised, and 1,000,000 ARP entries both ways.

Either can be limited to one command, such as --command "arp received".
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

# Of each command, the options of a listing, then its filters.
LISTINGS = {
    "mac received": [
        ([], []),
        (["--json"], []),
        (["--pretty", "--revision", "1", "--dotted"], []),
        (["--dotted"], ["--source", "all"]),
        ([], ["--source", "hsc"]),
        (["--json"], ["--source", "qvx"]),
        ([], ["--source", "evpn"]),
        ([], ["--source", "HSC"]),
        ([], ["--source", "no such switch"]),
        ([], ["--mac", "00:00:5e:00:53:01"]),
        (["--json"], ["--mac", "0000.5e00.5302"]),
        ([], ["--vni", "10"]),
        (["--json"], ["--vni", "255.255.255"]),
        ([], ["--vtep", "10.0.0.1"]),
        (["--json"], ["--vtep", "10.0.0.1", "--vtep", "10.0.0.3"]),
        ([], ["--vni", "10", "--mac", "00:00:5e:00:53:01", "--vtep", "10.0.0.2"]),
    ],
    "mac advertised": [
        ([], []),
        (["--json"], []),
        (["--pretty", "--revision", "1", "--dotted"], []),
        (["--dotted"], ["--dest", "all"]),
        ([], ["--dest", "hsc"]),
        (["--json"], ["--dest", "hsc"]),
        ([], ["--dest", "qvx"]),
        ([], ["--dest", "evpn"]),
        (["--json"], ["--dest", "evpn"]),
        ([], ["--dest", "EVPN", "--vtep", "10.0.0.1"]),
        ([], ["--mac", "00:00:5e:00:53:01"]),
        (["--json"], ["--mac", "0000.5e00.5301"]),
        ([], ["--vni", "10"]),
        (["--json"], ["--vni", "0"]),
        (["--json"], ["--vtep", "10.0.0.1", "--vtep", "10.0.0.3"]),
        ([], ["--vni", "10", "--mac", "00:00:5e:00:53:01", "--vtep", "10.0.0.2"]),
    ],
    "arp received": [
        ([], []),
        (["--json"], []),
        (["--pretty", "--revision", "1", "--dotted"], []),
        (["--dotted"], []),
        ([], ["--switch", "leaf1"]),
        (["--json"], ["--switch", "HSC"]),
        (["--json"], ["--switch", "no such switch"]),
        (["--json"], ["--mac", "00:00:5e:00:53:01"]),
        ([], ["--ip", "192.0.2.1"]),
        (["--json"], ["--ip", "2001:db8:0::1"]),
        (["--json"], ["--vni", "10"]),
        ([], ["--vni", "0.0.10", "--mac", "0000.5e00.5301", "--ip", "::ffff:192.0.2.1"]),
    ],
    "arp advertised": [
        ([], []),
        (["--json"], []),
        (["--pretty", "--revision", "1", "--dotted"], []),
        (["--dotted"], []),
        ([], ["--vni", "0"]),
        (["--json"], ["--vni", "10"]),
        (["--json"], ["--mac", "00:00:5e:00:53:01"]),
        ([], ["--ip", "192.0.2.1"]),
        (["--json"], ["--ip", "2001:db8:0::1"]),
        (["--json"], ["--vni", "0.0.10", "--mac", "0000.5e00.5301", "--ip", "::ffff:192.0.2.1"]),
    ],
}

DRAWN_OPTIONS = [[], [], ["--json"], ["--dotted"], ["--json", "--dotted"], ["--pretty"]]

# The states of `bench`, and the commands that have something to list of each.
BENCH = [
    (["switches", "--switches", "128", "--vnis", "1000", "--macs", "10"], ["mac received"]),
    (["one-vni", "--macs", "1000000"], ["mac received"]),
    (["advertised", "--macs", "1000000"], ["mac advertised"]),
    (["arp", "--entries", "1000000"], ["arp received", "arp advertised"]),
]


# Filters drawn from a state


def members(state, *path):
    """The member that the path leads to; whatever is missing on it is empty."""
    for name in path:
        state = state.get(name, {})
    return state


def names_and_tables(state):
    """Yield (VNI or entry name, tables) from wherever tables stand."""
    for vnis in members(state, "received", "switches").values():
        yield from vnis.items()
    for direction in ("received", "advertised"):
        for vnis in members(state, direction, "sources").values():
            yield from vnis.items()
    yield from members(state, "advertised", "vnis").items()


def drawable(state):
    """By filter, the values of it that are in the state and some that need not be."""
    found = {
        "vni": {"0", "10", "0.0.10", "70000", "16777215"},
        "mac": {"0000.0000.0000", "02:00:00:00:00:01"},
        "ip": {"198.51.100.1", "::1", "::ffff:192.0.2.1"},
        "vtep": {"0.0.0.0", "10.0.0.1", "198.51.100.1"},
    }
    for vni, tables in names_and_tables(state):
        if vni.isascii() and vni.isdigit() and len(vni) < 9 and int(vni) <= 0xFFFFFF:
            found["vni"].add(str(int(vni)))
        for table in ("unicast", "multipath", "flood"):
            found["mac"].update(tables.get(table, {}))
        for entry in tables.get("unicast", {}).values():
            found["vtep"].add(entry["vtep"])
        for ip, entry in tables.get("arp", {}).items():
            found["ip"].add(ip)
            found["mac"].add(entry["mac"])
    for evpn in ("received", "advertised"):
        for hosts in members(state, evpn, "evpn", "EVPN", "hosts").values():
            found["mac"].update(hosts)
    switches = set(members(state, "received", "switches"))
    found["source"] = found["switch"] = switches | {"all", "hsc", "qvx", "evpn", "HSC", "leaf"}
    found["dest"] = {"all", "hsc", "evpn", "qvx", "HSC", "leaf1"}
    # Sets have no order that would be the same tomorrow.
    return {name: sorted(values) for name, values in found.items()}


def drawn_listing(rng, command, values):
    filters = []
    for name in reference.COMMANDS[tuple(command.split())].filters:
        if rng.random() < 0.4:
            for _ in range(rng.randint(1, 3) if name == "vtep" else 1):
                filters += ["--" + name, rng.choice(values[name])]
    return rng.choice(DRAWN_OPTIONS), filters


# Comparing


def make_state(path, arguments):
    with open(path, "wb") as out:
        subprocess.run([sys.executable, "-E", MAKE_STATE, *arguments], stdout=out, check=True)


def expected(arguments):
    """(exit status, standard output)"""
    try:
        return 0, reference.listing(arguments)
    except reference.Failure:
        return 1, b""


def differs(vxshow, state, command, options, filters):
    arguments = ["--state", state, *options, *command.split(), *filters]
    finished = subprocess.run(
        [vxshow, *arguments], stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False
    )
    status, output = expected(arguments)
    # A failure is told in one line of its own, a success in none.
    told = finished.stderr.startswith(b"vxshow: ") and finished.stderr.endswith(b"\n")
    told_right = (told and finished.stderr.count(b"\n") == 1) if status else not finished.stderr
    if (finished.returncode, finished.stdout) == (status, output) and told_right:
        return False

    print(f"{arguments}: ", end="")
    if finished.returncode != status or not told_right:
        print(f"exit status {finished.returncode}, {status} expected; standard error:")
        print("  vxshow:   ", finished.stderr[:500])
    if finished.stdout != output:
        at = len(os.path.commonprefix([finished.stdout, output]))
        print(f"differ at byte {at} of {len(finished.stdout)} and {len(output)}:")
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
                values = drawable(json.load(file))
            for command in commands:
                # What is drawn for a command does not depend on which others are compared.
                rng = random.Random(f"{seed} {command}")
                drawn = [drawn_listing(rng, command, values) for _ in LISTINGS[command]]
                for options, filters in LISTINGS[command] + drawn:
                    compared += 1
                    if differs(vxshow, path, command, options, filters):
                        print(f"  seed {seed}", flush=True)
                        failed += 1
    print(f"{compared} listings of {count} states compared, {failed} differ")
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
                for options in ([], ["--json"]):
                    compared += 1
                    failed += differs(vxshow, path, command, options, [])
    print(f"{compared} listings of big states compared, {failed} differ")
    return failed


def main():
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    parser.add_argument("--vxshow", required=True)
    parser.add_argument("--command", choices=list(LISTINGS))
    parser.add_argument("what", choices=["random", "bench"])
    parser.add_argument("--first", type=int, default=1)
    parser.add_argument("--count", type=int, default=30)
    arguments = parser.parse_args()
    commands = [arguments.command] if arguments.command else list(LISTINGS)
    if arguments.what == "random":
        failed = compare_random(arguments.vxshow, commands, arguments.first, arguments.count)
    else:
        failed = compare_bench(arguments.vxshow, commands)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
