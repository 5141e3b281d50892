#!/usr/bin/env python3
"""Holds `vxshow mac received` against the independent implementation, byte for byte.

    compare_received.py --vxshow PROGRAM random [--first SEED] [--count N]
    compare_received.py --vxshow PROGRAM bench

`random` draws small states that exercise everything, and lists each under many filters.
`bench` takes the two states that are measured, 1,280,000 MACs in 128,000 tables and
1,000,000 in one, as text and as JSON.
"""

import argparse
import os
import subprocess
import sys
import tempfile

HERE = os.path.dirname(os.path.abspath(__file__))
REFERENCE = os.path.join(HERE, "received.py")
MAKE_STATE = os.path.join(HERE, "..", "..", "bench", "make-state")

sys.path.insert(0, HERE)
import received  # noqa: E402  (the implementation compared with, run within this process)

# The options of each listing, then its filters.
LISTINGS = [
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
]


def make_state(path, arguments):
    with open(path, "wb") as out:
        subprocess.run([sys.executable, "-E", MAKE_STATE, *arguments], stdout=out, check=True)


def differs(vxshow, state, options, filters):
    arguments = ["--state", state, *options, "mac", "received", *filters]
    ours = subprocess.run([vxshow, *arguments], stdout=subprocess.PIPE, check=True).stdout
    theirs = received.listing(arguments)
    if ours == theirs:
        return False
    at = next((i for i, (a, b) in enumerate(zip(ours, theirs)) if a != b),
              min(len(ours), len(theirs)))
    print(f"{' '.join(arguments)}: differ at byte {at} of {len(ours)} and {len(theirs)}:")
    print("  vxshow:   ", ours[max(0, at - 60):at + 60])
    print("  reference:", theirs[max(0, at - 60):at + 60])
    return True


def compare_random(vxshow, first, count):
    failed = 0
    with tempfile.TemporaryDirectory() as folder:
        state = os.path.join(folder, "state.json")
        for seed in range(first, first + count):
            make_state(state, ["random", "--seed", str(seed)])
            for options, filters in LISTINGS:
                if differs(vxshow, state, options, filters):
                    print(f"seed {seed}")
                    failed += 1
    print(f"{count * len(LISTINGS)} listings of {count} states compared, {failed} differ")
    return failed


def compare_bench(vxshow):
    failed = 0
    with tempfile.TemporaryDirectory() as folder:
        state = os.path.join(folder, "state.json")
        for arguments in (["switches", "--switches", "128", "--vnis", "1000", "--macs", "10"],
                          ["one-vni", "--macs", "1000000"]):
            make_state(state, arguments)
            for options in ([], ["--json"]):
                failed += differs(vxshow, state, options, [])
    print(f"4 listings of 2 states compared, {failed} differ")
    return failed


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--vxshow", required=True)
    parser.add_argument("what", choices=["random", "bench"])
    parser.add_argument("--first", type=int, default=1)
    parser.add_argument("--count", type=int, default=30)
    arguments = parser.parse_args()
    if arguments.what == "random":
        failed = compare_random(arguments.vxshow, arguments.first, arguments.count)
    else:
        failed = compare_bench(arguments.vxshow)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
