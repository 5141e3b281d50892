"""compare.py fails when the program differs, and when it has compared nothing."""

import os
import re
import subprocess
import sys
import unittest

COMPARE = os.path.join(os.path.dirname(os.path.realpath(__file__)), "compare.py")


def compare(program, count, what="random"):
    """(exit status, last line)"""
    finished = subprocess.run(
        [sys.executable, COMPARE, "--vxshow", program, "--command", "arp advertised", what,
         "--count", str(count)],
        stdout=subprocess.PIPE, text=True, check=False,
    )
    return finished.returncode, finished.stdout.splitlines()[-1]


class Compare(unittest.TestCase):
    def test_a_program_that_prints_nothing_differs_everywhere(self):
        expected = "20 listings of 1 states compared, 20 differ"
        self.assertEqual(compare("/bin/true", 1), (1, expected))

    def test_so_it_does_in_the_forms_of_rows(self):
        status, line = compare("/bin/true", 1, "rows")
        self.assertEqual(status, 1)
        found = re.fullmatch(r"20 listings of rows of 1 states compared, (\d+) differ", line)
        # JSON lines without rows are empty, and so is what is expected then.
        self.assertGreater(int(found[1]), 10)

    def test_a_comparison_of_nothing_fails(self):
        expected = "0 listings of 0 states compared, 0 differ"
        self.assertEqual(compare("/bin/true", 0), (1, expected))


if __name__ == "__main__":
    unittest.main()
