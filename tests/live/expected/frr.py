"""Reads what a routing daemon knows from the output of `vtysh`."""

import ipaddress
import json
import subprocess

from expected.facts import Facts, ip_text, prefix_text, with_length

NO_MAC = "00:00:00:00:00:00"


class Vtysh:
    def __init__(self, words, path_space=None):
        self.words = [*words, *(["-N", path_space] if path_space else [])]

    def show(self, command):
        """One document; None if there is nothing to show."""
        done = subprocess.run(
            [*self.words, "-c", f"show {command} json"],
            stdout=subprocess.PIPE,
            stderr=subprocess.DEVNULL,
            check=True,
            timeout=60,
        )
        return json.loads(done.stdout) if done.stdout.strip() else None


def objects(document):
    """The members that are objects; there are counters between them."""
    return {key: value for key, value in (document or {}).items() if isinstance(value, dict)}


def facts_of(vtysh, name, system_id=None):
    facts = Facts()
    vnis = {entry["vni"]: entry for entry in vtysh.show("evpn vni detail") or []}
    own = {vni: entry["vtepIp"] for vni, entry in vnis.items() if entry["type"] == "L2"}
    local, remote = facts.local_side(name), facts.remote
    for vni, vtep in own.items():
        local.vnis.add(vni)
        remote.vnis.add(vni)
        local.floods.add((vni, NO_MAC, vtep))
        for other in vnis[vni].get("numRemoteVteps", []):
            remote.floods.add((vni, NO_MAC, other))
    add_macs(facts, vtysh, name, own)
    add_bindings(facts, vtysh, name)
    routed = l3_vnis_up(vtysh, vnis)
    facts.switches[name] = {
        "id": system_id or min((entry["routerMac"] for entry in routed), default=None),
        "vteps": own_vteps(routed),
        "routers": set(),
    }
    add_routers(facts, vtysh, name, vnis)
    return facts


def l3_vnis_up(vtysh, vnis):
    up = {vrf["vrf"] for vrf in (vtysh.show("vrf vni") or {}).get("vrfs", [])
          if vrf["state"] == "Up"}
    return [entry for entry in vnis.values() if entry["type"] == "L3" and entry["vrf"] in up]


def own_vteps(routed):
    """The lowest, which is the one in the map of routers."""
    addresses = {entry["localVtepIp"] for entry in routed} - {"0.0.0.0"}
    return set(sorted(addresses, key=ipaddress.ip_address)[:1])


def add_macs(facts, vtysh, name, own):
    segments = {
        segment["esi"]: [vtep["vtep"] for vtep in segment.get("vteps", [])]
        for segment in vtysh.show("evpn es detail") or []
    }
    for key, table in objects(vtysh.show("evpn mac vni all detail")).items():
        vni = int(key)
        for mac, entry in objects(table["macs"]).items():
            if entry["type"] == "local":
                facts.local_side(name).add_mac(vni, mac, own[vni], entry["localSequence"])
            elif entry["type"] == "remote":
                vteps = [entry["remoteVtep"]]
                if vteps == ["0.0.0.0"]:
                    vteps = segments[entry["esi"]]
                for vtep in vteps:
                    facts.remote.add_mac(vni, mac, vtep, entry["remoteSequence"])


def add_bindings(facts, vtysh, name):
    for key, table in objects(vtysh.show("evpn arp-cache vni all")).items():
        for ip, entry in objects(table).items():
            if entry["state"] != "active":
                continue
            local = entry["type"] == "local"
            side = facts.local_side(name) if local else facts.remote
            changes = entry["localSequence" if local else "remoteSequence"]
            side.bindings.add((int(key), ip_text(ip), entry["mac"], 0, changes))


def add_routers(facts, vtysh, name, vnis):
    for vrf in (vtysh.show("vrf vni") or {}).get("vrfs", []):
        router = facts.router(vrf["vrf"])
        facts.switches[name]["routers"].add(vrf["vrf"])
        for family in "ip", "ipv6":
            add_routes(router, vtysh.show(f"{family} route vrf {vrf['vrf']}"))
        add_ports(router, vtysh.show(f"interface vrf {vrf['vrf']}"), vnis)


def add_routes(router, document):
    for prefix, routes in (document or {}).items():
        for route in routes:
            if route.get("selected"):
                nexthops = router["routes"].setdefault(prefix_text(prefix), set())
                for nexthop in route["nexthops"]:
                    if "ip" in nexthop and nexthop.get("active"):
                        nexthops.add(nexthop_text(nexthop["ip"]))


def nexthop_text(text):
    """A VTEP is shown as IPv4 even as the nexthop of an IPv6 route."""
    ip = ipaddress.ip_address(text)
    mapped = ip.ipv4_mapped if ip.version == 6 else None
    return str(mapped or ip)


def add_ports(router, interfaces, vnis):
    of_interface = {
        entry.get("sviInterface", entry.get("sviIntf")): entry for entry in vnis.values()
    }
    for name, interface in (interfaces or {}).items():
        if name in of_interface:
            vni = of_interface[name]
            vtep = vni.get("vtepIp", vni.get("localVtepIp"))
            for entry in interface.get("ipAddresses", []):
                address = ipaddress.ip_interface(entry["address"])
                if not (address.version == 6 and address.is_link_local):
                    port = (vni["vni"], interface["hardwareAddress"], vtep)
                    router["ports"].setdefault(with_length(entry["address"]), set()).add(port)


def read(words, path_space, name, system_id=None):
    return facts_of(Vtysh(words, path_space), name, system_id)
