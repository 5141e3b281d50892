#!/usr/bin/env python3
"""Tests of the manual pages: that they have what the program's help has, and that formatters take
them without a warning.

    manual_test.py --vxshow PROGRAM --root CHECKOUT
"""

import argparse
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

PROGRAM = ROOT = None


def output(*words, **more):
    return subprocess.run(words, check=True, capture_output=True, text=True, **more).stdout


def without_blanks(text):
    return re.sub(r"[\s\u00ad\u2010]+", "", text)


@unittest.skipUnless(shutil.which("pandoc"), "pandoc is not installed")
class Manual(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(tempfile.mkdtemp())
        cls.addClassCleanup(shutil.rmtree, cls.folder)
        output(sys.executable, ROOT / "docs/manual/make_manual.py", "--vxshow", PROGRAM,
               "--root", ROOT, "--into", cls.folder)
        cls.pages = sorted(cls.folder.glob("man?/*"))

    def commands(self):
        section = output(PROGRAM, "--help").split("\nCommands:\n")[1].split("\n\n")[0]
        return re.findall(r"^  (\S+(?: \S+)*)(?:  |$)", section, re.MULTILINE)

    def shown(self, name):
        return output("mandoc", "-Tutf8", "-Owidth=1000", self.folder / name)

    def test_every_command_has_a_page(self):
        names = {page.name for page in self.pages}
        wanted = {f"vxshow-{words.replace(' ', '-')}.1" for words in self.commands()}
        self.assertIn("vxshow-mac-received.1", wanted)
        self.assertEqual(names, wanted | {"vxshow.1", "vxshow-config.5", "vxshow-fabric.5",
                                          "vxshow-snapshot.5", "vxshow-terminal.7",
                                          "vxshow-filters.7"})

    @unittest.skipUnless(shutil.which("mandoc"), "mandoc is not installed")
    def test_every_line_of_the_help_is_on_the_page(self):
        for words in ["", *self.commands()]:
            name = "-".join(["vxshow", *words.split()])
            page = without_blanks(re.sub(r".\x08", "", self.shown(f"man1/{name}.1"))).replace("\\", "")
            for option, text in re.findall(r"^  (-\S+)(?: [A-Z]+)?  +(\S.*)$",
                                           output(PROGRAM, *words.split(), "--help"), re.MULTILINE):
                with self.subTest(page=name, option=option):
                    self.assertIn(without_blanks(option), page)
                    self.assertIn(without_blanks(text), page)

    def test_the_filters_on_a_page_are_those_of_the_help(self):
        compared = 0
        for words in self.commands():
            page = ROOT / "docs/commands" / (words.replace(" ", "-") + ".md")
            if " " not in words or not page.exists():
                continue
            table = page.read_text(encoding="utf-8").partition("\n## Filters\n")[2].split("\n## ")[0]
            described = set(re.findall(r"^\| `(--\S+?)[ `]", table, re.MULTILINE))
            section = output(PROGRAM, *words.split(), "--help").partition("\nFilters:\n")[2]
            options = set(re.findall(r"^  (--\S+)", section.split("\n\n")[0], re.MULTILINE))
            with self.subTest(page=page.name):
                self.assertEqual(described, options)
            compared += len(options)
        self.assertGreater(compared, 10)

    @unittest.skipUnless(shutil.which("mandoc"), "mandoc is not installed")
    def test_mandoc_finds_nothing(self):
        for page in self.pages:
            with self.subTest(page=page.name):
                lint = subprocess.run(["mandoc", "-Tlint", page], capture_output=True, text=True)
                self.assertEqual((lint.stdout, lint.returncode), ("", 0))

    @unittest.skipUnless(shutil.which("man"), "man is not installed")
    def test_man_shows_each_without_a_warning(self):
        for page in self.pages:
            with self.subTest(page=page.name):
                shown = subprocess.run(["man", "--warnings", "-l", page], capture_output=True,
                                       text=True, env={"LC_ALL": "C.UTF-8", "MANWIDTH": "80",
                                                       "PATH": "/usr/bin:/bin"})
                self.assertEqual((shown.stderr, shown.returncode), ("", 0))
                self.assertIn("NAME", shown.stdout)


def main():
    global PROGRAM, ROOT
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--vxshow", type=pathlib.Path, required=True)
    parser.add_argument("--root", type=pathlib.Path, required=True)
    wanted, rest = parser.parse_known_args()
    PROGRAM, ROOT = wanted.vxshow.resolve(), wanted.root.resolve()
    unittest.main(argv=[sys.argv[0], *rest])


if __name__ == "__main__":
    main()
