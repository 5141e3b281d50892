#!/usr/bin/env python3
"""Runs every example of the pages and compares its output.

An example is a line "$ COMMAND" in a fenced block; its output follows, up to the next
example or the end of the block. The examples of a page run one after the other, each
in its own shell, in the root of the checkout, with the program on the path; standard
error is shown where a terminal shows it. If the output differs from run to run, the
page shows just "..."; such an example has to end with exit status 0. Blocks without a
command are not examples. An example that does not end in time fails, and the rest of
its page is not run.

With --write the pages are updated to the current output, to be reviewed.
"""

import argparse
import difflib
import os
import pathlib
import re
import signal
import subprocess
import sys

FENCE = re.compile(r"^```")
PROMPT = "$ "
ANYTHING = ["..."]
TIME_LIMIT = 120  # seconds
TIME_LIMIT_OF_ANYTHING = 900  # the example may build a program


class Unended(Exception):
    """An example takes too long."""


def run(command, root, program, below):
    """The output of the example; `below` is what the page shows."""
    limit = TIME_LIMIT_OF_ANYTHING if below == ANYTHING else TIME_LIMIT
    environment = {k: v for k, v in os.environ.items() if not k.startswith("VXSHOW_")}
    # No page depends on the settings of the user who runs it.
    environment |= {"XDG_CONFIG_HOME": "/nonexistent", "XDG_CACHE_HOME": "/dev/null",
                    "VXSHOW_SYSTEM_CONFIG": ""}
    environment["PATH"] = f"{program.parent}:{environment['PATH']}"
    with subprocess.Popen(
        ["bash", "-c", command],
        cwd=root,
        env=environment,
        stdin=subprocess.DEVNULL,
        stdout=subprocess.PIPE,
        stderr=subprocess.STDOUT,
        start_new_session=True,
    ) as shell:
        try:
            shown = shell.communicate(timeout=limit)[0]
        except subprocess.TimeoutExpired:
            raise Unended(f"`{command}` did not end within {limit} seconds") from None
        finally:
            if shell.poll() is None:  # with everything that it started
                os.killpg(shell.pid, signal.SIGKILL)
    if below == ANYTHING and shell.returncode == 0:
        return ANYTHING
    return shown.decode("utf-8").splitlines()


def examples(lines):
    """Yield (line number of the prompt, command, the lines below it)."""
    fenced = False
    found = None
    for number, line in enumerate(lines):
        if FENCE.match(line):
            fenced = not fenced
            if found:
                yield found
            found = None
        elif fenced and line.startswith(PROMPT):
            if found:
                yield found
            found = (number, line[len(PROMPT) :], [])
        elif found:
            found[2].append(line)


def shown_now(lines, root, program):
    """The lines of a page with the current output of its examples, and the number of examples."""
    result = []
    copied = 0
    count = 0
    for number, command, below in examples(lines):
        result += lines[copied : number + 1]
        result += run(command, root, program, below)
        copied = number + 1 + len(below)
        count += 1
    return result + lines[copied:], count


def check(page, root, program, write):
    """Whether the page shows the output of its examples; false if it has none."""
    lines = page.read_text(encoding="utf-8").splitlines()
    try:
        now, count = shown_now(lines, root, program)
    except Unended as unended:
        print(f"{page.name}: {unended}")
        return False
    if count == 0:
        print(f"{page.name}: no example")
        return False
    if write:
        page.write_text("\n".join(now) + "\n", encoding="utf-8")
    elif now != lines:
        sys.stdout.writelines(
            line + "\n"
            for line in difflib.unified_diff(
                lines, now, f"{page.name} (page)", f"{page.name} (output)", lineterm=""
            )
        )
        return False
    print(f"{page.name}: {count} examples")
    return True


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--vxshow", type=pathlib.Path, required=True)
    parser.add_argument("--root", type=pathlib.Path, required=True)
    parser.add_argument("--write", action="store_true", help="write the current output into the pages")
    parser.add_argument("pages", type=pathlib.Path, nargs="+")
    wanted = parser.parse_args()
    program = wanted.vxshow.resolve()
    results = [check(page, wanted.root, program, wanted.write) for page in wanted.pages]
    sys.exit(0 if all(results) else 1)


if __name__ == "__main__":
    main()
