"""`vxshow arp received` and `vxshow arp advertised` list IP-to-MAC bindings by VNI.

The tables of one switch, and those advertised, are {VNI as printed: {ip: (mac, preference,
changes)}}. VNIs sort as they are printed, as texts: 10 before 9. A VNI that the filters select
is present even if none of its bindings is selected.
"""

from forms import (
    Failure,
    entry_vni,
    ip_string,
    mac_display,
    mac_string,
    read_ip,
    read_mac,
    read_vni,
    signed32,
    vni_string,
)

ADVERTISED_HEADER = b"""\
                       Advertised ARP Table
-------------------------------------------------------------------------
VNI      IP Address      MAC Address        Changes
-------- --------------- ------------------ --------
"""

RECEIVED_HEADER = b"""\
                        Received ARP Table
-------------------------------------------------------------------------
Switch              VNI      IP Address      MAC Address        Changes
------------------- -------- --------------- ------------------ ---------
"""


def copy_vni(tables, vni, state_arp, wanted):
    if wanted.vni not in (None, vni):
        return
    table = tables.setdefault(vni_string(vni, wanted.dotted), {})
    for ip_text, entry in state_arp.items():
        ip = read_ip(ip_text)
        binding = (read_mac(entry["mac"]), entry.get("preference", 0), entry.get("changes", 0))
        if wanted.mac not in (0, binding[0]) or wanted.ip not in (None, ip):
            continue
        # Two entries of one VNI can repeat a binding, but not contradict it.
        if table.setdefault(ip, binding) != binding:
            raise Failure(f"two bindings of {ip_text} in VNI {vni}")


def collect_received(state, wanted):
    """{switch: tables}; a selected switch is present even if it has nothing to show."""
    switches = {}
    for name, vnis in state.get("received", {}).get("switches", {}).items():
        if wanted.switch in ("", name):
            switches[name] = {}
            for vni_text, tables in vnis.items():
                copy_vni(switches[name], read_vni(vni_text), tables.get("arp", {}), wanted)
    return switches


def collect_advertised(state, wanted):
    result = {}
    for name, tables in state.get("advertised", {}).get("vnis", {}).items():
        # Every name must be that of a VNI, even if the VNI is not selected.
        copy_vni(result, entry_vni(name), tables.get("arp", {}), wanted)
    return result


# Text. Widths and precisions count bytes.


def rows(tables):
    for vni, table in sorted(tables.items()):
        for ip, (mac, _, changes) in sorted(table.items()):
            columns = (vni.encode(), ip_string(ip).encode(), mac_display(mac).encode())
            yield b"%-8b %-15.15b %-18.18b %-9d\n" % (*columns, signed32(changes))


def listed(header, lines):
    total = b"\nTotal IP addresses for this criterion: %d\n" % len(lines)
    return header + b"".join(lines) + total


def received_text(switches, _dotted):
    lines = [
        b"%-19.19b " % name.encode() + row
        for name, tables in sorted(switches.items())
        for row in rows(tables)
    ]
    return listed(RECEIVED_HEADER, lines)


def advertised_text(tables, _dotted):
    return listed(ADVERTISED_HEADER, list(rows(tables)))


# JSON. All revisions are the same.


def addresses(table):
    return {
        ip_string(ip): {
            "macAddress": mac_string(mac),
            "changes": signed32(changes),
            "preference": preference,
        }
        for ip, (mac, preference, changes) in sorted(table.items())
    }


def advertised_content(tables, _dotted, _revision):
    return {
        "vnis": {vni: {"addresses": addresses(table)} for vni, table in sorted(tables.items())}
    }


def received_content(switches, dotted, revision):
    return {
        "switches": {
            name: advertised_content(tables, dotted, revision)
            for name, tables in sorted(switches.items())
        }
    }
