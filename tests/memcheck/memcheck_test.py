"""memcheck.py fails when a program uses memory that was never written, loses some, or fails.

    memcheck_test.py FAULTY-PROGRAM
"""

import contextlib
import io
import os
import sys
import unittest
from unittest import mock

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.dirname(os.path.realpath(__file__)))
import memcheck  # noqa: E402

if len(sys.argv) != 2:
    sys.exit("usage: memcheck_test.py FAULTY-PROGRAM")
FAULTY = os.path.abspath(sys.argv[1])


class Memcheck(unittest.TestCase):
    def run_cases(self, *cases):
        """(exit status, standard output)"""
        out = io.StringIO()
        words = ["memcheck.py", "--vxshow", FAULTY, "--jobs", "1"]
        with mock.patch.object(memcheck, "cases", return_value=cases):
            with mock.patch.object(sys, "argv", words), contextlib.redirect_stdout(out):
                return memcheck.main(), out.getvalue()

    def assert_fails(self, fault, statuses, message):
        status, out = self.run_cases((f"case of {fault}", [fault], statuses))
        self.assertEqual(status, 1)
        self.assertRegex(out, rf"^case of {fault}:\n(.*\n)*.*{message}(.*\n)*1 runs, 1 failed\n$")

    def test_a_program_without_a_fault_passes(self):
        self.assertEqual(self.run_cases(("none", ["none"], [0])), (0, "1 runs, 0 failed\n"))

    def test_memory_that_was_never_written_is_reported(self):
        self.assert_fails("uninitialised", [0], "depends on uninitialised value")

    def test_lost_memory_is_reported(self):
        self.assert_fails("lost", [0], "definitely lost")

    def test_another_exit_status_is_reported(self):
        self.assert_fails("refusal", [0], r"exit status 1, expected \[0\]")

    def test_an_expected_refusal_passes(self):
        self.assertEqual(self.run_cases(("refused", ["refusal"], [1]))[0], 0)

    def test_no_run_at_all_fails(self):
        self.assertEqual(self.run_cases(), (1, "0 runs, 0 failed\n"))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
