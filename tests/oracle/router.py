"""What the listings of the router commands have in common."""

from forms import printed

SEPARATOR = b"-" * 80 + b"\n"


def wanted_name(name_filter, name):
    return name_filter in ("", name)


def header(row, *titles):
    return SEPARATOR + printed(row, *titles) + SEPARATOR


def named_rows(row, name, columns):
    """Yield the rows of one router; only the first row shows its name."""
    for others in columns:
        yield printed(row, name, *others)
        name = ""


def total(count):
    return b"\nTotal entries for this criterion: %d\n\n" % count
