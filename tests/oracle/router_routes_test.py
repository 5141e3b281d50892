"""The reference for `router routes` against outputs written out by hand."""

import unittest

import exact
import router_routes
from exact import Exact
from forms import read_prefix

HEADER = (
    "--------------------------------------------------------------------------------\n"
    "Name        Prefix             Nexthop                                          \n"
    "--------------------------------------------------------------------------------\n"
)

TOTAL = "\nTotal entries for this criterion: "

NOTHING = HEADER + TOTAL + "0\n\n"

# In an order in which nothing is printed.
STATUS = {
    "red": {
        "routes": {
            "2001:DB8::/32": ["2001:db8::2", "10.0.0.9", "2001:DB8:0::1"],
            "10.1.0.0/16": ["10.0.0.10", "10.0.0.9"],
            "0.0.0.0/0": ["10.0.0.1"],
            "9.0.0.0/8": ["10.0.0.4", "10.0.0.3", "10.0.0.2", "10.0.0.1"],
        }
    },
    "blue": {"routes": {"10.1.0.0/16": ["10.0.0.2"]}},
    "green": {"routes": {}},
    "grey": {},
}


def listed(status, *words):
    return exact.run({"routers": {"status": status}}, "router", "routes", *words)


def routes(*prefixes):
    """Router red, which reaches all of the prefixes through 10.0.0.1."""
    return {"red": {"routes": {prefix: ["10.0.0.1"] for prefix in prefixes}}}


class Listed(Exact):
    def check(self, status, words, count, *rows):
        self.assertEqual(
            listed(status, *words), HEADER + "".join(rows) + f"{TOTAL}{count}\n\n"
        )


class Forms(Listed):
    def test_text(self):
        self.assertEqual(
            listed(STATUS),
            "--------------------------------------------------------------------------------\n"
            "Name        Prefix             Nexthop                                          \n"
            "--------------------------------------------------------------------------------\n"
            "blue        10.1.0.0/16        10.0.0.2                                         \n"
            "red         0.0.0.0/0          10.0.0.1                                         \n"
            "            9.0.0.0/8          10.0.0.1, 10.0.0.2, 10.0.0.3                     \n"
            "                               10.0.0.4                                         \n"
            "            10.1.0.0/16        10.0.0.9, 10.0.0.10                              \n"
            "            2001:db8::/32      10.0.0.9, 2001:db8::1, 2001:db8::2               \n"
            "\n"
            "Total entries for this criterion: 5\n"
            "\n",
        )

    def test_json(self):
        self.assertEqual(
            listed(STATUS, "--json"),
            '{"route":{'
            '"blue":{"prefix":{"10.1.0.0/16":{"nexthop":["10.0.0.2"]}}},'
            '"red":{"prefix":{'
            '"0.0.0.0/0":{"nexthop":["10.0.0.1"]},'
            '"9.0.0.0/8":{"nexthop":["10.0.0.1","10.0.0.2","10.0.0.3","10.0.0.4"]},'
            '"10.1.0.0/16":{"nexthop":["10.0.0.9","10.0.0.10"]},'
            '"2001:db8::/32":{"nexthop":["10.0.0.9","2001:db8::1","2001:db8::2"]}}}}}\n',
        )

    def test_pretty(self):
        self.assertEqual(
            listed(STATUS, "--pretty", "--prefix", "10.1.0.0/16", "--router", "blue"),
            "{\n"
            '  "route": {\n'
            '    "blue": {\n'
            '      "prefix": {\n'
            '        "10.1.0.0/16": {\n'
            '          "nexthop": [\n'
            '            "10.0.0.2"\n'
            "          ]\n"
            "        }\n"
            "      }\n"
            "    }\n"
            "  }\n"
            "}\n",
        )

    def test_without_routes_header_and_total_stand(self):
        self.assertEqual(exact.run({}, "router", "routes"), NOTHING)
        for status in ({}, {"red": {}}, {"red": {"routes": {}}}):
            self.assertEqual(listed(status), NOTHING)
            self.assertEqual(listed(status, "--json"), '{"route":{}}\n')

    def test_neither_revision_nor_dotted_notation_makes_a_difference(self):
        for form in ([], ["--json"], ["--pretty"]):
            usual = listed(STATUS, *form)
            for words in (["--revision", "1"], ["--revision", "3"], ["--dotted"]):
                self.assertEqual(listed(STATUS, *form, *words), usual)


class Nexthops(Listed):
    def test_seven_take_three_rows(self):
        nexthops = [f"10.0.0.{number}" for number in (7, 3, 1, 5, 2, 6, 4)]
        self.check(
            {"red": {"routes": {"10.1.0.0/16": nexthops}}},
            [],
            1,
            "red         10.1.0.0/16        10.0.0.1, 10.0.0.2, 10.0.0.3                     \n",
            "                               10.0.0.4, 10.0.0.5, 10.0.0.6                     \n",
            "                               10.0.0.7                                         \n",
        )

    def test_three_take_one_row_without_a_separator_behind(self):
        self.check(
            {"red": {"routes": {"10.1.0.0/16": ["10.0.0.3", "10.0.0.1", "10.0.0.2"]}}},
            [],
            1,
            "red         10.1.0.0/16        10.0.0.1, 10.0.0.2, 10.0.0.3                     \n",
        )

    def test_none_takes_a_row_too(self):
        self.check(
            {"red": {"routes": {"10.1.0.0/16": [], "10.2.0.0/16": ["10.0.0.1"]}}},
            [],
            2,
            "red         10.1.0.0/16                                                         \n",
            "            10.2.0.0/16        10.0.0.1                                         \n",
        )

    def test_none_leaves_the_document_as_it_would_be(self):
        # First, in the middle, last of its router, and last of all.
        status = {
            "a": {"routes": {"10.0.0.0/8": [], "11.0.0.0/8": ["10.0.0.1"], "12.0.0.0/8": []}},
            "b": {"routes": {"10.0.0.0/8": [], "11.0.0.0/8": []}},
        }
        self.assertEqual(
            listed(status, "--json"),
            '{"route":{'
            '"a":{"prefix":{"10.0.0.0/8":{"nexthop":[]},"11.0.0.0/8":{"nexthop":["10.0.0.1"]},'
            '"12.0.0.0/8":{"nexthop":[]}}},'
            '"b":{"prefix":{"10.0.0.0/8":{"nexthop":[]},"11.0.0.0/8":{"nexthop":[]}}}}}\n',
        )

    def test_none_in_an_indented_document(self):
        self.assertEqual(
            listed({"red": {"routes": {"10.0.0.0/8": []}}}, "--pretty"),
            "{\n"
            '  "route": {\n'
            '    "red": {\n'
            '      "prefix": {\n'
            '        "10.0.0.0/8": {\n'
            '          "nexthop": []\n'
            "        }\n"
            "      }\n"
            "    }\n"
            "  }\n"
            "}\n",
        )


class Columns(Listed):
    def test_two_routes_of_a_router_show_its_name_once(self):
        self.check(
            routes("10.2.0.0/16", "10.1.0.0/16"),
            [],
            2,
            "red         10.1.0.0/16        10.0.0.1                                         \n",
            "            10.2.0.0/16        10.0.0.1                                         \n",
        )

    def test_addresses_sort_before_lengths(self):
        self.check(
            routes("::/0", "10.0.0.0/16", "10.0.0.0/8", "9.0.0.0/32", "10.0.0.0/9", "0.0.0.0/0"),
            [],
            6,
            "red         0.0.0.0/0          10.0.0.1                                         \n",
            "            9.0.0.0/32         10.0.0.1                                         \n",
            "            10.0.0.0/8         10.0.0.1                                         \n",
            "            10.0.0.0/9         10.0.0.1                                         \n",
            "            10.0.0.0/16        10.0.0.1                                         \n",
            "            ::/0               10.0.0.1                                         \n",
        )

    def test_all_three_are_cut_in_text_alone(self):
        nexthops = [f"2001:db8::1234:{last}" for last in (1, 2, 3)]
        status = {"0123456789ab": {"routes": {"2001:db8:1234:5600::/64": nexthops}}}
        self.check(
            status,
            [],
            1,
            "0123456789a 2001:db8:1234:5600 2001:db8::1234:1, 2001:db8::1234:2, 2001:db8::123\n",
        )
        self.assertEqual(
            listed(status, "--json"),
            '{"route":{"0123456789ab":{"prefix":{"2001:db8:1234:5600::/64":{"nexthop":'
            '["2001:db8::1234:1","2001:db8::1234:2","2001:db8::1234:3"]}}}}}\n',
        )

    def test_the_widest_that_fit(self):
        self.check(
            {"0123456789a": {"routes": {"255.255.255.255/32": ["255.255.255.255"]}}},
            [],
            1,
            "0123456789a 255.255.255.255/32 255.255.255.255                                  \n",
        )


class Filters(Listed):
    def test_by_router(self):
        row = "blue        10.1.0.0/16        10.0.0.2                                         \n"
        self.check(STATUS, ["--router", "blue"], 1, row)
        for name in ("green", "grey", "Red", "re", "none"):
            self.check(STATUS, ["--router", name], 0)

    def test_a_route_within_the_prefix_and_one_around_it(self):
        self.check(
            routes("10.1.0.0/16", "0.0.0.0/0", "11.0.0.0/8", "::/0"),
            ["--prefix", "10.0.0.0/8"],
            2,
            "red         0.0.0.0/0          10.0.0.1                                         \n",
            "            10.1.0.0/16        10.0.0.1                                         \n",
        )
        self.check(
            routes("10.0.0.0/8", "10.1.2.0/25", "10.1.3.0/24", "10.1.2.255/32"),
            ["--prefix", "10.1.2.0/24"],
            3,
            "red         10.0.0.0/8         10.0.0.1                                         \n",
            "            10.1.2.0/25        10.0.0.1                                         \n",
            "            10.1.2.255/32      10.0.0.1                                         \n",
        )

    def test_the_default_prefix_keeps_its_family(self):
        status = routes("10.0.0.0/8", "0.0.0.0/0", "255.255.255.255/32", "::/0", "a00::/8")
        self.check(
            status,
            ["--prefix", "0.0.0.0/0"],
            3,
            "red         0.0.0.0/0          10.0.0.1                                         \n",
            "            10.0.0.0/8         10.0.0.1                                         \n",
            "            255.255.255.255/32 10.0.0.1                                         \n",
        )
        self.check(
            status,
            ["--prefix", "::/0"],
            2,
            "red         ::/0               10.0.0.1                                         \n",
            "            a00::/8            10.0.0.1                                         \n",
        )

    def test_a_router_none_of_whose_routes_pass_is_not_listed(self):
        self.check(STATUS, ["--router", "blue", "--prefix", "10.2.0.0/16"], 0)
        self.assertEqual(
            listed(STATUS, "--router", "blue", "--prefix", "10.2.0.0/16", "--json"),
            '{"route":{}}\n',
        )

    def test_overlap_goes_both_ways_and_to_the_bit(self):
        for one, other, overlap in (
            ("10.0.0.0/8", "10.1.0.0/16", True),
            ("10.0.0.0/9", "10.128.0.0/9", False),
            ("10.0.0.0/8", "10.128.0.0/9", True),
            ("0.0.0.0/0", "255.255.255.255/32", True),
            ("0.0.0.0/1", "128.0.0.0/1", False),
            ("10.1.2.3/32", "10.1.2.3/32", True),
            ("10.1.2.2/32", "10.1.2.3/32", False),
            ("10.1.2.2/31", "10.1.2.3/32", True),
            ("::/0", "0.0.0.0/0", False),
            ("::/96", "0.0.0.0/0", False),
            ("::ffff:10.0.0.0/104", "10.0.0.0/8", False),
            ("2001:db8::/32", "2001:db8:1::/48", True),
            ("2001:db8::/32", "2001:db9::/32", False),
            ("::/0", "ffff::/16", True),
            ("2001:db8::/127", "2001:db8::1/128", True),
            ("2001:db8::2/127", "2001:db8::1/128", False),
        ):
            with self.subTest(one=one, other=other):
                prefixes = read_prefix(one), read_prefix(other)
                self.assertIs(router_routes.overlap(*prefixes), overlap)
                self.assertIs(router_routes.overlap(*prefixes[::-1]), overlap)


if __name__ == "__main__":
    unittest.main()
