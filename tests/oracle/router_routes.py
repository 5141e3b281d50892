"""`vxshow router routes` lists the routes of every router with their nexthops.

What is collected is {router: {(address, length): {nexthop}}}. A router is present only if one
of its routes is.
"""

import router
from forms import IP_BITS, ip_string, masked_ip_string, read_ip, read_prefix

ROW = b"%-11.11b %-18.18b %-49.49b\n"

NEXTHOPS_PER_ROW = 3


def overlap(one, other):
    """Whether one of the two prefixes contains the other."""
    ((one_version, one_number), one_length), ((version, number), length) = one, other
    if one_version != version:
        return False
    return (one_number ^ number) >> (IP_BITS[version] - min(one_length, length)) == 0


def collect(state, wanted):
    result = {}
    for name, status in state.get("routers", {}).get("status", {}).items():
        if router.wanted_name(wanted.router, name):
            for prefix_text, nexthops in status.get("routes", {}).items():
                prefix = read_prefix(prefix_text)
                if wanted.prefix is None or overlap(wanted.prefix, prefix):
                    result.setdefault(name, {})[prefix] = set(map(read_ip, nexthops))
    return result


def columns(routes):
    """A route without nexthops takes a row like any other."""
    for prefix, nexthops in sorted(routes.items()):
        prefix_column = masked_ip_string(prefix)
        texts = [ip_string(nexthop) for nexthop in sorted(nexthops)]
        for at in range(0, max(len(texts), 1), NEXTHOPS_PER_ROW):
            yield prefix_column, ", ".join(texts[at : at + NEXTHOPS_PER_ROW])
            prefix_column = ""


def text(by_router, _dotted):
    lines = []
    count = 0
    for name, routes in sorted(by_router.items()):
        count += len(routes)
        lines.extend(router.named_rows(ROW, name, columns(routes)))
    header = router.header(ROW, "Name", "Prefix", "Nexthop")
    return header + b"".join(lines) + router.total(count)


# A route without nexthops has an empty list. All revisions are the same.


def content(by_router, _dotted, _revision):
    return {
        "route": {
            name: {
                "prefix": {
                    masked_ip_string(prefix): {
                        "nexthop": [ip_string(nexthop) for nexthop in sorted(nexthops)]
                    }
                    for prefix, nexthops in sorted(routes.items())
                }
            }
            for name, routes in sorted(by_router.items())
        }
    }
