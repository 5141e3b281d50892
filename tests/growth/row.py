"""One dimension and what is run on it."""

import dataclasses
import typing


@dataclasses.dataclass(frozen=True)
class Row:
    dimension: str
    title: str  # what is run
    smallest: int  # n
    command: typing.Callable  # (size, program, folder for its files) -> the words to run
    program: str = "vxshow"
    error: str = ""  # what standard error contains and the exit status 1 is for; or none and 0
