"""The printed report: the table of targets and the figures behind it."""

from comparing import markdown


class Report:
    def __init__(self):
        self._targets = []
        self._measured = []
        self._comparisons = []

    def at_most(self, workload, against, ratio, limit):
        met = "yes" if ratio <= limit else "no"
        row = workload, against, markdown.ratio(ratio), f"at most {limit}", met
        self._targets.append(row)

    def at_least(self, workload, against, ratio, limit):
        met = "yes" if ratio >= limit else "no"
        row = workload, against, markdown.ratio(ratio), f"at least {limit}", met
        self._targets.append(row)

    def milliseconds_more(self, workload, against, seconds, limit):
        met = "yes" if seconds * 1000 < limit else "no"
        row = workload, against, f"{seconds * 1000:+.2f} ms", f"less than +{limit} ms", met
        self._targets.append(row)

    def row(self, *cells):
        """Adds a row whose target is not a number."""
        self._targets.append(cells)

    def compared(self, title, comparison):
        self._comparisons.append((title, comparison))

    def measured(self, snapshot, entries, program):
        """Records the figures of a program; returns its seconds per entry."""
        per_entry = program.seconds / entries
        row = (
            snapshot,
            f"{entries:,}",
            program.title,
            markdown.seconds(program.seconds),
            markdown.seconds(program.processor_seconds),
            f"{per_entry * 1e9:,.0f}",
            markdown.mib(program.mib),
        )
        self._measured.append(row)
        return per_entry

    def targets(self):
        head = "workload", "against", "ratio", "target", "met"
        yield markdown.table("llrll", head, *self._targets)

    def paragraphs(self):
        yield from self.targets()
        for title, comparison in self._comparisons:
            yield f"{title}: {comparison.rows:,} unicast MACs in {comparison.bytes:,} bytes"
            yield comparison.table()
        yield "The other snapshots:"
        head = (
            "snapshot",
            "entries",
            "program",
            "seconds",
            "processor seconds",
            "nanoseconds per entry",
            "peak memory (MiB)",
        )
        yield markdown.table("lrlrrrr", head, *self._measured)
