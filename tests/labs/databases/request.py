"""The transaction that reads all the data that a show command can need."""

from databases import DATABASE, compact

# Column tunnel_key of Physical_Locator needs schema 1.5.0 or later.
NEEDED = {
    "Logical_Switch": ["_uuid", "name", "tunnel_key"],
    "Physical_Locator": ["_uuid", "dst_ip", "tunnel_key"],
    "Physical_Locator_Set": ["_uuid", "locators"],
    "Physical_Switch": ["name", "tunnel_ips", "ports"],
    "Physical_Port": ["_uuid", "name", "vlan_bindings"],
    "Logical_Router": ["name", "switch_binding", "static_routes"],
    "Mcast_Macs_Local": ["MAC", "logical_switch", "locator_set", "ipaddr"],
    "Mcast_Macs_Remote": ["MAC", "logical_switch", "locator_set", "ipaddr"],
    "Ucast_Macs_Local": ["MAC", "logical_switch", "locator", "ipaddr"],
    "Ucast_Macs_Remote": ["MAC", "logical_switch", "locator", "ipaddr"],
}


def request():
    """One operation per line, for readability; still a single argument of `ovsdb-client query`."""
    selects = (
        compact({"op": "select", "table": table, "where": [], "columns": columns})
        for table, columns in NEEDED.items()
    )
    return f'["{DATABASE}",\n' + ",\n".join(selects) + "]"
