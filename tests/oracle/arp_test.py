"""The reference for the ARP commands against outputs written out by hand."""

import unittest

import exact
from exact import Exact

ADVERTISED = (
    "                       Advertised ARP Table\n"
    "-------------------------------------------------------------------------\n"
    "VNI      IP Address      MAC Address        Changes\n"
    "-------- --------------- ------------------ --------\n"
)

RECEIVED = (
    "                        Received ARP Table\n"
    "-------------------------------------------------------------------------\n"
    "Switch              VNI      IP Address      MAC Address        Changes\n"
    "------------------- -------- --------------- ------------------ ---------\n"
)

TOTAL = "\nTotal IP addresses for this criterion: "

# In an order in which nothing is printed.
VNIS = {
    "9": {"arp": {"192.0.2.9": {"mac": "00:00:5e:00:53:09", "preference": 255}}},
    "100": {"arp": {}},
    "10": {
        "arp": {
            "2001:DB8::1": {"mac": "00-00-5E-00-53-01", "changes": 1},
            "192.0.2.10": {"mac": "00:00:5e:00:53:01", "preference": 7, "changes": 2},
            "192.0.2.9": {"mac": "0000.5e00.5302", "changes": 1234567890},
            "2001:db8:0:1:2:3:4:5": {"mac": "00:00:5e:00:53:01"},
        },
        "unicast": {"00:00:5e:00:53:01": {"vtep": "10.0.0.1"}},
    },
}

R_9 = "9        192.0.2.9       0000.5e00.5309     0        \n"
R_10_LAST_9 = "10       192.0.2.9       0000.5e00.5302     1234567890\n"
R_10_LAST_10 = "10       192.0.2.10      0000.5e00.5301     2        \n"
R_10_SHORT = "10       2001:db8::1     0000.5e00.5301     1        \n"
R_10_LONG = "10       2001:db8:0:1:2: 0000.5e00.5301     0        \n"

J_9 = '"192.0.2.9":{"macAddress":"00:00:5e:00:53:09","changes":0,"preference":255}'
J_10_LAST_9 = '"192.0.2.9":{"macAddress":"00:00:5e:00:53:02","changes":1234567890,"preference":0}'
J_10_LAST_10 = '"192.0.2.10":{"macAddress":"00:00:5e:00:53:01","changes":2,"preference":7}'
J_10_SHORT = '"2001:db8::1":{"macAddress":"00:00:5e:00:53:01","changes":1,"preference":0}'
J_10_LONG = '"2001:db8:0:1:2:3:4:5":{"macAddress":"00:00:5e:00:53:01","changes":0,"preference":0}'


def advertised(vnis, *words):
    return exact.run({"advertised": {"vnis": vnis}}, "arp", "advertised", *words)


def received(switches, *words):
    return exact.run({"received": {"switches": switches}}, "arp", "received", *words)


def vnis_json(**bindings):
    """The VNIs v9, v10, ... in the order given, each with its bindings."""
    vnis = (f'"{vni[1:]}":{{"addresses":{{{text}}}}}' for vni, text in bindings.items())
    return f'{{"vnis":{{{",".join(vnis)}}}}}'


def one(ip, **entry):
    return {"10": {"arp": {ip: {"mac": "00:00:5e:00:53:01", **entry}}}}


class Advertised(Exact):
    def test_without_any_state_only_header_and_total_stand(self):
        nothing = ADVERTISED + TOTAL + "0\n"
        for members in ({}, {"advertised": {}}, {"advertised": {"vnis": {}}}):
            self.assertEqual(exact.run(members, "arp", "advertised"), nothing)
            self.assertEqual(exact.run(members, "arp", "advertised", "--json"), '{"vnis":{}}\n')

    def test_text(self):
        self.assertEqual(
            advertised(VNIS),
            "                       Advertised ARP Table\n"
            "-------------------------------------------------------------------------\n"
            "VNI      IP Address      MAC Address        Changes\n"
            "-------- --------------- ------------------ --------\n"
            "10       192.0.2.9       0000.5e00.5302     1234567890\n"
            "10       192.0.2.10      0000.5e00.5301     2        \n"
            "10       2001:db8::1     0000.5e00.5301     1        \n"
            "10       2001:db8:0:1:2: 0000.5e00.5301     0        \n"
            "9        192.0.2.9       0000.5e00.5309     0        \n"
            "\n"
            "Total IP addresses for this criterion: 5\n",
        )

    def test_json(self):
        self.assertEqual(
            advertised(VNIS, "--json"),
            '{"vnis":{'
            '"10":{"addresses":{'
            '"192.0.2.9":{"macAddress":"00:00:5e:00:53:02","changes":1234567890,"preference":0},'
            '"192.0.2.10":{"macAddress":"00:00:5e:00:53:01","changes":2,"preference":7},'
            '"2001:db8::1":{"macAddress":"00:00:5e:00:53:01","changes":1,"preference":0},'
            '"2001:db8:0:1:2:3:4:5":'
            '{"macAddress":"00:00:5e:00:53:01","changes":0,"preference":0}}},'
            '"100":{"addresses":{}},'
            '"9":{"addresses":{'
            '"192.0.2.9":{"macAddress":"00:00:5e:00:53:09","changes":0,"preference":255}}}}}\n',
        )

    def test_pretty(self):
        self.assertEqual(
            advertised({"10": VNIS["9"], "9": {}}, "--pretty"),
            "{\n"
            '  "vnis": {\n'
            '    "10": {\n'
            '      "addresses": {\n'
            '        "192.0.2.9": {\n'
            '          "macAddress": "00:00:5e:00:53:09",\n'
            '          "changes": 0,\n'
            '          "preference": 255\n'
            "        }\n"
            "      }\n"
            "    },\n"
            '    "9": {\n'
            '      "addresses": {}\n'
            "    }\n"
            "  }\n"
            "}\n",
        )

    def test_no_revision_differs(self):
        for form in ([], ["--json"], ["--pretty"]):
            usual = advertised(VNIS, *form)
            for revision in ("0", "1", "3"):
                self.assertEqual(advertised(VNIS, *form, "--revision", revision), usual)

    def test_dotted_vnis_are_keys_and_sort_as_texts(self):
        state = {"4098": {}, "65536": {}, "20": VNIS["9"], "100": {}, "512": {}}
        self.assertEqual(
            advertised(state, "--dotted", "--json"),
            '{"vnis":{"0.0.100":{"addresses":{}},"0.0.20":{"addresses":{' + J_9 + "}},"
            '"0.16.2":{"addresses":{}},"0.2.0":{"addresses":{}},"1.0.0":{"addresses":{}}}}\n',
        )
        row = "0.0.20   192.0.2.9       0000.5e00.5309     0        \n"
        self.assertEqual(advertised(state, "--dotted"), ADVERTISED + row + TOTAL + "1\n")

    def test_a_wide_vni_widens_its_row(self):
        row = "255.255.255 192.0.2.9       0000.5e00.5309     0        \n"
        text = advertised({"16777215": VNIS["9"]}, "--dotted")
        self.assertEqual(text, ADVERTISED + row + TOTAL + "1\n")

    def test_changes_are_signed_and_widen_their_row(self):
        for changes, column in (
            (999999999, "999999999"),
            (1000000000, "1000000000"),
            (2147483648, "-2147483648"),
            (4294967295, "-1       "),
        ):
            row = f"10       192.0.2.1       0000.5e00.5301     {column}\n"
            state = one("192.0.2.1", changes=changes)
            self.assertEqual(advertised(state), ADVERTISED + row + TOTAL + "1\n")
            number = column.strip()
            binding = f'"macAddress":"00:00:5e:00:53:01","changes":{number},"preference":0'
            expected = f'{{"vnis":{{"10":{{"addresses":{{"192.0.2.1":{{{binding}}}}}}}}}}}\n'
            self.assertEqual(advertised(state, "--json"), expected)

    def test_an_address_is_cut_at_15_bytes_in_text_alone(self):
        for ip, column in (
            ("255.255.255.255", "255.255.255.255"),
            ("2001:db8::1:2:3", "2001:db8::1:2:3"),
            ("2001:db8::1:2:34", "2001:db8::1:2:3"),
            ("0:0:0:0:0:ffff:192.0.2.1", "::ffff:192.0.2."),
            ("::", "::             "),
        ):
            row = f"10       {column} 0000.5e00.5301     0        \n"
            self.assertEqual(advertised(one(ip)), ADVERTISED + row + TOTAL + "1\n")
        self.assertIn(
            '"::ffff:192.0.2.1":{', advertised(one("0:0:0:0:0:ffff:192.0.2.1"), "--json")
        )

    def test_filters(self):
        for words, rows, count in (
            (["--vni", "9"], R_9, 1),
            (["--vni", "0.0.9"], R_9, 1),
            (["--vni", "8"], "", 0),
            (["--mac", "00:00:5e:00:53:01"], R_10_LAST_10 + R_10_SHORT + R_10_LONG, 3),
            (["--ip", "192.0.2.9"], R_10_LAST_9 + R_9, 2),
            (["--ip", "2001:db8:0:0::1"], R_10_SHORT, 1),
            (["--ip", "192.0.2.9", "--mac", "0000.5e00.5302", "--vni", "10"], R_10_LAST_9, 1),
            (["--ip", "192.0.2.9", "--mac", "0000.5e00.5302", "--vni", "9"], "", 0),
            (["--ip", "::ffff:192.0.2.9"], "", 0),
        ):
            with self.subTest(words=words):
                self.assertEqual(advertised(VNIS, *words), f"{ADVERTISED}{rows}{TOTAL}{count}\n")
        self.assertEqual(advertised(VNIS, "--mac", "0000.0000.0000"), advertised(VNIS))

    def test_a_vni_is_listed_in_json_though_no_binding_passes(self):
        self.assertEqual(
            advertised(VNIS, "--json", "--mac", "00:00:5e:00:53:ff"),
            vnis_json(v10="", v100="", v9="") + "\n",
        )
        self.assertEqual(
            advertised(VNIS, "--json", "--vni", "9", "--ip", "::"), vnis_json(v9="") + "\n"
        )
        self.assertEqual(advertised(VNIS, "--json", "--vni", "8"), '{"vnis":{}}\n')


class AdvertisedEntries(Exact):
    def test_the_number_at_the_start_is_the_vni_also_for_the_filter(self):
        for name, vni in (("012", "12"), ("12x", "12"), (" 7", "7"), ("0x10", "0"), ("+3", "3")):
            with self.subTest(name=name):
                document = '{"vnis":{"%s":{"addresses":{}}}}\n' % vni
                self.assertEqual(advertised({name: {}}, "--json"), document)
                self.assertEqual(advertised({name: {}}, "--json", "--vni", vni), document)

    def test_what_is_no_number_or_no_vni_fails_whatever_is_asked_for(self):
        for name in ("abc", "", " ", "-", "16777216", "-1", "99999999999999999999"):
            members = {"advertised": {"vnis": {"10": VNIS["10"], name: {}}}}
            for words in ([], ["--json"], ["--vni", "10"], ["--ip", "192.0.2.1"]):
                with self.subTest(name=name, words=words):
                    self.check_failure(members, "arp", "advertised", *words)
            # What is received has nothing to do with it.
            self.assertEqual(exact.run(members, "arp", "received"), RECEIVED + TOTAL + "0\n")

    def test_entries_of_one_vni_that_agree_are_one(self):
        state = {
            **one("192.0.2.1", preference=0),
            "010": {
                "arp": {
                    "192.0.2.1": {"mac": "0000.5E00.5301", "changes": 0},
                    "192.0.2.2": {"mac": "0000.5e00.5302"},
                }
            },
        }
        rows = (
            "10       192.0.2.1       0000.5e00.5301     0        \n"
            "10       192.0.2.2       0000.5e00.5302     0        \n"
        )
        self.assertEqual(advertised(state), ADVERTISED + rows + TOTAL + "2\n")

    def test_entries_of_one_vni_that_disagree_fail_if_both_are_wanted(self):
        for other in (
            {"mac": "00:00:5e:00:53:02"},
            {"mac": "00:00:5e:00:53:01", "preference": 1},
            {"mac": "00:00:5e:00:53:01", "changes": 1},
        ):
            state = {**one("2001:db8::1"), "10x": {"arp": {"2001:db8:0::1": other}}}
            members = {"advertised": {"vnis": state}}
            for words in ([], ["--json"], ["--vni", "10"], ["--ip", "2001:db8::1"]):
                self.check_failure(members, "arp", "advertised", *words)
            for words in (["--vni", "9"], ["--ip", "192.0.2.1"], ["--mac", "0000.5e00.5309"]):
                text = exact.run(members, "arp", "advertised", *words)
                self.assertEqual(text, ADVERTISED + TOTAL + "0\n")

        # A filter that leaves one of the two leaves no disagreement.
        state = {**one("192.0.2.1"), "10x": {"arp": {"192.0.2.1": {"mac": "0000.5e00.5302"}}}}
        row = "10       192.0.2.1       0000.5e00.5302     0        \n"
        text = advertised(state, "--mac", "00:00:5e:00:53:02")
        self.assertEqual(text, ADVERTISED + row + TOTAL + "1\n")


class Received(Exact):
    SWITCHES = {
        "leaf2": VNIS,
        "leaf10": {"10": {"arp": {"192.0.2.9": {"mac": "00:00:5e:00:53:0a"}}}},
        "a switch with a long name": {"9": VNIS["9"]},
    }
    LONG = "a switch with a lon " + R_9
    LEAF10 = "leaf10              10       192.0.2.9       0000.5e00.530a     0        \n"

    def test_without_any_state_only_header_and_total_stand(self):
        for members in ({}, {"received": {}}, {"received": {"switches": {}}}):
            text = exact.run(members, "arp", "received")
            self.assertEqual(text, RECEIVED + TOTAL + "0\n")
            document = exact.run(members, "arp", "received", "--json")
            self.assertEqual(document, '{"switches":{}}\n')

    def test_text(self):
        self.assertEqual(
            received(self.SWITCHES),
            "                        Received ARP Table\n"
            "-------------------------------------------------------------------------\n"
            "Switch              VNI      IP Address      MAC Address        Changes\n"
            "------------------- -------- --------------- ------------------ ---------\n"
            "a switch with a lon 9        192.0.2.9       0000.5e00.5309     0        \n"
            "leaf10              10       192.0.2.9       0000.5e00.530a     0        \n"
            "leaf2               10       192.0.2.9       0000.5e00.5302     1234567890\n"
            "leaf2               10       192.0.2.10      0000.5e00.5301     2        \n"
            "leaf2               10       2001:db8::1     0000.5e00.5301     1        \n"
            "leaf2               10       2001:db8:0:1:2: 0000.5e00.5301     0        \n"
            "leaf2               9        192.0.2.9       0000.5e00.5309     0        \n"
            "\n"
            "Total IP addresses for this criterion: 7\n",
        )

    def test_json(self):
        leaf2 = vnis_json(
            v10=",".join([J_10_LAST_9, J_10_LAST_10, J_10_SHORT, J_10_LONG]), v100="", v9=J_9
        )
        self.assertEqual(
            received(self.SWITCHES, "--json"),
            '{"switches":{'
            '"a switch with a long name":{"vnis":{"9":{"addresses":{'
            '"192.0.2.9":{"macAddress":"00:00:5e:00:53:09","changes":0,"preference":255}}}}},'
            '"leaf10":{"vnis":{"10":{"addresses":{'
            '"192.0.2.9":{"macAddress":"00:00:5e:00:53:0a","changes":0,"preference":0}}}}},'
            '"leaf2":' + leaf2 + "}}\n",
        )

    def test_a_switch_is_listed_in_json_though_nothing_of_it_passes(self):
        self.assertEqual(
            received(self.SWITCHES, "--json", "--vni", "100"),
            '{"switches":{"a switch with a long name":{"vnis":{}},"leaf10":{"vnis":{}},'
            '"leaf2":{"vnis":{"100":{"addresses":{}}}}}}\n',
        )

    def test_filters(self):
        leaf2 = "leaf2               "
        for words, rows, count in (
            (["--switch", "leaf10"], self.LEAF10, 1),
            (["--switch", "leaf1"], "", 0),
            (["--switch", "all"], "", 0),
            (["--vni", "9"], self.LONG + leaf2 + R_9, 2),
            (["--mac", "00:00:5e:00:53:0A"], self.LEAF10, 1),
            (["--ip", "2001:db8::1"], leaf2 + R_10_SHORT, 1),
            (["--switch", "leaf2", "--ip", "192.0.2.9", "--vni", "10"], leaf2 + R_10_LAST_9, 1),
        ):
            with self.subTest(words=words):
                text = received(self.SWITCHES, *words)
                self.assertEqual(text, f"{RECEIVED}{rows}{TOTAL}{count}\n")
        self.assertEqual(received(self.SWITCHES, "--switch", ""), received(self.SWITCHES))
        unknown = received(self.SWITCHES, "--json", "--switch", "leaf")
        self.assertEqual(unknown, '{"switches":{}}\n')

    def test_names_mean_nothing_but_switches_and_other_sources_have_no_bindings(self):
        members = {
            "received": {
                "switches": {"HSC": {"9": VNIS["9"]}, "evpn": {"9": VNIS["9"]}},
                "sources": {"HSC": {"10": VNIS["10"]}, "QVX": {"10": VNIS["10"]}},
            }
        }
        hsc = "HSC                 " + R_9
        evpn = "evpn                " + R_9
        text = exact.run(members, "arp", "received")
        self.assertEqual(text, RECEIVED + hsc + evpn + TOTAL + "2\n")
        text = exact.run(members, "arp", "received", "--switch", "evpn")
        self.assertEqual(text, RECEIVED + evpn + TOTAL + "1\n")

    def test_a_name_is_cut_between_bytes_and_printed_as_it_is(self):
        for name, column in (
            ("x" * 20, b"x" * 19),
            ("\u00e9" * 10, "\u00e9".encode() * 9 + b"\xc3"),
            ("100%s%n", b"100%s%n            "),
        ):
            switches = {"received": {"switches": {name: {"9": VNIS["9"]}}}}
            self.assertEqual(
                exact.run_bytes(switches, "arp", "received"),
                RECEIVED.encode() + column + b" " + (R_9 + TOTAL).encode() + b"1\n",
            )


if __name__ == "__main__":
    unittest.main()
