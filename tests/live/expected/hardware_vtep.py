"""Reads what a database knows from the output of `ovsdb-client query`."""

import ipaddress
import json
import subprocess

from databases.request import NEEDED, request
from expected.facts import Facts, ip_text, mac_of, prefix_text, with_length

NO_MAC = "00:00:00:00:00:00"


# Cells


def elements(cell):
    """The members of a set; a set of one is written as the bare member."""
    return cell[1] if isinstance(cell, list) and cell[0] == "set" else [cell]


def pairs(cell):
    return cell[1]


def target(cell):
    return cell[1]


def only(cell):
    """The one member, or None."""
    return next(iter(elements(cell)), None)


# Text that the server does not check; None if it is invalid


def host_mac(text):
    mac = mac_of(text)
    return None if mac == NO_MAC else mac


def checked(convert, text):
    try:
        return convert(text)
    except ValueError:
        return None


def vtep_of(text):
    ip = checked(ipaddress.IPv4Address, text)
    return str(ip) if ip and int(ip) else None


def vni_of(key):
    return key if key is not None and 0 <= key <= 0xFFFFFF else None


class Database:
    """The rows of a database, indexed by identity where others refer to them."""

    def __init__(self, tables):
        def by_identity(table):
            return {target(row["_uuid"]): row for row in tables[table]}

        self.tables = tables
        self.logical_switches = by_identity("Logical_Switch")
        self.locators = by_identity("Physical_Locator")
        self.locator_sets = by_identity("Physical_Locator_Set")
        self.ports = by_identity("Physical_Port")

    def vni(self, switch, locator):
        key = only(self.logical_switches[switch]["tunnel_key"])
        return vni_of(only(locator["tunnel_key"]) if key is None else key)

    def bound_switches(self, switch):
        """The logical switches that a physical one has on a port."""
        for port in elements(switch["ports"]):
            for _, logical in pairs(self.ports[target(port)]["vlan_bindings"]):
                yield target(logical)

    def own_vteps(self, switch):
        return {ip for ip in map(vtep_of, elements(switch["tunnel_ips"])) if ip}


def facts_of(database, name, system_id=None, system_ids=None):
    facts = Facts()
    add_switches(facts, database, system_id, system_ids or {})
    for side in "Local", "Remote":
        for row in database.tables["Ucast_Macs_" + side]:
            add_row(facts, database, name, side, row, [target(row["locator"])], host_mac(row["MAC"]))
        for row in database.tables["Mcast_Macs_" + side]:
            members = elements(database.locator_sets[target(row["locator_set"])]["locators"])
            mac = NO_MAC if row["MAC"] == "unknown-dst" else host_mac(row["MAC"])
            add_row(facts, database, name, side, row, map(target, members), mac, flood=True)
    add_routers(facts, database)
    return facts


def add_switches(facts, database, system_id, system_ids):
    switches = database.tables["Physical_Switch"]
    for switch in switches:
        own_id = system_ids.get(switch["name"], system_id if len(switches) == 1 else None)
        vteps = database.own_vteps(switch)
        facts.switches[switch["name"]] = {"id": own_id, "vteps": vteps, "routers": set()}
        side = facts.local_side(switch["name"])
        for logical in database.bound_switches(switch):
            vni = vni_of(only(database.logical_switches[logical]["tunnel_key"]))
            side.vnis |= {vni} - {None}
    for logical in database.logical_switches.values():
        facts.remote.vnis |= {vni_of(only(logical["tunnel_key"]))} - {None}


def sides(facts, name, side, vtep):
    """The sides to which an entry at the VTEP is added."""
    if side == "Remote":
        return [facts.remote]
    switches = [switch for switch, known in facts.switches.items() if vtep in known["vteps"]]
    return [facts.local_side(switch) for switch in switches or [name]]


def add_row(facts, database, name, side, row, locators, mac, flood=False):
    ip = checked(ip_text, row["ipaddr"])
    for locator in map(database.locators.get, locators):
        vtep = vtep_of(locator["dst_ip"])
        vni = database.vni(target(row["logical_switch"]), locator)
        if mac is None or vtep is None or vni is None:
            continue
        for into in sides(facts, name, side, vtep):
            if flood:
                into.floods.add((vni, mac, vtep))
            else:
                into.add_mac(vni, mac, vtep)
            if ip and mac != NO_MAC:
                into.bindings.add((vni, ip, mac, 0, 0))


def add_routers(facts, database):
    for row in database.tables["Logical_Router"]:
        router = facts.router(row["name"])
        logical_switches = set()
        for address, logical in pairs(row["switch_binding"]):
            logical_switches.add(target(logical))
            key = vni_of(only(database.logical_switches[target(logical)]["tunnel_key"]))
            text = checked(with_length, address)
            if text and key is not None:
                router["ports"].setdefault(text, set()).add((key, None, None))
        for prefix, nexthop in pairs(row["static_routes"]):
            texts = checked(prefix_text, prefix), checked(ip_text, nexthop)
            if all(texts):
                router["routes"].setdefault(texts[0], set()).add(texts[1])
        for switch in database.tables["Physical_Switch"]:
            if logical_switches.intersection(database.bound_switches(switch)):
                facts.switches[switch["name"]]["routers"].add(row["name"])


def read(remotes, name, system_id=None, system_ids=None, ssl=()):
    """Asks the first of the remotes that answers."""
    for remote in remotes:
        done = subprocess.run(
            ["ovsdb-client", *ssl, "-vconsole:off", "-t", "60", "query", remote, request()],
            stdout=subprocess.PIPE,
            check=False,
        )
        if done.returncode == 0:
            answer = json.loads(done.stdout)
            tables = {table: part["rows"] for table, part in zip(NEEDED, answer)}
            return facts_of(Database(tables), name, system_id, system_ids)
    raise SystemExit(f"no answer from {remotes}")
