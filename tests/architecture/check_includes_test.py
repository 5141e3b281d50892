#!/usr/bin/env python3
"""Tests of check_includes.py: it accepts a tree in order and reports each kind of violation."""

import pathlib
import subprocess
import sys
import tempfile
import unittest

import check_includes

# A small tree that keeps the architecture.
GOOD = {
    "platform/Vex/Name.h": "#include <string>\n",
    "platform/outfmt/Printer.h": '#include "Vex/Name.h"\n',
    "VxlanController/mac/Row.h": '#include "outfmt/Printer.h"\n',
    "modelc/Compiler.h": "",
    "vxshow/system/Run.h": '#include "Vex/Name.h"\n',
    "vxshow/state/Mount.h": '#include "vxshow/system/Run.h"\n#include "VxlanController/mac/Row.h"\n',
    "vxshow/sources/Facts.h": '#include "vxshow/state/Mount.h"\n',
    "vxshow/sources/ovsdb/Ask.h": '#include "vxshow/sources/Facts.h"\n',
    "vxshow/terminal/Screen.h": "#include <vector>\n",
    "vxshow/cli/CommandLine.h": '#include "vxshow/terminal/Screen.h"\n#include <CLI/App.hpp>\n',
    "vxshow/main.cpp": '#include "vxshow/cli/CommandLine.h"\n',
}


class CheckIncludes(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        for path, text in GOOD.items():
            self.write(path, text)

    def write(self, path, text):
        file = self.root / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="utf-8")

    def found(self):
        return list(check_includes.violations(self.root))

    def test_a_tree_in_order_passes(self):
        self.assertEqual(self.found(), [])

    def test_an_include_of_a_higher_room_is_reported_with_its_line(self):
        self.write("vxshow/state/Mount.h", '#pragma once\n\n#include "vxshow/cli/CommandLine.h"\n')
        self.assertEqual(self.found(), [
            "vxshow/state/Mount.h:3: vxshow/state must not include vxshow/cli/CommandLine.h"])

    def test_the_platform_must_not_know_the_library(self):
        self.write("platform/Vex/Name.h", '#include "VxlanController/mac/Row.h"\n')
        self.assertEqual(self.found(), [
            "platform/Vex/Name.h:1: platform/Vex must not include VxlanController/mac/Row.h"])

    def test_the_library_must_not_know_the_front_end(self):
        self.write("VxlanController/mac/Row.h", "#include <vxshow/system/Run.h>\n")
        self.assertEqual(self.found(), [
            "VxlanController/mac/Row.h:1: VxlanController must not include vxshow/system/Run.h"])

    def test_a_platform_room_must_not_include_a_higher_one(self):
        self.write("platform/Vex/Name.h", '#include "outfmt/Printer.h"\n')
        self.assertEqual(self.found(), [
            "platform/Vex/Name.h:1: platform/Vex must not include platform/outfmt/Printer.h"])

    def test_one_kind_of_source_must_not_know_the_other(self):
        self.write("vxshow/sources/frr/Vtysh.cpp", '#include "vxshow/sources/ovsdb/Ask.h"\n')
        self.assertEqual(self.found(), [
            "vxshow/sources/frr/Vtysh.cpp:1: vxshow/sources/frr must not include "
            "vxshow/sources/ovsdb/Ask.h"])

    def test_a_circle_between_two_rooms_is_reported(self):
        self.write("vxshow/terminal/Screen.h", '#include "vxshow/cli/CommandLine.h"\n')
        self.assertEqual(self.found(), [
            "vxshow/terminal/Screen.h:1: vxshow/terminal must not include "
            "vxshow/cli/CommandLine.h"])

    def test_a_folder_that_is_not_in_the_table_is_reported(self):
        self.write("vxshow/extra/Extra.h", "")
        self.assertEqual(self.found(), [
            "vxshow/extra/Extra.h: vxshow/extra is not in the table of rooms"])

    def test_a_table_that_allows_a_circle_is_reported(self):
        rooms = {"a": ["b"], "b": ["a"]}
        self.assertEqual(list(check_includes.order_violations(rooms)), [
            "table of rooms: a uses b, which does not stand before it"])

    def test_two_headers_of_one_name_are_reported(self):
        self.write("vxshow/text/Run.h", "")
        self.assertEqual(self.found(), [
            "Run.h: several headers have this name: vxshow/system/Run.h, vxshow/text/Run.h"])

    def test_a_header_with_the_name_of_a_platform_header_is_reported(self):
        self.write("vxshow/text/Printer.h", "")
        self.assertEqual(self.found(), [
            "vxshow/text/Printer.h: has the name of platform/outfmt/Printer.h"])

    def test_the_script_fails_on_a_violation_and_on_an_empty_tree(self):
        script = check_includes.__file__
        run = lambda root: subprocess.run(
            [sys.executable, script, str(root)], capture_output=True, check=False).returncode
        self.assertEqual(run(self.root), 0)
        self.write("vxshow/text/Printer.h", "")
        self.assertEqual(run(self.root), 1)
        (self.root / "empty").mkdir()
        self.assertEqual(run(self.root / "empty"), 1)


if __name__ == "__main__":
    unittest.main()
