"""What all tests want: nothing is left behind."""
from __future__ import annotations

import gc
import os
import pathlib
import tempfile
import time
from typing import Iterator

import pytest


def children_of(parent: int) -> list[int]:
    text = pathlib.Path(f"/proc/{parent}/task/{parent}/children").read_text()
    return [int(number) for number in text.split()]


def wait_until(claim: object, seconds: float = 10.0) -> bool:
    end = time.monotonic() + seconds
    while not claim() and time.monotonic() < end:  # type: ignore[operator]
        time.sleep(0.02)
    return bool(claim())  # type: ignore[operator]


@pytest.fixture(autouse=True)
def nothing_left(tmp_path: pathlib.Path, monkeypatch: pytest.MonkeyPatch) -> Iterator[None]:
    """Folders of runs go to a folder of this test; shared memory has no name, so files tell of it."""
    folder = tmp_path / "runs"
    folder.mkdir()
    monkeypatch.setenv("TMPDIR", str(folder))
    monkeypatch.setattr(tempfile, "tempdir", None)
    files = len(os.listdir("/proc/self/fd"))
    yield
    gc.collect()  # runs that were not closed end with their objects
    assert children_of(os.getpid()) == []
    assert list(folder.iterdir()) == []
    assert len(os.listdir("/proc/self/fd")) == files
