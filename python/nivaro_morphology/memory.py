"""Arrays in one piece of memory, which two processes may share."""

from __future__ import annotations

import math
import mmap
from typing import Any, NamedTuple

import numpy as np

from .calls import At

_ALIGNMENT = 64  # bytes: a line of the processor's cache


class Place(NamedTuple):
    """Where an array lies in a piece of memory."""

    offset: int
    shape: tuple[int, ...]
    dtype: str

    @property
    def at(self) -> At:
        """Address of the first element."""
        return At(self.offset)

    def plane(self, k: int) -> At:
        """Address of the k-th array of an array of arrays."""
        item = np.dtype(self.dtype).itemsize
        return At(self.offset + k * math.prod(self.shape[1:]) * item)

    def array(self, memory: mmap.mmap) -> np.ndarray[Any, Any]:
        """The array itself."""
        count = math.prod(self.shape)
        return np.frombuffer(memory, self.dtype, count, self.offset).reshape(self.shape)


class Layout:
    """Places of arrays one after another."""

    def __init__(self) -> None:
        self.size = 0

    def place(self, shape: tuple[int, ...], dtype: str) -> Place:
        """A place for one more array."""
        start = -(-self.size // _ALIGNMENT) * _ALIGNMENT
        self.size = start + math.prod(shape) * np.dtype(dtype).itemsize
        return Place(start, shape, dtype)
