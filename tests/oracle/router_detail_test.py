"""The reference for `router detail` against outputs written out by hand."""

import unittest

import exact
import router_detail
from exact import Exact
from forms import printed

PORT_HEADER = (
    "--------------------------------------------------------------------------------\n"
    "Name                                              IP Address         VNI        \n"
    "--------------------------------------------------------------------------------\n"
)

UPLINK_HEADER = (
    "Uplink ports:\n"
    "--------------------------------------------------------------------------------\n"
    "Name        IP Address         Switch            Vlan Ports                         \n"
    "--------------------------------------------------------------------------------\n"
)

TOTAL = "\nTotal entries for this criterion: "

PREFIX = "vxlancontroller/version2/logicalRouter/"

LEAF1, LEAF2 = "00:1c:73:00:00:01", "00:1c:73:00:00:02"

# The first switch is no Ethernet address, and so publishes nothing.
SWITCHES = {
    "switches": {
        LEAF2: {"vteps": ["10.0.0.2"]},
        LEAF1: {"vteps": ["10.0.0.1"]},
        "00:00": {"vteps": ["10.0.0.1"]},
    },
    "vteps": {
        "10.0.0.1": {"active": True, "switches": [LEAF1]},
        "10.0.0.2": {"active": True, "switches": [LEAF2]},
    },
    "published": {
        LEAF2: {PREFIX + "red": "Vxlan"},
        LEAF1: {PREFIX + "red": "Vxlan"},
    },
}

RED = {
    "ports": {
        "2001:DB8::1/64": {"vni": 4098, "mac": "00-1C-73-00-00-AA", "vtep": "2001:db8::ff"},
        "10.1.0.1/24": {"vni": 20, "mac": "00:1c:73:00:00:aa", "vtep": "10.0.0.1"},
        "9.1.0.1/24": {"vni": 10, "mac": "00:1c:73:00:00:aa"},
    },
    "uplinks": {
        "192.0.2.1/30": {
            "mac": "001c.7300.00bb",
            "vtep": "10.0.0.1",
            "ports": [
                {"port": "Ethernet2", "vlan": 100},
                {"port": "Ethernet1", "vlan": 100},
                {"port": "Ethernet10", "vlan": 100},
            ],
        }
    },
}

BLUE = {
    "ports": {"10.1.0.1/24": {"vni": 30, "mac": "00:1c:73:00:00:aa", "vtep": "10.0.0.2"}},
    "uplinks": {"198.51.100.1/30": {"mac": "00:1c:73:00:00:bb", "ports": [{"port": "Et1"}]}},
}

ROUTERS = {**SWITCHES, "status": {"red": RED, "blue": BLUE}}


def listed(routers, *words):
    return exact.run({"routers": routers}, "router", "detail", *words)


def uplink(*names, vlan=100):
    ports = [{"port": name, "vlan": vlan} for name in names]
    return {"mac": "00:1c:73:00:00:bb", "vtep": "10.0.0.1", "ports": ports}


def uplinks_of_red(**uplinks):
    """Router red with the uplinks u1, u2, ... at 192.0.2.1/24, 192.0.2.2/24, ..."""
    by_ip = {f"192.0.2.{name[1:]}/24": value for name, value in uplinks.items()}
    return {**SWITCHES, "status": {"red": {"uplinks": by_ip}}}


def lines(rows):
    return "".join(row + "\n" for row in rows)


class Listed(Exact):
    def check_ports(self, routers, count, *rows, words=()):
        table = PORT_HEADER + lines(rows) + f"{TOTAL}{count}\n\n"
        found, title, _ = listed(routers, *words).partition("Uplink ports:\n")
        self.assertEqual((found, title), (table, "Uplink ports:\n"))

    def check_uplinks(self, routers, count, *rows, words=()):
        table = UPLINK_HEADER + lines(rows) + f"{TOTAL}{count}\n\n"
        _, title, found = listed(routers, *words).partition("Uplink ports:\n")
        self.assertEqual(title + found, table)


class Forms(Listed):
    def test_text(self):
        self.assertEqual(
            listed(ROUTERS),
            "--------------------------------------------------------------------------------\n"
            "Name                                              IP Address         VNI        \n"
            "--------------------------------------------------------------------------------\n"
            "blue                                              10.1.0.1/24        30         \n"
            "red                                               9.1.0.1/24         10         \n"
            "                                                  10.1.0.1/24        20         \n"
            "                                                  2001:db8::1/64     4098       \n"
            "\n"
            "Total entries for this criterion: 4\n"
            "\n"
            "Uplink ports:\n"
            "--------------------------------------------------------------------------------\n"
            "Name        IP Address         Switch            Vlan Ports                         \n"
            "--------------------------------------------------------------------------------\n"
            "blue        198.51.100.1/30                      0    Et1                           \n"
            "red         192.0.2.1/30       00:1c:73:00:00:01 100  Ethernet1, Ethernet10,        \n"
            "                                                      Ethernet2                     \n"
            "\n"
            "Total entries for this criterion: 2\n"
            "\n",
        )

    def test_json(self):
        self.assertEqual(
            listed(ROUTERS, "--json"),
            '{"router":{'
            '"blue":{"ipPort":{'
            '"10.1.0.1/24":{"vni":30,"mac":"00:1c:73:00:00:aa","vtepIp":"10.0.0.2"}},'
            '"uplinkPort":{'
            '"198.51.100.1/30":{"vlan":0,"mac":"00:1c:73:00:00:bb","switchId":"","vtepIp":"",'
            '"ports":["Et1"]}}},'
            '"red":{"ipPort":{'
            '"9.1.0.1/24":{"vni":10,"mac":"00:1c:73:00:00:aa","vtepIp":""},'
            '"10.1.0.1/24":{"vni":20,"mac":"00:1c:73:00:00:aa","vtepIp":"10.0.0.1"},'
            '"2001:db8::1/64":{"vni":4098,"mac":"00:1c:73:00:00:aa","vtepIp":"2001:db8::ff"}},'
            '"uplinkPort":{'
            '"192.0.2.1/30":{"vlan":100,"mac":"00:1c:73:00:00:bb",'
            '"switchId":"00:1c:73:00:00:01","vtepIp":"10.0.0.1",'
            '"ports":["Ethernet1","Ethernet10","Ethernet2"]}}}}}\n',
        )

    def test_pretty(self):
        routers = {"status": {"blue": BLUE, "empty": {}}}
        self.assertEqual(
            listed(routers, "--pretty"),
            "{\n"
            '  "router": {\n'
            '    "blue": {\n'
            '      "ipPort": {\n'
            '        "10.1.0.1/24": {\n'
            '          "vni": 30,\n'
            '          "mac": "00:1c:73:00:00:aa",\n'
            '          "vtepIp": "10.0.0.2"\n'
            "        }\n"
            "      },\n"
            '      "uplinkPort": {\n'
            '        "198.51.100.1/30": {\n'
            '          "vlan": 0,\n'
            '          "mac": "00:1c:73:00:00:bb",\n'
            '          "switchId": "",\n'
            '          "vtepIp": "",\n'
            '          "ports": [\n'
            '            "Et1"\n'
            "          ]\n"
            "        }\n"
            "      }\n"
            "    },\n"
            '    "empty": {\n'
            '      "ipPort": {},\n'
            '      "uplinkPort": {}\n'
            "    }\n"
            "  }\n"
            "}\n",
        )

    def test_without_status_two_headers_and_two_totals_stand(self):
        nothing = PORT_HEADER + TOTAL + "0\n\n" + UPLINK_HEADER + TOTAL + "0\n\n"
        for routers in ({}, SWITCHES, {"status": {}}):
            self.assertEqual(listed(routers), nothing)
            self.assertEqual(listed(routers, "--json"), '{"router":{}}\n')
        self.assertEqual(exact.run({}, "router", "detail"), nothing)

    def test_a_router_filter_that_matches_nothing(self):
        nothing = PORT_HEADER + TOTAL + "0\n\n" + UPLINK_HEADER + TOTAL + "0\n\n"
        for name in ("green", "Red", "re", "red "):
            self.assertEqual(listed(ROUTERS, "--router", name), nothing)
            self.assertEqual(listed(ROUTERS, "--router", name, "--json"), '{"router":{}}\n')

    def test_by_router(self):
        row = "blue                                              10.1.0.1/24        30         "
        self.check_ports(ROUTERS, 1, row, words=["--router", "blue"])
        row = "blue        198.51.100.1/30                      0    Et1                           "
        self.check_uplinks(ROUTERS, 1, row, words=["--router", "blue"])

    def test_dotted_vnis_stand_in_text_alone(self):
        row = "red                                               10.0.0.1/8         0.16.2     "
        port = {"vni": 4098, "mac": "00:1c:73:00:00:aa"}
        routers = {"status": {"red": {"ports": {"10.0.0.1/8": port}}}}
        self.check_ports(routers, 1, row, words=["--dotted"])
        self.assertEqual(listed(routers, "--dotted", "--json"), listed(routers, "--json"))

    def test_no_revision_differs(self):
        for form in ([], ["--json"], ["--pretty"]):
            usual = listed(ROUTERS, *form)
            for revision in ("0", "1", "3"):
                self.assertEqual(listed(ROUTERS, *form, "--revision", revision), usual)


class Ports(Listed):
    def test_addresses_sort_before_lengths_and_keep_what_the_mask_hides(self):
        port = {"vni": 1, "mac": "00:1c:73:00:00:aa"}
        texts = ["10.0.0.2/8", "10.0.0.1/32", "::1/0", "10.0.0.1/9", "9.0.0.1/31", "10.0.0.1/10"]
        self.check_ports(
            {"status": {"red": {"ports": {text: port for text in texts}}}},
            6,
            "red                                               9.0.0.1/31         1          ",
            "                                                  10.0.0.1/9         1          ",
            "                                                  10.0.0.1/10        1          ",
            "                                                  10.0.0.1/32        1          ",
            "                                                  10.0.0.2/8         1          ",
            "                                                  ::1/0              1          ",
        )

    def test_names_of_more_than_49_and_addresses_of_more_than_18_bytes_are_cut(self):
        port = {"vni": 16777215, "mac": "00:1c:73:00:00:aa"}
        fits = "0123456789012345678901234567890123456789012345678"
        for name in (fits, fits + "9"):
            for ip in ("2001:db8::aaaa:1/8", "2001:db8::aaaa:1/80"):
                self.check_ports(
                    {"status": {name: {"ports": {ip: port}}}},
                    1,
                    "0123456789012345678901234567890123456789012345678 2001:db8::aaaa:1/8 "
                    "16777215   ",
                )
                json = listed({"status": {name: {"ports": {ip: port}}}}, "--json")
                self.assertIn(f'{{"{name}":{{"ipPort":{{"{ip}":{{"vni":16777215,', json)

    def test_the_longest_dotted_vni_fits(self):
        row = "red                                               10.0.0.1/8         255.255.255"
        port = {"vni": 16777215, "mac": "00:1c:73:00:00:aa"}
        routers = {"status": {"red": {"ports": {"10.0.0.1/8": port}}}}
        self.check_ports(routers, 1, row, words=["--dotted"])


class Uplinks(Listed):
    def test_five_ports_take_three_rows(self):
        self.check_uplinks(
            uplinks_of_red(u1=uplink("e5", "e3", "e1", "e2", "e4")),
            1,
            "red         192.0.2.1/24       00:1c:73:00:00:01 100  e1, e2,                       ",
            "                                                      e3, e4,                       ",
            "                                                      e5                            ",
        )

    def test_one_port_takes_a_row_without_separator(self):
        self.check_uplinks(
            uplinks_of_red(u1=uplink("e1")),
            1,
            "red         192.0.2.1/24       00:1c:73:00:00:01 100  e1                            ",
        )

    def test_no_separator_follows_the_last_port_of_a_full_row(self):
        self.check_uplinks(
            uplinks_of_red(u1=uplink("e1", "e2"), u2=uplink("e1", "e2", "e3", "e4")),
            2,
            "red         192.0.2.1/24       00:1c:73:00:00:01 100  e1, e2                        ",
            "            192.0.2.2/24       00:1c:73:00:00:01 100  e1, e2,                       ",
            "                                                      e3, e4                        ",
        )

    def test_an_uplink_without_ports_counts_but_takes_no_row_nor_the_name(self):
        routers = uplinks_of_red(u1=uplink(), u2=uplink("e1"), u3=uplink())
        self.check_uplinks(
            routers,
            3,
            "red         192.0.2.2/24       00:1c:73:00:00:01 100  e1                            ",
        )
        self.assertIn(
            '"192.0.2.1/24":{"vlan":0,"mac":"00:1c:73:00:00:bb",'
            '"switchId":"00:1c:73:00:00:01","vtepIp":"10.0.0.1","ports":[]}',
            listed(routers, "--json"),
        )

    def test_a_port_that_carries_several_vlans_is_listed_once(self):
        carrying = uplink("e2", "e1")
        carrying["ports"].append({"port": "e1", "vlan": 200})
        # Which of the VLANs is shown is left open.
        text = listed(uplinks_of_red(u1=carrying))
        self.assertIn("00  e1, e2                        \n\nTotal entries for this", text)

    def test_the_first_switch_that_publishes_the_router_is_shown(self):
        row = "red         192.0.2.1/24       00:1c:73:00:00:02 100  e1                            "
        routers = uplinks_of_red(u1=uplink("e1"))
        other = {PREFIX + "blue": "Vxlan"}
        routers["published"] = {**SWITCHES["published"], LEAF1: other}
        self.check_uplinks(routers, 1, row)

    def test_a_router_that_nobody_publishes_shows_no_switch(self):
        row = "red         192.0.2.1/24                         100  e1                            "
        for member in ("switches", "published"):
            routers = uplinks_of_red(u1=uplink("e1"))
            del routers[member]
            self.check_uplinks(routers, 1, row)

    def test_a_router_without_a_name_has_its_switch_too(self):
        routers = uplinks_of_red(u1=uplink("e1"))
        routers["status"][""] = routers["status"].pop("red")
        routers["published"] = {LEAF2: {PREFIX: "Vxlan"}}
        row = "            192.0.2.1/24       00:1c:73:00:00:02 100  e1                            "
        self.check_uplinks(routers, 1, row)

    def test_a_switch_of_more_than_17_bytes_is_cut(self):
        # No Ethernet address is that long, so no switch that is listed is.
        row = "red" + 28 * " " + "0123456789abcdefg 1    e1" + 28 * " " + "\n"
        printed_row = printed(router_detail.UPLINK_ROW, "red", "", "0123456789abcdefgh", "1", "e1")
        self.assertEqual(printed_row.decode(), row)

    def test_every_column_is_cut(self):
        routers = {
            "switches": {"001c.7300.0001": {"vteps": ["10.0.0.1"]}},
            "vteps": {"10.0.0.1": {"active": True, "switches": []}},
            "published": {LEAF1: {PREFIX + "0123456789ab": "Vxlan"}},
            "status": {
                "0123456789ab": {
                    "uplinks": {
                        "2001:db8::1234:56/64": uplink(
                            "Port-Channel1000", "Port-Channel2000", "x" * 31, vlan=65535
                        )
                    }
                }
            },
        }
        self.check_uplinks(
            routers,
            1,
            "0123456789a 2001:db8::1234:56/ 001c.7300.0001    6553 Port-Channel1000, Port-Channel",
            "                                                      xxxxxxxxxxxxxxxxxxxxxxxxxxxxxx",
        )
        self.assertIn(
            '"vlan":65535,"mac":"00:1c:73:00:00:bb","switchId":"001c.7300.0001",'
            '"vtepIp":"10.0.0.1","ports":["Port-Channel1000","Port-Channel2000","'
            + "x" * 31
            + '"]',
            listed(routers, "--json"),
        )


class TwoRouters(Listed):
    def test_each_has_its_name_on_its_own_first_row_of_either_table(self):
        port = {"vni": 1, "mac": "00:1c:73:00:00:aa"}
        status = {
            "ports": {"10.0.0.1/8": port, "10.0.0.2/8": port},
            "uplinks": {
                "10.0.0.3/8": uplink("e1", "e2", "e3"),
                "10.0.0.4/8": uplink("e1"),
                "10.0.0.5/8": uplink(),
            },
        }
        routers = {"status": {"b": status, "a": status}}
        self.check_ports(
            routers,
            4,
            "a                                                 10.0.0.1/8         1          ",
            "                                                  10.0.0.2/8         1          ",
            "b                                                 10.0.0.1/8         1          ",
            "                                                  10.0.0.2/8         1          ",
        )
        self.check_uplinks(
            routers,
            6,
            "a           10.0.0.3/8                           100  e1, e2,                       ",
            "                                                      e3                            ",
            "            10.0.0.4/8                           100  e1                            ",
            "b           10.0.0.3/8                           100  e1, e2,                       ",
            "                                                      e3                            ",
            "            10.0.0.4/8                           100  e1                            ",
        )


if __name__ == "__main__":
    unittest.main()
