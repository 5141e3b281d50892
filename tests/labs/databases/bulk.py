"""A database of any size."""

from databases.rows import Rows, a_map, a_set, ref

OWN = [f"10.254.0.{i}" for i in range(1, 5)]
OTHERS = [f"10.255.{i // 200}.{i % 200 + 1}" for i in range(64)]


def bulk(vnis, macs, seed):
    """Yields groups of rows: `vnis` logical switches, each with a flood entry on both sides,
    `macs` MACs, every second one local, a switch and a router."""
    rows = Rows(seed)
    switch = rows.add(
        "Physical_Switch",
        {
            "name": "leaf1",
            "description": "lab switch",
            "tunnel_ips": a_set(OWN),
            "management_ips": a_set(["192.0.2.1"]),
        },
    )
    rows.add("Global", {"switches": a_set([ref(switch)])})
    yield rows.take()

    switches = []
    for number in range(vnis):
        row = {"name": f"ls{number + 1}", "tunnel_key": 10001 + number}
        switches.append(ref(rows.add("Logical_Switch", row)))
        flooded(rows, "Mcast_Macs_Local", switches[-1], OWN)
        flooded(rows, "Mcast_Macs_Remote", switches[-1], rows.random.sample(OTHERS, 4))
        yield rows.take()

    bindings = {f"172.16.{i}.1/24": switch for i, switch in enumerate(switches[:64])}
    routes = {f"198.18.{i}.0/24": f"172.16.0.{i + 2}" for i in range(16)}
    router = {"name": "router1", "switch_binding": a_map(bindings), "static_routes": a_map(routes)}
    rows.add("Logical_Router", router)
    yield rows.take()
    yield from hosts(rows, switches, macs)


def flooded(rows, table, switch, ips):
    locators = rows.locator_set(ips)
    rows.add(table, {"MAC": "unknown-dst", "logical_switch": switch, "locator_set": locators})


def hosts(rows, switches, macs):
    """Distinct MACs in random order; the last two bits select the table and whether to have an IP."""
    order = list(range(macs))
    rows.random.shuffle(order)
    for index, number in enumerate(order):
        table, ips = ("Ucast_Macs_Local", OWN) if number & 1 else ("Ucast_Macs_Remote", OTHERS)
        octets = number.to_bytes(4, "big")
        row = {
            "MAC": "02:00:" + ":".join(f"{octet:02x}" for octet in octets),
            "logical_switch": switches[index % len(switches)],
            "locator": rows.locator(rows.random.choice(ips)),
            "ipaddr": "10.%d.%d.%d" % tuple(octets[1:]) if number & 2 else "",
        }
        rows.add(table, row)
        yield rows.take()
