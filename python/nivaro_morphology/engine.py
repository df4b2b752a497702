"""Where the library runs: in this process, or in one of its own.

Both make calls that were prepared before, on arrays in memory that they share with the caller.
"""

from __future__ import annotations

import ctypes
import json
import mmap
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import weakref
from typing import Callable, Optional, Sequence, Union

from . import abi, child
from .calls import Call, prepared
from .errors import MorphologyError
from .messages import reason_of_end


def _nameless_file() -> int:
    """A file without a name, in memory where the system has such: nothing is left of it."""
    if hasattr(os, "memfd_create"):
        return os.memfd_create("nivaro_morphology")
    with tempfile.TemporaryFile() as file:
        return os.dup(file.fileno())


def _require_memory(size: int) -> None:
    if hasattr(os, "sysconf") and size > os.sysconf("SC_PHYS_PAGES") * os.sysconf("SC_PAGE_SIZE"):
        raise MemoryError(f"a run of this shape needs {size / 2**30:.1f} GB")


class OwnProcess:
    """Runs the library in this process, which ends when the library ends a run."""

    def __init__(self, library: str, size: int, folder: str) -> None:
        self._library = abi.Library(library)
        if self._library.DMESSAGES.log_unit > 0:
            raise MorphologyError("this process has had its run: others need isolated=True")
        _require_memory(size)
        self.memory = mmap.mmap(-1, size)
        self._address = ctypes.addressof(ctypes.c_char.from_buffer(self.memory))
        self._prepared: list[Callable[[], None]] = []
        self._nothing = os.open(os.devnull, os.O_RDONLY)
        self._lock = threading.Lock()
        self.close = weakref.finalize(self, _leave, self._nothing, folder)

    def prepare(self, calls: Sequence[Call]) -> int:
        self._prepared.append(prepared(self._library, self._address, calls))
        return len(self._prepared) - 1

    def run(self, which: int) -> None:
        # Questions of the library find the end of standard input, and the interpreter's stays unread.
        if not self.close.alive:
            raise MorphologyError("this run has ended")
        with self._lock:
            try:
                own = os.dup(0)
            except OSError:  # it is closed: nothing can be read anyway
                return self._prepared[which]()
            os.dup2(self._nothing, 0)
            try:
                self._prepared[which]()
            finally:
                os.dup2(own, 0)
                os.close(own)

    def screen(self) -> str:
        """The library writes to this process's own standard output."""
        return ""


class ChildProcess:
    """Runs the library in a process of its own.

    Parameters
    ----------
    library : str
        File of the library.
    size : int
        Bytes of shared memory.
    log : str or None
        Path of the run's log, for exceptions.
    folder : str
        Folder that is removed with the process; blank: none.
    """

    def __init__(self, library: str, size: int, log: Optional[str], folder: str) -> None:
        if os.name != "posix":
            raise MorphologyError("runs in a process of their own need POSIX: isolated=False here")
        _require_memory(size)
        self._log = log
        self._owner = os.getpid()
        self._lock = threading.Lock()
        self._count = 0  # of prepared calls
        self._seen = ""
        files: list[int] = []  # all that are open here, for the end
        try:
            memory_file = _nameless_file()
            files.append(memory_file)
            os.ftruncate(memory_file, size)
            if hasattr(os, "posix_fallocate"):  # or a full memory would be told by a signal
                os.posix_fallocate(memory_file, 0, size)
            self.memory = mmap.mmap(memory_file, size)
            self._screen = _nameless_file()
            files.append(self._screen)
            requests, self._requests = os.pipe()
            files += [requests, self._requests]
            self._answers, answers = os.pipe()
            files += [self._answers, answers]
            package = str(pathlib.Path(__file__).parent)
            numbers = [str(number) for number in (memory_file, requests, answers)]
            start = [sys.executable, "-ISc", child.START, package]
            self._process = subprocess.Popen(
                [*start, library, *numbers, folder, str(self._owner)],
                pass_fds=[memory_file, requests, answers],
                stdin=subprocess.DEVNULL,
                stdout=self._screen,
                stderr=self._screen,
                start_new_session=True,  # Ctrl-C goes to this process alone
            )
        except BaseException:
            for file in files:
                os.close(file)
            raise
        for file in (memory_file, requests, answers):
            os.close(file)
        open_files = [self._requests, self._answers, self._screen]
        self.close = weakref.finalize(self, _end, self._process, open_files, folder, self._owner)

    def prepare(self, calls: Sequence[Call]) -> int:
        text = json.dumps(calls).encode()
        header = child.NUMBER.pack(child.NEW_CALLS) + child.NUMBER.pack(len(text))
        self._ask(header + text)
        self._count += 1
        return self._count - 1

    def run(self, which: int) -> None:
        self._ask(child.NUMBER.pack(which))

    def _ask(self, request: bytes) -> None:
        if os.getpid() != self._owner:
            raise MorphologyError(
                "this run belongs to another process, of which this one is a fork"
            )
        with self._lock:
            if not self.close.alive:
                raise MorphologyError("this run has ended", log=self._log)
            try:
                sent = os.write(self._requests, request)
                while sent < len(request):
                    sent += os.write(self._requests, request[sent:])
                answer = os.read(self._answers, child.NUMBER.size)
                if answer == _DONE:
                    return
                length = child.NUMBER.unpack(answer)[0] if answer else 0
                text = child.read_exactly(self._answers, length)
            except BrokenPipeError:
                text = b""
            except BaseException:
                # Nobody waits for the answer any more; arrays are as the interrupted call left them.
                self._process.kill()
                self.close()
                raise
        if text:
            raise MorphologyError(text.decode(), log=self._log)
        raise self._death()

    def screen(self) -> str:
        """All that the library has written to its screen, also after the end."""
        if self.close.alive:
            size = os.fstat(self._screen).st_size
            self._seen = os.pread(self._screen, size, 0).decode(errors="replace")
        return self._seen

    def _death(self) -> MorphologyError:
        """Why the process ended, which the end of its answers has told of."""
        try:
            code = self._process.wait(timeout=10)
        except subprocess.TimeoutExpired:
            code = 0
        screen = self.screen()
        self.close()
        if code < 0:
            name = signal.Signals(-code).name
            text = f"the library's process was ended by a signal ({name})"
            return MorphologyError(text, log=self._log, screen=screen)
        reason = reason_of_end(screen)
        if reason is None:
            text = f"the library's process ended with exit code {code}"
            return MorphologyError(text, log=self._log, screen=screen)
        return MorphologyError(
            reason.text,
            number=reason.number,
            file=reason.file,
            line=reason.line,
            log=self._log,
            screen=screen,
        )


def _leave(nothing: int, folder: str) -> None:
    os.close(nothing)
    shutil.rmtree(folder, ignore_errors=True)


_DONE = child.NUMBER.pack(0)

Engine = Union[OwnProcess, ChildProcess]


def _end(process: subprocess.Popen[bytes], files: list[int], folder: str, owner: int) -> None:
    """Ends a child process and removes what belongs to it; in a fork of the owner only the files."""
    for file in files:
        os.close(file)
    if os.getpid() != owner:
        return
    try:
        process.wait(timeout=2)  # it ends by itself at the end of its requests
    except BaseException:
        process.kill()
        process.wait()
    if folder:
        shutil.rmtree(folder, ignore_errors=True)
