"""The rows of single collections, as growth_collections lists them."""

import subprocess

from row import Row


USUAL_SIZE = 500
# These collections make themselves larger within one of the doublings, which costs more than the others.
# At these sizes that is the middle one.
SIZES = {f"hashed {kind}, inserted while walking": 1000 for kind in ("values", "entities")}
# The C library copies long texts by instructions of which each copies more, up to a length. These
# are longer.
SIZES.update({f"printer of {form}, long text": 4000 for form in ("text", "compact", "indented")})


def rows(program):
    listed = subprocess.run([program, "--list"], stdout=subprocess.PIPE, text=True, check=True)
    result = []
    for name in listed.stdout.splitlines():

        def command(size, path, _folder, name=name):
            return [path, name, str(size)]

        collection, operation = name.split(", ", 1)
        result.append(Row(collection, operation, SIZES.get(name, USUAL_SIZE), command,
                          program="collections"))
    return result
