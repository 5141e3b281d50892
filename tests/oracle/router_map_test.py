"""The reference for `router map` against outputs written out by hand."""

import unittest

import exact
import router_map
from exact import Exact
from forms import printed

HEADER = (
    "--------------------------------------------------------------------------------\n"
    "Name                                           VTEP            Switch           \n"
    "--------------------------------------------------------------------------------\n"
)

TOTAL = "\nTotal entries for this criterion: "

NOTHING = HEADER + TOTAL + "0\n\n"

PREFIX = "vxlancontroller/version2/logicalRouter/"

LEAF1, LEAF2, LEAF3 = "00:1c:73:00:00:01", "00:1c:73:00:00:02", "00:1c:73:00:00:03"

# In an order in which nothing is printed. What stands behind 10.0.0.9 has its own VTEPs.
ROUTERS = {
    "switches": {
        LEAF3: {"vteps": ["10.0.0.9", "10.0.0.3"]},
        LEAF1: {"vteps": ["10.0.0.1"]},
        LEAF2: {"vteps": ["10.0.0.2", "10.0.0.9"]},
    },
    "vteps": {
        "10.0.0.3": {"active": True, "switches": [LEAF3]},
        "10.0.0.2": {"active": True, "switches": [LEAF2]},
        "10.0.0.1": {"active": True, "switches": [LEAF1]},
        "10.0.0.9": {"active": False, "switches": [LEAF3, "no such switch", LEAF1]},
    },
    "published": {
        LEAF2: {PREFIX + "red": "Vxlan"},
        LEAF3: {PREFIX + "red": "Vxlan"},
        LEAF1: {PREFIX + "red": "Vxlan", PREFIX + "blue": "Vxlan"},
    },
}

BLUE_1 = "blue                                           10.0.0.1        00:1c:73:00:00:01\n"
RED_1 = "red                                            10.0.0.1        00:1c:73:00:00:01\n"
RED_2 = "red                                            10.0.0.2        00:1c:73:00:00:02\n"
RED_3 = "red                                            10.0.0.3        00:1c:73:00:00:03\n"
NEXT_2 = "                                               10.0.0.2        00:1c:73:00:00:02\n"
NEXT_3 = "                                               10.0.0.3        00:1c:73:00:00:03\n"


def listed(routers, *words):
    return exact.run({"routers": routers}, "router", "map", *words)


def one(switch=LEAF1, vtep="10.0.0.1", active=True, system=LEAF1, paths=None):
    """One switch with one VTEP; it publishes the router red, unless told otherwise."""
    return {
        "switches": {switch: {"vteps": [vtep]}},
        "vteps": {vtep: {"active": active, "switches": [switch]}},
        "published": {system: {PREFIX + "red": "Vxlan"} if paths is None else paths},
    }


class Listed(Exact):
    def check(self, routers, words, *rows):
        text = listed(routers, *words)
        self.assertEqual(text, HEADER + "".join(rows) + f"{TOTAL}{len(rows)}\n\n")


class Forms(Listed):
    def test_text(self):
        self.assertEqual(
            listed(ROUTERS),
            "--------------------------------------------------------------------------------\n"
            "Name                                           VTEP            Switch           \n"
            "--------------------------------------------------------------------------------\n"
            "blue                                           10.0.0.1        00:1c:73:00:00:01\n"
            "red                                            10.0.0.1        00:1c:73:00:00:01\n"
            "                                               10.0.0.2        00:1c:73:00:00:02\n"
            "                                               10.0.0.3        00:1c:73:00:00:03\n"
            "\n"
            "Total entries for this criterion: 4\n"
            "\n",
        )

    def test_json(self):
        self.assertEqual(
            listed(ROUTERS, "--json"),
            '{"logicalRouterMap":{'
            '"blue":{"switches":[{"switchId":"00:1c:73:00:00:01","vtepIp":"10.0.0.1"}]},'
            '"red":{"switches":[{"switchId":"00:1c:73:00:00:01","vtepIp":"10.0.0.1"},'
            '{"switchId":"00:1c:73:00:00:02","vtepIp":"10.0.0.2"},'
            '{"switchId":"00:1c:73:00:00:03","vtepIp":"10.0.0.3"}]}}}\n',
        )

    def test_pretty(self):
        self.assertEqual(
            listed(ROUTERS, "--pretty", "--router", "blue"),
            "{\n"
            '  "logicalRouterMap": {\n'
            '    "blue": {\n'
            '      "switches": [\n'
            "        {\n"
            '          "switchId": "00:1c:73:00:00:01",\n'
            '          "vtepIp": "10.0.0.1"\n'
            "        }\n"
            "      ]\n"
            "    }\n"
            "  }\n"
            "}\n",
        )

    def test_what_is_absent_or_empty_leaves_header_and_total(self):
        self.assertEqual(exact.run({}, "router", "map"), NOTHING)
        self.assertEqual(exact.run({}, "router", "map", "--json"), '{"logicalRouterMap":{}}\n')
        for member in ROUTERS:
            without = {name: value for name, value in ROUTERS.items() if name != member}
            if member == "vteps":
                without["switches"] = {LEAF1: {"vteps": []}}
            self.assertEqual(listed(without), NOTHING)
            self.assertEqual(listed(without, "--json"), '{"logicalRouterMap":{}}\n')

    def test_neither_revision_nor_dotted_notation_makes_a_difference(self):
        for form in ([], ["--json"], ["--pretty"]):
            usual = listed(ROUTERS, *form)
            for words in (["--revision", "1"], ["--revision", "3"], ["--dotted"]):
                self.assertEqual(listed(ROUTERS, *form, *words), usual)


class Filters(Listed):
    def test_by_router(self):
        self.check(ROUTERS, ["--router", "blue"], BLUE_1)
        self.check(ROUTERS, ["--router", "red"], RED_1, NEXT_2, NEXT_3)

    def test_a_router_filter_that_matches_nothing(self):
        for name in ("green", "Red", "re", "red ", PREFIX + "red"):
            self.check(ROUTERS, ["--router", name])
        self.assertEqual(
            listed(ROUTERS, "--router", "green", "--json"), '{"logicalRouterMap":{}}\n'
        )

    def test_by_switch(self):
        self.check(ROUTERS, ["--switch", LEAF1], BLUE_1, RED_1)
        self.check(ROUTERS, ["--switch", LEAF3], RED_3)
        self.check(ROUTERS, ["--switch", LEAF1, "--router", "red"], RED_1)

    def test_a_switch_goes_by_the_identifier_as_it_is_written(self):
        for switch in ("001c.7300.0001", "00-1c-73-00-00-01", "leaf1"):
            self.check(ROUTERS, ["--switch", switch])

    def test_by_vtep(self):
        self.check(ROUTERS, ["--vtep", "10.0.0.2"], RED_2)
        self.check(ROUTERS, ["--vtep", "10.0.0.2", "--vtep", "10.0.0.1"], BLUE_1, RED_1, NEXT_2)
        self.check(ROUTERS, ["--vtep", "10.0.0.77"])

    def test_a_vtep_selects_the_switches_behind_it_each_with_its_active_vtep(self):
        self.check(ROUTERS, ["--vtep", "10.0.0.9"], BLUE_1, RED_1, NEXT_3)

    def test_a_switch_behind_two_vteps_of_the_filter_is_listed_once(self):
        self.check(ROUTERS, ["--vtep", "10.0.0.9", "--vtep", "10.0.0.3"], BLUE_1, RED_1, NEXT_3)

    def test_beside_a_switch_filter_a_vtep_filter_does_not_count(self):
        for switch, rows in ((LEAF2, [RED_2]), ("no such switch", [])):
            self.check(ROUTERS, ["--switch", switch, "--vtep", "10.0.0.1"], *rows)

    def test_an_ipv4_vtep_is_not_the_one_mapped_into_ipv6(self):
        self.check(one(vtep="::ffff:10.0.0.1"), ["--vtep", "10.0.0.1"])


class Joining(Listed):
    def test_a_switch_without_an_active_vtep_is_not_listed(self):
        self.check(one(active=False), [])
        self.check({**one(), "switches": {LEAF1: {"vteps": []}}}, [])

    def test_a_switch_and_its_system_may_write_the_address_differently(self):
        routers = one(switch="001C.7300.00AB", system="00-1c-73-00-00-ab")
        row = "red                                            10.0.0.1        001C.7300.00AB   \n"
        self.check(routers, [], row)

    def test_two_switches_may_be_one_system(self):
        routers = one()
        routers["switches"]["00-1c-73-00-00-01"] = {"vteps": ["10.0.0.1"]}
        self.check(
            routers,
            [],
            "red                                            10.0.0.1        00-1c-73-00-00-01\n",
            "                                               10.0.0.1        00:1c:73:00:00:01\n",
        )

    def test_a_switch_that_is_called_by_no_ethernet_address_publishes_nothing(self):
        for switch in ("leaf1", "", "00:1c:73:00:00:01 ", "001c73000001", "00:1c-73:00:00:01"):
            self.check(one(switch=switch), [])

    def test_a_switch_that_publishes_nothing_is_not_listed(self):
        self.check(one(system=LEAF2), [])
        self.check(one(paths={}), [])

    def test_the_prefix_alone_is_a_router_without_a_name(self):
        routers = one(paths={PREFIX: "Vxlan"})
        row = "                                               10.0.0.1        00:1c:73:00:00:01\n"
        self.check(routers, [], row)
        self.assertEqual(
            listed(routers, "--json"),
            '{"logicalRouterMap":{"":{"switches":'
            '[{"switchId":"00:1c:73:00:00:01","vtepIp":"10.0.0.1"}]}}}\n',
        )

    def test_only_the_kind_vxlan_counts(self):
        for kind in ("vxlan", "Vxlan2", "Vxla", " Vxlan", ""):
            self.check(one(paths={PREFIX + "red": kind}), [])

    def test_only_paths_with_the_prefix_count(self):
        for path in (
            "",
            "red",
            PREFIX[:-1],
            "/" + PREFIX + "red",
            "vxlancontroller/version1/logicalRouter/red",
            "vxlancontroller/version2/logicalrouter/red",
        ):
            self.check(one(paths={path: "Vxlan"}), [])

    def test_all_behind_the_prefix_is_the_name(self):
        routers = one(paths={PREFIX + "a/b/" + PREFIX: "Vxlan"})
        row = "a/b/vxlancontroller/version2/logicalRouter/    10.0.0.1        00:1c:73:00:00:01\n"
        self.check(routers, [], row)


class Columns(Listed):
    def test_a_long_vtep_is_cut_in_text_alone(self):
        routers = one(vtep="2001:DB8:0::1234:5678")
        row = "red                                            2001:db8::1234: 00:1c:73:00:00:01\n"
        self.check(routers, [], row)
        self.assertEqual(
            listed(routers, "--json"),
            '{"logicalRouterMap":{"red":{"switches":'
            '[{"switchId":"00:1c:73:00:00:01","vtepIp":"2001:db8::1234:5678"}]}}}\n',
        )

    def test_a_long_name_is_cut_in_text_alone(self):
        fits = "0123456789012345678901234567890123456789012345"
        for name in (fits, fits + "6"):
            routers = one(paths={PREFIX + name: "Vxlan"})
            self.check(
                routers,
                [],
                "0123456789012345678901234567890123456789012345 10.0.0.1        "
                "00:1c:73:00:00:01\n",
            )
            self.assertIn(f'{{"{name}":{{"switches":[', listed(routers, "--json"))

    def test_a_switch_of_more_than_17_bytes_is_cut(self):
        # No Ethernet address is that long, so no switch that is listed is.
        row = printed(router_map.ROW, "red", "10.0.0.1", "0123456789abcdefgh")
        self.assertEqual(
            row,
            b"red                                            10.0.0.1        0123456789abcdefg\n",
        )

    def test_bytes_are_counted_and_a_letter_may_be_halved(self):
        routers = one(paths={PREFIX + "x" + "\u00e9" * 30: "Vxlan"})
        row = b"x" + b"\xc3\xa9" * 22 + b"\xc3 10.0.0.1        00:1c:73:00:00:01\n"
        self.assertEqual(
            exact.run_bytes({"routers": routers}, "router", "map"),
            HEADER.encode() + row + TOTAL.encode() + b"1\n\n",
        )

    def test_a_name_is_no_format(self):
        routers = one(paths={PREFIX + "%s%n%d": "Vxlan"})
        row = "%s%n%d                                         10.0.0.1        00:1c:73:00:00:01\n"
        self.check(routers, [], row)


if __name__ == "__main__":
    unittest.main()
