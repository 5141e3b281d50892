"""The reference for `mac received` against outputs written out by hand."""

import unittest

import exact
from exact import Exact

UNICAST = (
    "         Received Mac Address Table\n"
    "---------------------------------------------------------------------\n"
    "\n"
    "Source            VNI         Mac Address       VTEP            Moves\n"
    "----------------- ----------- ----------------- --------------- -----\n"
)

FLOOD = (
    "\n"
    "         Received Flood Table\n"
    "---------------------------------------------------------------------\n"
    "\n"
    "Source            VNI         Mac Address       VTEP\n"
    "----------------- ----------- ----------------- ---------------------\n"
)

TOTAL = "Total Mac Addresses for this criterion: "

NOTHING = UNICAST + TOTAL + "0\n" + FLOOD + TOTAL + "0\n"

NOTHING_JSON = '{"switches":{},"nonSwitchSources":{}}\n'

# One entry of every kind, in an order in which nothing is printed.
FABRIC_STATE = {
    "switches": {
        "leaf2": {
            "20": {
                "flood": {"0000.0000.0000": ["10.0.0.10", "10.0.0.9"]},
                "unicast": {"00:00:5E:00:53:02": {"vtep": "10.0.0.2", "moves": 123456}},
            },
        },
        "leaf10": {
            "65536": {"unicast": {"00-00-5e-00-53-0a": {"vtep": "10.0.0.10"}}},
            "4096": {"unicast": {"00-00-5e-00-53-0a": {"vtep": "10.0.0.10", "moves": 7}}},
        },
        "leaf1": {
            "10": {
                "unicast": {
                    "80:00:5e:00:53:01": {"vtep": "192.168.100.200", "moves": 0},
                    "00:00:5e:00:53:01": {"vtep": "10.0.0.1", "moves": 1},
                },
                "multipath": {"80:00:5e:00:53:01": ["10.0.0.3", "9.0.0.1", "10.0.0.1"]},
                "flood": {
                    "80:00:5e:00:53:01": ["10.0.0.4"],
                    "00:00:00:00:00:00": ["10.0.0.1"],
                },
                "arp": {"192.0.2.1": {"mac": "00:00:5e:00:53:01"}},
            },
        },
    },
    "sources": {
        "QVX": {"10": {"multipath": {"00:00:5e:00:53:91": ["10.0.2.1"]}}},
        "HSC": {"10": {"unicast": {"00:00:5e:00:53:01": {"vtep": "10.0.1.1"}}}},
    },
    "evpn": {
        "EVPN": {
            "hosts": {"10": {"00:00:5e:00:53:c1": {"vtep": "10.8.0.1", "moves": 2}}},
            "flood": {"10": ["10.8.0.2", "10.8.0.1"], "16777215": ["10.8.0.1"]},
        },
    },
}

U_LEAF1_10_LOW = "leaf1             10          0000.5e00.5301  10.0.0.1            1\n"
U_LEAF1_10_HIGH = "leaf1             10          8000.5e00.5301  192.168.100.200     0\n"
U_LEAF10_4096 = "leaf10            4096        0000.5e00.530a  10.0.0.10           7\n"
U_LEAF10_65536 = "leaf10            65536       0000.5e00.530a  10.0.0.10           0\n"
U_LEAF2_20 = "leaf2             20          0000.5e00.5302  10.0.0.2        123456\n"
U_EVPN_10 = "EVPN              10          0000.5e00.53c1  10.8.0.1            2\n"
U_HSC_10 = "HSC               10          0000.5e00.5301  10.0.1.1            0\n"

F_LEAF1_MULTIPATH = (
    "leaf1             10          8000.5e00.5301  9.0.0.1        \n"
    "leaf1             10          8000.5e00.5301  10.0.0.1       \n"
    "leaf1             10          8000.5e00.5301  10.0.0.3       \n"
)
F_LEAF1_ZERO = "leaf1             10          0000.0000.0000  10.0.0.1       \n"
F_LEAF1_LIST = "leaf1             10          8000.5e00.5301  10.0.0.4       \n"
F_LEAF2 = (
    "leaf2             20          0000.0000.0000  10.0.0.9       \n"
    "leaf2             20          0000.0000.0000  10.0.0.10      \n"
)
F_EVPN_10 = (
    "EVPN              10          0000.0000.0000  10.8.0.1       \n"
    "EVPN              10          0000.0000.0000  10.8.0.2       \n"
)
F_EVPN_LAST = "EVPN              16777215    0000.0000.0000  10.8.0.1       \n"
F_QVX = "QVX               10          0000.5e00.5391  10.0.2.1       \n"


def run_bytes(received, *words):
    members = {} if received is None else {"received": received}
    return exact.run_bytes(members, "mac", "received", *words)


def run(received, *words):
    return run_bytes(received, *words).decode()


def listing(unicast, flood):
    """The whole text from (rows, their number) of both sections."""
    return f"{UNICAST}{unicast[0]}{TOTAL}{unicast[1]}\n{FLOOD}{flood[0]}{TOTAL}{flood[1]}\n"


def switch(name, tables, vni="10"):
    return {"switches": {name: {vni: tables}}}


class Text(Exact):
    def test_without_any_state_only_headers_and_totals_stand(self):
        self.assertEqual(run(None), NOTHING)
        self.assertEqual(run({}), NOTHING)
        self.assertEqual(run({"switches": {}, "sources": {}, "evpn": {}}), NOTHING)
        self.assertEqual(run({"switches": {"leaf1": {"10": {}}}, "evpn": {"EVPN": {}}}), NOTHING)

    def test_a_whole_fabric(self):
        self.assertEqual(
            run(FABRIC_STATE),
            "         Received Mac Address Table\n"
            "---------------------------------------------------------------------\n"
            "\n"
            "Source            VNI         Mac Address       VTEP            Moves\n"
            "----------------- ----------- ----------------- --------------- -----\n"
            "leaf1             10          0000.5e00.5301  10.0.0.1            1\n"
            "leaf1             10          8000.5e00.5301  192.168.100.200     0\n"
            "leaf10            4096        0000.5e00.530a  10.0.0.10           7\n"
            "leaf10            65536       0000.5e00.530a  10.0.0.10           0\n"
            "leaf2             20          0000.5e00.5302  10.0.0.2        123456\n"
            "EVPN              10          0000.5e00.53c1  10.8.0.1            2\n"
            "HSC               10          0000.5e00.5301  10.0.1.1            0\n"
            "Total Mac Addresses for this criterion: 7\n"
            "\n"
            "         Received Flood Table\n"
            "---------------------------------------------------------------------\n"
            "\n"
            "Source            VNI         Mac Address       VTEP\n"
            "----------------- ----------- ----------------- ---------------------\n"
            "leaf1             10          8000.5e00.5301  9.0.0.1        \n"
            "leaf1             10          8000.5e00.5301  10.0.0.1       \n"
            "leaf1             10          8000.5e00.5301  10.0.0.3       \n"
            "leaf1             10          0000.0000.0000  10.0.0.1       \n"
            "leaf1             10          8000.5e00.5301  10.0.0.4       \n"
            "leaf2             20          0000.0000.0000  10.0.0.9       \n"
            "leaf2             20          0000.0000.0000  10.0.0.10      \n"
            "EVPN              10          0000.0000.0000  10.8.0.1       \n"
            "EVPN              10          0000.0000.0000  10.8.0.2       \n"
            "EVPN              16777215    0000.0000.0000  10.8.0.1       \n"
            "QVX               10          0000.5e00.5391  10.0.2.1       \n"
            "Total Mac Addresses for this criterion: 11\n",
        )

    def test_dotted_vnis(self):
        state = {
            "switches": {
                "leaf1": {
                    "4098": {"unicast": {"00:00:5e:00:53:01": {"vtep": "10.0.0.1"}}},
                    "16777215": {"flood": {"00:00:00:00:00:00": ["10.0.0.1"]}},
                    "0": {"flood": {"00:00:00:00:00:00": ["10.0.0.1"]}},
                }
            }
        }
        unicast = "leaf1             0.16.2      0000.5e00.5301  10.0.0.1            0\n"
        flood = (
            "leaf1             0.0.0       0000.0000.0000  10.0.0.1       \n"
            "leaf1             255.255.255 0000.0000.0000  10.0.0.1       \n"
        )
        self.assertEqual(run(state, "--dotted"), listing((unicast, 1), (flood, 2)))

    def test_move_counts_are_signed_and_widen_their_row(self):
        moves = {"1": 2147483647, "2": 2147483648, "3": 4294967295}
        table = {f"00:00:5e:00:53:0{i}": {"vtep": "10.0.0.1", "moves": moves[i]} for i in moves}
        unicast = (
            "leaf1             10          0000.5e00.5301  10.0.0.1        2147483647\n"
            "leaf1             10          0000.5e00.5302  10.0.0.1        -2147483648\n"
            "leaf1             10          0000.5e00.5303  10.0.0.1           -1\n"
        )
        self.assertEqual(run(switch("leaf1", {"unicast": table})), listing((unicast, 3), ("", 0)))

    def test_a_row_of_1023_bytes_is_whole_and_one_of_1024_has_no_line_break(self):
        # Behind the name come 51 bytes in a unicast row and 45 in a flood row.
        tables = {
            "unicast": {"00:00:5e:00:53:01": {"vtep": "10.0.0.1"}},
            "flood": {"00:00:00:00:00:00": ["10.0.0.1"]},
        }
        unicast_end = " 10          0000.5e00.5301  10.0.0.1            0"
        flood_end = " 10          0000.0000.0000  10.0.0.1       "
        for name, unicast, flood in (
            ("x" * 972, unicast_end + "\n", flood_end + "\n"),
            ("x" * 973, unicast_end, flood_end + "\n"),
            ("x" * 978, unicast_end[:-5], flood_end + "\n"),
            ("x" * 979, unicast_end[:-6], flood_end),
            ("x" * 1022, " ", " "),
        ):
            with self.subTest(length=len(name)):
                expected = listing((name + unicast, 1), (name + flood, 1))
                self.assertEqual(run(switch(name, tables)), expected)

    def test_a_long_name_is_cut_between_bytes_and_each_row_still_counts(self):
        tables = {
            "unicast": {"00:00:5e:00:53:01": {"vtep": "10.0.0.1"}},
            "flood": {"00:00:00:00:00:00": ["10.0.0.1", "10.0.0.2"]},
        }
        # Two bytes a letter: of the 512th only the first byte finds room.
        cut = "\u00e9".encode() * 511 + b"\xc3"
        header = [UNICAST.encode(), FLOOD.encode()]
        total = TOTAL.encode()
        self.assertEqual(
            run_bytes(switch("\u00e9" * 600, tables)),
            header[0] + cut + total + b"1\n" + header[1] + cut + cut + total + b"2\n",
        )

    def test_names_are_padded_by_bytes_and_printed_as_they_are(self):
        tables = {"unicast": {"00:00:5e:00:53:01": {"vtep": "10.0.0.1"}}}
        state = {"switches": {name: {"10": tables} for name in ("\u8449", "100%s%n", 'a"\\b')}}
        unicast = (
            "100%s%n           10          0000.5e00.5301  10.0.0.1            0\n"
            'a"\\b              10          0000.5e00.5301  10.0.0.1            0\n'
            "\u8449               10          0000.5e00.5301  10.0.0.1            0\n"
        )
        self.assertEqual(run(state), listing((unicast, 3), ("", 0)))


class AbsentEntries(Exact):
    def test_a_binding_that_is_zero_throughout_is_none(self):
        zero = "00:00:00:00:00:00"
        for binding in ({"vtep": "0.0.0.0"}, {"vtep": "0.0.0.0", "moves": 0}):
            state = switch("leaf1", {"unicast": {zero: binding}, "multipath": {zero: []}})
            self.assertEqual(run(state), NOTHING)
            self.assertEqual(run(state, "--json"), NOTHING_JSON)

    def test_a_binding_that_is_zero_but_for_one_part_is_one(self):
        zero, some = "00:00:00:00:00:00", "00:00:5e:00:53:01"
        for mac, binding, row in (
            (zero, {"vtep": "0.0.0.0", "moves": 1}, "0000.0000.0000  0.0.0.0             1\n"),
            (zero, {"vtep": "10.0.0.1"}, "0000.0000.0000  10.0.0.1            0\n"),
            (some, {"vtep": "0.0.0.0"}, "0000.5e00.5301  0.0.0.0             0\n"),
        ):
            expected = listing(("leaf1             10          " + row, 1), ("", 0))
            self.assertEqual(run(switch("leaf1", {"unicast": {mac: binding}})), expected)

    def test_an_evpn_host_without_vtep_and_moves_is_dead_whatever_its_mac(self):
        hosts = {
            "00:00:5e:00:53:01": {"vtep": "0.0.0.0"},
            "00:00:5e:00:53:02": {"vtep": "0.0.0.0", "moves": 1},
        }
        unicast = "EVPN              10          0000.5e00.5302  0.0.0.0             1\n"
        self.assertEqual(
            run({"evpn": {"EVPN": {"hosts": {"10": hosts, "11": {}}}}}),
            listing((unicast, 1), ("", 0)),
        )

    def test_a_table_of_empty_vtep_sets_has_no_row_but_shows_in_json(self):
        mac = "00:00:5e:00:53:01"
        state = switch("leaf1", {"multipath": {mac: []}, "flood": {"00:00:00:00:00:00": []}})
        self.assertEqual(run(state), NOTHING)
        self.assertEqual(
            run(state, "--json"),
            '{"switches":{"leaf1":{"vniInDottedNotation":false,"vnis":['
            '{"macAddress":"00:00:00:00:00:00","vni":10,"unicastHostTable":[],'
            '"bumVtepListTable":['
            '{"vtepIpListType":"sendToAny","macAddr":"00:00:5e:00:53:01","vtepIpList":[]},'
            '{"vtepIpListType":"sendToAll","macAddr":"00:00:00:00:00:00","vtepIpList":[]}'
            "]}]}},"
            '"nonSwitchSources":{}}\n',
        )
        # No VTEP of theirs can match.
        self.assertEqual(run(state, "--json", "--vtep", "10.0.0.1"), NOTHING_JSON)


class Json(Exact):
    def test_a_whole_fabric(self):
        self.assertEqual(
            run(FABRIC_STATE, "--json"),
            '{"switches":{'
            '"leaf1":{"vniInDottedNotation":false,"vnis":['
            '{"macAddress":"00:00:00:00:00:00","vni":10,"unicastHostTable":['
            '{"macAddr":"00:00:5e:00:53:01","vtepIp":"10.0.0.1","moveCount":1},'
            '{"macAddr":"80:00:5e:00:53:01","vtepIp":"192.168.100.200","moveCount":0}],'
            '"bumVtepListTable":['
            '{"vtepIpListType":"sendToAny","macAddr":"80:00:5e:00:53:01",'
            '"vtepIpList":["9.0.0.1","10.0.0.1","10.0.0.3"]},'
            '{"vtepIpListType":"sendToAll","macAddr":"00:00:00:00:00:00",'
            '"vtepIpList":["10.0.0.1"]},'
            '{"vtepIpListType":"sendToAll","macAddr":"80:00:5e:00:53:01",'
            '"vtepIpList":["10.0.0.4"]}]}]},'
            '"leaf10":{"vniInDottedNotation":false,"vnis":['
            '{"macAddress":"00:00:00:00:00:00","vni":4096,"unicastHostTable":['
            '{"macAddr":"00:00:5e:00:53:0a","vtepIp":"10.0.0.10","moveCount":7}],'
            '"bumVtepListTable":[]},'
            '{"macAddress":"00:00:00:00:00:00","vni":65536,"unicastHostTable":['
            '{"macAddr":"00:00:5e:00:53:0a","vtepIp":"10.0.0.10","moveCount":0}],'
            '"bumVtepListTable":[]}]},'
            '"leaf2":{"vniInDottedNotation":false,"vnis":['
            '{"macAddress":"00:00:00:00:00:00","vni":20,"unicastHostTable":['
            '{"macAddr":"00:00:5e:00:53:02","vtepIp":"10.0.0.2","moveCount":123456}],'
            '"bumVtepListTable":['
            '{"vtepIpListType":"sendToAll","macAddr":"00:00:00:00:00:00",'
            '"vtepIpList":["10.0.0.9","10.0.0.10"]}]}]}},'
            '"nonSwitchSources":{'
            '"EVPN":{"vniInDottedNotation":false,"vnis":['
            '{"macAddress":"00:00:00:00:00:00","vni":10,"unicastHostTable":['
            '{"macAddr":"00:00:5e:00:53:c1","vtepIp":"10.8.0.1","moveCount":2}],'
            '"bumVtepListTable":['
            '{"vtepIpListType":"sendToAll","macAddr":"00:00:00:00:00:00",'
            '"vtepIpList":["10.8.0.1","10.8.0.2"]}]},'
            '{"macAddress":"00:00:00:00:00:00","vni":16777215,"unicastHostTable":[],'
            '"bumVtepListTable":['
            '{"vtepIpListType":"sendToAll","macAddr":"00:00:00:00:00:00",'
            '"vtepIpList":["10.8.0.1"]}]}]},'
            '"HSC":{"vniInDottedNotation":false,"vnis":['
            '{"macAddress":"00:00:00:00:00:00","vni":10,"unicastHostTable":['
            '{"macAddr":"00:00:5e:00:53:01","vtepIp":"10.0.1.1","moveCount":0}],'
            '"bumVtepListTable":[]}]},'
            '"QVX":{"vniInDottedNotation":false,"vnis":['
            '{"macAddress":"00:00:00:00:00:00","vni":10,"unicastHostTable":[],'
            '"bumVtepListTable":['
            '{"vtepIpListType":"sendToAny","macAddr":"00:00:5e:00:53:91",'
            '"vtepIpList":["10.0.2.1"]}]}]}}}\n',
        )

    def test_the_first_revision_has_a_time_and_dotted_is_only_reported(self):
        table = {"00:00:5e:00:53:01": {"vtep": "10.0.0.1", "moves": 4294967295}}
        document = (
            '{"switches":{"leaf1":{"vniInDottedNotation":%s,"vnis":['
            '{"macAddress":"00:00:00:00:00:00","vni":4098,"unicastHostTable":['
            '{"macAddr":"00:00:5e:00:53:01","vtepIp":"10.0.0.1",%s"moveCount":-1}],'
            '"bumVtepListTable":[]}]}},"nonSwitchSources":{}}\n'
        )
        state = switch("leaf1", {"unicast": table}, "4098")
        without, with_time = "", '"timeLearned":0,'
        for words, expected in (
            ([], document % ("false", without)),
            (["--dotted"], document % ("true", without)),
            (["--revision", "1"], document % ("false", with_time)),
            (["--revision", "2", "--dotted"], document % ("true", without)),
            (["--revision", "0"], document % ("false", without)),
            (["--revision", "3"], document % ("false", without)),
        ):
            with self.subTest(words=words):
                self.assertEqual(run(state, "--json", *words), expected)

    def test_pretty(self):
        tables = {
            "unicast": {"00:00:5e:00:53:01": {"vtep": "10.0.0.1", "moves": 3}},
            "multipath": {"00:00:5e:00:53:02": []},
            "flood": {"00:00:00:00:00:00": ["10.0.0.1", "10.0.0.2"]},
        }
        self.assertEqual(
            run(switch("leaf1", tables), "--pretty"),
            "{\n"
            '  "switches": {\n'
            '    "leaf1": {\n'
            '      "vniInDottedNotation": false,\n'
            '      "vnis": [\n'
            "        {\n"
            '          "macAddress": "00:00:00:00:00:00",\n'
            '          "vni": 10,\n'
            '          "unicastHostTable": [\n'
            "            {\n"
            '              "macAddr": "00:00:5e:00:53:01",\n'
            '              "vtepIp": "10.0.0.1",\n'
            '              "moveCount": 3\n'
            "            }\n"
            "          ],\n"
            '          "bumVtepListTable": [\n'
            "            {\n"
            '              "vtepIpListType": "sendToAny",\n'
            '              "macAddr": "00:00:5e:00:53:02",\n'
            '              "vtepIpList": []\n'
            "            },\n"
            "            {\n"
            '              "vtepIpListType": "sendToAll",\n'
            '              "macAddr": "00:00:00:00:00:00",\n'
            '              "vtepIpList": [\n'
            '                "10.0.0.1",\n'
            '                "10.0.0.2"\n'
            "              ]\n"
            "            }\n"
            "          ]\n"
            "        }\n"
            "      ]\n"
            "    }\n"
            "  },\n"
            '  "nonSwitchSources": {}\n'
            "}\n",
        )


class Filters(Exact):
    def check(self, words, unicast, flood):
        with self.subTest(words=words):
            self.assertEqual(run(FABRIC_STATE, *words), listing(unicast, flood))

    def test_by_source(self):
        leaf1 = (U_LEAF1_10_LOW + U_LEAF1_10_HIGH, 2)
        leaf1_flood = (F_LEAF1_MULTIPATH + F_LEAF1_ZERO + F_LEAF1_LIST, 5)
        switches = (leaf1[0] + U_LEAF10_4096 + U_LEAF10_65536 + U_LEAF2_20, 5)
        switches_flood = (leaf1_flood[0] + F_LEAF2, 7)
        others = (U_EVPN_10 + U_HSC_10, 2)
        others_flood = (F_EVPN_10 + F_EVPN_LAST + F_QVX, 4)
        everything = (switches[0] + others[0], 7)
        everything_flood = (switches_flood[0] + others_flood[0], 11)
        none = ("", 0)

        self.check(["--source", ""], everything, everything_flood)
        self.check(["--source", "all"], switches, switches_flood)
        self.check(["--source", "leaf1"], leaf1, leaf1_flood)
        self.check(["--source", "hsc"], (U_HSC_10, 1), none)
        self.check(["--source", "qvx"], none, (F_QVX, 1))
        self.check(["--source", "evpn"], (U_EVPN_10, 1), (F_EVPN_10 + F_EVPN_LAST, 3))
        for unknown in ("HSC", "QVX", "EVPN", "ALL", "leaf", "LEAF1", "leaf1 "):
            self.check(["--source", unknown], none, none)

    def test_by_vni(self):
        self.check(["--vni", "20"], (U_LEAF2_20, 1), (F_LEAF2, 2))
        self.check(["--vni", "0.16.0"], (U_LEAF10_4096, 1), ("", 0))
        self.check(["--vni", "1.0.0"], (U_LEAF10_65536, 1), ("", 0))
        self.check(["--vni", "16777215"], ("", 0), (F_EVPN_LAST, 1))
        # VNI 0 is a VNI, not the absence of a filter.
        self.check(["--vni", "0"], ("", 0), ("", 0))

    def test_by_mac(self):
        # A MAC filter leaves no EVPN flood entry; the zero MAC is no filter at all.
        low = (U_LEAF1_10_LOW + U_HSC_10, 2)
        for form in ("00:00:5e:00:53:01", "00-00-5E-00-53-01", "0000.5e00.5301"):
            self.check(["--mac", form], low, ("", 0))
        self.check(
            ["--mac", "80:00:5e:00:53:01"],
            (U_LEAF1_10_HIGH, 1),
            (F_LEAF1_MULTIPATH + F_LEAF1_LIST, 4),
        )
        self.check(["--mac", "00:00:5e:00:53:c1"], (U_EVPN_10, 1), ("", 0))
        self.check(["--mac", "00:00:5e:00:53:ff"], ("", 0), ("", 0))
        self.assertEqual(run(FABRIC_STATE, "--mac", "0000.0000.0000"), run(FABRIC_STATE))

    def test_by_vtep(self):
        # One VTEP that matches keeps a multipath entry whole.
        self.check(["--vtep", "9.0.0.1"], ("", 0), (F_LEAF1_MULTIPATH, 3))
        self.check(
            ["--vtep", "10.0.0.1"], (U_LEAF1_10_LOW, 1), (F_LEAF1_MULTIPATH + F_LEAF1_ZERO, 4)
        )
        # An EVPN flood entry is one VTEP, and stays or goes by itself.
        self.check(
            ["--vtep", "10.8.0.2", "--vtep", "10.0.1.1"],
            (U_HSC_10, 1),
            ("EVPN              10          0000.0000.0000  10.8.0.2       \n", 1),
        )
        self.check(["--vtep", "0.0.0.0"], ("", 0), ("", 0))

    def test_all_together(self):
        words = ["--source", "leaf1", "--vni", "10", "--mac", "80:00:5e:00:53:01"]
        self.check(words + ["--vtep", "10.0.0.4"], ("", 0), (F_LEAF1_LIST, 1))
        self.check(words + ["--vtep", "10.8.0.1"], ("", 0), ("", 0))

    def test_what_is_filtered_out_leaves_neither_source_nor_vni_in_json(self):
        self.assertEqual(
            run(FABRIC_STATE, "--json", "--vni", "10", "--vtep", "10.0.1.1"),
            '{"switches":{},"nonSwitchSources":{"HSC":{"vniInDottedNotation":false,"vnis":['
            '{"macAddress":"00:00:00:00:00:00","vni":10,"unicastHostTable":['
            '{"macAddr":"00:00:5e:00:53:01","vtepIp":"10.0.1.1","moveCount":0}],'
            '"bumVtepListTable":[]}]}}}\n',
        )


class ConfusingNames(Exact):
    def test_a_switch_called_like_a_listed_source_shows_that_source(self):
        own = {"10": {"unicast": {"00:00:5e:00:53:01": {"vtep": "10.0.0.1"}}}}
        listed = {"10": {"unicast": {"00:00:5e:00:53:02": {"vtep": "10.0.1.1"}}}}
        row = "HSC               10          0000.5e00.5302  10.0.1.1            0\n"
        once = listing((row, 1), ("", 0))
        both = {"switches": {"HSC": own}, "sources": {"HSC": listed}}
        for source in ("", "all", "HSC", "hsc"):
            with self.subTest(source=source):
                self.assertEqual(run(both, "--source", source), once)
        self.assertEqual(run({"switches": {"HSC": own}}), NOTHING)
        self.assertEqual(run({"sources": {"HSC": listed}}, "--source", "HSC"), NOTHING)

    def test_a_switch_called_evpn_is_a_switch_and_one_called_like_a_word_is_out_of_reach(self):
        tables = {"10": {"unicast": {"00:00:5e:00:53:01": {"vtep": "10.0.0.1"}}}}
        state = {"switches": {"EVPN": tables, "evpn": tables}}
        upper = "EVPN              10          0000.5e00.5301  10.0.0.1            0\n"
        lower = "evpn              10          0000.5e00.5301  10.0.0.1            0\n"
        self.assertEqual(run(state), listing((upper + lower, 2), ("", 0)))
        self.assertEqual(run(state, "--source", "EVPN"), listing((upper, 1), ("", 0)))
        self.assertEqual(run(state, "--source", "evpn"), NOTHING)


if __name__ == "__main__":
    unittest.main()
