"""Collects the MAC tables of a snapshot and prints them as JSON, for both MAC commands.

What is collected is {vni: {"unicast": {mac: (vtep, moves)}, "multipath": {mac: {vtep}},
"flood": {mac: {vtep}}}}. A VNI is present only if it has an entry.
"""

from forms import ipv4_string, mac_string, read_ipv4, read_mac, read_vni, signed32


class Filters:
    """None, zero and no VTEPs mean no filter."""

    def __init__(self, vni=None, mac=0, vteps=()):
        self.vni = vni
        self.mac = mac
        self.vteps = vteps

    def want_vni(self, vni):
        return self.vni is None or self.vni == vni

    def want_mac(self, mac):
        return self.mac == 0 or self.mac == mac

    def want_vteps(self, vteps):
        """One matching VTEP is enough; an empty list never matches."""
        return not self.vteps or any(vtep in self.vteps for vtep in vteps)


# Parsing. An absent member and an empty one mean the same.


def read_binding(entry):
    return read_ipv4(entry["vtep"]), entry.get("moves", 0)


def read_vteps(texts):
    return {read_ipv4(text) for text in texts}


def read_by_mac(table, read):
    return {read_mac(mac): read(value) for mac, value in table.items()}


def read_tables(tables):
    return {
        "unicast": read_by_mac(tables.get("unicast", {}), read_binding),
        "multipath": read_by_mac(tables.get("multipath", {}), read_vteps),
        "flood": read_by_mac(tables.get("flood", {}), read_vteps),
    }


# Collecting


def tables_of(vnis, vni):
    return vnis.setdefault(vni, {"unicast": {}, "multipath": {}, "flood": {}})


def copy_tables(vnis, vni, tables, filters):
    """Add the entries of these tables that the filters select to the VNI."""
    for mac, (vtep, moves) in tables["unicast"].items():
        if filters.want_mac(mac) and filters.want_vteps([vtep]):
            tables_of(vnis, vni)["unicast"][mac] = (vtep, moves)

    for mac, vteps in tables["multipath"].items():
        if filters.want_mac(mac) and filters.want_vteps(vteps):
            tables_of(vnis, vni)["multipath"][mac] = vteps

    # An empty flood list is present all the same, and so is its VNI.
    for mac, vteps in tables["flood"].items():
        if filters.want_mac(mac) and filters.want_vteps(vteps):
            tables_of(vnis, vni)["flood"].setdefault(mac, set()).update(vteps)


def copy_evpn(vnis, evpn, filters):
    for vni_text, hosts in evpn.get("hosts", {}).items():
        vni = read_vni(vni_text)
        for mac, host in read_by_mac(hosts, read_binding).items():
            vtep = host[0]
            # The MAC is not part of a host: one that is otherwise zero counts as absent.
            absent = host == (0, 0)
            wanted = filters.want_mac(mac) and filters.want_vteps([vtep])
            if filters.want_vni(vni) and wanted and not absent:
                tables_of(vnis, vni)["unicast"][mac] = host

    for vni_text, vtep_texts in evpn.get("flood", {}).items():
        vni = read_vni(vni_text)
        for vtep in read_vteps(vtep_texts):
            # There is no MAC here for a MAC filter to match; zero is not one.
            if filters.want_vni(vni) and filters.mac == 0 and filters.want_vteps([vtep]):
                tables_of(vnis, vni)["flood"].setdefault(0, set()).add(vtep)


# JSON


def unicast_list(table, revision):
    result = []
    for mac, (vtep, moves) in sorted(table.items()):
        entry = {"macAddr": mac_string(mac), "vtepIp": ipv4_string(vtep)}
        # Only the first revision has this member, and it is always zero.
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
            "vtepIpList": [ipv4_string(vtep) for vtep in sorted(vteps)],
        }
        for mac, vteps in sorted(table.items())
    ]


def vni_list(vnis, revision):
    result = []
    for vni, tables in sorted(vnis.items()):
        any_list = flood_list(tables["multipath"], "sendToAny")
        all_list = flood_list(tables["flood"], "sendToAll")
        result.append(
            {
                "macAddress": mac_string(0),
                "vni": vni,
                "unicastHostTable": unicast_list(tables["unicast"], revision),
                "bumVtepListTable": any_list + all_list,
            }
        )
    return result
