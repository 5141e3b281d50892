#!/usr/bin/env python3
"""Checks that a program and the libraries beside it are built with the hardening flags.

    check_hardening.py --vxshow PROGRAM [LIBRARY...]

A LIBRARY is the file name of one that is installed or built with PROGRAM. Of each file:

- it is position-independent, and its stack is not executable;
- its addresses of functions are bound at start and read-only afterwards;
- it checks guard values on the stack, and lengths in functions of the C library;
- where the compiler marks the targets of indirect jumps (x86), every exported function begins
  with such a mark. The note by which a file says so as a whole is not checked: the linker only
  writes it if the C library's start files have it, and those of Debian 12 do not.
"""

import argparse
import pathlib
import platform
import re
import subprocess
import sys

C_RUNTIME = {"_start", "_init", "_fini"}
JUMP_TARGET = bytes.fromhex("f30f1efa")  # endbr64


def output_of(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def missing_in_headers(headers):
    kind = re.search(r"Elf file type is (\w+)", headers)
    if not kind or kind.group(1) != "DYN":
        yield "it is not position-independent"
    stack = re.search(r"GNU_STACK(?:\s+0x\w+)+\s+(\w*)", headers)
    if not stack or "E" in stack.group(1):
        yield "its stack is executable"
    if "GNU_RELRO" not in headers:
        yield "its table of addresses stays writable"


def missing_in_dynamic(dynamic):
    if not re.search(r"\(FLAGS_1\).*\bNOW\b", dynamic):
        yield "its addresses are not bound at start"


def missing_in_symbols(symbols):
    imported = {line.split()[-1].split("@")[0] for line in symbols.splitlines()}
    if "__stack_chk_fail" not in imported:
        yield "it checks no guard values on the stack"
    if not any(re.fullmatch(r"__\w+_chk", name) for name in imported - {"__stack_chk_fail"}):
        yield "it checks no lengths in functions of the C library"


def unmarked_functions(file):
    """The exported functions whose first instruction is not a mark."""
    sections = []
    for line in output_of("readelf", "--section-headers", "--wide", file).splitlines():
        fields = re.match(r"\s*\[\s*\d+\]\s+\S+\s+PROGBITS\s+(\w+)\s+(\w+)\s+(\w+)", line)
        if fields:
            sections.append([int(field, 16) for field in fields.groups()])
    content = pathlib.Path(file).read_bytes()
    for line in output_of("readelf", "--dyn-syms", "--wide", file).splitlines():
        function = re.match(r"\s*\d+: (\w+)\s+\d+ FUNC\s+\w+\s+\w+\s+\d+ (\S+)", line)
        if not function or function[2] in C_RUNTIME:
            continue
        address, name = function.groups()
        address = int(address, 16)
        for start, offset, size in sections:
            if start <= address < start + size:
                at = offset + address - start
                if content[at:at + len(JUMP_TARGET)] != JUMP_TARGET:
                    yield name


def missing(file):
    yield from missing_in_headers(output_of("readelf", "--program-headers", "--wide", file))
    yield from missing_in_dynamic(output_of("readelf", "--dynamic", "--wide", file))
    yield from missing_in_symbols(output_of("nm", "--dynamic", "--undefined-only", file))
    if platform.machine() == "x86_64":
        for name in unmarked_functions(file):
            yield f"{name} is not marked as the target of a jump"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--vxshow", type=pathlib.Path, required=True)
    parser.add_argument("libraries", nargs="*")
    wanted = parser.parse_args()
    program = wanted.vxshow.resolve()
    files = [program] + [program.parent.parent / "lib" / name for name in wanted.libraries]
    faults = [f"{file.name}: {fault}" for file in files for fault in missing(str(file))]
    print("\n".join(faults[:20]) or f"{len(files)} files are hardened")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
