"""What one source knows, and the snapshot made from several sources."""

import ipaddress
import re


class Side:
    """What is known from one side: learned by a switch itself, or received by it."""

    def __init__(self):
        self.vnis = set()
        self.macs = {}  # (VNI, MAC, VTEP): moves
        self.floods = set()  # (VNI, MAC, VTEP)
        self.bindings = set()  # (VNI, IP, MAC, preference, changes)

    def add_mac(self, vni, mac, vtep, moves=0):
        key = (vni, mac, vtep)
        self.macs[key] = max(moves, self.macs.get(key, 0))

    def add_all(self, other):
        self.vnis |= other.vnis
        self.floods |= other.floods
        self.bindings |= other.bindings
        for key, moves in other.macs.items():
            self.add_mac(*key, moves)


class Facts:
    """All that one source knows. A port of a router is (VNI, MAC, VTEP); None means unknown."""

    def __init__(self):
        self.local = {}  # by switch
        self.remote = Side()
        self.switches = {}  # by name: {"id", "vteps", "routers"}
        self.routers = {}  # by name: {"ports": {IP/LEN: {port}}, "routes": {PREFIX: {IP}}}

    def local_side(self, switch):
        return self.local.setdefault(switch, Side())

    def router(self, name):
        return self.routers.setdefault(name, {"ports": {}, "routes": {}})


# Text as a snapshot writes it


def mac_of(text):
    """Parses an Ethernet address in any of its three forms; None if it is invalid."""
    if not re.fullmatch(r"(?i)[0-9a-f]{2}([:-][0-9a-f]{2}){5}|[0-9a-f]{4}(\.[0-9a-f]{4}){2}", text):
        return None
    if ":" in text and "-" in text:
        return None
    digits = re.sub("[^0-9a-f]", "", text.lower())
    return ":".join(digits[i : i + 2] for i in range(0, 12, 2))


def ip_text(text):
    return str(ipaddress.ip_address(text))


def prefix_text(text):
    return str(ipaddress.ip_network(text, strict=False))


def with_length(text):
    """An address with its prefix length; host bits are kept."""
    return str(ipaddress.ip_interface(text))


# The parts of a snapshot


def vtep_list(vteps):
    return sorted(vteps, key=lambda vtep: ipaddress.ip_address(vtep).packed)


def tables(side):
    """By VNI, the four tables."""
    vnis = set(side.vnis)
    for facts in side.macs, side.floods, side.bindings:
        vnis |= {fact[0] for fact in facts}
    result = {
        vni: {"unicast": {}, "multipath": {}, "flood": {}, "arp": {}} for vni in sorted(vnis)
    }
    places = {}
    for (vni, mac, vtep), moves in side.macs.items():
        places.setdefault((vni, mac), {})[vtep] = moves
    for (vni, mac), vteps in places.items():
        if len(vteps) > 1:
            result[vni]["multipath"][mac] = vtep_list(vteps)
        else:
            ((vtep, moves),) = vteps.items()
            result[vni]["unicast"][mac] = {"vtep": vtep, "moves": moves}
    for vni, mac, vtep in side.floods:
        flood = result[vni]["flood"]
        flood[mac] = vtep_list({*flood.get(mac, ()), vtep})
    # The best claim to an address comes last and wins.
    for vni, ip, mac, preference, changes in sorted(side.bindings, key=claim):
        entry = {"mac": mac, "preference": preference, "changes": changes}
        result[vni]["arp"][ip] = entry
    return {str(vni): tables for vni, tables in result.items()}


def claim(binding):
    _, _, mac, preference, changes = binding
    return (preference, changes, -int(mac.replace(":", ""), 16))


def shared_tables(side):
    hosts, flood = {}, {}
    # Of several VTEPs the one with the most moves comes last and wins; if several have as many,
    # the lowest.
    order = sorted(
        side.macs.items(),
        key=lambda item: (item[1], -int(ipaddress.ip_address(item[0][2]))),
    )
    for (vni, mac, vtep), moves in order:
        hosts.setdefault(str(vni), {})[mac] = {"vtep": vtep, "moves": moves}
    for vni, mac, vtep in side.floods:
        if mac == "00:00:00:00:00:00":
            flood[str(vni)] = vtep_list({*flood.get(str(vni), ()), vtep})
    return {"EVPN": {"hosts": hosts, "flood": flood}}


def merged(sides):
    result = Side()
    for side in sides:
        result.add_all(side)
    return result


def of_switches(sources):
    """Both directions, for the sources that are switches."""
    by_name = {}
    for facts in sources:
        for name, side in facts.local.items():
            by_name.setdefault(name, Side()).add_all(side)
    received = {name: tables(side) for name, side in by_name.items()}
    return received, tables(merged(facts.remote for facts in sources))


def local_of_all(sources):
    return merged(side for facts in sources for side in facts.local.values())


def routers(sources):
    switches, vteps, published, status = {}, {}, {}, {}
    for facts in sources:
        for name, known in facts.switches.items():
            identifier = known["id"] or name
            own = switches.setdefault(identifier, {"vteps": []})
            own["vteps"] = vtep_list({*own["vteps"], *known["vteps"]})
            for vtep in known["vteps"]:
                shared = vteps.setdefault(vtep, {"active": True, "switches": []})
                shared["switches"] = sorted({*shared["switches"], identifier})
            if known["id"]:
                paths = published.setdefault(identifier, {})
                paths["vxlancontroller/version2/vniStatus"] = "Vxlan"
                for router in known["routers"]:
                    paths["vxlancontroller/version2/logicalRouter/" + router] = "Vxlan"
        for name, known in facts.routers.items():
            into = status.setdefault(name, {"ports": {}, "routes": {}})
            for what in "ports", "routes":
                for key, values in known[what].items():
                    into[what][key] = into[what].get(key, set()) | values
    return {
        "switches": switches,
        "vteps": vteps,
        "published": published,
        "status": {name: router_status(known) for name, known in status.items()},
    }


def router_status(known):
    ports = {}
    for address, found in known["ports"].items():
        vni, mac, vtep = min(found, key=lambda port: tuple(part or "" for part in map(str, port)))
        ports[address] = {"vni": vni, "mac": mac or "00:00:00:00:00:00"}
        if vtep is not None:
            ports[address]["vtep"] = vtep
    routes = {prefix: vtep_list(nexthops) for prefix, nexthops in known["routes"].items()}
    return {"ports": ports, "routes": routes}


def snapshot(sources):
    """The document that a controller would have published, from [(role, Facts)]."""
    received, advertised = {}, {}

    def of(role):
        return [facts for own, facts in sources if own == role]

    if of("switch"):
        received["switches"], advertised["vnis"] = of_switches(of("switch"))
    for role, name in ("hsc", "HSC"), ("qvx", "QVX"):
        if of(role):
            remote = merged(facts.remote for facts in of(role))
            received.setdefault("sources", {})[name] = tables(remote)
    if of("hsc"):  # nothing is advertised to QVX
        advertised["sources"] = {"HSC": tables(local_of_all(of("hsc")))}
    if of("evpn"):
        received["evpn"] = shared_tables(merged(facts.remote for facts in of("evpn")))
        advertised["evpn"] = shared_tables(local_of_all(of("evpn")))
    return {
        "format": "vxlan-controller-state",
        "version": 1,
        "received": received,
        "advertised": advertised,
        "routers": routers([facts for _, facts in sources]),
    }
