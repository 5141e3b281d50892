#!/usr/bin/env python3
"""Tests of the runner of the pages' examples."""

import contextlib
import io
import pathlib
import tempfile
import time
import unittest
from unittest import mock

import examples

PROGRAM = pathlib.Path("/bin/true")


class ExamplesTest(unittest.TestCase):
    def checked(self, text, write=False):
        """(whether the page passes, what is reported, the page afterwards)"""
        with tempfile.TemporaryDirectory() as root:
            page = pathlib.Path(root) / "page.md"
            page.write_text(text, encoding="utf-8")
            report = io.StringIO()
            with contextlib.redirect_stdout(report):
                passes = examples.check(page, root, PROGRAM, write)
            return passes, report.getvalue(), page.read_text(encoding="utf-8")

    def test_a_page_that_shows_the_output_of_its_examples_passes(self):
        text = "```\n$ echo one; echo two\none\ntwo\n$ echo three  \nthree\n```\nprose\n"
        passes, report, _ = self.checked(text)
        self.assertTrue(passes)
        self.assertEqual(report, "page.md: 2 examples\n")

    def test_a_line_that_differs_fails(self):
        passes, report, _ = self.checked("```\n$ echo one\ntwo\n```\n")
        self.assertFalse(passes)
        self.assertIn("-two\n+one\n", report)

    def test_a_missing_or_extra_line_fails(self):
        self.assertFalse(self.checked("```\n$ echo one\n```\n")[0])
        self.assertFalse(self.checked("```\n$ echo one\none\n\n```\n")[0])

    def test_a_blank_at_the_end_of_a_line_counts(self):
        self.assertFalse(self.checked("```\n$ echo 'one '\none\n```\n")[0])

    def test_standard_error_is_compared_too(self):
        self.assertTrue(self.checked("```\n$ echo one >&2\none\n```\n")[0])

    def test_an_example_after_prose_and_other_blocks_is_found(self):
        self.assertFalse(self.checked("```\nno example\n```\ntext\n```\n$ echo one\n```\n")[0])

    def test_examples_run_in_order(self):
        with tempfile.TemporaryDirectory() as folder:
            file = f"{folder}/file"
            self.assertTrue(
                self.checked(f"```\n$ echo one > {file}\n$ cat {file}\none\n```\n")[0]
            )

    def test_an_example_with_changing_output_only_has_to_succeed(self):
        self.assertTrue(self.checked("```\n$ echo $$\n...\n```\n")[0])
        passes, report, _ = self.checked("```\n$ echo why; false\n...\n```\n")
        self.assertFalse(passes)
        self.assertIn("+why\n", report)

    def test_writing_leaves_changing_output_alone(self):
        text = "```\n$ echo $$\n...\n```\n"
        self.assertEqual(self.checked(text, write=True)[2], text)

    def test_an_example_that_does_not_end_is_reported_and_fails(self):
        with tempfile.TemporaryDirectory() as folder, mock.patch.object(examples, "TIME_LIMIT", 0.5):
            hangs = f"sleep 300 & echo $! > {folder}/pid; wait"
            passes, report, _ = self.checked(f"```\n$ {hangs}\n$ touch {folder}/next\n```\n")
            self.assertFalse(passes)
            self.assertEqual(report, f"page.md: `{hangs}` did not end within 0.5 seconds\n")
            self.assertFalse(pathlib.Path(folder, "next").exists())
            # The processes that it started end with it.
            stat = pathlib.Path("/proc", pathlib.Path(folder, "pid").read_text().strip(), "stat")
            deadline = time.monotonic() + 60
            while stat.exists() and stat.read_text().rsplit(")", 1)[1].split()[0] != "Z":
                self.assertLess(time.monotonic(), deadline)
                time.sleep(0.02)

    def test_an_example_with_changing_output_has_a_longer_time_limit(self):
        with mock.patch.object(examples, "TIME_LIMIT", 0.1):
            self.assertTrue(self.checked("```\n$ sleep 0.5\n...\n```\n")[0])
            self.assertFalse(self.checked("```\n$ sleep 0.5\n```\n")[0])

    def test_a_page_without_an_example_fails(self):
        passes, report, _ = self.checked("$ echo outside of a block\n")
        self.assertFalse(passes)
        self.assertEqual(report, "page.md: no example\n")

    def test_written_pages_pass_and_keep_the_rest(self):
        text = "a\n```\n$ echo one\nold\nold\n$ echo two\n```\nb\n"
        passes, _, page = self.checked(text, write=True)
        self.assertTrue(passes)
        self.assertEqual(page, "a\n```\n$ echo one\none\n$ echo two\ntwo\n```\nb\n")
        self.assertTrue(self.checked(page)[0])


if __name__ == "__main__":
    unittest.main()
