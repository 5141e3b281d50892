"""How values are parsed and formatted, on the command line, in snapshots and in listings.

Addresses and VNIs are plain integers here and sort as numbers. Where both kinds of IP address
can occur, an address is (4 or 6, number); an address with a mask, or a prefix, is (address,
length). Names sort by code point, which for UTF-8 is byte order.
"""

import functools
import ipaddress
import json
import re

LAST_VNI = 0xFFFFFF

MAC_FORMS = re.compile(
    r"[0-9a-f]{2}(:[0-9a-f]{2}){5}"
    r"|[0-9a-f]{2}(-[0-9a-f]{2}){5}"
    r"|[0-9a-f]{4}(\.[0-9a-f]{4}){2}",
    re.IGNORECASE,
)
MAC_SEPARATORS = str.maketrans("", "", ":-.")

# A number as strtol and std::stoi parse it: they ignore what follows.
LEADING_NUMBER = re.compile(r"[ \t\n\v\f\r]*([+-]?[0-9]+)")

IP_BITS = {4: 32, 6: 128}

# After the slash of an address with mask; the kind of address sets the limit.
MASK_LENGTH = re.compile(r"0|[1-9][0-9]{0,2}")

# The 96 bits before an IPv4 address that is mapped into IPv6.
MAPPED_IPV4 = 0xFFFF


class Failure(Exception):
    """vxshow must print nothing but one line on standard error, and exit with 1."""


# Parsing


def read_mac(text):
    if not MAC_FORMS.fullmatch(text):
        raise ValueError(f"not an Ethernet address: {text}")
    return int(text.translate(MAC_SEPARATORS), 16)


@functools.lru_cache(maxsize=None)
def read_ipv4(text):
    return int(ipaddress.IPv4Address(text))


# A million routes share few nexthops; addresses that are a million are each parsed once.
@functools.lru_cache(maxsize=4096)
def read_ip(text):
    address = ipaddress.IPv6Address(text) if ":" in text else ipaddress.IPv4Address(text)
    return address.version, int(address)


def read_masked_ip(text):
    """(address, length); host bits are allowed."""
    address_text, slash, length = text.partition("/")
    address = read_ip(address_text)
    if not slash or not MASK_LENGTH.fullmatch(length) or int(length) > IP_BITS[address[0]]:
        raise ValueError(f"not an address with mask: {text}")
    return address, int(length)


def read_prefix(text):
    """(address, length); host bits must be zero."""
    (version, number), length = read_masked_ip(text)
    host_bits = IP_BITS[version] - length
    network = number >> host_bits << host_bits
    if network != number:
        meant = masked_ip_string(((version, network), length))
        raise ValueError(f"not a prefix: {text}, but {meant} is one")
    return (version, number), length


def read_vni(text):
    if re.fullmatch(r"[0-9]{1,3}(\.[0-9]{1,3}){2}", text):
        high, middle, low = map(int, text.split("."))
        if max(high, middle, low) > 255:
            raise ValueError(f"not a VNI: {text}")
        return high << 16 | middle << 8 | low
    if not re.fullmatch(r"[0-9]{1,8}", text) or int(text) > LAST_VNI:
        raise ValueError(f"not a VNI: {text}")
    return int(text)


def entry_vni(name, without_number=None):
    """The VNI of an entry of the advertised directory, whose name can be any text.

    A name that does not start with a number means `without_number`; without it, it is a failure.
    """
    found = LEADING_NUMBER.match(name)
    number = int(found[1]) if found else without_number
    if number is None:
        raise Failure(f"not a number: {name!r}")
    if not 0 <= number <= LAST_VNI:
        raise Failure(f"not a VNI: {name!r}")
    return number


# Formatting


def mac_string(mac):
    digits = f"{mac:012x}"
    return ":".join(digits[i : i + 2] for i in range(0, 12, 2))


def mac_display(mac):
    digits = f"{mac:012x}"
    return ".".join(digits[i : i + 4] for i in range(0, 12, 4))


@functools.lru_cache(maxsize=None)
def ipv4_string(number):
    return str(ipaddress.IPv4Address(number))


@functools.lru_cache(maxsize=4096)
def ip_string(ip):
    version, number = ip
    if version == 4:
        return str(ipaddress.IPv4Address(number))
    if number >> 32 == MAPPED_IPV4:
        return f"::ffff:{ipaddress.IPv4Address(number & 0xFFFFFFFF)}"
    return str(ipaddress.IPv6Address(number))


def masked_ip_string(masked):
    address, length = masked
    return f"{ip_string(address)}/{length}"


def vni_string(vni, dotted):
    return f"{vni >> 16}.{vni >> 8 & 255}.{vni & 255}" if dotted else str(vni)


def printed(row, *columns):
    """The row with these texts in its columns; widths and precisions count bytes."""
    return row % tuple(column.encode() for column in columns)


def signed32(number):
    return number - 2**32 if number >= 2**31 else number


def document(content, pretty):
    shape = {"indent": 2} if pretty else {"separators": (",", ":")}
    return json.dumps(content, ensure_ascii=False, **shape).encode() + b"\n"
