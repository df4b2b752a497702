"""The process in which an isolated run lives: it makes the calls that its parent asks for.

Requests come and answers go through pipes, arrays lie in shared memory. A request is a number of 4
bytes: the position of calls that were prepared before, or -1 for new ones, which follow as JSON behind
their length. An answer is a number too: 0, or the length of the text of an exception behind it. The end
of the requests is the end of this process, so none outlives its parent. What the library does when a
run cannot go on, it does to this process alone.

Runs without the package's `__init__`, and so without numpy: a fresh interpreter is there in 30 ms.
"""

from __future__ import annotations

import ctypes
import json
import mmap
import os
import struct
import threading
import time
from typing import Callable

from . import abi
from .calls import prepared

NUMBER = struct.Struct("<i")
NEW_CALLS = -1

# The package without its __init__, then this module.
START = """\
import sys, types
package = types.ModuleType("nivaro_morphology")
package.__path__ = [sys.argv[1]]
sys.modules["nivaro_morphology"] = package
from nivaro_morphology.child import main
main(*sys.argv[2:])
"""


def read_exactly(pipe: int, size: int) -> bytes:
    """So many bytes of a pipe; fewer only at its end."""
    data = os.read(pipe, size)
    while len(data) < size:
        more = os.read(pipe, size - len(data))
        if not more:
            break
        data += more
    return data


def main(library: str, memory: str, requests: str, answers: str, folder: str, parent: str) -> None:
    """Serves requests until there are no more.

    Parameters
    ----------
    library : str
        File of the library.
    memory, requests, answers : str
        Numbers of the open files: shared memory, and the pipes of requests and answers.
    folder : str
        Folder to be removed at the end; blank: none.
    parent : str
        Number of the parent process.
    """
    threading.Thread(target=_end_with, args=(int(parent), folder), daemon=True).start()
    try:
        _serve(library, int(memory), int(requests), int(answers))
    finally:
        _remove(folder)


def _end_with(parent: int, folder: str) -> None:
    # The pipe of a killed parent stays open where another process, forked from it, still holds it.
    while os.getppid() == parent:
        time.sleep(1)
    _remove(folder)
    os._exit(1)


def _remove(folder: str) -> None:
    import shutil  # slow to load, and not needed before the end

    if folder:
        shutil.rmtree(folder, ignore_errors=True)


def _serve(library_file: str, memory_file: int, requests: int, answers: int) -> None:
    library = abi.Library(library_file)
    memory = mmap.mmap(memory_file, 0)
    address = ctypes.addressof(ctypes.c_char.from_buffer(memory))
    prepared_calls: list[Callable[[], None]] = []
    done = NUMBER.pack(0)
    while True:
        request = read_exactly(requests, NUMBER.size)
        if len(request) < NUMBER.size:
            return
        (which,) = NUMBER.unpack(request)
        if which != NEW_CALLS:
            prepared_calls[which]()
            os.write(answers, done)
            continue
        (length,) = NUMBER.unpack(read_exactly(requests, NUMBER.size))
        try:
            calls = json.loads(read_exactly(requests, length))
            prepared_calls.append(prepared(library, address, calls))
            os.write(answers, done)
        except Exception as error:
            text = f"{type(error).__name__}: {error}".encode(errors="replace")
            os.write(answers, NUMBER.pack(len(text)) + text)
