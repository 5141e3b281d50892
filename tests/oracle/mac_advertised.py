"""What `vxshow mac advertised` lists: MAC tables by VNI, whoever they are advertised to."""

import mac
from forms import entry_vni, ipv4_string, mac_display, read_vni, signed32, vni_string

# The long line of either section has the length that would suit the other one.
UNICAST_HEADER = b"""\
            Advertised Mac Address Table
-----------------------------------------------------------------------------

VNI         Mac Address       VTEP            Moves
----------- ----------------- --------------- -----
"""

FLOOD_HEADER = b"""\
            Advertised Flood Table
---------------------------------------------------

VNI         Mac Address       VTEP(s)
----------- ----------------- -----------------------------------------------
"""

# Two more than the columns before the VTEPs take.
CONTINUATION = b"\n" + b" " * 29


def collect(state, wanted):
    """{vni: tables} of what the filters leave."""
    state = state.get("advertised", {})
    filters = mac.Filters(wanted.vni, wanted.mac, wanted.vtep)
    vnis = {}
    if wanted.dest == "hsc":
        for vni_text, tables in state.get("sources", {}).get("HSC", {}).items():
            if filters.want_vni(read_vni(vni_text)):
                copy_vni(vnis, read_vni(vni_text), tables, filters)
    elif wanted.dest == "evpn":
        mac.copy_evpn(vnis, state.get("evpn", {}).get("EVPN", {}), filters)
    else:
        # Any other word, "all", "qvx" and a switch included, narrows nothing.
        copy_entries(vnis, state.get("vnis", {}), filters)
    return vnis


def copy_entries(vnis, entries, filters):
    # One VNI is looked up by its name; only all of them have to make sense of all names.
    if filters.vni is not None:
        if str(filters.vni) in entries:
            copy_vni(vnis, filters.vni, entries[str(filters.vni)], filters)
        return
    # Of two entries of one VNI the later one wins a MAC that both have. Which one is later
    # is up to the directory, so a listing is settled only if no MAC is in both.
    for name, tables in entries.items():
        copy_vni(vnis, entry_vni(name, without_number=0), tables, filters)


def copy_vni(vnis, vni, state_tables, filters):
    tables = mac.read_tables(state_tables)
    if filters.mac == 0:
        # Among all MACs a flood list stands back for a multipath entry, be that one filtered
        # out or not. One MAC that is asked for shows both.
        for address in set(tables["flood"]) & set(tables["multipath"]):
            # What is zero throughout is no entry to stand back for, yet it is listed.
            if (address, tables["multipath"][address]) != (0, set()):
                del tables["flood"][address]
    mac.copy_tables(vnis, vni, tables, filters)


def unicast_rows(vni, tables):
    for address, (vtep, moves) in sorted(tables["unicast"].items()):
        columns = (vni, mac_display(address).encode(), ipv4_string(vtep).encode())
        yield b"%-11b %-15b %-15b %5d\n" % (*columns, signed32(moves))


def flood_rows(vni, tables):
    # Two entries of one VNI, or a MAC filter, may have brought both kinds for one MAC.
    only_flood = [item for item in tables["flood"].items() if item[0] not in tables["multipath"]]
    for address, vteps in sorted(tables["multipath"].items()) + sorted(only_flood):
        row = b"%-11b %-15b" % (vni, mac_display(address).encode())
        for number, vtep in enumerate(sorted(vteps)):
            if number > 0 and number % 3 == 0:
                row += CONTINUATION
            row += b" %-15b" % ipv4_string(vtep).encode()
        yield row + b"\n"


def section(header, rows, vnis, dotted):
    lines = []
    for vni, tables in sorted(vnis.items()):
        lines += rows(vni_string(vni, dotted).encode(), tables)
    total = b"Total Mac Addresses for this criterion: %d\n" % len(lines)
    return header + b"".join(lines) + total


def text(vnis, dotted):
    unicast = section(UNICAST_HEADER, unicast_rows, vnis, dotted)
    return unicast + b"\n" + section(FLOOD_HEADER, flood_rows, vnis, dotted)


def content(vnis, dotted, revision):
    return {"vniInDottedNotation": dotted, "vnis": mac.vni_list(vnis, revision)}
