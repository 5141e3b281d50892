#!/usr/bin/env python3
"""Tests of check_hardening.py: each missing flag is noticed. Argument: the C++ compiler."""

import pathlib
import platform
import subprocess
import sys
import tempfile
import unittest

CHECK = pathlib.Path(__file__).with_name("check_hardening.py")
COMPILER = sys.argv.pop() if len(sys.argv) > 1 else "g++-12"

SOURCE = """
#include <cstdio>
#include <cstring>
extern "C" void copied(char const * text) {
    char buffer[64];
    std::strcpy(buffer, text);
    std::puts(buffer);
}
int main(int, char ** arguments) {
    copied(arguments[0]);
}
"""
HARDENED = {
    "optimisation": "-O2",
    "stack protector": "-fstack-protector-strong",
    "fortification": "-D_FORTIFY_SOURCE=2",
    "position independence": "-fPIE",
    "marked targets": "-fcf-protection=full",
    "linking of it": "-pie",
    "binding at start": "-Wl,-z,now",
    "read only addresses": "-Wl,-z,relro",
    "stack": "-Wl,-z,noexecstack",
    "exports": "-rdynamic",
}


class CheckHardening(unittest.TestCase):
    def fault(self, **other):
        """What the checker says of a program that is built with other flags."""
        flags = {name: other.get(name.replace(" ", "_"), flag) for name, flag in HARDENED.items()}
        with tempfile.TemporaryDirectory() as folder:
            program = pathlib.Path(folder) / "program"
            subprocess.run([COMPILER, "-U_FORTIFY_SOURCE", *filter(None, flags.values()), "-x", "c++", "-",
                            "-o", program], input=SOURCE, check=True, text=True)
            checked = subprocess.run([sys.executable, CHECK, "--vxshow", program],
                                     capture_output=True, text=True)
        self.assertEqual(checked.stderr, "")
        self.assertEqual(checked.returncode, 0 if "are hardened" in checked.stdout else 1)
        return checked.stdout.strip()

    def test_hardened(self):
        self.assertEqual(self.fault(), "1 files are hardened")

    def test_without_stack_protector(self):
        self.assertEqual(self.fault(stack_protector="-fno-stack-protector"),
                         "program: it checks no guard values on the stack")

    def test_without_fortification(self):
        self.assertEqual(self.fault(fortification=""),
                         "program: it checks no lengths in functions of the C library")

    def test_position_dependent(self):
        self.assertIn("program: it is not position-independent",
                      self.fault(position_independence="-fno-pie", linking_of_it="-no-pie"))

    def test_bound_late(self):
        self.assertEqual(self.fault(binding_at_start="-Wl,-z,lazy"),
                         "program: its addresses are not bound at start")

    def test_writable_addresses(self):
        self.assertEqual(self.fault(read_only_addresses="-Wl,-z,norelro"),
                         "program: its table of addresses stays writable")

    def test_executable_stack(self):
        self.assertEqual(self.fault(stack="-Wl,-z,execstack"), "program: its stack is executable")

    @unittest.skipUnless(platform.machine() == "x86_64", "only x86-64 has such marks")
    def test_unmarked_targets(self):
        self.assertIn("program: copied is not marked as the target of a jump",
                      self.fault(marked_targets="-fcf-protection=none"))


if __name__ == "__main__":
    unittest.main()
