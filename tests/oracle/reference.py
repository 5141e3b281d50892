#!/usr/bin/env python3
"""An independent implementation of vxshow.

It takes the same command line, reads the same snapshot and prints, byte for
byte, what vxshow must print. It shares no code with vxshow and uses only dicts,
sets and sorted(), so that a reader can check it against the rules in one sitting.

It assumes that the snapshot is valid: rejecting invalid ones is vxshow's job. If
a command must fail on a valid snapshot, `Failure` is raised.
"""

import argparse
import collections
import json
import os
import sys

import arp
import mac_advertised
import mac_received
import router_detail
import router_map
import router_routes
import selecting
from forms import Failure, document

# The filters of a command; how it collects from (state, arguments); and how it prints what it
# collected: text from (collected, dotted), JSON from (collected, dotted, revision).
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
    ("router", "map"): Command(
        ("router", "switch", "vtep"),
        router_map.collect,
        router_map.text,
        router_map.content,
    ),
    ("router", "detail"): Command(
        ("router",),
        router_detail.collect,
        router_detail.text,
        router_detail.content,
    ),
    ("router", "routes"): Command(
        ("router", "prefix"),
        router_routes.collect,
        router_routes.text,
        router_routes.content,
    ),
}

def arguments(words):
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0], allow_abbrev=False)
    parser.add_argument("--state", default=os.environ.get("VXSHOW_STATE"))
    form = parser.add_mutually_exclusive_group()
    form.add_argument("--json", action="store_true")
    form.add_argument("--pretty", action="store_true")
    parser.add_argument("--revision", type=int, default=2)
    parser.add_argument("--dotted", action="store_true")
    parser.add_argument("subject", choices=["mac", "arp", "router"])
    parser.add_argument("listing", choices=["received", "advertised", "map", "detail", "routes"])
    for name in selecting.FILTERS:
        parser.add_argument("--" + name, action="append", default=[])
    parser.add_argument("--dest", default="")
    result = parser.parse_args(words)
    if result.state is None:
        parser.error("no snapshot: give --state or set VXSHOW_STATE")
    if (result.subject, result.listing) not in COMMANDS:
        parser.error(f"no command: {result.subject} {result.listing}")
    for name in [*selecting.FILTERS, "dest"]:
        if name not in COMMANDS[result.subject, result.listing].filters:
            if getattr(result, name):
                parser.error(f"no filter of {result.subject} {result.listing}: --{name}")
    selecting.read_filters(result)
    return result


def collected(wanted):
    """What the arguments select from the snapshot that they name."""
    with open(0 if wanted.state == "-" else wanted.state, encoding="utf-8") as file:
        state = json.load(file)
    state, wanted.unknown = selecting.select(state, wanted)
    return COMMANDS[wanted.subject, wanted.listing].collect(state, wanted)


def printed(collection, wanted):
    """The listing of what was collected, as bytes, in the form that the arguments ask for."""
    command = COMMANDS[wanted.subject, wanted.listing]
    if wanted.json or wanted.pretty:
        return document(command.content(collection, wanted.dotted, wanted.revision), wanted.pretty)
    return command.text(collection, wanted.dotted)


def listing(words):
    """(what `vxshow` prints for these arguments, as bytes; the beginnings of its lines on standard
    error). Raises `Failure` and `Refusal`."""
    wanted = arguments(words)
    output = printed(collected(wanted), wanted)
    return output, wanted.unknown


def main():
    try:
        output, unknown = listing(sys.argv[1:])
    except (Failure, selecting.Refusal) as failure:
        sys.exit(f"reference: {failure}")
    sys.stdout.buffer.write(output)
    sys.exit(4 if unknown else 0)


if __name__ == "__main__":
    main()
