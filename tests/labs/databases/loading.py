"""Loads rows into a running server, or writes them to a database file."""

import hashlib
import json
import subprocess
import time

from databases import DATABASE, SCHEMA, LabError, compact

# The kernel's limit for one argument: `ovsdb-client transact` cannot read from a file.
ARGUMENT_LIMIT = 128 * 1024 - 1


def record(value):
    line = (compact(value) + "\n").encode()
    return b"OVSDB JSON %d %s\n%s" % (len(line), hashlib.sha1(line).hexdigest().encode(), line)


def write_file(out, groups):
    """Writes the file of a single server: a record of the schema, then one of a transaction."""
    with open(SCHEMA, encoding="utf-8") as schema:
        out.write(record(json.load(schema)))
    tables = {"_date": int(time.time() * 1000), "_comment": "ovsdb-lab"}
    for group in groups:
        for table, row_uuid, row in group:
            tables.setdefault(table, {})[row_uuid] = row
    out.write(record(tables))


def batches(groups, limit):
    """Yields transactions of whole groups, as JSON text of at most `limit` bytes."""
    head = f'["{DATABASE}"'
    parts, size = [], len(head) + 1
    for group in groups:
        inserts = (
            compact({"op": "insert", "table": table, "uuid": row_uuid, "row": row})
            for table, row_uuid, row in group
        )
        text = "".join("," + insert for insert in inserts)
        if size + len(text) > limit:
            if not parts:
                raise LabError(f"a group has {len(text)} bytes, the limit of a transaction is {limit}")
            yield head + "".join(parts) + "]"
            parts, size = [], len(head) + 1
        parts.append(text)
        size += len(text)
    yield head + "".join(parts) + "]"


def transact(remote, text):
    """Runs one transaction; raises unless the server accepts all of it."""
    done = subprocess.run(
        ["ovsdb-client", "-vconsole:off", "-t", "60", "transact", remote, text],
        stdout=subprocess.PIPE,
        check=True,
    )
    refused = [item for item in json.loads(done.stdout) if item and "error" in item]
    if refused:
        raise LabError("the server refused: " + compact(refused))


def load(remote, groups):
    for text in batches(groups, ARGUMENT_LIMIT):
        transact(remote, text)
