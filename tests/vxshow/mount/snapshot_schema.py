#!/usr/bin/env python3
"""Hold the published JSON Schema and vxshow's own reader against the same documents.

Either may be wrong, so neither is the measure of the other: each document says
what is to become of it.
"""

import argparse
import json
import pathlib
import random
import subprocess
import sys
import tempfile

import jsonschema


def document(**members):
    return {"format": "vxlan-controller-state", "version": 1, **members}


def received_tables(tables):
    return document(received={"switches": {"leaf1": {"10": tables}}})


def advertised_tables(tables):
    return document(advertised={"vnis": {"10": tables}})


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
    }
    for case in json.loads(path.read_text()):
        (part,) = case.keys() & around.keys()
        for whole in around[part]:
            yield json.dumps(whole(case[part])), case["good"]


def address_documents(rng):
    """Yield (text, whether it is good) for IPv6 addresses in many shapes.

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


def all_documents(path):
    yield from written_documents(path)
    for address, good in address_documents(random.Random(1)):
        tables = {"arp": {address: {"mac": "02:00:00:00:00:01"}}}
        yield json.dumps(received_tables(tables)), good


def read_all(reader, texts):
    """What the reader says of each text."""
    with tempfile.TemporaryDirectory() as folder:
        paths = []
        for number, text in enumerate(texts):
            paths.append(pathlib.Path(folder, str(number)))
            paths[-1].write_text(text)
        run = subprocess.run([reader, *paths], capture_output=True, text=True, check=True)
    return run.stdout.splitlines()


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--schema", type=pathlib.Path, required=True)
    parser.add_argument("--reader", required=True, help="the program that reads snapshots")
    parser.add_argument("--documents", type=pathlib.Path, required=True)
    wanted = parser.parse_args()

    schema = json.loads(wanted.schema.read_text())
    jsonschema.Draft202012Validator.check_schema(schema)
    validator = jsonschema.Draft202012Validator(schema)

    documents = list(all_documents(wanted.documents))
    answers = read_all(wanted.reader, [text for text, _ in documents])
    wrong = 0
    for (text, good), answer in zip(documents, answers, strict=True):
        by_schema = validator.is_valid(json.loads(text))
        by_reader = answer == "accepted"
        if by_schema != good or by_reader != good:
            wrong += 1
            print(text)
            print(f"  is {'good' if good else 'bad'} but schema: {by_schema}, reader: {answer}")
    goods = sum(good for _, good in documents)
    print(f"{goods} good and {len(documents) - goods} bad documents, {wrong} of them misjudged")
    return 1 if wrong or not goods or goods == len(documents) else 0


if __name__ == "__main__":
    sys.exit(main())
