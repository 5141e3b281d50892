#!/usr/bin/env python3
"""A second opinion on vxshow.

It takes the same command line, reads the same snapshot and prints, byte for
byte, what vxshow must print. It shares no code with it and keeps to dicts, sets
and sorted(), so that a reader can check it against the rules in one sitting.

A snapshot is taken to be valid: refusing bad ones is vxshow's business. What a
valid one may hold and a command must fail on is a `Failure`.
"""

import argparse
import collections
import json
import os
import sys

import arp
import mac_advertised
import mac_received
from forms import Failure, document, read_ip, read_ipv4, read_mac, read_vni

# The filters of a command; how it collects from (state, arguments); and what it prints of
# that: text from (collected, dotted), JSON from (collected, dotted, revision).
Command = collections.namedtuple("Command", "filters collect text content")

COMMANDS = {
    ("mac", "received"): Command(
        ("vni", "mac", "source", "vtep"),
        mac_received.collect,
        mac_received.text,
        mac_received.content,
    ),
    ("mac", "advertised"): Command(
        ("vni", "mac", "dest", "vtep"),
        mac_advertised.collect,
        mac_advertised.text,
        mac_advertised.content,
    ),
    ("arp", "received"): Command(
        ("vni", "mac", "ip", "switch"),
        arp.collect_received,
        arp.received_text,
        arp.received_content,
    ),
    ("arp", "advertised"): Command(
        ("vni", "mac", "ip"),
        arp.collect_advertised,
        arp.advertised_text,
        arp.advertised_content,
    ),
}

# How each filter is read, and what stands for its absence.
FILTERS = {
    "vni": {"type": read_vni, "default": None},
    "mac": {"type": read_mac, "default": 0},
    "ip": {"type": read_ip, "default": None},
    "source": {"default": ""},
    "dest": {"default": ""},
    "switch": {"default": ""},
    "vtep": {"type": read_ipv4, "action": "append", "default": []},
}


def arguments(words):
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0], allow_abbrev=False)
    parser.add_argument("--state", default=os.environ.get("VXSHOW_STATE"))
    form = parser.add_mutually_exclusive_group()
    form.add_argument("--json", action="store_true")
    form.add_argument("--pretty", action="store_true")
    parser.add_argument("--revision", type=int, default=2)
    parser.add_argument("--dotted", action="store_true")
    parser.add_argument("subject", choices=["mac", "arp"])
    parser.add_argument("direction", choices=["received", "advertised"])
    for name, how in FILTERS.items():
        parser.add_argument("--" + name, **how)
    result = parser.parse_args(words)
    if result.state is None:
        parser.error("no snapshot: give --state or set VXSHOW_STATE")
    for name, how in FILTERS.items():
        if name not in COMMANDS[result.subject, result.direction].filters:
            if getattr(result, name) != how["default"]:
                parser.error(f"no filter of {result.subject} {result.direction}: --{name}")
    return result


def listing(words):
    """What `vxshow` prints for these arguments, as bytes; or `Failure` is raised."""
    wanted = arguments(words)
    with open(0 if wanted.state == "-" else wanted.state, encoding="utf-8") as file:
        state = json.load(file)

    command = COMMANDS[wanted.subject, wanted.direction]
    collected = command.collect(state, wanted)
    if wanted.json or wanted.pretty:
        return document(command.content(collected, wanted.dotted, wanted.revision), wanted.pretty)
    return command.text(collected, wanted.dotted)


def main():
    try:
        sys.stdout.buffer.write(listing(sys.argv[1:]))
    except Failure as failure:
        sys.exit(f"reference: {failure}")


if __name__ == "__main__":
    main()
