"""What vxshow promises to do when something fails, held against what it did."""

import dataclasses
import re

# Names and phrases of the C++ library that no message shows.
_INTERNAL = re.compile(rb"terminate called|what\(\)|std::|basic_string|bad_alloc|_M_|__|\bSt\d|"
                       rb"vector::|assert|filesystem error|iostream error")
_LINE = re.compile(rb"vxshow: [\x20-\x7e]*[\x21-\x7e]")
# What cannot be read, or which file the C library has no memory for, is named where it is known. To
# the C library, a thread for which there is no memory is "temporarily unavailable".
_OUT_OF_MEMORY = re.compile(rb"vxshow: (out of memory|[^\n]+: (out of memory|"
                            rb"not enough memory for it|Cannot allocate memory|"
                            rb"cannot start a thread for the terminal: "
                            rb"Resource temporarily unavailable))\n"
                            # What a capture adds to the line of its source.
                            rb"(vxshow: capture: nothing is saved, since a source could not be "
                            rb"read; --incomplete saves the others\n)?")


@dataclasses.dataclass(frozen=True)
class Run:
    """What a run did. `ended` is exited, killed or hung; `number` its exit status or signal."""

    ended: str
    number: int
    out: bytes
    err: bytes
    files: dict  # of the folder that the program writes to: path -> content, None for a folder
    survivors: tuple = ()
    disturbed: int = 0
    descriptor: int = -1  # the first argument of the disturbed call


@dataclasses.dataclass(frozen=True)
class Good:
    """What the program does when nothing fails, and what it may do when some sources fail."""

    run: Run
    before: dict  # the files before the run
    partial: tuple = ()  # a run for each set of sources that are missing
    is_copied: bool = False  # whether a thread copies the output to a terminal, through a pipe


def _lines_broken(err):
    if not err:
        return ["says nothing on standard error"]
    if not err.endswith(b"\n"):
        return ["its last line on standard error does not end"]
    broken = []
    for line in err[:-1].split(b"\n"):
        if not _LINE.fullmatch(line):
            broken.append(f"its line on standard error is not one of vxshow's: {line!r}")
        elif _INTERNAL.search(line):
            broken.append(f"its line on standard error names what is internal: {line!r}")
    return broken


def _files_broken(files, good):
    """Each file is the old one or the new one, and there is no other."""
    broken = []
    for path in sorted({*files, *good.before, *good.run.files}):
        allowed = [run[path] for run in (good.before, *all_files(good)) if path in run]
        absent_before = path not in good.before
        if path not in files:
            if not absent_before and path in good.run.files:
                broken.append(f"the file {path} is gone")
        elif files[path] not in allowed:
            what = "is neither the old nor the new one" if allowed else "was left"
            broken.append(f"the file {path} {what}")
    return broken


def all_files(good):
    """The files after each kind of success."""
    return [good.run.files, *(run.files for run in good.partial)]


def _like_good(run, good):
    """A success: everything is as it was without a fault."""
    broken = []
    if run.out != good.run.out:
        broken.append("its output differs, although it succeeds")
    if run.files != good.run.files:
        broken.append("its files differ, although it succeeds")
    if run.err != good.run.err:
        broken.append(f"its standard error differs, although it succeeds: {run.err!r}")
    return broken


def _partial(run, good):
    outcomes = [(one.out, one.files) for one in good.partial if one.number == 3]
    broken = _lines_broken(run.err)
    if (run.out, run.files) not in outcomes:
        broken.append("it shows neither all nor what the other sources have")
    return broken


def _failure(run, good, fault):
    broken = _lines_broken(run.err)
    # The copying thread cannot know whether more would have come.
    is_copying = good.is_copied and fault.call == "read"
    if run.out and not (is_copying or fault.is_of_memory or fault.is_of_output):
        broken.append("it prints, although it fails")
    if not good.run.out.startswith(run.out):
        broken.append("its output is not the beginning of what it prints otherwise")
    elif run.out and run.out == good.run.out and good.run.number == 0 and not is_copying:
        broken.append("its output looks whole, although it fails")
    return broken + _files_broken(run.files, good)


def broken_promises(run, good, fault):
    """What the run breaks, as a list of phrases; empty if it is as promised."""
    if run.ended != "exited":
        how = "is killed by signal" if run.ended == "killed" else "does not end"
        return [f"it {how} {run.number}".removesuffix(" 0")]
    to_errors = fault.is_writing and run.descriptor == 2
    broken = []
    if run.number == good.run.number and run.number != 1:
        broken = _like_good(run, good)
        if to_errors:
            broken = [phrase for phrase in broken if "standard error" not in phrase]
    elif run.number == 3 and good.partial:
        broken = _partial(run, good)
    elif run.number == 1:
        broken = _failure(run, good, fault)
        says_so = _OUT_OF_MEMORY.fullmatch(run.err) or run.err == good.run.err
        if fault.is_allocation and not says_so:
            broken.append(f"it does not say that it is out of memory: {run.err!r}")
        if to_errors:
            broken = [phrase for phrase in broken if "standard error" not in phrase]
    else:
        broken.append(f"its exit status is {run.number}")
    if fault.is_pause and run.number != good.run.number:
        broken.append("an interrupted call makes it fail")
    if run.survivors and fault.call != "kill":
        broken.append(f"it leaves {', '.join(run.survivors)}")
    return broken
