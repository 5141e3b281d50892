"""The rows of the listings in the forms that are made of rows: wide, CSV and JSON lines.

A table is (name, columns, rows). A column is (key, title), a row a list of values. A value is
unknown, None, or one of the classes below, which say how it is sorted and written.
"""

import collections
import unicodedata

from mac_received import Received
from forms import ip_string, mac_display, mac_string, masked_ip_string, vni_string

Table = collections.namedtuple("Table", "name columns rows")


class Name(str):
    def wide(self, _dotted):
        return "".join(map(visible, self)) if self else '""'

    def csv(self):
        quoted = not self or any(c in self for c in ',"\r\n')
        return '"' + self.replace('"', '""') + '"' if quoted else str(self)

    def member(self):
        return '"' + "".join(map(escaped, self)) + '"'

    def order(self):
        return self.encode()


class Number(int):
    def wide(self, _dotted):
        return str(int(self))

    def csv(self):
        return str(int(self))

    member = csv

    def order(self):
        return int(self)


class Vni(Number):
    def wide(self, dotted):
        return vni_string(self, dotted)


class Mac(Number):
    def wide(self, _dotted):
        return mac_display(self)

    def csv(self):
        return mac_string(self)

    def member(self):
        return f'"{self.csv()}"'


class Address(tuple):
    """An IP address, (4 or 6, number)."""

    text = staticmethod(ip_string)

    def wide(self, _dotted):
        return self.text(self)

    def csv(self):
        return self.text(self)

    def member(self):
        return f'"{self.text(self)}"'

    def order(self):
        return tuple(self)


class Network(Address):
    """An address or a prefix with its length."""

    text = staticmethod(masked_ip_string)


def ipv4(number):
    return Address((4, number))


def maybe(kind, value):
    """Nothing is published where the name, the VLAN or the address is empty or absent."""
    return kind(value) if value else None


def escaped(character):
    """The character in a JSON string; control characters have the long escape."""
    if character in '"\\':
        return "\\" + character
    return f"\\u{ord(character):04x}" if character < " " else character


def visible(character):
    """The character, or the escapes of its bytes if a terminal does not show it."""
    point = ord(character)
    control = point < 0x20 or 0x7F <= point < 0xA0
    invisible = (
        0x200B <= point <= 0x200F
        or 0x202A <= point <= 0x202E
        or 0x2066 <= point <= 0x2069
        or point == 0xFEFF
    )
    if control or invisible:
        return "".join(f"\\x{byte:02x}" for byte in character.encode())
    return character


# The rows of what reference.py collects.

SOURCE = ("source", "Source")
VNI = ("vni", "VNI")
MAC = ("macAddr", "Mac Address")
VTEP = ("vtepIp", "VTEP")
MOVES = ("moveCount", "Moves")
TYPE = ("vtepIpListType", "Type")


def unicast(tables):
    for mac, (vtep, moves) in sorted(tables["unicast"].items()):
        yield [Mac(mac), ipv4(vtep), Number(moves)]


def flood(tables, advertised):
    for kind, list_type in ("multipath", "sendToAny"), ("flood", "sendToAll"):
        for mac, vteps in sorted(tables[kind].items()):
            if advertised and kind == "flood" and mac in tables["multipath"]:
                continue
            listed = [ipv4(vtep) for vtep in sorted(vteps)]
            for vtep in listed or ([None] if advertised else []):
                yield [Mac(mac), vtep, Name(list_type)]


def mac_received(received):
    rows = [], []
    for directory in received.switches, received.others:
        for name, vnis in sorted(directory.items()):
            for vni, tables in sorted(vnis.items()):
                first = [Name(name), Vni(vni)]
                rows[0].extend(first + row for row in unicast(tables))
                rows[1].extend(first + row for row in flood(tables, False))
    return [
        Table("mac", [SOURCE, VNI, MAC, VTEP, MOVES], rows[0]),
        Table("flood", [SOURCE, VNI, MAC, VTEP, TYPE], rows[1]),
    ]


def mac_advertised(vnis):
    rows = [], []
    for vni, tables in sorted(vnis.items()):
        rows[0].extend([Vni(vni), *row] for row in unicast(tables))
        rows[1].extend([Vni(vni), *row] for row in flood(tables, True))
    return [
        Table("mac", [VNI, MAC, VTEP, MOVES], rows[0]),
        Table("flood", [VNI, MAC, VTEP, TYPE], rows[1]),
    ]


ARP = [
    VNI,
    ("ipAddress", "IP Address"),
    ("macAddress", "MAC Address"),
    ("changes", "Changes"),
    ("preference", "Preference"),
]


def vni_number(text):
    """The VNI of a text that is decimal or dotted."""
    parts = [int(part) for part in text.split(".")]
    return parts[0] if len(parts) == 1 else parts[0] << 16 | parts[1] << 8 | parts[2]


def bindings(tables):
    for vni, table in sorted(tables.items()):
        for ip, (mac, preference, changes) in sorted(table.items()):
            yield [Vni(vni_number(vni)), Address(ip), Mac(mac), Number(changes), Number(preference)]


def arp_received(switches):
    rows = []
    for name, tables in sorted(switches.items()):
        rows.extend([Name(name), *row] for row in bindings(tables))
    return [Table("arp", [("switchId", "Switch"), *ARP], rows)]


def arp_advertised(tables):
    return [Table("arp", ARP, list(bindings(tables)))]


ROUTER = ("router", "Name")
SWITCH = ("switchId", "Switch")
PORT_IP = ("ipAddress", "IP Address")
PORT_MAC = ("mac", "MAC Address")


def router_map(by_router):
    rows = [
        [Name(name), Address(vtep), Name(switch)]
        for name, switches in sorted(by_router.items())
        for switch, vtep in sorted(switches.items())
    ]
    return [Table("map", [ROUTER, VTEP, SWITCH], rows)]


def detail(routers):
    ports, uplinks = [], []
    for name, (ip_ports, uplink_ports) in sorted(routers.items()):
        for ip, port in sorted(ip_ports.items()):
            vtep = maybe(Address, port.vtep)
            ports.append([Name(name), Network(ip), Vni(port.vni), Mac(port.mac), vtep])
        for ip, uplink in sorted(uplink_ports.items()):
            for port in sorted(uplink.ports) or [None]:
                uplinks.append(
                    [
                        Name(name),
                        Network(ip),
                        maybe(Name, uplink.switch),
                        maybe(Number, uplink.vlan),
                        None if port is None else Name(port),
                        Mac(uplink.mac),
                        maybe(Address, uplink.vtep),
                    ]
                )
    return [
        Table("ports", [ROUTER, PORT_IP, VNI, PORT_MAC, VTEP], ports),
        Table(
            "uplinks",
            [ROUTER, PORT_IP, SWITCH, ("vlan", "Vlan"), ("port", "Port"), PORT_MAC, VTEP],
            uplinks,
        ),
    ]


def routes(by_router):
    rows = []
    for name, table in sorted(by_router.items()):
        for prefix, nexthops in sorted(table.items()):
            for nexthop in [Address(ip) for ip in sorted(nexthops)] or [None]:
                rows.append([Name(name), Network(prefix), nexthop])
    return [Table("routes", [ROUTER, ("prefix", "Prefix"), ("nexthop", "Nexthop")], rows)]


TABLES = {
    "mac received": mac_received,
    "mac advertised": mac_advertised,
    "arp received": arp_received,
    "arp advertised": arp_advertised,
    "router map": router_map,
    "router detail": detail,
    "router routes": routes,
}

# The columns do not depend on what was collected.
NOTHING = {"mac received": Received({}, "", None)}
COLUMNS = {
    command: {table.name: table.columns for table in tables(NOTHING.get(command, {}))}
    for command, tables in TABLES.items()
}


# What of the rows is shown

Choice = collections.namedtuple("Choice", "form table columns sort top count header dotted")


def place(table, key):
    """The place of a column; None if the table lacks it."""
    keys = [column[0] for column in table.columns]
    return keys.index(key) if key in keys else None


def chosen(tables, choice):
    """The tables that have all named columns, arranged."""
    named = choice.columns + [key.lstrip("-") for key in choice.sort]
    shown = [
        table
        for table in tables
        if choice.table in ("", table.name) and None not in [place(table, key) for key in named]
    ]
    return [arranged(table, choice) for table in (shown[:1] if choice.form == "csv" else shown)]


def arranged(table, choice):
    rows = list(table.rows)
    for key in reversed(choice.sort):
        descending = key.startswith("-")
        at = place(table, key.lstrip("-"))
        known = [row for row in rows if row[at] is not None]
        # Also when it sorts in reverse, sort() keeps equal rows in their order.
        known.sort(key=lambda row, at=at: row[at].order(), reverse=descending)
        rows = known + [row for row in rows if row[at] is None]
    rows = rows[: choice.top]
    places = [place(table, key) for key in choice.columns] or range(len(table.columns))
    columns = [table.columns[at] for at in places]
    return Table(table.name, columns, [[row[at] for at in places] for row in rows])


# The forms


def columns_wide(character):
    if unicodedata.east_asian_width(character) in "WF":
        return 2
    return 0 if unicodedata.category(character) in ("Mn", "Me", "Cf") else 1


def width(text):
    return sum(map(columns_wide, text))


def wide(table, choice):
    lines = [[title for _, title in table.columns]] if choice.header else []
    lines += [
        ["-" if value is None else value.wide(choice.dotted) for value in row] for row in table.rows
    ]
    widths = [max(map(width, column)) for column in zip(*lines)]
    numbers = {"moveCount", "changes", "preference", "vlan", "count"}
    right = [key in numbers for key, _ in table.columns]
    for line in lines:
        cells = []
        for at, (text, total) in enumerate(zip(line, widths)):
            blanks = " " * (total - width(text))
            last = at + 1 == len(line)
            cells.append(blanks + text if right[at] else text if last else text + blanks)
        yield "  ".join(cells) + "\n"


def csv(table, choice):
    if choice.header:
        yield ",".join(key for key, _ in table.columns) + "\r\n"
    for row in table.rows:
        yield ",".join("" if value is None else value.csv() for value in row) + "\r\n"


def jsonl(table, _choice):
    for row in table.rows:
        members = [f'"table":"{table.name}"']
        for (key, _), value in zip(table.columns, row):
            members.append(f'"{key}":' + ("null" if value is None else value.member()))
        yield "{" + ",".join(members) + "}\n"


def counted(tables, choice):
    columns = [("table", "Table"), ("count", "Count")]
    rows = [[Name(table.name), Number(len(table.rows))] for table in tables]
    if choice.form == "wide":
        return [Table("", columns, rows)]
    return [Table(table.name, columns[1:], [row[1:]]) for table, row in zip(tables, rows)]


def listing(command, collection, choice):
    """What vxshow prints, as bytes."""
    tables = chosen(TABLES[command](collection), choice)
    if choice.count:
        tables = counted(tables, choice)
    form = {"wide": wide, "csv": csv, "jsonl": jsonl}[choice.form]
    between = "\n" if choice.form == "wide" else ""
    return between.join("".join(form(table, choice)) for table in tables).encode()
