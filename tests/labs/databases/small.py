"""A small, readable database: two leaves, three VNIs, 20 MACs (one of them with two locators),
flood lists and a router.

"blue" has its VNI in the locators, one tunnel per key; the others have it in the logical
switch. One MAC is in upper case.
"""

from databases.rows import Rows, a_map, a_set, ref

KEYS = {"red": None, "green": None, "blue": 5003}

LOCAL = [
    ("red", "00:00:5e:00:53:01", "10.0.0.1", "192.168.1.11"),
    ("red", "00:00:5e:00:53:02", "10.0.0.1", ""),
    ("red", "00:00:5e:00:53:03", "10.0.0.2", "192.168.1.13"),
    ("red", "00:00:5e:00:53:04", "10.0.0.12", ""),
    ("green", "00:00:5e:00:53:05", "10.0.0.1", "192.168.2.15"),
    ("green", "00:00:5e:00:53:06", "10.0.0.1", ""),
    ("green", "00:00:5e:00:53:07", "10.0.0.1", "2001:db8:2::17"),
    ("blue", "00:00:5e:00:53:08", "10.0.0.1", "192.168.3.18"),
    ("blue", "00:00:5e:00:53:09", "10.0.0.1", ""),
]

REMOTE = [
    ("red", "00:00:5e:00:53:11", "10.1.0.1", "192.168.1.21"),
    ("red", "00:00:5e:00:53:12", "10.1.0.1", ""),
    ("red", "00:00:5e:00:53:13", "10.1.0.2", "192.168.1.23"),
    ("red", "00:00:5E:00:53:1A", "10.1.0.2", ""),
    ("green", "00:00:5e:00:53:15", "10.1.0.1", "192.168.2.25"),
    ("green", "00:00:5e:00:53:16", "10.1.0.3", ""),
    ("green", "00:00:5e:00:53:17", "10.1.0.3", "192.168.2.27"),
    ("green", "00:00:5e:00:53:18", "10.1.0.2", "192.168.2.28"),
    ("green", "00:00:5e:00:53:18", "10.1.0.3", ""),
    ("blue", "00:00:5e:00:53:19", "10.1.0.2", "192.168.3.29"),
    ("blue", "00:00:5e:00:53:1b", "10.1.0.3", ""),
    ("blue", "00:00:5e:00:53:1c", "10.1.0.3", ""),
]

FLOODS = [
    ("Mcast_Macs_Local", "red", "unknown-dst", ["10.0.0.1", "10.0.0.2", "10.0.0.12"], ""),
    ("Mcast_Macs_Local", "green", "unknown-dst", ["10.0.0.1"], ""),
    ("Mcast_Macs_Local", "blue", "unknown-dst", ["10.0.0.1"], ""),
    ("Mcast_Macs_Remote", "red", "unknown-dst",
     ["10.1.0.1", "10.1.0.2", "10.1.0.3", "10.1.0.4"], ""),
    ("Mcast_Macs_Remote", "green", "unknown-dst", ["10.1.0.9"], ""),
    ("Mcast_Macs_Remote", "blue", "unknown-dst", ["10.1.0.2", "10.1.0.3"], ""),
    ("Mcast_Macs_Remote", "red", "01:00:5e:01:02:03", ["10.1.0.1", "10.1.0.2"], "239.1.2.3"),
]


def logical_switches(rows):
    red = {"name": "red", "description": "tenant 1, web", "tunnel_key": 5001}
    green = {"name": "green", "description": "tenant 1, data", "tunnel_key": 5002,
             "replication_mode": "source_node"}
    blue = {"name": "blue", "description": "key per tunnel"}
    return {row["name"]: ref(rows.add("Logical_Switch", row)) for row in (red, green, blue)}


def physical_switches(rows, switches):
    def port(name, bindings):
        named = {vlan: switches[switch] for vlan, switch in bindings.items()}
        return ref(rows.add("Physical_Port", {"name": name, "vlan_bindings": a_map(named)}))

    def leaf(name, tunnel_ips, ports, **more):
        row = {"name": name, "tunnel_ips": a_set(tunnel_ips), "ports": a_set(ports), **more}
        return ref(rows.add("Physical_Switch", row))

    ports = [port("eth1", {10: "red", 20: "green"}), port("eth2", {0: "blue"}), port("eth9", {})]
    leaves = [
        leaf("leaf1", ["10.0.0.1"], ports, description="rack 1",
             management_ips=a_set(["192.0.2.1", "2001:db8::1"])),
        leaf("leaf2", ["10.0.0.2", "10.0.0.12"], [port("swp1", {10: "red"})]),
    ]
    rows.add("Global", {"switches": a_set(leaves)})


def routers(rows, switches):
    red, green = switches["red"], switches["green"]
    bindings = {"192.168.1.1/24": red, "192.168.2.1/24": green, "2001:db8:2::1/64": green}
    routes = {"0.0.0.0/0": "192.168.1.254", "10.10.0.0/16": "192.168.2.254"}
    rows.add("Logical_Router", {
        "name": "tenant1", "description": "web and data",
        "switch_binding": a_map(bindings), "static_routes": a_map(routes),
    })


def small():
    """Yields the whole database as one group of rows."""
    rows = Rows(7)
    switches = logical_switches(rows)
    physical_switches(rows, switches)
    for table, hosts in ("Ucast_Macs_Local", LOCAL), ("Ucast_Macs_Remote", REMOTE):
        for name, mac, vtep, ip in hosts:
            rows.add(table, {"MAC": mac, "logical_switch": switches[name],
                             "locator": rows.locator(vtep, KEYS[name]), "ipaddr": ip})
    for table, name, mac, vteps, ip in FLOODS:
        rows.add(table, {"MAC": mac, "logical_switch": switches[name],
                         "locator_set": rows.locator_set(vteps, KEYS[name]), "ipaddr": ip})
    for table, mac, vtep in (
        ("Arp_Sources_Local", "00:00:5e:00:53:f1", "10.0.0.1"),
        ("Arp_Sources_Remote", "00:00:5e:00:53:f9", "10.1.0.1"),
    ):
        rows.add(table, {"src_mac": mac, "locator": rows.locator(vtep)})
    routers(rows, switches)
    yield rows.take()
