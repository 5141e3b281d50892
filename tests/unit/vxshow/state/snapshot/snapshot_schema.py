#!/usr/bin/env python3
"""Hold the published JSON Schema and vxshow's own reader against the same documents.

Either may be wrong, so neither is the measure of the other: each document says
what is to become of it. A few things no schema can say; what they are is listed
here, and that nothing else is left to the reader alone is tested as well, with
mutants of a good document about which the two must agree but for those.
"""

import argparse
import json
import pathlib
import random
import re
import subprocess
import sys
import tempfile

import jsonschema

from snapshot_mutants import EVERYTHING, mutants

AGAIN = r" again, expected it once$"

# What only the reader refuses, and how its error then ends.
UNSAID = {
    "a VTEP of a switch that is not described": r'expected an address that stands in "vteps"$',
    "a day that is not in the calendar":
        r"expected a time in UTC such as 2026-11-23T02:10:11.125Z$",
    "bits beyond the length of a prefix": r", with no bits set beyond the prefix length$",
    "a name or value that stands there in two spellings": AGAIN,
    "a name that stands there twice": AGAIN,
    "a whole number with a fraction or an exponent":
        r"found (-0|[0-9]+[.eE][0-9.eE]*), expected (1|a whole number from 0 to [0-9]+)$",
    "an escape that stands for half a character": r"expected an escape that stands for a character$",
}


def document(**members):
    return {"format": "vxlan-controller-state", "version": 1, **members}


def received_tables(tables):
    return document(received={"switches": {"leaf1": {"10": tables}}})


def advertised_tables(tables):
    return document(advertised={"vnis": {"10": tables}})


def router_status(status):
    return document(routers={"status": {"prod": status}})


def written_documents(path):
    """Yield (text, whether it is good) for the documents of a file.

    A document stands there whole, or as the part of one that matters, in every place where
    such a part may stand.
    """
    around = {
        "document": [lambda it: it],
        "received": [lambda it: document(received=it)],
        "advertised": [lambda it: document(advertised=it)],
        "evpn": [lambda it: document(received={"evpn": {"EVPN": it}}),
                 lambda it: document(advertised={"evpn": {"EVPN": it}})],
        "tables": [received_tables, advertised_tables],
        "routers": [lambda it: document(routers=it)],
        "router": [router_status],
    }
    for case in json.loads(path.read_text()):
        (part,) = case.keys() & around.keys()
        for whole in around[part]:
            yield json.dumps(whole(case[part])), case["good"]


def addresses(rng):
    """Yield (text, whether it is an IP address) in many shapes of IPv6.

    Their grammar is the one part of the schema that nobody sees through.
    """
    for _ in range(2000):
        groups = rng.randint(0, 9)
        tail = rng.choice(["", "", "192.0.2.1"])
        words = [rng.choice(["0", "db8", "FFFF", "1"]) for _ in range(groups)]
        words += [tail] if tail else []
        gap = rng.choice([None, rng.randint(0, len(words))])
        bits = groups * 16 + (32 if tail else 0)
        if gap is None:
            yield ":".join(words), bits == 128 or (words == [tail] and bool(tail))
        else:
            behind_tail = bool(tail) and gap == len(words)
            text = ":".join(words[:gap]) + "::" + ":".join(words[gap:])
            yield text, bits <= 112 and not behind_tail
    malformed = ["", ":", ":::", "1:2", "::1::", "1:::2", "::12345", "::g", "::1.2.3", "::1 "]
    for text in [*malformed, "::1%lo"]:
        yield text, False


def address_documents(rng):
    """Yield (text, whether it is good) for documents with such an address, bare or with a
    prefix length."""
    for address, good in addresses(rng):
        tables = {"arp": {address: {"mac": "02:00:00:00:00:01"}}}
        yield json.dumps(received_tables(tables)), good
        length = rng.choice([0, 1, 9, 10, 31, 32, 33, 64, 99, 100, 119, 127, 128, 129, 130, 200])
        ports = {f"{address}/{length}": {"vni": 1, "mac": "02:00:00:00:00:01"}}
        fits = length <= (128 if ":" in address else 32)
        yield json.dumps(router_status({"ports": ports})), good and fits


def judged_documents(paths):
    """Yield (text, whether it is good)."""
    yield json.dumps(EVERYTHING), True
    for path in paths:
        yield from written_documents(path)
    yield from address_documents(random.Random(1))


def unsaid_documents(path):
    """Yield (text, what is wrong with it) for what only the reader refuses.

    These are texts, since most of it is lost when they are read as JSON.
    """
    by_kind = json.loads(path.read_text())
    if by_kind.keys() != UNSAID.keys():
        raise SystemExit(f"{path} is about other things than what no schema can say")
    for kind, texts in by_kind.items():
        for text in texts:
            yield '{"format": "vxlan-controller-state", "version": 1, ' + text[1:], kind


def read_all(reader, texts):
    """What the reader says of each text."""
    with tempfile.TemporaryDirectory() as folder:
        paths = []
        for number, text in enumerate(texts):
            paths.append(pathlib.Path(folder, str(number)))
            paths[-1].write_text(text)
        run = subprocess.run([reader, *paths], capture_output=True, text=True, check=True)
    return run.stdout.splitlines()


class Judges:
    """The two, and how often they were wrong."""

    def __init__(self, schema, reader):
        jsonschema.Draft202012Validator.check_schema(schema)
        self.validator = jsonschema.Draft202012Validator(schema)
        self.reader = reader
        self.wrong = 0

    def verdicts(self, texts):
        """Yield (whether the schema accepts it, what the reader says) for each text."""
        for text, answer in zip(texts, read_all(self.reader, texts), strict=True):
            yield self.validator.is_valid(json.loads(text)), answer

    def complain(self, text, what, by_schema, answer):
        self.wrong += 1
        print(text)
        print(f"  is {what} but schema: {by_schema}, reader: {answer}")

    def check_judged(self, documents):
        """Both accept the good ones and refuse the bad ones."""
        for (text, good), (by_schema, answer) in zip(
            documents, self.verdicts([text for text, _ in documents])
        ):
            if by_schema != good or (answer == "accepted") != good:
                self.complain(text, "good" if good else "bad", by_schema, answer)

    def check_unsaid(self, documents):
        """The schema accepts all of them, the reader none."""
        for (text, kind), (by_schema, answer) in zip(
            documents, self.verdicts([text for text, _ in documents])
        ):
            if not by_schema or not re.search(UNSAID[kind], answer):
                self.complain(text, "bad: " + kind, by_schema, answer)

    def check_mutants(self, texts):
        """Both say the same, unless it is for a reason that no schema can say."""
        counts = {"accepted": 0, "refused": 0, "refused by the reader alone": 0}
        for text, (by_schema, answer) in zip(texts, self.verdicts(texts)):
            by_reader = answer == "accepted"
            if by_schema == by_reader:
                counts["accepted" if by_schema else "refused"] += 1
            elif by_schema and any(re.search(end, answer) for end in UNSAID.values()):
                counts["refused by the reader alone"] += 1
            else:
                self.complain(text, "a mutant", by_schema, answer)
        print("mutants:", counts)
        return all(counts.values())


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--schema", type=pathlib.Path, required=True)
    parser.add_argument("--reader", required=True, help="the program that reads snapshots")
    parser.add_argument("--documents", type=pathlib.Path, nargs="+", required=True)
    parser.add_argument("--unsaid", type=pathlib.Path, required=True)
    parser.add_argument("--example", type=pathlib.Path, required=True, help="a good snapshot")
    wanted = parser.parse_args()

    judges = Judges(json.loads(wanted.schema.read_text()), wanted.reader)
    documents = [(wanted.example.read_text(), True), *judged_documents(wanted.documents)]
    judges.check_judged(documents)
    unsaid = list(unsaid_documents(wanted.unsaid))
    judges.check_unsaid(unsaid)
    all_kinds_met = judges.check_mutants(list(mutants(random.Random(1), 3000)))

    goods = sum(good for _, good in documents)
    print(f"{goods} good, {len(documents) - goods} bad documents and {len(unsaid)} that only the "
          f"reader refuses; {judges.wrong} misjudged")
    return 1 if judges.wrong or not all_kinds_met or not 0 < goods < len(documents) else 0


if __name__ == "__main__":
    sys.exit(main())
