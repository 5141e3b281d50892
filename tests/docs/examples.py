#!/usr/bin/env python3
"""Run every example of the pages and compare what it shows.

An example is a line "$ COMMAND" in a fenced block, and what it shows stands below
it, up to the next example or the end of the block. It runs in a shell, in the
root of the checkout, with the program on the path; standard error is shown where
a terminal shows it. Blocks without such a line are no examples.

With --write the pages get what the examples show now, for somebody to read.
"""

import argparse
import difflib
import os
import pathlib
import re
import subprocess
import sys

FENCE = re.compile(r"^```")
PROMPT = "$ "


def run(command, root, program):
    environment = {k: v for k, v in os.environ.items() if k != "VXSHOW_STATE"}
    environment["PATH"] = f"{program.parent}:{environment['PATH']}"
    done = subprocess.run(
        ["bash", "-c", command],
        cwd=root,
        env=environment,
        stdin=subprocess.DEVNULL,
        stdout=subprocess.PIPE,
        stderr=subprocess.STDOUT,
        timeout=60,
        check=False,
    )
    return done.stdout.decode("utf-8").splitlines()


def examples(lines):
    """Yield (number of the line of the prompt, command, what stands below it)."""
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
    """The lines of a page with what its examples show now, and how many there are."""
    result = list(lines)
    all_examples = list(examples(lines))
    for number, command, below in reversed(all_examples):
        result[number + 1 : number + 1 + len(below)] = run(command, root, program)
    return result, len(all_examples)


def check(page, root, program, write):
    """Whether the page shows what its examples do; a page without one does not."""
    lines = page.read_text(encoding="utf-8").splitlines()
    now, count = shown_now(lines, root, program)
    if count == 0:
        print(f"{page.name}: no example")
        return False
    if write:
        page.write_text("\n".join(now) + "\n", encoding="utf-8")
    elif now != lines:
        sys.stdout.writelines(
            line + "\n"
            for line in difflib.unified_diff(
                lines, now, f"{page.name} (stands there)", f"{page.name} (shown)", lineterm=""
            )
        )
        return False
    print(f"{page.name}: {count} examples")
    return True


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--vxshow", type=pathlib.Path, required=True)
    parser.add_argument("--root", type=pathlib.Path, required=True)
    parser.add_argument("--write", action="store_true", help="put what is shown into the pages")
    parser.add_argument("pages", type=pathlib.Path, nargs="+")
    wanted = parser.parse_args()
    program = wanted.vxshow.resolve()
    results = [check(page, wanted.root, program, wanted.write) for page in wanted.pages]
    sys.exit(0 if all(results) else 1)


if __name__ == "__main__":
    main()
