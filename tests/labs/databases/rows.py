"""Rows in the notation of RFC 7047, and a class to make them."""

import random
import uuid


def ref(row_uuid):
    return ["uuid", row_uuid]


def a_set(values):
    return ["set", list(values)]


def a_map(pairs):
    return ["map", [[key, value] for key, value in pairs.items()]]


class Rows:
    """Rows in groups, each of which has to be inserted in one transaction: a locator, locator
    set, port or physical switch that nothing refers to at the end of its transaction is
    removed by the server immediately. The same seed gives the same identities."""

    def __init__(self, seed):
        self.random = random.Random(seed)
        self.locators = {}
        self.group = []

    def add(self, table, row):
        row_uuid = str(uuid.UUID(int=self.random.getrandbits(128), version=4))
        self.group.append((table, row_uuid, row))
        return row_uuid

    def locator(self, ip, key=None):
        if (ip, key) not in self.locators:
            row = {"encapsulation_type": "vxlan_over_ipv4", "dst_ip": ip}
            if key is not None:
                row["tunnel_key"] = key
            self.locators[ip, key] = self.add("Physical_Locator", row)
        return ref(self.locators[ip, key])

    def locator_set(self, ips, key=None):
        locators = a_set(self.locator(ip, key) for ip in ips)
        return ref(self.add("Physical_Locator_Set", {"locators": locators}))

    def take(self):
        group, self.group = self.group, []
        return group
