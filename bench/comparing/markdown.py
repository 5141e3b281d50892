"""Tables in the form that the pages use."""


def table(alignments, *rows):
    """The lines of a table; the first row is the header. Alignment: l is left, r is right."""
    rules = ["---" if alignment == "l" else "---:" for alignment in alignments]
    lines = ["| " + " | ".join(row) + " |" for row in rows]
    lines.insert(1, "|" + "|".join(rules) + "|")
    return "\n".join(lines)


def seconds(number):
    return f"{number:.3f}" if number >= 0.1 else f"{number:.5f}"


def ratio(number):
    return f"{number:.2f}"


def mib(number):
    return f"{number:.1f}"
