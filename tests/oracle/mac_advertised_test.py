"""The reference for `mac advertised` against outputs written out by hand."""

import unittest

import exact
from exact import Exact

UNICAST = (
    "            Advertised Mac Address Table\n"
    "-----------------------------------------------------------------------------\n"
    "\n"
    "VNI         Mac Address       VTEP            Moves\n"
    "----------- ----------------- --------------- -----\n"
)

FLOOD = (
    "\n"
    "            Advertised Flood Table\n"
    "---------------------------------------------------\n"
    "\n"
    "VNI         Mac Address       VTEP(s)\n"
    "----------- ----------------- -----------------------------------------------\n"
)

TOTAL = "Total Mac Addresses for this criterion: "

NOTHING = UNICAST + TOTAL + "0\n" + FLOOD + TOTAL + "0\n"

NOTHING_JSON = '{"vniInDottedNotation":false,"vnis":[]}\n'

# One entry of every kind, in an order in which nothing is printed.
STATE = {
    "vnis": {
        "65536": {"unicast": {"00-00-5e-00-53-0a": {"vtep": "10.0.0.10", "moves": 100000}}},
        "4096": {
            "unicast": {"00-00-5e-00-53-0a": {"vtep": "10.0.0.10", "moves": 7}},
            "flood": {"0000.0000.0000": ["10.0.0.10", "10.0.0.9"]},
        },
        "10": {
            "unicast": {
                "80:00:5E:00:53:01": {"vtep": "192.168.100.200"},
                "00:00:5e:00:53:01": {"vtep": "10.0.0.1", "moves": 1},
            },
            "multipath": {"80:00:5e:00:53:01": ["10.0.0.3", "9.0.0.1", "10.0.0.1", "10.0.0.2"]},
            "flood": {
                "80:00:5e:00:53:01": ["10.0.0.4"],
                "00:00:00:00:00:00": ["10.0.0.1"],
            },
            "arp": {"192.0.2.1": {"mac": "00:00:5e:00:53:01"}},
        },
    },
    "sources": {
        "HSC": {
            "10": {
                "unicast": {"00:00:5e:00:53:81": {"vtep": "10.0.1.1"}},
                "multipath": {"00:00:5e:00:53:82": ["10.0.1.1"]},
                "flood": {"00:00:5e:00:53:82": ["10.0.1.2"]},
            },
            "20": {"unicast": {"00:00:5e:00:53:81": {"vtep": "10.0.1.1", "moves": 2}}},
        }
    },
    "evpn": {
        "EVPN": {
            "hosts": {"10": {"00:00:5e:00:53:c1": {"vtep": "10.8.0.1", "moves": 2}}},
            "flood": {"10": ["10.8.0.2", "10.8.0.1"], "16777215": ["10.8.0.1"]},
        }
    },
}

U_10_LOW = "10          0000.5e00.5301  10.0.0.1            1\n"
U_10_HIGH = "10          8000.5e00.5301  192.168.100.200     0\n"
U_4096 = "4096        0000.5e00.530a  10.0.0.10           7\n"
U_65536 = "65536       0000.5e00.530a  10.0.0.10       100000\n"

F_10_MULTIPATH = (
    "10          8000.5e00.5301  9.0.0.1         10.0.0.1        10.0.0.2       \n"
    "                              10.0.0.3       \n"
)
F_10_ZERO = "10          0000.0000.0000  10.0.0.1       \n"
F_4096 = "4096        0000.0000.0000  10.0.0.9        10.0.0.10      \n"

HSC_10 = "10          0000.5e00.5381  10.0.1.1            0\n"
HSC_20 = "20          0000.5e00.5381  10.0.1.1            2\n"
HSC_FLOOD = "10          0000.5e00.5382  10.0.1.1       \n"


def run(advertised, *words):
    return exact.run({"advertised": advertised}, "mac", "advertised", *words)


def listing(unicast, flood):
    """The whole text from (rows, their number) of both sections."""
    return f"{UNICAST}{unicast[0]}{TOTAL}{unicast[1]}\n{FLOOD}{flood[0]}{TOTAL}{flood[1]}\n"


EVERYTHING = listing(
    (U_10_LOW + U_10_HIGH + U_4096 + U_65536, 4), (F_10_MULTIPATH + F_10_ZERO + F_4096, 3)
)


def vni_json(vni, unicast="", flood=""):
    return (
        f'{{"macAddress":"00:00:00:00:00:00","vni":{vni},'
        f'"unicastHostTable":[{unicast}],"bumVtepListTable":[{flood}]}}'
    )


def any_json(mac, vteps):
    return f'{{"vtepIpListType":"sendToAny","macAddr":"{mac}","vtepIpList":[{vteps}]}}'


def all_json(mac, vteps):
    return f'{{"vtepIpListType":"sendToAll","macAddr":"{mac}","vtepIpList":[{vteps}]}}'


def json_of(*vnis):
    return f'{{"vniInDottedNotation":false,"vnis":[{",".join(vnis)}]}}\n'


class Text(Exact):
    def test_without_any_state_only_headers_and_totals_stand(self):
        self.assertEqual(exact.run({}, "mac", "advertised"), NOTHING)
        for state in ({}, {"vnis": {}, "sources": {}, "evpn": {}}, {"vnis": {"10": {}}}):
            self.assertEqual(run(state), NOTHING)
            self.assertEqual(run(state, "--json"), NOTHING_JSON)

    def test_a_whole_fabric(self):
        self.assertEqual(
            run(STATE),
            "            Advertised Mac Address Table\n"
            "-----------------------------------------------------------------------------\n"
            "\n"
            "VNI         Mac Address       VTEP            Moves\n"
            "----------- ----------------- --------------- -----\n"
            "10          0000.5e00.5301  10.0.0.1            1\n"
            "10          8000.5e00.5301  192.168.100.200     0\n"
            "4096        0000.5e00.530a  10.0.0.10           7\n"
            "65536       0000.5e00.530a  10.0.0.10       100000\n"
            "Total Mac Addresses for this criterion: 4\n"
            "\n"
            "            Advertised Flood Table\n"
            "---------------------------------------------------\n"
            "\n"
            "VNI         Mac Address       VTEP(s)\n"
            "----------- ----------------- -----------------------------------------------\n"
            "10          8000.5e00.5301  9.0.0.1         10.0.0.1        10.0.0.2       \n"
            "                              10.0.0.3       \n"
            "10          0000.0000.0000  10.0.0.1       \n"
            "4096        0000.0000.0000  10.0.0.9        10.0.0.10      \n"
            "Total Mac Addresses for this criterion: 3\n",
        )

    def test_a_row_breaks_behind_three_vteps_if_more_follow(self):
        vteps = [f"10.0.0.{last}" for last in range(1, 8)]
        prefix = "10          0000.5e00.5301"
        first = "  10.0.0.1        10.0.0.2        10.0.0.3       \n"
        for count, rest in (
            (0, " \n"),
            (3, first),
            (4, first + " " * 30 + "10.0.0.4       \n"),
            (6, first + " " * 30 + "10.0.0.4        10.0.0.5        10.0.0.6       \n"),
            (
                7,
                first
                + " " * 30 + "10.0.0.4        10.0.0.5        10.0.0.6       \n"
                + " " * 30 + "10.0.0.7       \n",
            ),
        ):
            for table in ("multipath", "flood"):
                with self.subTest(count=count, table=table):
                    state = {"vnis": {"10": {table: {"00:00:5e:00:53:01": vteps[:count]}}}}
                    self.assertEqual(run(state), listing(("", 0), (prefix + rest, 1)))

    def test_dotted_vnis(self):
        state = {
            "vnis": {
                "4098": {"unicast": {"00:00:5e:00:53:01": {"vtep": "10.0.0.1"}}},
                "16777215": {"flood": {"00:00:00:00:00:00": ["10.0.0.1"]}},
            }
        }
        unicast = "0.16.2      0000.5e00.5301  10.0.0.1            0\n"
        flood = "255.255.255 0000.0000.0000  10.0.0.1       \n"
        self.assertEqual(run(state, "--dotted"), listing((unicast, 1), (flood, 1)))

    def test_move_counts_are_signed(self):
        table = {
            "00:00:5e:00:53:01": {"vtep": "10.0.0.1", "moves": 2147483648},
            "00:00:5e:00:53:02": {"vtep": "10.0.0.1", "moves": 4294967295},
        }
        unicast = (
            "10          0000.5e00.5301  10.0.0.1        -2147483648\n"
            "10          0000.5e00.5302  10.0.0.1           -1\n"
        )
        self.assertEqual(run({"vnis": {"10": {"unicast": table}}}), listing((unicast, 2), ("", 0)))


class Json(Exact):
    def test_a_whole_fabric(self):
        self.assertEqual(
            run(STATE, "--json"),
            '{"vniInDottedNotation":false,"vnis":['
            '{"macAddress":"00:00:00:00:00:00","vni":10,"unicastHostTable":['
            '{"macAddr":"00:00:5e:00:53:01","vtepIp":"10.0.0.1","moveCount":1},'
            '{"macAddr":"80:00:5e:00:53:01","vtepIp":"192.168.100.200","moveCount":0}],'
            '"bumVtepListTable":['
            '{"vtepIpListType":"sendToAny","macAddr":"80:00:5e:00:53:01",'
            '"vtepIpList":["9.0.0.1","10.0.0.1","10.0.0.2","10.0.0.3"]},'
            '{"vtepIpListType":"sendToAll","macAddr":"00:00:00:00:00:00",'
            '"vtepIpList":["10.0.0.1"]}]},'
            '{"macAddress":"00:00:00:00:00:00","vni":4096,"unicastHostTable":['
            '{"macAddr":"00:00:5e:00:53:0a","vtepIp":"10.0.0.10","moveCount":7}],'
            '"bumVtepListTable":['
            '{"vtepIpListType":"sendToAll","macAddr":"00:00:00:00:00:00",'
            '"vtepIpList":["10.0.0.9","10.0.0.10"]}]},'
            '{"macAddress":"00:00:00:00:00:00","vni":65536,"unicastHostTable":['
            '{"macAddr":"00:00:5e:00:53:0a","vtepIp":"10.0.0.10","moveCount":100000}],'
            '"bumVtepListTable":[]}]}\n',
        )

    def test_the_first_revision_has_a_time_and_dotted_is_only_reported(self):
        table = {"00:00:5e:00:53:01": {"vtep": "10.0.0.1", "moves": 4294967295}}
        document = (
            '{"vniInDottedNotation":%s,"vnis":['
            '{"macAddress":"00:00:00:00:00:00","vni":4098,"unicastHostTable":['
            '{"macAddr":"00:00:5e:00:53:01","vtepIp":"10.0.0.1",%s"moveCount":-1}],'
            '"bumVtepListTable":[]}]}\n'
        )
        state = {"vnis": {"4098": {"unicast": table}}}
        self.assertEqual(run(state, "--json", "--dotted"), document % ("true", ""))
        self.assertEqual(
            run(state, "--json", "--revision", "1"), document % ("false", '"timeLearned":0,')
        )

    def test_pretty(self):
        state = {"vnis": {"10": {"flood": {"00:00:00:00:00:00": ["10.0.0.1"]}}}}
        self.assertEqual(
            run(state, "--pretty"),
            "{\n"
            '  "vniInDottedNotation": false,\n'
            '  "vnis": [\n'
            "    {\n"
            '      "macAddress": "00:00:00:00:00:00",\n'
            '      "vni": 10,\n'
            '      "unicastHostTable": [],\n'
            '      "bumVtepListTable": [\n'
            "        {\n"
            '          "vtepIpListType": "sendToAll",\n'
            '          "macAddr": "00:00:00:00:00:00",\n'
            '          "vtepIpList": [\n'
            '            "10.0.0.1"\n'
            "          ]\n"
            "        }\n"
            "      ]\n"
            "    }\n"
            "  ]\n"
            "}\n",
        )


class FloodBesideMultipath(Exact):
    MAC = "00:00:5e:00:53:01"
    BOTH = {"vnis": {"10": {"multipath": {MAC: ["10.0.0.1"]}, "flood": {MAC: ["10.0.0.2"]}}}}
    ROW = "10          0000.5e00.5301  10.0.0.1       \n"

    def test_among_all_macs_only_the_multipath_entry_is_collected(self):
        self.assertEqual(run(self.BOTH), listing(("", 0), (self.ROW, 1)))
        self.assertEqual(
            run(self.BOTH, "--json"), json_of(vni_json(10, "", any_json(self.MAC, '"10.0.0.1"')))
        )

    def test_one_mac_that_is_asked_for_has_both_in_json_and_one_in_text(self):
        both = any_json(self.MAC, '"10.0.0.1"') + "," + all_json(self.MAC, '"10.0.0.2"')
        self.assertEqual(
            run(self.BOTH, "--json", "--mac", self.MAC), json_of(vni_json(10, "", both))
        )
        self.assertEqual(run(self.BOTH, "--mac", self.MAC), listing(("", 0), (self.ROW, 1)))

    def test_a_multipath_entry_that_is_filtered_out_still_hides_the_flood_list(self):
        self.assertEqual(run(self.BOTH, "--vtep", "10.0.0.2"), NOTHING)
        self.assertEqual(run(self.BOTH, "--vtep", "10.0.0.2", "--json"), NOTHING_JSON)
        flood = "10          0000.5e00.5301  10.0.0.2       \n"
        self.assertEqual(
            run(self.BOTH, "--vtep", "10.0.0.2", "--mac", self.MAC), listing(("", 0), (flood, 1))
        )

    def test_an_empty_multipath_entry_hides_the_flood_list_too(self):
        state = {"vnis": {"10": {"multipath": {self.MAC: []}, "flood": {self.MAC: ["10.0.0.2"]}}}}
        self.assertEqual(run(state), listing(("", 0), ("10          0000.5e00.5301 \n", 1)))
        self.assertEqual(
            run(state, "--json"), json_of(vni_json(10, "", any_json(self.MAC, "")))
        )

    def test_two_entries_of_one_vni_hide_it_in_text_alone(self):
        tables = self.BOTH["vnis"]["10"]
        state = {
            "vnis": {
                "10": {"flood": tables["flood"]},
                "010": {"multipath": tables["multipath"]},
            }
        }
        both = any_json(self.MAC, '"10.0.0.1"') + "," + all_json(self.MAC, '"10.0.0.2"')
        self.assertEqual(run(state), listing(("", 0), (self.ROW, 1)))
        self.assertEqual(run(state, "--json"), json_of(vni_json(10, "", both)))


class ZeroThroughout(Exact):
    def test_all_macs_are_listed_by_key_whatever_stands_there(self):
        zero = "00:00:00:00:00:00"
        state = {"vnis": {"10": {"unicast": {zero: {"vtep": "0.0.0.0"}}, "multipath": {zero: []}}}}
        self.assertEqual(
            run(state),
            listing(
                ("10          0000.0000.0000  0.0.0.0             0\n", 1),
                ("10          0000.0000.0000 \n", 1),
            ),
        )
        # Its flood list does not stand back for such an entry, but text shows one of the two.
        state["vnis"]["10"]["flood"] = {zero: ["10.0.0.1"]}
        both = any_json(zero, "") + "," + all_json(zero, '"10.0.0.1"')
        unicast = f'{{"macAddr":"{zero}","vtepIp":"0.0.0.0","moveCount":0}}'
        self.assertEqual(run(state, "--json"), json_of(vni_json(10, unicast, both)))

    def test_an_evpn_host_without_vtep_and_moves_is_dead(self):
        hosts = {"00:00:5e:00:53:01": {"vtep": "0.0.0.0"}}
        state = {"evpn": {"EVPN": {"hosts": {"10": hosts}}}}
        self.assertEqual(run(state, "--dest", "evpn"), NOTHING)
        self.assertEqual(run(state, "--dest", "evpn", "--json"), NOTHING_JSON)


class Filters(Exact):
    def check(self, words, unicast, flood):
        with self.subTest(words=words):
            self.assertEqual(run(STATE, *words), listing(unicast, flood))

    def test_a_destination_narrows_nothing(self):
        for dest in ("", "all", "qvx", "leaf1", "HSC", "EVPN", "no such switch"):
            with self.subTest(dest=dest):
                self.assertEqual(run(STATE, "--dest", dest), EVERYTHING)

    def test_hsc_and_evpn_are_lists_of_their_own(self):
        self.check(["--dest", "hsc"], (HSC_10 + HSC_20, 2), (HSC_FLOOD, 1))
        self.check(
            ["--dest", "evpn"],
            ("10          0000.5e00.53c1  10.8.0.1            2\n", 1),
            (
                "10          0000.0000.0000  10.8.0.1        10.8.0.2       \n"
                "16777215    0000.0000.0000  10.8.0.1       \n",
                2,
            ),
        )
        for words in (["--dest", "hsc"], ["--dest", "evpn"]):
            self.assertEqual(run({"vnis": STATE["vnis"]}, *words), NOTHING)
            self.assertEqual(run({"sources": {}, "evpn": {}}, *words), NOTHING)

    def test_by_vni(self):
        self.check(["--vni", "0.16.0"], (U_4096, 1), (F_4096, 1))
        self.check(["--vni", "20"], ("", 0), ("", 0))
        self.check(["--vni", "20", "--dest", "hsc"], (HSC_20, 1), ("", 0))
        evpn = "16777215    0000.0000.0000  10.8.0.1       \n"
        self.check(["--vni", "16777215", "--dest", "evpn"], ("", 0), (evpn, 1))

    def test_by_mac(self):
        self.check(["--mac", "0000.5e00.530a"], (U_4096 + U_65536, 2), ("", 0))
        self.check(["--mac", "80:00:5e:00:53:01"], (U_10_HIGH, 1), (F_10_MULTIPATH, 1))
        host = "10          0000.5e00.53c1  10.8.0.1            2\n"
        self.check(["--mac", "00:00:5e:00:53:c1", "--dest", "evpn"], (host, 1), ("", 0))
        self.assertEqual(run(STATE, "--mac", "0000.0000.0000"), EVERYTHING)

    def test_by_vtep(self):
        self.check(["--vtep", "9.0.0.1"], ("", 0), (F_10_MULTIPATH, 1))
        self.check(
            ["--vtep", "10.0.0.10", "--vtep", "192.168.100.200"],
            (U_10_HIGH + U_4096 + U_65536, 3),
            (F_4096, 1),
        )
        # An EVPN flood entry is one VTEP, and stays or goes by itself.
        one = "10          0000.0000.0000  10.8.0.2       \n"
        self.check(["--vtep", "10.8.0.2", "--dest", "evpn"], ("", 0), (one, 1))


class EntryNames(Exact):
    @staticmethod
    def tables(last):
        return {"unicast": {f"00:00:5e:00:53:0{last}": {"vtep": "10.0.0.1"}}}

    @staticmethod
    def row(vni, last):
        return f"{vni:<11} 0000.5e00.530{last}  10.0.0.1            0\n"

    def test_the_number_at_the_start_is_the_vni_and_without_one_it_is_0(self):
        for name, vni in (("abc", 0), ("", 0), ("12x", 12), (" 7", 7), ("0x10", 0), ("+3", 3)):
            with self.subTest(name=name):
                state = {"vnis": {name: self.tables(1)}}
                self.assertEqual(run(state), listing((self.row(vni, 1), 1), ("", 0)))

    def test_entries_of_one_vni_are_one(self):
        state = {"vnis": {"012": self.tables(2), "12": self.tables(3), "12x": self.tables(1)}}
        rows = self.row(12, 1) + self.row(12, 2) + self.row(12, 3)
        self.assertEqual(run(state), listing((rows, 3), ("", 0)))

    def test_a_vni_filter_finds_the_plain_name_alone(self):
        state = {"vnis": {"012": self.tables(2), "12": self.tables(3), "abc": self.tables(1)}}
        self.assertEqual(run(state, "--vni", "12"), listing((self.row(12, 3), 1), ("", 0)))
        self.assertEqual(run(state, "--vni", "0"), NOTHING)

    def test_an_entry_out_of_range_fails_unless_it_is_not_looked_at(self):
        for name in ("16777216", "-1", "99999999999999999999"):
            state = {"vnis": {"10": self.tables(1), name: {}}, "sources": {"HSC": {}}}
            advertised = {"advertised": state}
            with self.subTest(name=name):
                self.check_failure(advertised, "mac", "advertised")
                self.check_failure(advertised, "mac", "advertised", "--json")
                self.check_failure(advertised, "mac", "advertised", "--mac", "0000.5e00.5309")
                one = run(state, "--vni", "10")
                self.assertEqual(one, listing((self.row(10, 1), 1), ("", 0)))
                self.assertEqual(run(state, "--dest", "hsc"), NOTHING)
                self.assertEqual(run(state, "--dest", "evpn"), NOTHING)


if __name__ == "__main__":
    unittest.main()
