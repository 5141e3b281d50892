"""The reference's command line."""

import os
import subprocess
import sys
import unittest

import exact


class CommandLine(unittest.TestCase):
    def test_the_snapshot_may_be_named_by_file_or_variable(self):
        words = [sys.executable, str(exact.REFERENCE), "mac", "received"]
        named = subprocess.check_output([*words, "--state", str(exact.FABRIC)])
        by_variable = subprocess.check_output(
            words, env={**os.environ, "VXSHOW_STATE": str(exact.FABRIC)}
        )
        self.assertEqual(named, by_variable)
        self.assertIn(b"\nleaf4             70000       ", named)

    def test_options_may_stand_on_either_side_of_the_command(self):
        before = exact.run_bytes({}, "--json", "arp", "received", "--vni", "10")
        behind = exact.run_bytes({}, "--vni", "10", "arp", "received", "--json")
        self.assertEqual(before, behind)

    def test_a_command_refuses_the_filters_of_another(self):
        for words in (
            "mac received --dest hsc",
            "mac advertised --source hsc",
            "arp received --vtep 10.0.0.1",
            "arp advertised --switch leaf1",
            "router map --prefix 10.0.0.0/8",
            "router detail --switch 00:1c:73:00:00:01",
            "router detail --vtep 10.0.0.1",
            "router routes --vtep 10.0.0.1",
            "mac received --router red",
        ):
            finished = exact.process({}, *words.split())
            self.assertEqual((finished.returncode, finished.stdout), (2, b""), words)

    def test_only_the_words_of_a_command_make_one(self):
        for words in ("router received", "mac map", "arp routes", "router"):
            finished = exact.process({}, *words.split())
            self.assertEqual((finished.returncode, finished.stdout), (2, b""), words)

    def test_a_prefix_with_host_bits_and_an_ipv6_vtep_are_refused(self):
        for words in ("router routes --prefix 10.1.2.3/8", "router map --vtep 2001:db8::1"):
            finished = exact.process({}, *words.split())
            self.assertEqual((finished.returncode, finished.stdout), (2, b""), words)


if __name__ == "__main__":
    unittest.main()
