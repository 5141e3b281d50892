"""`vxshow mac advertised` lists the advertised MAC tables by VNI, whatever their destination."""

import mac
from forms import entry_vni, ipv4_string, mac_display, read_vni, signed32, vni_string

# The long line of each section has the length that would fit the other one.
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

# Two blanks more than the width of the columns before the VTEPs.
CONTINUATION = b"\n" + b" " * 29


def collect(state, wanted):
    """{vni: tables} of what the filters select."""
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
        # Any other word, including "all", "qvx" and a switch, does not filter.
        copy_entries(vnis, state.get("vnis", {}), filters)
    return vnis


def copy_entries(vnis, entries, filters):
    # One VNI is looked up by its name; only a listing of all VNIs has to parse every name.
    if filters.vni is not None:
        if str(filters.vni) in entries:
            copy_vni(vnis, filters.vni, entries[str(filters.vni)], filters)
        return
    # If two entries of one VNI have the same MAC, the later one wins. Which one is later is up
    # to the directory, so a listing is determined only if no MAC is in both.
    for name, tables in entries.items():
        copy_vni(vnis, entry_vni(name, without_number=0), tables, filters)


def copy_vni(vnis, vni, state_tables, filters):
    tables = mac.read_tables(state_tables)
    if filters.mac == 0:
        # In a listing of all MACs a multipath entry hides the flood list, even if it is filtered
        # out itself. A listing of one MAC shows both.
        for address in set(tables["flood"]) & set(tables["multipath"]):
            # An entry that is zero throughout hides nothing, but it is listed.
            if (address, tables["multipath"][address]) != (0, set()):
                del tables["flood"][address]
    mac.copy_tables(vnis, vni, tables, filters)


def unicast_rows(vni, tables):
    for address, (vtep, moves) in sorted(tables["unicast"].items()):
        columns = (vni, mac_display(address).encode(), ipv4_string(vtep).encode())
        yield b"%-11b %-15b %-15b %5d\n" % (*columns, signed32(moves))


def flood_rows(vni, tables):
    # One MAC can have both kinds: from two entries of one VNI, or with a MAC filter.
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
