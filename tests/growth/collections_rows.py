"""The rows of single collections, as growth_collections lists them."""

import subprocess

from row import Row


def rows(program):
    listed = subprocess.run([program, "--list"], stdout=subprocess.PIPE, text=True, check=True)
    result = []
    for name in listed.stdout.splitlines():

        def command(size, path, _folder, name=name):
            return [path, name, str(size)]

        collection, operation = name.split(", ", 1)
        result.append(Row(collection, operation, 500, command, program="collections"))
    return result
