"""The options and filters with which compare.py lists its states."""

import ipaddress
import re

import reference
from forms import mac_string, read_vni, vni_string
import rows

# By command: the options of each listing, then its filters.
LISTINGS = {
    "mac received": [
        ([], []),
        (["--json"], []),
        (["--pretty", "--revision", "1", "--dotted"], []),
        (["--dotted"], ["--source", "all"]),
        ([], ["--source", "hsc"]),
        (["--json"], ["--source", "qvx"]),
        ([], ["--source", "evpn"]),
        ([], ["--source", "HSC"]),
        ([], ["--source", "no such switch"]),
        ([], ["--mac", "00:00:5e:00:53:01"]),
        (["--json"], ["--mac", "0000.5e00.5302"]),
        ([], ["--vni", "10"]),
        (["--json"], ["--vni", "255.255.255"]),
        ([], ["--vtep", "10.0.0.1"]),
        (["--json"], ["--vtep", "10.0.0.1", "--vtep", "10.0.0.3"]),
        ([], ["--vni", "10", "--mac", "00:00:5e:00:53:01", "--vtep", "10.0.0.2"]),
    ],
    "mac advertised": [
        ([], []),
        (["--json"], []),
        (["--pretty", "--revision", "1", "--dotted"], []),
        (["--dotted"], ["--dest", "all"]),
        ([], ["--dest", "hsc"]),
        (["--json"], ["--dest", "hsc"]),
        ([], ["--dest", "qvx"]),
        ([], ["--dest", "evpn"]),
        (["--json"], ["--dest", "evpn"]),
        ([], ["--dest", "EVPN", "--vtep", "10.0.0.1"]),
        ([], ["--mac", "00:00:5e:00:53:01"]),
        (["--json"], ["--mac", "0000.5e00.5301"]),
        ([], ["--vni", "10"]),
        (["--json"], ["--vni", "0"]),
        (["--json"], ["--vtep", "10.0.0.1", "--vtep", "10.0.0.3"]),
        ([], ["--vni", "10", "--mac", "00:00:5e:00:53:01", "--vtep", "10.0.0.2"]),
    ],
    "arp received": [
        ([], []),
        (["--json"], []),
        (["--pretty", "--revision", "1", "--dotted"], []),
        (["--dotted"], []),
        ([], ["--switch", "leaf1"]),
        (["--json"], ["--switch", "HSC"]),
        (["--json"], ["--switch", "no such switch"]),
        (["--json"], ["--mac", "00:00:5e:00:53:01"]),
        ([], ["--ip", "192.0.2.1"]),
        (["--json"], ["--ip", "2001:db8:0::1"]),
        (["--json"], ["--vni", "10"]),
        ([], ["--vni", "0.0.10", "--mac", "0000.5e00.5301", "--ip", "::ffff:192.0.2.1"]),
    ],
    "arp advertised": [
        ([], []),
        (["--json"], []),
        (["--pretty", "--revision", "1", "--dotted"], []),
        (["--dotted"], []),
        ([], ["--vni", "0"]),
        (["--json"], ["--vni", "10"]),
        (["--json"], ["--mac", "00:00:5e:00:53:01"]),
        ([], ["--ip", "192.0.2.1"]),
        (["--json"], ["--ip", "2001:db8:0::1"]),
        (["--json"], ["--vni", "0.0.10", "--mac", "0000.5e00.5301", "--ip", "::ffff:192.0.2.1"]),
    ],
    "router map": [
        ([], []),
        (["--json"], []),
        (["--pretty", "--revision", "1", "--dotted"], []),
        ([], ["--router", "tenant1"]),
        (["--json"], ["--router", "no such router"]),
        ([], ["--switch", "00:00:00:00:00:01"]),
        (["--json"], ["--switch", "0000.0000.0001"]),
        ([], ["--switch", "no such switch", "--vtep", "10.0.0.1"]),
        ([], ["--vtep", "10.0.0.1"]),
        (["--json"], ["--vtep", "0.0.0.0", "--vtep", "192.0.2.1"]),
        ([], ["--vtep", "10.0.0.1", "--vtep", "1.2.3.4", "--router", "tenant1"]),
    ],
    "router detail": [
        ([], []),
        (["--json"], []),
        (["--pretty", "--revision", "1", "--dotted"], []),
        (["--dotted"], []),
        (["--json", "--dotted"], []),
        ([], ["--router", "tenant1"]),
        (["--json"], ["--router", "tenant10"]),
        ([], ["--router", "no such router"]),
    ],
    "router routes": [
        ([], []),
        (["--json"], []),
        (["--pretty", "--revision", "1", "--dotted"], []),
        ([], ["--router", "tenant1"]),
        (["--json"], ["--router", "no such router"]),
        ([], ["--prefix", "0.0.0.0/0"]),
        (["--json"], ["--prefix", "::/0"]),
        ([], ["--prefix", "10.0.0.0/8"]),
        (["--json"], ["--prefix", "10.1.2.3/32"]),
        (["--pretty"], ["--prefix", "2001:DB8:0::/32"]),
        ([], ["--prefix", "::ffff:10.1.2.3/128"]),
        ([], ["--prefix", "203.0.113.0/24", "--router", "tenant1"]),
    ],
}

DRAWN_OPTIONS = [[], [], ["--json"], ["--dotted"], ["--json", "--dotted"], ["--pretty"]]


# Filters drawn from a state


def members(state, *path):
    """The member at the path; empty if any part of the path is missing."""
    for name in path:
        state = state.get(name, {})
    return state


def names_and_tables(state):
    """Yield (VNI or entry name, tables) from every place that has tables."""
    for vnis in members(state, "received", "switches").values():
        yield from vnis.items()
    for direction in ("received", "advertised"):
        for vnis in members(state, direction, "sources").values():
            yield from vnis.items()
    yield from members(state, "advertised", "vnis").items()


def tables_drawable(state):
    found = {
        "vni": {"0", "10", "0.0.10", "70000", "16777215"},
        "mac": {"0000.0000.0000", "02:00:00:00:00:01"},
        "ip": {"198.51.100.1", "::1", "::ffff:192.0.2.1"},
        "vtep": {"0.0.0.0", "10.0.0.1", "198.51.100.1"},
    }
    for vni, tables in names_and_tables(state):
        if vni.isascii() and vni.isdigit() and len(vni) < 9 and int(vni) <= 0xFFFFFF:
            found["vni"].add(str(int(vni)))
        for table in ("unicast", "multipath", "flood"):
            found["mac"].update(tables.get(table, {}))
        for entry in tables.get("unicast", {}).values():
            found["vtep"].add(entry["vtep"])
        for ip, entry in tables.get("arp", {}).items():
            found["ip"].add(ip)
            found["mac"].add(entry["mac"])
    for evpn in ("received", "advertised"):
        for hosts in members(state, evpn, "evpn", "EVPN", "hosts").values():
            found["mac"].update(hosts)
    switches = set(members(state, "received", "switches"))
    found["source"] = found["switch"] = switches | {"all", "hsc", "qvx", "evpn", "HSC", "leaf"}
    found["dest"] = {"all", "hsc", "evpn", "qvx", "HSC", "leaf1"}
    return found


def routers_drawable(state):
    found = {
        "router": {"tenant1", "no such router"},
        "switch": {"no such switch", "00:00:00:00:00:01"},
        "vtep": {"0.0.0.0", "198.51.100.1"},
        "prefix": {"0.0.0.0/0", "::/0", "203.0.113.0/24", "2001:db8:ffff::/48", "128.0.0.0/1"},
    }
    found["router"].update(members(state, "routers", "status"))
    for paths in members(state, "routers", "published").values():
        found["router"].update(path.rpartition("logicalRouter/")[2] for path in paths)
    found["switch"].update(members(state, "routers", "switches"))
    for ip, vtep in members(state, "routers", "vteps").items():
        found["switch"].update(vtep["switches"])
        if ":" not in ip:
            found["vtep"].add(ip)
    for status in members(state, "routers", "status").values():
        for prefix in status.get("routes", {}):
            found["prefix"].update(around_and_within(prefix))
    return found


def around_and_within(prefix):
    """The prefix, one that contains it, and its first and last address."""
    network = ipaddress.ip_network(prefix)
    wider = network.supernet(new_prefix=network.prefixlen // 2)
    return [prefix, str(wider), *(f"{network[end]}/{network.max_prefixlen}" for end in (0, -1))]


def drawable(state, command):
    """By filter, its values in the state, and some that need not be in it."""
    routers = command.startswith("router ")
    found = routers_drawable(state) if routers else tables_drawable(state)
    # The order of a set differs from run to run; an empty text would not filter.
    return {name: sorted(values - {""}) for name, values in found.items()}


# Several values: ranges, subnets and patterns made of a value, so that they often match.


def drawn_vnis(rng, text):
    if rng.random() < 0.5:
        return text
    last = read_vni(text)
    return f"{vni_string(max(0, last - rng.choice([0, 1, 9, 70000])), rng.random() < 0.5)}-{text}"


def drawn_macs(rng, text):
    digits = re.sub("[-:.]", "", text)
    pairs = [digits[at : at + 2] for at in range(0, 12, 2)]
    form = rng.randrange(5)
    if form == 0:
        return digits
    count = rng.randint(1, 5)
    if form == 1:
        return rng.choice(":-").join(pairs[:count]) + rng.choice([":*", "*", "-*"])
    if form == 2:
        return "".join(pairs[:count]) + f"/{8 * count}"
    if form == 3:
        length = rng.randint(0, 48)
        masked = int(digits, 16) >> (48 - length) << (48 - length)
        return f"{mac_string(masked)}/{length}"
    return text


def drawn_ips(rng, text):
    if rng.random() < 0.4:
        return text
    network = ipaddress.ip_network(text)
    return str(network.supernet(new_prefix=rng.randint(0, network.max_prefixlen)))


def drawn_names(rng, text):
    if rng.random() < 0.4 and text:
        first = rng.randrange(len(text))
        last = rng.randint(first, len(text))
        return text[:first] + rng.choice(["*", "?"]) + text[last:]
    return text


DRAWN_VALUES = {
    "vni": drawn_vnis,
    "mac": drawn_macs,
    "ip": drawn_ips,
    "vtep": drawn_ips,
    "source": drawn_names,
    "switch": drawn_names,
    "router": drawn_names,
    "prefix": lambda rng, text: text,
}


def drawn_texts(rng, name, values):
    """The values of a filter: one plain value half of the time."""
    if name == "dest" or rng.random() < 0.5:
        return [rng.choice(values) for _ in range(rng.randint(1, 3) if name == "vtep" else 1)]
    texts = [DRAWN_VALUES[name](rng, rng.choice(values)) for _ in range(rng.randint(1, 3))]
    if name in ("source", "switch", "router") and rng.random() < 0.2:
        texts.append("name:" + rng.choice(values))
        return texts
    return texts if rng.random() < 0.5 else [",".join(texts)]


def drawn_listing(rng, command, values):
    filters = []
    for name in reference.COMMANDS[tuple(command.split())].filters:
        if rng.random() < 0.4:
            for text in drawn_texts(rng, name, values[name]):
                filters += ["--" + name, text]
    return rng.choice(DRAWN_OPTIONS), filters


def drawn_choice(rng, command):
    """Options of the forms that are made of rows, which fit at least one table."""
    tables = rows.COLUMNS[command]
    table = rng.choice(list(tables))
    keys = [key for key, _ in tables[table]]
    columns = rng.sample(keys, rng.randint(1, len(keys))) if rng.random() < 0.3 else []
    sort = [rng.choice(["", "-"]) + key for key in rng.sample(keys, rng.choice([0, 0, 1, 2]))]
    return rows.Choice(
        form=rng.choice(["wide", "csv", "jsonl"]),
        table=table if rng.random() < 0.3 else "",
        columns=columns,
        sort=sort,
        top=rng.randint(1, 20) if rng.random() < 0.2 else None,
        count=rng.random() < 0.1,
        header=rng.random() < 0.8,
        dotted=rng.random() < 0.3,
    )


def choice_options(choice):
    """The options that ask vxshow for this choice."""
    options = ["-o", choice.form]
    for name in "table", "columns", "sort", "top":
        value = getattr(choice, name)
        if value:
            options += ["--" + name, ",".join(value) if isinstance(value, list) else str(value)]
    flags = {"--count": choice.count, "--no-header": not choice.header, "--dotted": choice.dotted}
    return options + [flag for flag, given in flags.items() if given]
