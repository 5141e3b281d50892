"""The rows of live sources: databases, whose client is a script that prints an answer."""

import json
import os

from row import Row

ROWS = []


def uuid(kind, number):
    return ["uuid", f"{kind:08x}-0000-4000-8000-{number:012x}"]


NETWORK, LOCATOR, PORT = range(3)


def answer(switch, macs):
    """What a database says, asked for everything, whose switch has these MACs in one VNI."""
    vlans = ["map", [[10, uuid(NETWORK, 0)]]]
    vtep = f"10.0.{switch // 250}.{switch % 250 + 1}"
    tables = [
        [{"_uuid": uuid(NETWORK, 0), "name": "red", "tunnel_key": 10}],
        [{"_uuid": uuid(LOCATOR, 0), "dst_ip": vtep, "tunnel_key": ["set", []]}],
        [],
        [{"name": f"leaf{switch}", "ports": uuid(PORT, 0), "tunnel_ips": vtep}],
        [{"_uuid": uuid(PORT, 0), "name": "eth1", "vlan_bindings": vlans}],
        *[[] for _ in range(5)],
        [{"MAC": mac, "ipaddr": "", "locator": uuid(LOCATOR, 0), "logical_switch": uuid(NETWORK, 0)}
         for mac in macs],
        [],
    ]
    return json.dumps([{"rows": rows} for rows in tables])


def mac(number):
    return (0x020000000000 + number * 0x9E3779B1 % (1 << 32)).to_bytes(6, "big").hex(":")


def sources(folder, answers):
    """Writes the answers, a client that prints them, and the fabric file that names them all."""
    client = os.path.join(folder, "ovsdb-client")
    with open(client, "w", encoding="utf-8") as file:
        file.write('#!/bin/sh\nexec cat "${3#unix:}"\n')
    os.chmod(client, 0o700)
    fabric = os.path.join(folder, "fabric.toml")
    with open(fabric, "w", encoding="utf-8") as file:
        for number, text in enumerate(answers):
            path = os.path.join(folder, f"answer{number}")
            with open(path, "w", encoding="utf-8") as answered:
                answered.write(text)
            file.write(
                f'[[source]]\nkind = "hardware_vtep"\nname = "db{number}"\ntime_limit = 600\n'
                f'remotes = ["unix:{path}"]\n'
            )
    return fabric


def dimension(smallest, *commands):
    """The function returns the answers of all databases."""

    def add(make):
        name = make.__name__.replace("_", " ").replace("mac", "MAC")
        for written in commands:

            def command(size, program, folder, written=written):
                return [program, "--fabric", sources(folder, make(size)), *written.split()]

            ROWS.append(Row(name, written, smallest, command))
        return make

    return add


@dimension(500, "capture -")
def macs_of_a_live_database(size):
    return [answer(0, map(mac, range(size)))]


@dimension(5, "capture -")
def live_databases(size):
    return [answer(i, [mac(i)]) for i in range(size)]


@dimension(5, "capture -")
def live_databases_with_the_same_macs(size):
    return [answer(i, map(mac, range(50))) for i in range(size)]
