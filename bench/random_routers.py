"""The routers of small random states: switches and their VTEPs, what is published, and status."""

import ipaddress

from random_values import ADDRESSES, MACS, VNIS, random_name, some_of, spelled_mac

# The Ethernet addresses of publishing systems, which also serve as switch identifiers.
SYSTEMS = MACS[:4] + MACS[-2:]

# Texts that are almost, but not quite, Ethernet addresses.
UNREAD_SWITCH_IDS = [
    "",
    "leaf1",
    "000000000001",
    "0:0:0:0:0:1",
    "00:00:00:00:00:01 ",
    "00:00-00:00-00:01",
    "00:00:00:00:00:0g",
    "0000.0000.0001.0000",
]

ROUTER_NAMES = [
    "tenant1",
    "tenant2",
    "tenant10",
    "Tenant1",
    "vrf/with/slashes",
    "",
    "name-of-11b",
    "name-of-12-b",
    "x" * 46,
    "x" * 47,
    "y" * 49,
    "y" * 50,
]

PATH_PREFIX = "vxlancontroller/version2/logicalRouter/"

# Paths in which the name of router {} does not publish that router.
OTHER_PATHS = [
    "vxlancontroller/version1/logicalRouter/{}",
    "vxlancontroller/version2/logicalrouter/{}",
    "/vxlancontroller/version2/logicalRouter/{}",
    "vxlancontroller/version2/logicalRouter",
    "vxlancontroller/version2/logicalRouters/{}",
    "{}",
]

OTHER_KINDS = ["vxlan", "Vxlan2", "Vxla", " Vxlan", "VxlanV2", ""]

PORT_NAMES = [
    "Ethernet1",
    "Ethernet2",
    "Ethernet10",
    "Ethernet1/1",
    "Port-Channel1000",
    "Port-Channel2000",
    "ethernet1",
    "et 3%s",
    'a "port"',
    "",
    ", ",
    "Anschlu\u00df",
    "\u7aef\u53e3" * 8,
    "longer-than-the-column-of-30-bytes",
]

VLANS = [0, 1, 100, 4094, 4095, 9999, 10000, 65535]

LENGTHS = {4: [0, 1, 7, 8, 9, 16, 24, 31, 32], 6: [0, 1, 9, 32, 48, 64, 96, 104, 127, 128]}

# Addresses whose prefixes often contain one another.
NETWORKS = [
    "0.0.0.0",
    "10.1.2.3",
    "10.1.130.7",
    "10.200.0.1",
    "138.1.2.3",
    "192.168.100.200",
    "255.255.255.255",
    "::",
    "::ffff:10.1.2.3",
    "2001:db8::1",
    "2001:db8:1:2:3:4:5:6",
    "2001:db8:1234:5678:9abc:def0:1234:5678",
    "a01:203::",
    "ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff",
]


def spelled_ip(rng, ip):
    """An IP address in one of its valid spellings."""
    return rng.choice(next(forms for forms in ADDRESSES if ip == forms[0]))


def some_ips(rng, most):
    return [rng.choice(forms) for forms in some_of(rng, ADDRESSES, most)]


def random_masked(rng):
    """Up to 6 addresses with masks; sometimes one address with two masks."""
    masked = {}
    for _ in range(rng.randint(0, 6)):
        forms = rng.choice(ADDRESSES[:12] + ADDRESSES)
        length = rng.choice(LENGTHS[6 if ":" in forms[0] else 4])
        masked[forms[0], length] = f"{rng.choice(forms)}/{length}"
    return list(masked.values())


def random_prefixes(rng):
    prefixes = {}
    for _ in range(rng.randint(0, 12)):
        address = ipaddress.ip_address(rng.choice(NETWORKS))
        length = rng.choice(LENGTHS[address.version])
        network = ipaddress.ip_network((address, length), strict=False)
        text = rng.choice([str(network), str(network), network.exploded])
        prefixes[network] = text.upper() if rng.random() < 0.2 else text
    return list(prefixes.values())


def with_vtep(rng, entry):
    if rng.random() < 0.8:
        entry["vtep"] = rng.choice(rng.choice(ADDRESSES))
    return entry


def random_router_port(rng):
    mac = spelled_mac(rng, rng.choice(MACS))
    return with_vtep(rng, {"vni": rng.choice(VNIS), "mac": mac})


def random_uplink(rng):
    # It is undefined which of several VLANs is shown, so all ports have the same one.
    vlan = rng.choice(VLANS)
    ports = []
    for name in some_of(rng, PORT_NAMES, 7):
        port = {"port": name}
        if vlan or rng.random() < 0.5:
            port["vlan"] = vlan
        ports.append(port)
    return with_vtep(rng, {"mac": spelled_mac(rng, rng.choice(MACS)), "ports": ports})


def random_router_status(rng):
    status = {
        "ports": {text: random_router_port(rng) for text in random_masked(rng)},
        "uplinks": {text: random_uplink(rng) for text in random_masked(rng)},
        "routes": {text: some_ips(rng, 8) for text in random_prefixes(rng)},
    }
    return {name: status[name] for name in some_of(rng, list(status), 3)}


def switch_ids(rng):
    """Switch identifiers; several can be one Ethernet address spelled differently."""
    ids = [spelled_mac(rng, rng.choice(SYSTEMS)) for _ in range(rng.randint(2, 8))]
    ids += some_of(rng, UNREAD_SWITCH_IDS, 2)
    if rng.random() < 0.3:
        ids.append(random_name(rng))
    return list(dict.fromkeys(ids))


def random_switch_vteps(rng, active, inactive):
    # It is undefined which of several active VTEPs represents a switch, so it has at most one.
    vteps = some_of(rng, inactive, 3)
    if active and rng.random() < 0.8:
        vteps.append(rng.choice(active))
    rng.shuffle(vteps)
    return [spelled_ip(rng, vtep) for vtep in vteps]


def random_switch_info(rng):
    ids = switch_ids(rng)
    vteps = [forms[0] for forms in rng.sample(ADDRESSES, rng.randint(1, 7))]
    at = rng.randint(1, len(vteps) + 3)
    active, inactive = vteps[:at], vteps[at:]
    switches = {name: {"vteps": random_switch_vteps(rng, active, inactive)} for name in ids}

    # The switches of a VTEP are listed separately and need not agree with the above.
    claimed = [*ids, spelled_mac(rng, rng.choice(SYSTEMS)), "no such switch"]
    behind = list(dict.fromkeys(claimed))
    info = {
        "switches": switches,
        "vteps": {
            spelled_ip(rng, vtep): {
                "active": vtep in active,
                "switches": some_of(rng, behind, 5),
            }
            for vtep in rng.sample(vteps, len(vteps))
        },
    }
    chance = rng.random()
    if chance < 0.05:
        del info["switches"]
    elif chance < 0.1:
        # Without VTEPs, no switch can refer to one.
        info = {"switches": {name: {"vteps": []} for name in ids}}
    return info


def random_paths(rng, names):
    paths = {PATH_PREFIX + name: "Vxlan" for name in rng.sample(names, rng.randint(1, len(names)))}
    for form in some_of(rng, OTHER_PATHS, 2):
        paths[form.format(rng.choice(names))] = "Vxlan"
    for path in paths:
        if rng.random() < 0.15:
            paths[path] = rng.choice(OTHER_KINDS)
    return paths


def random_routers(rng):
    # Some names are published, some have a status, most have both.
    names = list(dict.fromkeys(random_name(rng) for _ in range(rng.randint(0, 4))))
    names = list(dict.fromkeys(names + rng.sample(ROUTER_NAMES, rng.randint(1, 5))))
    systems = rng.sample(SYSTEMS, rng.randint(2, len(SYSTEMS)))
    routers = random_switch_info(rng) if rng.random() < 0.95 else {}
    if rng.random() < 0.95:
        routers["published"] = {
            spelled_mac(rng, system): random_paths(rng, names) for system in systems
        }
    if rng.random() < 0.95:
        with_status = rng.sample(names, rng.randint(1, len(names)))
        routers["status"] = {name: random_router_status(rng) for name in with_status}
    members = list(routers.items())
    rng.shuffle(members)
    return dict(members)
