"""`vxshow router detail` lists the IP ports and the uplink ports of every router.

What is collected is {router: (ports, uplinks)}: ports are {(address, length): Port}, uplinks
{(address, length): Uplink}. A router without either is present all the same.
"""

import collections

import router
import router_map
from forms import ip_string, mac_string, masked_ip_string, read_ip, read_mac, read_masked_ip
from forms import vni_string

Port = collections.namedtuple("Port", "vni mac vtep")
Uplink = collections.namedtuple("Uplink", "vlan mac switch vtep ports")

PORT_ROW = b"%-49.49b %-18.18b %-11.11b\n"
UPLINK_ROW = b"%-11.11b %-18.18b %-17.17b %-4.4b %-30.30b\n"

PORTS_PER_ROW = 2


def read_vtep(entry):
    return read_ip(entry["vtep"]) if "vtep" in entry else None


def vtep_string(vtep):
    return "" if vtep is None else ip_string(vtep)


def read_port(entry):
    return Port(entry["vni"], read_mac(entry["mac"]), read_vtep(entry))


def read_uplink(entry, switch):
    ports = entry.get("ports", [])
    # If there are several VLANs, the first one; their order has no meaning.
    vlan = ports[0].get("vlan", 0) if ports else 0
    names = {port["port"] for port in ports}
    return Uplink(vlan, read_mac(entry["mac"]), switch, read_vtep(entry), names)


def collect(state, wanted):
    routers = state.get("routers", {})
    switches = router_map.switches_by_router(routers, wanted.router)
    result = {}
    for name, status in routers.get("status", {}).items():
        if router.wanted_name(wanted.router, name):
            first_switch = min(switches.get(name, {}), default="")
            ports = {
                read_masked_ip(ip): read_port(entry)
                for ip, entry in status.get("ports", {}).items()
            }
            uplinks = {
                read_masked_ip(ip): read_uplink(entry, first_switch)
                for ip, entry in status.get("uplinks", {}).items()
            }
            result[name] = ports, uplinks
    return result


# Text


def port_columns(ports, dotted):
    for ip, port in sorted(ports.items()):
        yield masked_ip_string(ip), vni_string(port.vni, dotted)


def uplink_columns(uplinks):
    """An uplink without ports has no row; a separator follows every port but the last."""
    for ip, uplink in sorted(uplinks.items()):
        columns = masked_ip_string(ip), uplink.switch, str(uplink.vlan)
        names = sorted(uplink.ports)
        ended = [name + ", " for name in names[:-1]] + names[-1:]
        for at in range(0, len(ended), PORTS_PER_ROW):
            yield *columns, "".join(ended[at : at + PORTS_PER_ROW])
            columns = "", "", ""


def text(routers, dotted):
    port_lines, uplink_lines = [], []
    port_count = uplink_count = 0
    for name, (ports, uplinks) in sorted(routers.items()):
        port_count += len(ports)
        uplink_count += len(uplinks)
        port_lines.extend(router.named_rows(PORT_ROW, name, port_columns(ports, dotted)))
        uplink_lines.extend(router.named_rows(UPLINK_ROW, name, uplink_columns(uplinks)))
    return b"".join(
        [
            router.header(PORT_ROW, "Name", "IP Address", "VNI"),
            *port_lines,
            router.total(port_count),
            b"Uplink ports:\n",
            router.header(UPLINK_ROW, "Name", "IP Address", "Switch", "Vlan", "Ports"),
            *uplink_lines,
            router.total(uplink_count),
        ]
    )


# JSON. A VNI is a number here, dotted or not, and all revisions are the same.


def port_content(port):
    return {"vni": port.vni, "mac": mac_string(port.mac), "vtepIp": vtep_string(port.vtep)}


def uplink_content(uplink):
    return {
        "vlan": uplink.vlan,
        "mac": mac_string(uplink.mac),
        "switchId": uplink.switch,
        "vtepIp": vtep_string(uplink.vtep),
        "ports": sorted(uplink.ports),
    }


def content(routers, _dotted, _revision):
    return {
        "router": {
            name: {
                "ipPort": {
                    masked_ip_string(ip): port_content(port) for ip, port in sorted(ports.items())
                },
                "uplinkPort": {
                    masked_ip_string(ip): uplink_content(uplink)
                    for ip, uplink in sorted(uplinks.items())
                },
            }
            for name, (ports, uplinks) in sorted(routers.items())
        }
    }
