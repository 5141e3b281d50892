"""`vxshow mac received` lists the MAC tables of all switches and other sources."""

import mac
from forms import ipv4_string, mac_display, read_vni, signed32, vni_string

# The names of the sources that are not switches.
LISTED_SOURCES = ("HSC", "QVX")

# One byte of the 1024-byte row buffer is the terminator. What does not fit is
# lost, including the line break.
ROW_LIMIT = 1023

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


class Received:
    """What the filters select from a snapshot: {source: {vni: tables}}, for switches and others.

    A source is present only if it has an entry.
    """

    def __init__(self, state, source, filters):
        self.switches = {}
        self.others = {}
        self.filters = filters

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

        # "all" means every switch and nothing else; only the absence of a filter means everything.
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

    def copy_switch(self, name):
        # The name alone decides: a switch named HSC is the source HSC.
        if name in LISTED_SOURCES:
            state_vnis, target = self.state_sources.get(name, {}), self.others
        else:
            state_vnis, target = self.state_switches.get(name, {}), self.switches
        vnis = {}
        for vni_text, state_tables in state_vnis.items():
            vni = read_vni(vni_text)
            if self.filters.want_vni(vni):
                mac.copy_tables(vnis, vni, present(mac.read_tables(state_tables)), self.filters)
        if vnis:
            target[name] = vnis

    def copy_evpn(self, name):
        vnis = {}
        mac.copy_evpn(vnis, self.state_evpn.get(name, {}), self.filters)
        if vnis:
            self.others[name] = vnis


def present(tables):
    """The tables without entries that are zero throughout, which count as absent."""
    if tables["unicast"].get(0) == (0, 0):
        del tables["unicast"][0]
    if tables["multipath"].get(0) == set():
        del tables["multipath"][0]
    return tables


def rows_by_vni(directory, dotted):
    """Yield (source, VNI as printed, tables), as bytes since column widths count bytes."""
    for name, vnis in sorted(directory.items()):
        for vni, tables in sorted(vnis.items()):
            yield name.encode(), vni_string(vni, dotted).encode(), tables


def unicast_rows(directory, dotted):
    for name, vni, tables in rows_by_vni(directory, dotted):
        for address, (vtep, moves) in sorted(tables["unicast"].items()):
            columns = (name, vni, mac_display(address).encode(), ipv4_string(vtep).encode())
            row = b"%-17b %-11b %-15b %-15b %5d\n" % (*columns, signed32(moves))
            yield row[:ROW_LIMIT]


def flood_rows(directory, dotted):
    for name, vni, tables in rows_by_vni(directory, dotted):
        for table in (tables["multipath"], tables["flood"]):
            for address, vteps in sorted(table.items()):
                for vtep in sorted(vteps):
                    columns = (name, vni, mac_display(address).encode(), ipv4_string(vtep).encode())
                    yield (b"%-17b %-11b %-15b %-15b\n" % columns)[:ROW_LIMIT]


def section(header, rows, received, dotted):
    lines = [*rows(received.switches, dotted), *rows(received.others, dotted)]
    total = b"Total Mac Addresses for this criterion: %d\n" % len(lines)
    return header + b"".join(lines) + total


def text(received, dotted):
    unicast = section(UNICAST_HEADER, unicast_rows, received, dotted)
    return unicast + b"\n" + section(FLOOD_HEADER, flood_rows, received, dotted)


def sources(directory, dotted, revision):
    return {
        name: {"vniInDottedNotation": dotted, "vnis": mac.vni_list(vnis, revision)}
        for name, vnis in sorted(directory.items())
    }


def content(received, dotted, revision):
    return {
        "switches": sources(received.switches, dotted, revision),
        "nonSwitchSources": sources(received.others, dotted, revision),
    }


def collect(state, wanted):
    filters = mac.Filters(wanted.vni, wanted.mac, wanted.vtep)
    return Received(state.get("received", {}), wanted.source, filters)
