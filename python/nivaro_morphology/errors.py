"""What ends a run, as an exception."""

from __future__ import annotations

from typing import Optional


class MorphologyError(RuntimeError):
    """A run has ended, or cannot go on.

    Attributes
    ----------
    number : int or None
        Number of the message, as in docs/messages.md.
    text : str
        What the library or the package says.
    file, line : str or None, int or None
        Where in a control file the reason stands.
    log : str or None
        Path of the run's log; None where the run leaves no files.
    screen : str
        All that the library has written to its screen.
    """

    def __init__(
        self,
        text: str,
        *,
        number: Optional[int] = None,
        file: Optional[str] = None,
        line: Optional[int] = None,
        log: Optional[str] = None,
        screen: str = "",
    ) -> None:
        super().__init__(text if log is None else f"{text}\n(log: {log})")
        self.text = text
        self.number = number
        self.file = file
        self.line = line
        self.log = log
        self.screen = screen
