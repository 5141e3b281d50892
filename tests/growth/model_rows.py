"""The rows of the model compiler."""

import os

from row import Row

ROWS = []

HEADER = 'namespace Growth\n\nimport text Vex::String from "Vex/String.h"\n\n'


def dimension(smallest, error=""):
    def add(make):
        def command(size, program, folder):
            path = os.path.join(folder, "Growth.model")
            with open(path, "w", encoding="utf-8") as file:
                file.write(HEADER + make(size))
            return [program, path, folder]

        name = make.__name__.replace("_", " ")
        ROWS.append(Row(name, "modelc", smallest, command, program="modelc", error=error))
        return make

    return add


def registration(names):
    return "registration {\n" + "".join(f"    {name}\n" for name in names) + "}\n"


def value(name, attributes):
    body = "".join(f"    {attribute}\n" for attribute in attributes)
    return f"value {name}() {{\n{body}}}\n\n"


@dimension(25)
def types_of_a_model(size):
    names = [f"Type{i}" for i in range(size)]
    return "".join(value(name, ["number : U32"]) for name in names) + registration(names)


@dimension(25)
def attributes_of_a_type(size):
    return value("Type", [f"number{i} : U32" for i in range(size)]) + registration(["Type"])


@dimension(25, error="unknown type 'Nowhere'")
def errors_of_a_model(size):
    return value("Type", [f"number{i} : Nowhere" for i in range(size)]) + registration(["Type"])


@dimension(4000)
def bytes_of_a_comment(size):
    return value("Type", ["/// " + "x" * size, "number : U32"]) + registration(["Type"])
