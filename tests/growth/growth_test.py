"""growth.py fails when something grows too fast, and when it has measured nothing."""

import contextlib
import io
import os
import sys
import unittest
from unittest import mock

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.dirname(os.path.realpath(__file__)))
import growth  # noqa: E402
from row import Row  # noqa: E402

COUNT = "i=0; while [ $i -lt $(({steps})) ]; do i=$((i+1)); done; "


def made_up(steps, then="", smallest=10, error=""):
    """A row whose program takes this many steps for n entries."""

    def command(size, program, _folder):
        return [program, "-c", COUNT.format(steps=steps.replace("n", str(size))) + then]

    return Row("made up", steps, smallest, command, error=error)


class Growth(unittest.TestCase):
    def run_rows(self, *rows):
        """(exit status, last line)"""
        out = io.StringIO()
        words = ["growth.py", "--vxshow", "/bin/sh", "--only", "made up", "--jobs", "1"]
        with mock.patch.object(growth.snapshot_rows, "ROWS", list(rows)):
            with mock.patch.object(sys, "argv", words), contextlib.redirect_stdout(out):
                return growth.main(), out.getvalue().splitlines()[-1]

    def assert_fails(self, row, reason):
        status, line = self.run_rows(row)
        self.assertEqual(status, 1)
        self.assertRegex(line, f"^failed: made up .*{reason}")

    def test_linear_growth_passes(self):
        status, line = self.run_rows(made_up("10*n"))
        self.assertEqual((status, line), (0, "1 rows of 1 dimensions, 0 failed"))

    def test_quadratic_growth_fails_with_its_row_and_exponent(self):
        exponents = r"(1\.9|2\.0)[0-9] +(1\.[89]|2\.0)[0-9]"
        self.assert_fails(made_up("n*n"), rf"n\*n .* {exponents}  grows too fast$")

    def test_one_row_of_several_and_one_doubling_of_three_are_enough_to_fail(self):
        rows = made_up("n"), made_up("n, then more")
        at_1_2_4_8 = {"n": (0, 20, 40, 80, 160), "n, then more": (0, 20, 40, 80, 190)}
        counts = [count for row in rows for count in at_1_2_4_8[row.title]]
        with mock.patch.object(growth, "executed", side_effect=counts):
            status, line = self.run_rows(*rows)
        self.assertEqual(status, 1)
        self.assertRegex(line, r"^failed: made up +n, then more .* 1\.25 +1\.08  grows too fast$")

    def test_a_program_that_does_the_same_for_every_size_is_not_measured(self):
        self.assert_fails(made_up("40"), "the counts do not grow")

    def test_a_program_that_fails_is_not_measured(self):
        self.assert_fails(made_up("n", "echo broken >&2; exit 1"), "exit status 1, .* broken$")

    def test_an_expected_error_is_measured(self):
        row = made_up("10*n", "echo found 7 >&2; exit 1", error="found 7")
        self.assertEqual(self.run_rows(row)[0], 0)

    def test_another_error_than_the_expected_one_is_not_measured(self):
        row = made_up("10*n", "echo found 8 >&2; exit 1", error="found 7")
        self.assert_fails(row, "found 8$")

    def test_a_row_that_does_not_exist_is_refused(self):
        words = ["growth.py", "--vxshow", "/bin/sh", "--only", "no such"]
        with mock.patch.object(sys, "argv", words):
            with self.assertRaisesRegex(SystemExit, "no row contains 'no such'"):
                growth.main()


if __name__ == "__main__":
    unittest.main()
