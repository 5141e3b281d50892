"""Small random states that are valid but unusual.

Their contents are picked from a few values, so that tables overlap, filters match,
and every limit is reached sometimes.
"""

import json

from random_routers import random_routers
from random_values import ADDRESSES, MACS, VNIS, VTEPS, random_name, some_of, spelled_mac

MOVES = [0, 0, 1, 7, 99999, 100000, 2147483647, 2147483648, 4294967295]

PREFERENCES = [0, 0, 1, 127, 128, 255]

CHANGES = [0, 0, 1, 999999999, 1000000000, 2147483647, 2147483648, 4294967295]

# Valid names of an entry of the advertised directory for VNI {}.
ENTRY_FORMS = [
    "0{}",
    "000000000{}",
    "+{}",
    " {}",
    "\t\n {}",
    "{} ",
    "{}x",
    "{}.5",
    "{} 9",
    "{}\u00e9",
]

# Names that do not start with a number, or start with a number that is not a VNI.
WORD_ENTRIES = ["abc", "", " ", "-", "+-1", "VNI 10", "\u00a010", "%d"]

UNFIT_ENTRIES = [
    "16777216",
    "-1",
    "2147483648",
    "4294967295",
    "4294967306",
    "-4294967286",
    "18446744073709551626",
]


def random_binding(rng):
    # All zeros mean no entry if the MAC is zero too, and for any EVPN host.
    if rng.random() < 0.1:
        return {"vtep": "0.0.0.0", "moves": 0}
    binding = {"vtep": rng.choice(VTEPS)}
    if rng.random() < 0.8:
        binding["moves"] = rng.choice(MOVES)
    return binding


def random_arp(rng):
    entry = {"mac": spelled_mac(rng, rng.choice(MACS))}
    if rng.random() < 0.7:
        entry["preference"] = rng.choice(PREFERENCES)
    if rng.random() < 0.7:
        entry["changes"] = rng.choice(CHANGES)
    return entry


def random_table(rng, value, macs=MACS):
    return {spelled_mac(rng, mac): value(rng) for mac in some_of(rng, macs, 6)}


def some_vteps(rng):
    return some_of(rng, VTEPS, 7)


def random_arp_table(rng, addresses=ADDRESSES):
    return {rng.choice(forms): random_arp(rng) for forms in some_of(rng, addresses, 10)}


def random_tables(rng):
    tables = {
        "unicast": random_table(rng, random_binding),
        "multipath": random_table(rng, some_vteps),
        "flood": random_table(rng, some_vteps),
        "arp": random_arp_table(rng),
    }
    return {name: tables[name] for name in some_of(rng, list(tables), 4)}


def random_vnis(rng, value):
    return {str(vni): value(rng) for vni in some_of(rng, VNIS, 4)}


def random_evpn(rng):
    evpn = {}
    if rng.random() < 0.8:
        evpn["hosts"] = random_vnis(rng, lambda rng: random_table(rng, random_binding))
    if rng.random() < 0.8:
        # No tunnel ends at 0.0.0.0, so nothing is flooded to it.
        evpn["flood"] = random_vnis(rng, lambda rng: some_of(rng, VTEPS[1:], 7))
    return evpn


def random_received(rng):
    received = {}
    if rng.random() < 0.9:
        names = [random_name(rng) for _ in range(rng.randint(0, 5))]
        received["switches"] = {name: random_vnis(rng, random_tables) for name in names}
    if rng.random() < 0.8:
        names = some_of(rng, ["HSC", "QVX"], 2)
        received["sources"] = {name: random_vnis(rng, random_tables) for name in names}
    if rng.random() < 0.8:
        received["evpn"] = {"EVPN": random_evpn(rng)} if rng.random() < 0.9 else {}
    return received


def entry_names(rng):
    """Names of entries of the advertised directory, {name: VNI}; several can share a VNI."""
    names = {str(vni): vni for vni in some_of(rng, VNIS, 4)}
    if rng.random() < 0.5:
        for form in some_of(rng, ENTRY_FORMS, 3):
            # Prefer a VNI that exists already.
            vni = rng.choice(list(names.values()) or VNIS)
            names[form.format(vni)] = vni
    if rng.random() < 0.12:
        names.update({name: 0 for name in some_of(rng, WORD_ENTRIES, 3)})
    if rng.random() < 0.1:
        names[rng.choice(UNFIT_ENTRIES)] = None
    in_no_order = list(names)
    rng.shuffle(in_no_order)
    return {name: names[name] for name in in_no_order}


def parted(rng, macs, parts):
    """Divide the MACs among this many lists, each MAC into one list."""
    result = [[] for _ in range(parts)]
    for mac in macs:
        rng.choice(result).append(mac)
    return result


def agreed(rng, table, bindings):
    """Give every address of an ARP table the binding that it has elsewhere."""
    result = {}
    for ip, entry in table.items():
        address = next(forms[0] for forms in ADDRESSES if ip in forms)
        # A zero can be written or left out.
        same = dict(bindings.setdefault(address, entry))
        if not same.get("changes") and rng.random() < 0.5:
            same["changes"] = 0
        result[ip] = same
    return result


def entries_of_one_vni(rng, count, peaceful):
    """Yield the tables of this many entries. Bindings agree only if `peaceful`."""
    # Which of the entries has the last word on a MAC is left open, so none is in two; but for
    # flood lists, whose VTEPs are put together.
    unicast, multipath = parted(rng, MACS, count), parted(rng, MACS, count)
    addresses = rng.sample(ADDRESSES, 9)
    bindings = {}
    for number in range(count):
        tables = {
            "unicast": random_table(rng, random_binding, unicast[number]),
            "multipath": random_table(rng, some_vteps, multipath[number]),
            "flood": random_table(rng, some_vteps),
            "arp": random_arp_table(rng, addresses),
        }
        if peaceful:
            tables["arp"] = agreed(rng, tables["arp"], bindings)
        yield {name: tables[name] for name in some_of(rng, list(tables), 4)}


def random_entries(rng):
    names = entry_names(rng)
    vnis = list(names.values())
    # Sometimes two entries of one VNI disagree about the owner of an IP address.
    peaceful = rng.random() < 0.75
    tables = {
        vni: entries_of_one_vni(rng, vnis.count(vni), peaceful) for vni in dict.fromkeys(vnis)
    }
    return {name: next(tables[vni]) for name, vni in names.items()}


def random_advertised(rng):
    advertised = {}
    if rng.random() < 0.95:
        advertised["vnis"] = random_entries(rng)
    if rng.random() < 0.8:
        advertised["sources"] = {"HSC": random_vnis(rng, random_tables)}
        if rng.random() < 0.1:
            advertised["sources"] = {}
    if rng.random() < 0.8:
        advertised["evpn"] = {"EVPN": random_evpn(rng)} if rng.random() < 0.9 else {}
    return advertised


def command(write, rng, _wanted):
    members = [
        ("format", "vxlan-controller-state"),
        ("version", 1),
        ("received", random_received(rng)),
        ("advertised", random_advertised(rng)),
    ]
    if rng.random() < 0.95:
        members.append(("routers", random_routers(rng)))
    rng.shuffle(members)
    indent = rng.choice([None, 0, 2])
    write(json.dumps(dict(members), ensure_ascii=rng.random() < 0.5, indent=indent) + "\n")
