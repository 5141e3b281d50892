"""`vxshow router map` lists which switches carry which router, and through which VTEP.

What is collected is {router: {switch identifier: VTEP}}.
"""

import router
from forms import ip_string, read_ip, read_mac

PATH_PREFIX = "vxlancontroller/version2/logicalRouter/"
KIND = "Vxlan"

ROW = b"%-46.46b %-15.15b %-17.17b\n"


def selected(routers, vtep_filter):
    """The identifiers of the known switches that the filter selects."""
    known = routers.get("switches", {})
    if not vtep_filter:
        return set(known)
    wanted = set()
    for text, vtep in routers.get("vteps", {}).items():
        version, number = read_ip(text)
        if version == 4 and number in vtep_filter:
            wanted.update(vtep.get("switches", []))
    return known.keys() & wanted


def switch_map(routers, vtep_filter):
    """{switch identifier: VTEP}, without the switches that have no active VTEP."""
    active = {read_ip(ip) for ip, vtep in routers.get("vteps", {}).items() if vtep["active"]}
    result = {}
    for switch_id in selected(routers, vtep_filter):
        vteps = map(read_ip, routers["switches"][switch_id].get("vteps", []))
        # If several are active, the first one; their order has no meaning.
        vtep = next((ip for ip in vteps if ip in active), None)
        if vtep is not None:
            result[switch_id] = vtep
    return result


def system_of(switch_id):
    """What a switch publishes is found by its Ethernet address; None if it has none."""
    try:
        return read_mac(switch_id)
    except ValueError:
        return None


def router_names(published):
    """Yield the names of the routers that one switch publishes."""
    for path, kind in published.items():
        if kind == KIND and path.startswith(PATH_PREFIX):
            yield path[len(PATH_PREFIX) :]


def switches_by_router(routers, router_filter, vtep_filter=()):
    systems = {read_mac(text): paths for text, paths in routers.get("published", {}).items()}
    result = {}
    for switch_id, vtep in switch_map(routers, vtep_filter).items():
        for name in router_names(systems.get(system_of(switch_id), {})):
            if router.wanted_name(router_filter, name):
                result.setdefault(name, {})[switch_id] = vtep
    return result


def collect(state, wanted):
    routers = state.get("routers", {})
    return switches_by_router(routers, wanted.router, wanted.vtep)


def text(by_router, _dotted):
    lines = []
    for name, switches in sorted(by_router.items()):
        columns = [(ip_string(vtep), switch_id) for switch_id, vtep in sorted(switches.items())]
        lines.extend(router.named_rows(ROW, name, columns))
    header = router.header(ROW, "Name", "VTEP", "Switch")
    return header + b"".join(lines) + router.total(len(lines))


# All revisions are the same.


def content(by_router, _dotted, _revision):
    return {
        "logicalRouterMap": {
            name: {
                "switches": [
                    {"switchId": switch_id, "vtepIp": ip_string(vtep)}
                    for switch_id, vtep in sorted(switches.items())
                ]
            }
            for name, switches in sorted(by_router.items())
        }
    }
