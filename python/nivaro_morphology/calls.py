"""Calls of the library as plain data, which can be sent to another process.

A call is the name of a routine and its arguments: numbers, logicals and texts as they are, and `At` for
what lies in the memory that both processes share. Needs the standard library alone.
"""

from __future__ import annotations

from typing import Any, Callable, NamedTuple, Sequence

from . import abi


class At(NamedTuple):
    """An address: bytes from the start of the shared memory."""

    offset: int


class Call(NamedTuple):
    """A routine and its arguments."""

    routine: str
    args: Sequence[object]  # None, bool, int, float, str or At


def prepared(
    library: abi.Library, memory: int, calls: Sequence[Sequence[Any]]
) -> Callable[[], None]:
    """Calls one after another, ready to be made many times.

    Parameters
    ----------
    library : abi.Library
        The loaded library.
    memory : int
        Address of the shared memory.
    calls : sequence of Call
        What to call; an address may also be a list with one number, as it comes out of JSON.
    """

    def argument(value: Any) -> Any:
        if isinstance(value, (tuple, list)):
            return abi.Address(memory + value[0])
        return value

    made = [library.prepared(routine, [argument(a) for a in args]) for routine, args in calls]
    if len(made) == 1:
        return made[0]

    def all_calls() -> None:
        for call in made:
            call()

    return all_calls
