#!/usr/bin/env python3
"""Every command on a capture prints the very bytes that it prints on what was captured.

States are drawn that are small, valid and odd. Of each: all seven commands, in text, in both
revisions of JSON, indented and with dotted VNIs, on the state and on its capture, their errors
too; the capture against the published schema; and the capture of the capture, compact and
indented, against the first.
"""

import argparse
import json
import pathlib
import subprocess
import sys
import tempfile

import jsonschema

COMMANDS = [
    "mac received", "mac advertised", "arp received", "arp advertised",
    "router map", "router detail", "router routes",
]

OPTIONS = [[], ["--dotted"], ["--json"], ["--json", "--revision", "1"], ["--pretty", "--dotted"]]


def run(vxshow, state, *arguments):
    return subprocess.run(
        [vxshow, "--state", state, *arguments], stdout=subprocess.PIPE, stderr=subprocess.PIPE,
        check=False,
    )


def shown(vxshow, state, *arguments):
    """(exit status, what is printed, what is complained of)"""
    done = run(vxshow, state, *arguments)
    return done.returncode, done.stdout, done.stderr


def captured(vxshow, state, path, *options):
    done = run(vxshow, state, *options, "capture", path)
    if (done.returncode, done.stdout, done.stderr) != (0, b"", b""):
        sys.exit(f"capture of {state}: {done}")
    return pathlib.Path(path).read_bytes()


def differences(vxshow, schema, folder, state):
    """Yield what is wrong with the captures of one state."""
    capture, again, pretty = (str(folder / name) for name in ("1.json", "2.json", "3.json"))
    first = captured(vxshow, state, capture)
    for error in schema.iter_errors(json.loads(first)):
        yield f"not of the schema: {error.message}"
    if captured(vxshow, capture, again) != first:
        yield "the capture of the capture differs"
    if run(vxshow, state, "capture", "-").stdout != first:
        yield "the capture on standard output differs"
    captured(vxshow, state, pretty, "--pretty")
    if captured(vxshow, pretty, again) != first:
        yield "the capture of the indented capture differs"
    for command in COMMANDS:
        for options in OPTIONS:
            arguments = [*options, *command.split()]
            if shown(vxshow, state, *arguments) != shown(vxshow, capture, *arguments):
                yield f"{arguments} differs"


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--vxshow", required=True)
    parser.add_argument("--make-state", required=True)
    parser.add_argument("--schema", type=pathlib.Path, required=True)
    parser.add_argument("--first", type=int, default=1)
    parser.add_argument("--count", type=int, required=True)
    wanted = parser.parse_args()
    schema = jsonschema.Draft202012Validator(json.loads(wanted.schema.read_text()))
    failed = 0
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        state = folder / "state.json"
        for seed in range(wanted.first, wanted.first + wanted.count):
            with open(state, "wb") as out:
                subprocess.run(
                    [sys.executable, "-E", wanted.make_state, "random", "--seed", str(seed)],
                    stdout=out, check=True,
                )
            for difference in differences(wanted.vxshow, schema, folder, str(state)):
                print(f"seed {seed}: {difference}", flush=True)
                failed += 1
    print(f"{wanted.count} states captured, {failed} differences")
    sys.exit(1 if failed else 0)


if __name__ == "__main__":
    main()
