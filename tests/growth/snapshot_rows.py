"""The rows of commands on snapshots: one function for each dimension, which makes the state."""

import json
import os
import shlex

from row import Row

ROWS = []

MAC_RECEIVED = ["mac received", "--json mac received"]
MAC_ADVERTISED = ["mac advertised", "--json mac advertised"]
ARP_RECEIVED = ["arp received", "--json arp received"]
ARP_ADVERTISED = ["arp advertised", "--json arp advertised"]
ROUTES = ["router routes", "--json router routes"]
DETAIL = ["router detail", "--json router detail"]
MAP = ["router map", "--json router map"]


def spelled(name):
    name = name.replace("_", " ")
    for letters in "vni", "mac", "vtep", "evpn", "hsc", "qvx", "ipv4", "ipv6":
        name = name.replace(letters, letters.upper().replace("IPV", "IPv"))
    return name


def dimension(smallest, *commands, error=""):
    """Adds a row for each of the commands. The function makes the document of a size: an object,
    or text; or a pair of that and more words of the command."""

    def add(make):
        name = spelled(make.__name__)
        for written in commands:

            def command(size, program, folder, options=tuple(shlex.split(written))):
                made = make(size)
                document, more = made if isinstance(made, tuple) else (made, [])
                path = os.path.join(folder, "state.json")
                with open(path, "w", encoding="utf-8") as file:
                    file.write(document if isinstance(document, str) else json.dumps(document))
                return [program, "--state", path, *options, *more]

            ROWS.append(Row(name, written, smallest, command, error=error))
        return make

    return add


# Values. Consecutive numbers are scattered, so that no table is in the order of its keys.


def scattered(number, bits):
    """A different number for each, of this many bits."""
    return number * 0x9E3779B1 % (1 << bits)


def mac(number):
    return (0x020000000000 + scattered(number, 32)).to_bytes(6, "big").hex(":")


def ipv4(number):
    return ".".join(str(byte) for byte in (0x0A000001 + scattered(number, 24)).to_bytes(4, "big"))


def ipv6(number):
    return f"2001:db8::{scattered(number, 32) >> 16:x}:{number & 0xFFFF:x}"


def vni(number):
    return str(10 + number)


def unicast(size, name=mac):
    return {name(i): {"vtep": ipv4(i % 16), "moves": i % 7} for i in range(size)}


def vteps(size):
    return [ipv4(i) for i in range(size)]


def bindings(size, address):
    return {address(i): {"mac": mac(i), "preference": 1, "changes": i % 5} for i in range(size)}


# Documents.


def document(**members):
    return {"format": "vxlan-controller-state", "version": 1, **members}


def received(switches):
    return document(received={"switches": switches})


def one_table(**tables):
    return received({"leaf1": {"10": tables}})


def advertised(vnis):
    return document(advertised={"vnis": vnis})


def small_tables():
    return {"unicast": unicast(1), "arp": bindings(1, ipv4)}


def switch_mac(number):
    return mac(number)


def router_path(name):
    return f"vxlancontroller/version2/logicalRouter/{name}"


def routers(names, switches):
    """Routers that are on every one of the switches, each with a VTEP."""
    return {
        "switches": {switch_mac(i): {"vteps": [ipv4(i)]} for i in range(switches)},
        "vteps": {
            ipv4(i): {"active": True, "switches": [switch_mac(i)]} for i in range(switches)
        },
        "published": {
            switch_mac(i): {router_path(name): "Vxlan" for name in names} for i in range(switches)
        },
    }


def status(**tables):
    return document(routers={**routers(["r1"], 1), "status": {"r1": tables}})


# Received MAC and ARP tables.


@dimension(250, *MAC_RECEIVED, *ARP_RECEIVED, "mac received --source leaf1", "mac received --source 'leaf*,hsc'", "arp received --switch 'l?*'",
           "capture -")
def switches(size):
    return received({f"leaf{i + 1}": {"10": small_tables()} for i in range(size)})


@dimension(250, *MAC_RECEIVED, *ARP_RECEIVED, "mac received --vni 10", "arp received --vni 10")
def vnis_of_a_switch(size):
    return received({"leaf1": {vni(i): small_tables() for i in range(size)}})


@dimension(
    500,
    *MAC_RECEIVED,
    "--pretty mac received",
    "mac received --mac 02:00:00:00:00:00",
    "mac received --vtep 10.0.0.1",
    "mac received --vni 1-16777215",
    "mac received --mac 02:00:*",
    "mac received --vtep 10.0.0.0/8",
    "capture -",
    "model --of 'mac received'",
    "--json model --of 'mac received'",
)
def macs_of_a_vni(size):
    return one_table(unicast=unicast(size))


@dimension(500, "mac received")
def macs_in_ascending_order(size):
    return one_table(unicast=unicast(size, lambda i: (2 << 40 | i).to_bytes(6, "big").hex(":")))


@dimension(500, "mac received")
def macs_in_descending_order(size):
    return one_table(
        unicast=unicast(size, lambda i: ((3 << 40) - i).to_bytes(6, "big").hex(":"))
    )


@dimension(500, "mac received")
def macs_that_differ_in_their_first_bytes(size):
    return one_table(unicast=unicast(size, lambda i: (i << 32).to_bytes(6, "big").hex(":")))


@dimension(250, *MAC_RECEIVED)
def multipath_macs_of_a_vni(size):
    return one_table(multipath={mac(i): vteps(2) for i in range(size)})


@dimension(500, *MAC_RECEIVED, "capture -")
def vteps_of_a_multipath_mac(size):
    return one_table(multipath={mac(1): vteps(size)})


@dimension(250, "mac received")
def flood_lists_of_a_vni(size):
    return one_table(flood={mac(i): vteps(2) for i in range(size)})


@dimension(500, *MAC_RECEIVED, "mac received --vtep 10.0.0.1", "capture -")
def vteps_of_a_flood_list(size):
    return one_table(flood={"00:00:00:00:00:00": vteps(size)})


@dimension(250, "mac received", "mac received --source hsc")
def vnis_of_the_hsc(size):
    return document(received={"sources": {"HSC": {vni(i): small_tables() for i in range(size)}}})


@dimension(250, "mac received", "mac received --source qvx")
def vnis_of_qvx(size):
    return document(received={"sources": {"QVX": {vni(i): small_tables() for i in range(size)}}})


def evpn(**tables):
    return {"evpn": {"EVPN": tables}}


@dimension(500, *MAC_RECEIVED, "mac received --vni 10", "capture -")
def evpn_hosts_of_a_vni(size):
    return document(received=evpn(hosts={"10": unicast(size)}))


@dimension(250, "mac received", "mac received --vni 10")
def vnis_of_evpn_hosts(size):
    return document(received=evpn(hosts={vni(i): unicast(1) for i in range(size)}))


@dimension(500, "mac received")
def evpn_flood_vteps_of_a_vni(size):
    return document(received=evpn(flood={"10": vteps(size)}))


@dimension(250, "mac received")
def vnis_of_evpn_flood_lists(size):
    return document(received=evpn(flood={vni(i): vteps(2) for i in range(size)}))


@dimension(100, "mac received", "router map")
def values_of_the_vtep_filter(size):
    words = [word for vtep in vteps(size) for word in ("--vtep", vtep)]
    return document(**one_table(unicast=unicast(16)), routers=routers(["r1"], 2)), words


@dimension(500, *ARP_RECEIVED, "arp received --ip 10.0.0.1", "--json model --of 'arp received'")
def ipv4_bindings_of_a_vni(size):
    return one_table(arp=bindings(size, ipv4))


@dimension(500, "arp received", "arp received --mac 02:00:00:00:00:00", "capture -")
def ipv6_bindings_of_a_vni(size):
    return one_table(arp=bindings(size, ipv6))


# What is advertised.


@dimension(250, *MAC_ADVERTISED, *ARP_ADVERTISED, "arp advertised --vni 10", "capture -")
def advertised_vnis(size):
    return advertised({vni(i): small_tables() for i in range(size)})


@dimension(250, "mac advertised", "arp advertised")
def advertised_entries_of_one_vni(size):
    """A name denotes the number at its start."""
    names = [f"10 {i}" for i in range(size)]
    return advertised(
        {name: {"unicast": {mac(i): {"vtep": ipv4(1)}}, "arp": {ipv4(i): {"mac": mac(i)}}}
         for i, name in enumerate(names)}
    )


@dimension(500, *MAC_ADVERTISED, "mac advertised --vni 10", "model --of 'mac advertised'")
def advertised_macs_of_a_vni(size):
    return advertised({"10": {"unicast": unicast(size)}})


@dimension(250, "mac advertised")
def advertised_multipath_macs(size):
    return advertised({"10": {"multipath": {mac(i): vteps(2) for i in range(size)}}})


@dimension(500, "mac advertised")
def vteps_of_an_advertised_flood_list(size):
    return advertised({"10": {"flood": {"00:00:00:00:00:00": vteps(size)}}})


@dimension(250, "mac advertised")
def advertised_flood_lists(size):
    return advertised({"10": {"flood": {mac(i): vteps(2) for i in range(size)}}})


@dimension(250, "mac advertised", "mac advertised --dest hsc")
def vnis_that_the_hsc_is_told(size):
    return document(advertised={"sources": {"HSC": {vni(i): small_tables() for i in range(size)}}})


@dimension(500, "mac advertised", "mac advertised --dest evpn")
def hosts_that_evpn_is_told(size):
    return document(advertised=evpn(hosts={"10": unicast(size)}))


@dimension(500, *ARP_ADVERTISED, "arp advertised --ip 10.0.0.1", "model --of 'arp advertised'")
def advertised_bindings_of_a_vni(size):
    return advertised({"10": {"arp": bindings(size, ipv4)}})


@dimension(500, "arp advertised")
def advertised_ipv6_bindings_of_a_vni(size):
    return advertised({"10": {"arp": bindings(size, ipv6)}})


# Routers.


def gateway(number):
    return f"{ipv4(number)}/24"


def port(number=1):
    return {"vni": 10, "mac": mac(number), "vtep": ipv4(1)}


def uplink(ports=1, number=1):
    listed = [{"port": f"Ethernet{i + 1}", "vlan": 100} for i in range(ports)]
    return {"mac": mac(number), "vtep": ipv4(1), "ports": listed}


@dimension(100, *MAP, *DETAIL, *ROUTES, "router map --router r1", "router map --router 'r*'",
           "router routes --router 'r*'", "router routes --prefix 10.0.0.0/8,::/0", "--json model --of 'router map'")
def logical_routers(size):
    names = [f"r{i + 1}" for i in range(size)]
    tables = {
        "ports": {gateway(1): port()},
        "uplinks": {gateway(2): uplink()},
        "routes": {"10.0.0.0/8": [ipv4(1)]},
    }
    return document(routers={**routers(names, 1), "status": {name: tables for name in names}})


@dimension(250, *MAP, "router map --vtep 10.0.0.1", "router map --vtep 10.0.0.0/8",
           "router map --switch '*'", "capture -", "model --of 'router map'")
def switches_of_a_router(size):
    return document(routers=routers(["r1"], size))


@dimension(250, "router map", "capture -")
def vteps_of_a_switch(size):
    state = routers(["r1"], 1)
    state["switches"] = {switch_mac(0): {"vteps": vteps(size)}}
    for i in range(1, size):
        state["vteps"][ipv4(i)] = {"active": False, "switches": [switch_mac(0)]}
    return document(routers=state)


@dimension(250, "router map", "capture -")
def switches_of_a_vtep(size):
    state = routers(["r1"], 1)
    state["vteps"][ipv4(0)]["switches"] = [switch_mac(i) for i in range(size)]
    return document(routers=state)


@dimension(500, "router map", "capture -")
def published_paths_of_other_things(size):
    state = routers(["r1"], 1)
    paths = state["published"][switch_mac(0)]
    paths.update({f"vxlancontroller/version2/other{i}": "Vxlan" for i in range(size)})
    return document(routers=state)


@dimension(250, *DETAIL, "capture -", "model --of 'router detail'")
def gateways_of_a_router(size):
    return status(ports={gateway(i): port(i) for i in range(size)})


@dimension(250, *DETAIL, "capture -")
def uplinks_of_a_router(size):
    return status(uplinks={gateway(i): uplink(2, i) for i in range(size)})


@dimension(250, *DETAIL, "--json model --of 'router detail'")
def addresses_of_one_uplink(size):
    return status(uplinks={gateway(i): uplink() for i in range(size)})


@dimension(250, *DETAIL, "capture -")
def ports_of_an_uplink(size):
    return status(uplinks={gateway(1): uplink(size)})


@dimension(
    500,
    *ROUTES,
    "router routes --prefix 10.0.0.0/8",
    "capture -",
    "model --of 'router routes'",
)
def routes_of_a_router(size):
    return status(routes={f"{ipv4(i)}/32": vteps(1) for i in range(size)})


@dimension(500, "router routes")
def ipv6_routes_of_a_router(size):
    return status(routes={f"{ipv6(i)}/128": [ipv6(1)] for i in range(size)})


@dimension(500, *ROUTES, "capture -", "--json model --of 'router routes'")
def nexthops_of_a_route(size):
    return status(routes={"10.0.0.0/8": vteps(size)})


# The document itself.


@dimension(4000, "mac received", "--json mac received", "capture -", "model --of 'mac received'")
def length_of_the_name_of_a_switch(size):
    return received({"x" * size: {"10": small_tables()}})


@dimension(2000, "--json mac received", "capture -", "model --of 'mac received'")
def control_characters_in_a_name(size):
    return received({"\x01" * size: {"10": small_tables()}})


@dimension(4000, "router map", "--json router detail", "router routes")
def length_of_the_name_of_a_router(size):
    name = "r" * size
    tables = {"ports": {gateway(1): port()}, "routes": {"10.0.0.0/8": [ipv4(1)]}}
    return document(routers={**routers([name], 1), "status": {name: tables}})


@dimension(4000, "router detail")
def length_of_the_name_of_a_port(size):
    ports = [{"port": "e" * size, "vlan": 1}]
    return status(uplinks={gateway(1): {"mac": mac(1), "vtep": ipv4(1), "ports": ports}})


@dimension(50_000, "mac received")
def bytes_of_white_space(size):
    return " " * size + json.dumps(one_table(unicast=unicast(1)))


@dimension(20_000, "mac received", error='found "unknown"')
def lines_before_an_error(size):
    return "\n" * size + json.dumps(document(unknown=1))


@dimension(500, "mac received", error='received.switches.leaf1."11": found "unknown"')
def entries_before_an_error(size):
    return received({"leaf1": {"10": {"unicast": unicast(size)}, "11": {"unknown": {}}}})


@dimension(500, "mac received", error="once")
def macs_before_a_repeated_one(size):
    table = json.dumps(unicast(size))
    repeated = f'{table[:-1]}, "{mac(0)}": {{"vtep": "1.2.3.4"}}}}'
    return json.dumps(one_table(unicast="@")).replace('"@"', repeated)


@dimension(20_000, "mac received", error="found an array")
def depth_of_an_unexpected_value(size):
    deep = "[" * size + "]" * size
    return json.dumps(document(received="@")).replace('"@"', deep)


@dimension(250, "arp advertised", error="disagree about")
def entries_that_disagree(size):
    """Two entries of each VNI have different bindings of one address."""
    vnis = {vni(i): {"arp": {ipv4(1): {"mac": mac(1)}}} for i in range(size)}
    others = {f"0{vni(i)}": {"arp": {ipv4(1): {"mac": mac(2)}}} for i in range(size)}
    return advertised({**vnis, **others})
