#!/usr/bin/env python3
"""A second opinion on `vxshow mac received`.

It takes the same command line, reads the same snapshot and prints, byte for
byte, what vxshow must print. It shares no code with it and keeps to dicts, sets
and sorted(), so that a reader can check it against the rules in one sitting.

A snapshot is taken to be valid: refusing bad ones is vxshow's business.
"""

import argparse
import functools
import ipaddress
import json
import os
import re
import sys

# The names that stand for a source which is no switch.
LISTED_SOURCES = ("HSC", "QVX")

# One byte of the 1024-byte row buffer is the terminator; what does not fit is
# lost, the line break included.
ROW_LIMIT = 1023

MAC_FORMS = re.compile(
    r"[0-9a-f]{2}(:[0-9a-f]{2}){5}"
    r"|[0-9a-f]{2}(-[0-9a-f]{2}){5}"
    r"|[0-9a-f]{4}(\.[0-9a-f]{4}){2}",
    re.IGNORECASE,
)
MAC_SEPARATORS = str.maketrans("", "", ":-.")


# Addresses and VNIs are plain integers in here and sort as numbers. Names sort by
# code point, which for UTF-8 is the order of their bytes.


def read_mac(text):
    if not MAC_FORMS.fullmatch(text):
        raise ValueError(f"no Ethernet address: {text}")
    return int(text.translate(MAC_SEPARATORS), 16)


@functools.lru_cache(maxsize=None)
def read_ip(text):
    return int(ipaddress.IPv4Address(text))


def read_vni(text):
    if re.fullmatch(r"[0-9]{1,3}(\.[0-9]{1,3}){2}", text):
        high, middle, low = map(int, text.split("."))
        if max(high, middle, low) > 255:
            raise ValueError(f"no VNI: {text}")
        return high << 16 | middle << 8 | low
    if not re.fullmatch(r"[0-9]{1,8}", text) or int(text) > 0xFFFFFF:
        raise ValueError(f"no VNI: {text}")
    return int(text)


def mac_string(mac):
    digits = f"{mac:012x}"
    return ":".join(digits[i : i + 2] for i in range(0, 12, 2))


def mac_display(mac):
    digits = f"{mac:012x}"
    return ".".join(digits[i : i + 4] for i in range(0, 12, 4))


@functools.lru_cache(maxsize=None)
def ip_string(ip):
    return str(ipaddress.IPv4Address(ip))


def vni_string(vni, dotted):
    return f"{vni >> 16}.{vni >> 8 & 255}.{vni & 255}" if dotted else str(vni)


def signed32(number):
    return number - 2**32 if number >= 2**31 else number


class Received:
    """What the filters leave of one snapshot, under its sources.

    `switches` and `others` are {source: {vni: {"unicast": {mac: (vtep, moves)},
    "multipath": {mac: {vtep}}, "flood": {mac: {vtep}}}}}. A source or a VNI is
    there only if something was put under it.
    """

    def __init__(self, state, vni=None, mac=0, source="", vteps=()):
        self.switches = {}
        self.others = {}
        self.vni = vni
        self.mac = mac
        self.vteps = frozenset(vteps)

        # An absent member and an empty one are alike: nothing to copy.
        self.state_switches = state.get("switches", {})
        self.state_sources = state.get("sources", {})
        self.state_evpn = state.get("evpn", {})
        self.collect(source)

    def collect(self, source):
        if source in ("", "all"):
            for name in self.state_switches:
                self.copy_switch(name)
        elif source not in ("hsc", "qvx", "evpn") and source in self.state_switches:
            self.copy_switch(source)

        # "all" is every switch and nothing else; only no filter at all is everything.
        if source == "":
            for name in self.state_sources:
                self.copy_switch(name)
        elif source in ("hsc", "qvx"):
            self.copy_switch(source.upper())

        if source == "":
            for name in self.state_evpn:
                self.copy_evpn(name)
        elif source == "evpn":
            self.copy_evpn("EVPN")

    def wants_vni(self, vni):
        return self.vni is None or self.vni == vni

    def wants_mac(self, mac):
        return self.mac == 0 or self.mac == mac

    def wants_vteps(self, vteps):
        """One VTEP that matches is enough, and none at all never is."""
        return not self.vteps or any(vtep in self.vteps for vtep in vteps)

    @staticmethod
    def tables(directory, name, vni):
        empty = {"unicast": {}, "multipath": {}, "flood": {}}
        return directory.setdefault(name, {}).setdefault(vni, empty)

    def copy_switch(self, name):
        # The name alone decides: a switch that is called HSC is the source HSC.
        if name in LISTED_SOURCES:
            vnis, target = self.state_sources.get(name, {}), self.others
        else:
            vnis, target = self.state_switches.get(name, {}), self.switches
        for vni_text, tables in vnis.items():
            vni = read_vni(vni_text)
            if self.wants_vni(vni):
                self.copy_vni(tables, target, name, vni)

    def copy_vni(self, tables, target, name, vni):
        for mac_text, entry in tables.get("unicast", {}).items():
            mac = read_mac(mac_text)
            vtep = read_ip(entry["vtep"])
            moves = entry.get("moves", 0)
            # A value that is zero throughout means that there is no such entry.
            absent = (mac, vtep, moves) == (0, 0, 0)
            if not absent and self.wants_mac(mac) and self.wants_vteps([vtep]):
                self.tables(target, name, vni)["unicast"][mac] = (vtep, moves)

        for mac_text, vtep_texts in tables.get("multipath", {}).items():
            mac = read_mac(mac_text)
            vteps = {read_ip(text) for text in vtep_texts}
            absent = mac == 0 and not vteps
            if not absent and self.wants_mac(mac) and self.wants_vteps(vteps):
                self.tables(target, name, vni)["multipath"][mac] = vteps

        # A flood list is there or not; an empty one is there, and so is its VNI.
        for mac_text, vtep_texts in tables.get("flood", {}).items():
            mac = read_mac(mac_text)
            vteps = {read_ip(text) for text in vtep_texts}
            if self.wants_mac(mac) and self.wants_vteps(vteps):
                self.tables(target, name, vni)["flood"].setdefault(mac, set()).update(vteps)

    def copy_evpn(self, name):
        evpn = self.state_evpn.get(name, {})
        for vni_text, hosts in evpn.get("hosts", {}).items():
            vni = read_vni(vni_text)
            for mac_text, host in hosts.items():
                mac = read_mac(mac_text)
                vtep = read_ip(host["vtep"])
                moves = host.get("moves", 0)
                # The MAC is no part of a host, so it cannot make a dead one live.
                dead = (vtep, moves) == (0, 0)
                wanted = self.wants_vni(vni) and self.wants_mac(mac) and self.wants_vteps([vtep])
                if wanted and not dead:
                    self.tables(self.others, name, vni)["unicast"][mac] = (vtep, moves)

        for vni_text, vtep_texts in evpn.get("flood", {}).items():
            vni = read_vni(vni_text)
            for vtep in map(read_ip, vtep_texts):
                # There is no MAC here that a MAC filter could match, zero is none.
                if self.wants_vni(vni) and self.mac == 0 and self.wants_vteps([vtep]):
                    flood = self.tables(self.others, name, vni)["flood"]
                    flood.setdefault(0, set()).add(vtep)


# Text


UNICAST_HEADER = b"""\
         Received Mac Address Table
---------------------------------------------------------------------

Source            VNI         Mac Address       VTEP            Moves
----------------- ----------- ----------------- --------------- -----
"""

FLOOD_HEADER = b"""\
         Received Flood Table
---------------------------------------------------------------------

Source            VNI         Mac Address       VTEP
----------------- ----------- ----------------- ---------------------
"""


def rows_by_vni(directory, dotted):
    """Yield (source, VNI as printed, tables); column widths count bytes, so bytes."""
    for name, vnis in sorted(directory.items()):
        for vni, tables in sorted(vnis.items()):
            yield name.encode(), vni_string(vni, dotted).encode(), tables


def unicast_rows(directory, dotted):
    for name, vni, tables in rows_by_vni(directory, dotted):
        for mac, (vtep, moves) in sorted(tables["unicast"].items()):
            columns = (name, vni, mac_display(mac).encode(), ip_string(vtep).encode())
            row = b"%-17b %-11b %-15b %-15b %5d\n" % (*columns, signed32(moves))
            yield row[:ROW_LIMIT]


def flood_rows(directory, dotted):
    for name, vni, tables in rows_by_vni(directory, dotted):
        for table in (tables["multipath"], tables["flood"]):
            for mac, vteps in sorted(table.items()):
                for vtep in sorted(vteps):
                    columns = (name, vni, mac_display(mac).encode(), ip_string(vtep).encode())
                    yield (b"%-17b %-11b %-15b %-15b\n" % columns)[:ROW_LIMIT]


def section(header, rows, received, dotted):
    lines = [*rows(received.switches, dotted), *rows(received.others, dotted)]
    total = b"Total Mac Addresses for this criterion: %d\n" % len(lines)
    return header + b"".join(lines) + total


def text(received, dotted):
    unicast = section(UNICAST_HEADER, unicast_rows, received, dotted)
    return unicast + b"\n" + section(FLOOD_HEADER, flood_rows, received, dotted)


# JSON


def unicast_list(table, revision):
    result = []
    for mac, (vtep, moves) in sorted(table.items()):
        entry = {"macAddr": mac_string(mac), "vtepIp": ip_string(vtep)}
        # Only the first revision has it, and never with a time in it.
        if revision == 1:
            entry["timeLearned"] = 0
        entry["moveCount"] = signed32(moves)
        result.append(entry)
    return result


def flood_list(table, list_type):
    return [
        {
            "vtepIpListType": list_type,
            "macAddr": mac_string(mac),
            "vtepIpList": [ip_string(vtep) for vtep in sorted(vteps)],
        }
        for mac, vteps in sorted(table.items())
    ]


def vni_entry(vni, tables, revision):
    any_list = flood_list(tables["multipath"], "sendToAny")
    all_list = flood_list(tables["flood"], "sendToAll")
    return {
        "macAddress": mac_string(0),
        "vni": vni,
        "unicastHostTable": unicast_list(tables["unicast"], revision),
        "bumVtepListTable": any_list + all_list,
    }


def sources(directory, dotted, revision):
    return {
        name: {
            "vniInDottedNotation": dotted,
            "vnis": [vni_entry(vni, tables, revision) for vni, tables in sorted(vnis.items())],
        }
        for name, vnis in sorted(directory.items())
    }


def document(received, dotted, revision, pretty):
    shape = {"indent": 2} if pretty else {"separators": (",", ":")}
    content = {
        "switches": sources(received.switches, dotted, revision),
        "nonSwitchSources": sources(received.others, dotted, revision),
    }
    return json.dumps(content, ensure_ascii=False, **shape).encode() + b"\n"


def arguments(words):
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0], allow_abbrev=False)
    parser.add_argument("--state", default=os.environ.get("VXSHOW_STATE"))
    form = parser.add_mutually_exclusive_group()
    form.add_argument("--json", action="store_true")
    form.add_argument("--pretty", action="store_true")
    parser.add_argument("--revision", type=int, default=2)
    parser.add_argument("--dotted", action="store_true")
    parser.add_argument("subject", choices=["mac"])
    parser.add_argument("direction", choices=["received"])
    parser.add_argument("--vni", type=read_vni)
    parser.add_argument("--mac", type=read_mac, default=0)
    parser.add_argument("--source", default="")
    parser.add_argument("--vtep", type=read_ip, action="append", default=[])
    result = parser.parse_args(words)
    if result.state is None:
        parser.error("no snapshot: give --state or set VXSHOW_STATE")
    return result


def listing(words):
    """What `vxshow` prints for these arguments, as bytes."""
    wanted = arguments(words)
    with open(0 if wanted.state == "-" else wanted.state, encoding="utf-8") as file:
        state = json.load(file).get("received", {})

    received = Received(state, wanted.vni, wanted.mac, wanted.source, wanted.vtep)
    if wanted.json or wanted.pretty:
        return document(received, wanted.dotted, wanted.revision, wanted.pretty)
    return text(received, wanted.dotted)


if __name__ == "__main__":
    sys.stdout.buffer.write(listing(sys.argv[1:]))
