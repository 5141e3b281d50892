"""Documents that are one or two mistakes away from a good one with a value of every kind."""

import copy
import json

EVERYTHING = {
    "format": "vxlan-controller-state",
    "version": 1,
    "received": {
        "switches": {"leaf1": {"10": {
            "unicast": {"02:00:00:00:00:01": {"vtep": "10.0.0.1", "moves": 1}},
            "multipath": {"02:00:00:00:00:02": ["10.0.0.1", "10.0.0.2"]},
            "flood": {"00:00:00:00:00:00": ["10.0.0.1"]},
            "arp": {"10.0.0.9": {"mac": "02:00:00:00:00:01", "preference": 1, "changes": 1}},
        }}},
        "sources": {"HSC": {"0": {}}, "QVX": {"7": {"unicast": {}}}},
        "evpn": {"EVPN": {
            "hosts": {"10": {"02:00:00:00:00:03": {"vtep": "10.0.0.3"}}},
            "flood": {"10": ["10.0.0.3"]},
        }},
    },
    "advertised": {
        "vnis": {"ten": {"arp": {"2001:db8::9": {"mac": "0200.0000.0001"}}}},
        "sources": {"HSC": {"16777215": {}}},
        "evpn": {"EVPN": {"hosts": {}, "flood": {}}},
    },
    "routers": {
        "switches": {"02:00:00:00:00:0a": {"vteps": ["10.0.0.1", "2001:db8::1"]}, "leaf2": {}},
        "vteps": {
            "10.0.0.1": {"active": True, "switches": ["02:00:00:00:00:0a", "leaf2"]},
            "2001:db8::1": {"active": False},
        },
        "published": {"02:00:00:00:00:0a": {"path/prod": "Vxlan", "path": "other"}},
        "status": {"prod": {
            "ports": {
                "10.1.2.3/24": {"vni": 10, "mac": "02:00:00:00:00:0b", "vtep": "10.0.0.1"},
                "2001:db8::3/64": {"vni": 11, "mac": "02:00:00:00:00:0b"},
            },
            "uplinks": {"10.9.0.1/31": {
                "mac": "02:00:00:00:00:0b",
                "vtep": "2001:db8::1",
                "ports": [{"port": "Ethernet1", "vlan": 1}, {"port": "Ethernet1"}],
            }},
            "routes": {"10.0.0.0/8": ["10.9.0.0", "2001:db8::2"], "::/0": []},
        }},
        "switchNames": {"leaf1": ["00:1c:73:00:00:01", "x"], "leaf2": []},
    },
    "origin": {
        "made": "2026-11-23T02:10:11.125Z",
        "version": "1.0",
        "sources": [
            {"name": "leaf1", "kind": "frr", "role": "evpn", "read": "2026-11-23T02:10:11Z",
             "failure": "f", "remarks": "r", "counts": {"vnis": 2, "leftOut": 1}},
            {"name": "leaf2", "kind": "ovsdb", "role": "switch"},
        ],
    },
    "details": {"leaf1": {
        "macs": [
            {"vni": 10, "mac": "02:00:00:00:00:01", "duplicate": True, "age": 3},
            {"vni": 10, "mac": "02:00:00:00:00:02", "sticky": False, "inactive": True,
             "segment": "03:00:00:00:00:00:00:00:00:01"},
        ],
        "vniNames": [{"vni": 10, "name": "ls10"}],
        "l3Vnis": [{"vni": 5000, "vrf": "red", "up": True}, {"vni": 5001, "vrf": ""}],
    }},
    "uncounted": {
        "received": {"leaf1": ["preference"], "HSC": ["moves", "changes", "preference"]},
        "advertised": ["moves"],
    },
}

OTHER_NAMES = [
    "", "x", "10", "16777216", "HSC", "EVPN", "vtep", "vteps", "mac", "ports", "switches",
    "10.0.0.1", "10.0.0.8", "2001:db8::1", "2001:db8:0::1", "02:00:00:00:00:01",
    "0200.0000.000A", "10.0.0.0/8", "10.1.2.3/24", "10.1.2.3/33", "::/0", "0::0/0",
]

OTHER_VALUES = [
    None, True, False, 0, 1, -1, 1.0, 0.5, 255, 256, 65535, 65536, 16777215, 16777216,
    4294967295, 4294967296, [], {}, [[]], [{}], {"port": "Ethernet1"}, ["10.0.0.1"], *OTHER_NAMES,
]


def containers(value):
    """Yield every object and list in `value`, itself included, that holds something."""
    if isinstance(value, (dict, list)) and value:
        yield value
        for inner in value.values() if isinstance(value, dict) else value:
            yield from containers(inner)


def rename(rng, names, old):
    """Give one member of an object another name, in its old place."""
    members = list(names.items())
    names.clear()
    new = rng.choice(OTHER_NAMES)
    for name, value in members:
        names[new if name == old else name] = value


def mistake(rng, document):
    """Change one thing somewhere in `document`."""
    everything = list(containers(document))
    where = rng.choice(everything)
    at = rng.choice(list(where) if isinstance(where, dict) else range(len(where)))
    kind = rng.randrange(5)
    if kind == 0:
        del where[at]
    elif kind == 1:
        where[at] = rng.choice(OTHER_VALUES)
    elif kind == 2:
        where[at] = copy.deepcopy(rng.choice(everything))
    elif isinstance(where, list):
        where.append(copy.deepcopy(rng.choice([where[at], *OTHER_VALUES])))
    elif kind == 3:
        rename(rng, where, at)
    else:
        where[rng.choice(OTHER_NAMES)] = copy.deepcopy(where[at])


def mutants(rng, count):
    """Yield that many texts."""
    for _ in range(count):
        document = copy.deepcopy(EVERYTHING)
        for _ in range(rng.choice([1, 1, 2])):
            if document:
                mistake(rng, document)
        yield json.dumps(document)
