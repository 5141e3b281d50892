"""The few values, plain and odd, that random states are made of, and how they are picked."""

PLAIN_NAMES = ["leaf1", "leaf2", "leaf10", "Leaf1", "spine-1.example", "00:1c:73:0a:0b:0c"]

ODD_NAMES = [
    "100%",
    "%s%d%n%99999s",
    'he said "leaf"',
    "back\\slash",
    "with blanks  in it",
    "tab\there",
    "line\nbreak",
    "bell\a, escape\x1b, delete\x7f, unit\x1f",
    "</script>&amp;",
    "Blatt-\u00fc\u00f1\u00ee",
    "\u8449\u30b9\u30a4\u30c3\u30c1",
    "\U0001f33f",
    "a-name-of-17-byte",
    "a-name-of-18-bytes",
    "longer-than-every-column-" * 4,
]

# A switch can have the name of a filter keyword or of a source that is not a switch.
CONFUSING_NAMES = ["all", "hsc", "qvx", "evpn", "HSC", "QVX", "EVPN", "switches", "vnis"]

MACS = [
    0x000000000000,
    0x000000000001,
    0x00005E005301,
    0x00005E005302,
    0x00005E005310,
    0x01005E901001,
    0x7FFFFFFFFFFF,
    0x800000000000,
    0xABCDEF012345,
    0xFFFFFFFFFFFF,
]

VNIS = [0, 1, 9, 10, 20, 255, 256, 4095, 4096, 4098, 65535, 65536, 70000, 16777214, 16777215]

VTEPS = [
    "0.0.0.0",
    "1.2.3.4",
    "9.255.255.255",
    "10.0.0.1",
    "10.0.0.2",
    "10.0.0.10",
    "127.0.0.1",
    "128.0.0.1",
    "192.168.100.200",
    "255.255.255.255",
]

# IPv4, and IPv6 with each address in its valid spellings.
ADDRESSES = [
    ["0.0.0.0"],
    ["1.2.3.4"],
    ["9.255.255.255"],
    ["10.0.0.1"],
    ["192.0.2.1"],
    ["192.0.2.250"],
    ["192.168.100.200"],
    ["255.255.255.255"],
    ["::", "0:0:0:0:0:0:0:0", "0::0"],
    ["::1", "0:0:0:0:0:0:0:1", "::0.0.0.1"],
    ["1::", "1:0:0:0:0:0:0:0", "0001::"],
    ["2001:db8::1", "2001:DB8:0::1", "2001:0db8:0000:0000:0000:0000:0000:0001"],
    ["2001:db8:0:1:1:1:1:1", "2001:db8::1:1:1:1:1"],
    ["2001:0:0:1::1", "2001:0:0:1:0:0:0:1", "2001::1:0:0:0:1"],
    ["2001:db8::1:0:0:1", "2001:db8:0:0:1::1"],
    ["2001:db8:1234:5678:9abc:def0:1234:5678", "2001:DB8:1234:5678:9ABC:DEF0:1234:5678"],
    ["64:ff9b::c000:201", "64:ff9b::192.0.2.1"],
    ["::ffff:192.0.2.1", "::FFFF:c000:201", "0:0:0:0:0:ffff:192.0.2.1"],
    ["::ffff:0.0.0.0", "::ffff:0:0"],
    ["::ffff:255.255.255.255", "::ffff:ffff:ffff"],
    ["::fffe:c000:201", "::fffe:192.0.2.1"],
    ["::1:ffff:c000:201", "0:0:0:0:1:ffff:192.0.2.1"],
    ["0:1:1:1:1:1:1:1", "::1:1:1:1:1:1:1"],
    ["1:1:1:1:1:1:1:0", "1:1:1:1:1:1:1::"],
    ["fe80::5eff:fe00:5301", "FE80::5EFF:FE00:5301"],
    ["ff02::1", "ff02:0:0:0:0:0:0:1"],
    ["ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff"],
]


def long_name(rng):
    """A name so long that the printed row is cut near its end, or far longer."""
    if rng.random() < 0.5:
        lengths = [960, 966, 972, 973, 977, 978, 979, 1005, 1022, 1023, 1024, 1101, 2500]
        return "x" * rng.choice(lengths)
    # Two bytes per letter after an odd or even start, so that the cut can split a letter.
    return "x" * rng.randint(1, 2) + "\u00e9" * rng.choice([480, 486, 510, 511, 600])


def random_name(rng):
    chance = rng.random()
    if chance < 0.45:
        return rng.choice(PLAIN_NAMES)
    if chance < 0.80:
        return rng.choice(ODD_NAMES)
    return rng.choice(CONFUSING_NAMES) if chance < 0.93 else long_name(rng)


def some_of(rng, values, most):
    """Up to `most` different values, in no particular order."""
    return rng.sample(values, rng.randint(0, min(most, len(values))))


def spelled_mac(rng, mac):
    """A MAC in one of its three valid forms, in either case."""
    digits = f"{mac:012x}"
    step, separator = rng.choice([(2, ":"), (2, ":"), (2, "-"), (4, ".")])
    text = separator.join(digits[i : i + step] for i in range(0, 12, step))
    return text.upper() if rng.random() < 0.3 else text
