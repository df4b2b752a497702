"""Messages of the library, found in what it writes to its screen."""

from __future__ import annotations

import re
from typing import NamedTuple, Optional

_HEAD = re.compile(
    r"(?:(?:No)?XY: )?(ERROR|WARNING|CHECK|UNSTABLE|INFORMATION)(?: (\d{4}))?(?: -|:) "
)
_PLACE = re.compile(r"Line (\d+) of file (.+?)(?:\]|;|$)", re.MULTILINE)

# What the library writes when it ends a run, behind the reason.
_END = re.compile(
    r"\n(?:Standard input has ended|Closing any unclosed|PROCESS EXITING|Press Enter to Close)"
)
# What it writes while all is well.
_PROGRESS = re.compile(
    r"Trying to open .*(?<!\.\.\.)$|OK\.  File|\.\.\.Closed File|set to|Morphology .* set to"
)


class Message(NamedTuple):
    """A message of the library: what kind, which, and where its reason stands."""

    level: str  #: ERROR, WARNING, CHECK, UNSTABLE or INFORMATION; blank for plain text
    number: Optional[int]  #: number in docs/messages.md, where there is one
    text: str  #: all its lines, as the screen shows them
    file: Optional[str]  #: control file, where a line of one is the reason
    line: Optional[int]  #: number of that line


def _message(lines: list[str]) -> Message:
    head = _HEAD.match(lines[0])
    text = "\n".join(lines)
    places = _PLACE.findall(text)
    line, file = (int(places[-1][0]), places[-1][1].strip()) if places else (None, None)
    if head is None:
        return Message("", None, text, file, line)
    text = re.sub(r"^(?:No)?XY: ", "", text)
    return Message(head[1], int(head[2]) if head[2] else None, text, file, line)


def messages_in(screen: str) -> list[Message]:
    """All messages on a screen, in their order. A message ends at an empty line."""
    found: list[list[str]] = []
    inside = False
    for line in screen.splitlines():
        if _HEAD.match(line):
            found.append([line])
            inside = True
        elif inside and line and not _PROGRESS.match(line):
            found[-1].append(line)
        else:
            inside = False
    return [_message(lines) for lines in found]


def reason_of_end(screen: str) -> Optional[Message]:
    """Why a run ended: the last that its screen tells before the words of the end."""
    end = _END.search(screen)
    told = screen[: end.start()] if end else screen
    lines = [line for line in told.splitlines() if line.strip() and not _PROGRESS.match(line)]
    if not lines:
        return None
    heads = [k for k, line in enumerate(lines) if _HEAD.match(line) or line.startswith("...Unrec")]
    # A reason without level is the last line; one with a level goes on to the end.
    start = heads[-1] if heads and len(lines) - heads[-1] <= 5 else len(lines) - 1
    return _message(lines[start:])
