"""Filters with several values: how they are parsed, and what they leave of a snapshot.

One plain value is handed on as it is: what it selects is up to the command. Anything more leaves
less of the snapshot, and the command then lists the rest without that filter.
"""

import collections
import ipaddress
import re

import router_routes
from forms import Failure, entry_vni, read_ip, read_mac, read_prefix, read_vni

BARE_MAC = re.compile(r"[0-9a-f]{12}", re.IGNORECASE)

SOURCE_WORDS = ("all", "hsc", "qvx", "evpn")

DESTINATIONS = ("", "switches", "hsc", "evpn")

PATH_PREFIX = "vxlancontroller/version2/logicalRouter/"


class Refusal(Exception):
    """vxshow must refuse the command line: exit status 2."""


def parts(texts):
    return [part for text in texts for part in text.split(",")]


# Values: `one` is what the command is given, `wanted` tells which values stay, None for all.

Values = collections.namedtuple("Values", "one wanted")


def within(ranges):
    return lambda value: any(first <= value <= last for first, last in ranges)


def vni_range(text):
    if re.fullmatch(r"[0-9.]+-[0-9.]+", text):
        first, last = map(read_vni, text.split("-"))
        return first, last
    return read_vni(text), read_vni(text)


def read_vnis(texts):
    ranges = {vni_range(text) for text in parts(texts)}
    if len(ranges) == 1 and min(ranges)[0] == min(ranges)[1]:
        return Values(min(ranges)[0], None)
    return Values(None, within(ranges) if ranges else None)


def mac_of(text):
    return int(text, 16) if BARE_MAC.fullmatch(text) else read_mac(text)


def mac_range(text):
    digits, slash, length = re.sub(r"[-:.]", "", text).partition("/")
    if text.endswith("*"):
        digits = digits[:-1]
        bits = 4 * len(digits)
    elif slash:
        bits = int(length)
    else:
        return mac_of(text), mac_of(text)
    first = int(digits.ljust(12, "0"), 16)
    return first, first + 2 ** (48 - bits) - 1


def read_macs(texts):
    ranges = {mac_range(text) for text in parts(texts)}
    plain = [text for text in parts(texts) if "/" not in text and "*" not in text]
    if 0 in map(mac_of, plain):
        return Values(0, None)
    if len(ranges) == 1 and min(ranges)[0] == min(ranges)[1] != 0:
        return Values(min(ranges)[0], None)
    return Values(0, within(ranges) if ranges else None)


def ip_range(text):
    network = ipaddress.ip_network(text)
    return (
        (network.version, int(network.network_address)),
        (network.version, int(network.broadcast_address)),
    )


def read_ips(texts):
    ranges = {ip_range(text) for text in parts(texts)}
    if len(ranges) == 1 and min(ranges)[0] == min(ranges)[1]:
        return Values(min(ranges)[0], None)
    return Values(None, within(ranges) if ranges else None)


class Vteps:
    """The VTEPs of a filter: a set without a list of its members. False if there is no filter."""

    def __init__(self, texts):
        self.ranges = [ip_range(text) for text in parts(texts)]

    def __bool__(self):
        return bool(self.ranges)

    def __contains__(self, vtep):
        return within(self.ranges)((4, vtep))


def read_prefixes(texts):
    prefixes = [read_prefix(text) for text in parts(texts)]
    return Values(prefixes[0] if len(prefixes) == 1 else None, prefixes)


# Names: `one` is what the command is given; the others are the set.

Names = collections.namedtuple("Names", "one names patterns words")


def read_names(texts, words=()):
    if texts in ([], [""]):
        return Names("", set(), [], set())
    names, patterns, used = set(), [], set()
    for text in texts:
        if text.startswith("name:"):
            names.add(text[len("name:") :])
            continue
        for part in text.split(","):
            if not part:
                raise Refusal("an empty name")
            if "*" in part or "?" in part:
                patterns.append(part)
            elif part in words:
                used.add(part)
            else:
                names.add(part)
    several = len(names) + len(patterns) + len(used) > 1
    if several or patterns or names & set(words):
        return Names(None, names, patterns, used)
    return Names(min(names | used), names, patterns, used)


def matches(pattern, name):
    expression = re.escape(pattern).replace(r"\*", ".*").replace(r"\?", ".")
    return re.fullmatch(expression, name, re.DOTALL) is not None


def is_named(wanted, name):
    return name in wanted.names or any(matches(pattern, name) for pattern in wanted.patterns)


def escaped(name):
    """As a line on standard error shows it."""
    return "".join(
        chr(byte) if 0x20 <= byte < 0x7F else f"\\x{byte:02x}" for byte in name.encode()
    )


def unknown(option, kind, wanted, known):
    """The beginnings of the lines about names that the state does not have."""
    lines = [
        f'vxshow: --{option}: no {kind} is named "{escaped(name)}"'
        for name in sorted(wanted.names - set(known))
    ]
    for pattern in wanted.patterns:
        if not any(matches(pattern, name) for name in known):
            lines.append(f'vxshow: --{option}: no {kind} has a name like "{escaped(pattern)}"')
    return lines


# What is left of a state


def kept(members, keep):
    return {key: value for key, value in members.items() if keep(key)}


def narrow_tables(tables, macs, ips):
    for name in ("unicast", "multipath", "flood"):
        if macs and name in tables:
            tables[name] = kept(tables[name], lambda mac: macs(read_mac(mac)))
    if "arp" in tables:
        tables["arp"] = {
            ip: entry
            for ip, entry in tables["arp"].items()
            if (not macs or macs(read_mac(entry["mac"]))) and (not ips or ips(read_ip(ip)))
        }


def narrow_vnis(vnis, wants, macs, ips):
    """{VNI or entry name: tables} without what is not wanted."""
    result = kept(vnis, wants)
    for tables in result.values():
        narrow_tables(tables, macs, ips)
    return result


def narrow_evpn(tables, vnis, macs):
    def wants(vni):
        return not vnis or vnis(read_vni(vni))

    if "hosts" in tables:
        tables["hosts"] = {
            vni: kept(hosts, lambda mac: not macs or macs(read_mac(mac)))
            for vni, hosts in tables["hosts"].items()
            if wants(vni)
        }
    if "flood" in tables:
        # The address of these lists is the zero one.
        tables["flood"] = kept(tables["flood"], lambda vni: wants(vni) and (not macs or macs(0)))


def entry_wanted(vnis, without_number):
    def wants(name):
        try:
            return not vnis or vnis(entry_vni(name, without_number))
        except Failure:
            return True  # for the command to refuse

    return wants


def narrowed_tables(state, wanted, without_number):
    """For the commands `mac` and `arp`."""
    vnis, macs, ips = wanted.vni.wanted, wanted.mac.wanted, wanted.ip.wanted
    if not (vnis or macs or ips):
        return
    received = state.get("received", {})
    advertised = state.get("advertised", {})

    def wants(vni):
        return not vnis or vnis(read_vni(vni))

    for published in [received.get("switches", {}), received.get("sources", {}),
                      advertised.get("sources", {})]:
        for name in published:
            published[name] = narrow_vnis(published[name], wants, macs, ips)
    for evpn in received.get("evpn", {}), advertised.get("evpn", {}):
        for tables in evpn.values():
            narrow_evpn(tables, vnis, macs)
    if "vnis" in advertised:
        entries = narrow_vnis(advertised["vnis"], entry_wanted(vnis, without_number), macs, ips)
        advertised["vnis"] = entries


def narrowed_sources(received, sources):
    if sources.one is not None:
        return
    if "all" not in sources.words and "switches" in received:
        received["switches"] = kept(received["switches"], lambda name: is_named(sources, name))
    # Only these names can be asked for, in lower case.
    for part in ("sources", "evpn"):
        received[part] = kept(received.get(part, {}), lambda name: name.lower() in sources.words)


def router_names(routers):
    names = set(routers.get("status", {}))
    for paths in routers.get("published", {}).values():
        names |= {path[len(PATH_PREFIX) :] for path in paths if path.startswith(PATH_PREFIX)}
    return names


def switches_meant(text, known):
    if text in known:
        return {text}
    try:
        address = mac_of(text)
    except ValueError:
        return set()
    return {name for name in known if read_or_none(name) == address}


def read_or_none(text):
    try:
        return read_mac(text)
    except ValueError:
        return None


def overlap(prefix, prefixes):
    return any(router_routes.overlap(prefix, other) for other in prefixes)


def narrowed_routers(routers, wanted):
    names = wanted.router
    if names.one is None:
        routers["status"] = kept(routers.get("status", {}), lambda name: is_named(names, name))
        for identifier, paths in routers.get("published", {}).items():
            routers["published"][identifier] = kept(
                paths,
                lambda path: path.startswith(PATH_PREFIX)
                and is_named(names, path[len(PATH_PREFIX) :]),
            )
    prefixes = wanted.prefix.wanted
    if prefixes and wanted.prefix.one is None:
        for status in routers.get("status", {}).values():
            status["routes"] = kept(
                status.get("routes", {}), lambda prefix: overlap(read_prefix(prefix), prefixes)
            )
    switches = wanted.switch
    if switches.names or switches.patterns:
        known = routers.get("switches", {})
        meant = {name for name in known if any(matches(p, name) for p in switches.patterns)}
        for text in switches.names:
            meant |= switches_meant(text, known)
        routers["switches"] = kept(known, lambda name: name in meant)


def unknown_lines(state, wanted):
    routers = state.get("routers", {})
    if wanted.subject == "router":
        known = routers.get("switches", {})
        missing = {text for text in wanted.switch.names if not switches_meant(text, known)}
        switches = wanted.switch._replace(names=missing)
        return unknown("router", "router", wanted.router, router_names(routers)) + unknown(
            "switch", "switch", switches, known
        )
    switches = state.get("received", {}).get("switches", {})
    return unknown("source", "source", wanted.source, switches) + unknown(
        "switch", "switch", wanted.switch, switches
    )


def select(state, wanted):
    """(what is left of the state, lines about unknown names). Changes the state, and the filters of
    `wanted` to what the command is left to apply."""
    lines = unknown_lines(state, wanted)
    if wanted.subject == "router":
        narrowed_routers(state.get("routers", {}), wanted)
        wanted.switch = ""
    else:
        narrowed_tables(state, wanted, 0 if wanted.subject == "mac" else None)
        received = state.get("received", {})
        narrowed_sources(received, wanted.source)
        if wanted.switch.one is None and "switches" in received:
            received["switches"] = kept(
                received["switches"], lambda name: is_named(wanted.switch, name)
            )
        wanted.switch = wanted.switch.one or ""
    for name in ("vni", "mac", "ip", "prefix", "source", "router"):
        value = getattr(wanted, name).one
        setattr(wanted, name, "" if value is None and name in ("source", "router") else value)
    return state, lines


FILTERS = {
    "vni": read_vnis,
    "mac": read_macs,
    "ip": read_ips,
    "source": lambda texts: read_names(texts, SOURCE_WORDS),
    "switch": read_names,
    "router": read_names,
    "prefix": read_prefixes,
    "vtep": Vteps,
}


def read_filters(wanted):
    """Replaces the texts of each filter by what they mean. Raises `Refusal`."""
    for name, read in FILTERS.items():
        setattr(wanted, name, read(getattr(wanted, name)))
    if wanted.dest not in DESTINATIONS:
        raise Refusal("an unknown destination")
