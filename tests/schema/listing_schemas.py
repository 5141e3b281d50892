#!/usr/bin/env python3
"""Holds the schemas of the listings against what vxshow prints.

    listing_schemas.py --vxshow PROGRAM --root ROOT [--first SEED] [--count N]

- `vxshow schema` prints the files of docs/schema, and each is a valid schema.
- The documents that the tests and the pages expect, whole, fit their schema.
- So do the JSON documents and the rows of random states, with random filters.
- Each of these documents and rows is changed in one place, so that it must not fit.
- The columns of CSV are the members of a row.
"""

import argparse
import collections
import csv
import io
import json
import os
import pathlib
import random
import re
import subprocess
import sys
import tempfile

import jsonschema

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent / "oracle"))
from compare import make_state  # noqa: E402
from listings import LISTINGS, drawable, drawn_listing  # noqa: E402

# A string literal of C++; adjacent ones are one text.
LITERAL = re.compile(r'R"\((.*?)\)"|"((?:[^"\\\n]|\\.)*)"', re.DOTALL)
ESCAPES = {"n": "\n", '"': '"', "\\": "\\", "t": "\t"}

# An example of a page that prints a document, and the document.
EXAMPLE = re.compile(r"^\$ (vxshow [^|\n]*--(?:json|pretty)[^|\n]*)\n(\{.*?^\}|\{.*?)$", re.M | re.S)


class Schemas:
    def __init__(self, vxshow, root):
        self.vxshow = vxshow
        self.validators = {}
        self.checked = collections.Counter()
        self.mutants = 0
        self.rng = random.Random(1)
        for path in sorted((root / "docs/schema").glob("*.json")):
            text = path.read_text()
            assert self.output("schema", path.stem) == text, f"schema {path.stem}: not {path}"
            schema = json.loads(text)
            jsonschema.Draft202012Validator.check_schema(schema)
            self.validators[path.stem] = jsonschema.Draft202012Validator(schema)
        assert self.output("schema").split() == list(self.validators)

    def output(self, *arguments):
        command = [self.vxshow, *arguments]
        return subprocess.run(command, stdout=subprocess.PIPE, check=True).stdout.decode()

    def check(self, name, value, kind):
        error = next(self.validators[name].iter_errors(value), None)
        assert error is None, f"{kind} does not fit {name}: {error}"
        self.checked[kind] += 1
        mutant = changed(json.loads(json.dumps(value)), self.rng)
        if mutant is not None:
            assert not self.validators[name].is_valid(mutant), f"{name} takes {mutant}"
            self.mutants += 1


def schema_name(command, revision):
    name = command.replace(" ", "-")
    return f"{name}.revision-1" if command.startswith("mac") and revision == 1 else name


def leaves(value, path=()):
    """Yield (container, key) of everything that is neither an object nor an array."""
    items = value.items() if isinstance(value, dict) else enumerate(value)
    for key, child in items:
        if isinstance(child, (dict, list)):
            yield from leaves(child)
        else:
            yield value, key


def changed(value, rng):
    """The value with one leaf of another type; None if it has none."""
    places = list(leaves(value))
    if not places:
        return None
    container, key = rng.choice(places)
    container[key] = ["surprise"]
    return value


# Documents that are written down


def literal_text(match):
    if match[1] is not None:
        return match[1]
    return re.sub(r"\\(.)", lambda escape: ESCAPES.get(escape[1], escape[0]), match[2])


def joined_literals(source):
    """Yield the text of each run of adjacent string literals."""
    text, end = None, None
    for match in LITERAL.finditer(source):
        if text is not None and source[end : match.start()].strip() == "":
            text += literal_text(match)
        else:
            if text is not None:
                yield text
            text = literal_text(match)
        end = match.end()
    if text is not None:
        yield text


def documents_in(source):
    for text in joined_literals(source):
        if text.startswith("{") and text.endswith("}\n"):
            try:
                yield json.loads(text)
            except ValueError:
                pass


# What a document is of, by its members.
MEMBERS = {
    frozenset({"switches", "nonSwitchSources"}): "mac received",
    frozenset({"vniInDottedNotation", "vnis"}): "mac advertised",
    frozenset({"switches"}): "arp received",
    frozenset({"vnis"}): "arp advertised",
    frozenset({"logicalRouterMap"}): "router map",
    frozenset({"router"}): "router detail",
    frozenset({"route"}): "router routes",
}


def check_written(schemas, root):
    written = [*(root / "tests/unit/VxlanController").rglob("*.cpp")]
    written += (root / "tests/unit/vxshow/cli").rglob("*.cpp")
    for path in sorted(written):
        for document in documents_in(path.read_text()):
            if command := MEMBERS.get(frozenset(document)):
                # The only difference between the revisions.
                revision = 1 if "timeLearned" in json.dumps(document) else 2
                schemas.check(schema_name(command, revision), document, "documents of tests")
    for command in LISTINGS:
        page = (root / "docs/commands" / f"{command.replace(' ', '-')}.md").read_text()
        for shown in EXAMPLE.finditer(page):
            revision = 1 if "--revision 1" in shown[1] else 2
            document = json.loads(shown[2])
            schemas.check(schema_name(command, revision), document, "documents of pages")


# Random ones


def check_columns(schemas, root):
    for command in LISTINGS:
        schema = schemas.validators[command.replace(" ", "-") + ".row"].schema
        for table in schema.get("oneOf", [schema]):
            members = list(table["properties"])
            name = table["properties"]["table"]["const"]
            arguments = [*command.split(), "-o", "csv", "--table", name]
            state = root / "examples/fabric.json"
            header = next(csv.reader(io.StringIO(schemas.output("--state", state, *arguments))))
            assert ["table", *header] == members, f"{command}: {header}, but {members}"
            assert table["required"] == members


def check_random(schemas, first, count):
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, "state.json")
        for seed in range(first, first + count):
            make_state(path, ["random", "--seed", str(seed)])
            state = json.loads(pathlib.Path(path).read_text(encoding="utf-8"))
            for command in LISTINGS:
                check_command(schemas, path, command, random.Random(f"{seed} {command}"), state)


def check_command(schemas, path, command, rng, state):
    values = drawable(state, command)
    for filters in [], drawn_listing(rng, command, values)[1]:
        for options in ["--json"], ["--json", "--revision", "1", "--dotted"], ["-o", "jsonl"]:
            arguments = [schemas.vxshow, "--state", path, *command.split(), *options, *filters]
            # A state that cannot be shown has no document, nor has a filter that is refused. A name
            # that the state does not have still has one.
            finished = subprocess.run(arguments, capture_output=True, check=False)
            assert finished.returncode in (0, 1, 2, 4), finished.stderr
            if finished.returncode in (1, 2):
                continue
            if "jsonl" not in options:
                revision = 1 if "1" in options else 2
                name = schema_name(command, revision)
                schemas.check(name, json.loads(finished.stdout), "random documents")
                continue
            for line in finished.stdout.splitlines():
                name = command.replace(" ", "-") + ".row"
                schemas.check(name, json.loads(line), "random rows")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--vxshow", required=True)
    parser.add_argument("--root", required=True, type=pathlib.Path)
    parser.add_argument("--first", type=int, default=1)
    parser.add_argument("--count", type=int, default=12)
    arguments = parser.parse_args()
    schemas = Schemas(arguments.vxshow, arguments.root)
    check_written(schemas, arguments.root)
    check_columns(schemas, arguments.root)
    check_random(schemas, arguments.first, arguments.count)
    for kind in "documents of tests", "documents of pages", "random documents", "random rows":
        print(f"{schemas.checked[kind]} {kind}")
        assert schemas.checked[kind] > 0, f"no {kind}"
    print(f"{schemas.mutants} mutants refused")


if __name__ == "__main__":
    main()
