#!/usr/bin/env python3
"""Compares the texts of messages in the sources with docs/messages.md, both ways: each text that the
sources raise stands on the page, and each text on the page is raised by the sources.

On the page a text stands between backquotes, with an ellipsis for what is filled in.
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
PAGE = ROOT / "docs" / "messages.md"
ELLIPSIS = "…"

# How a message begins. The message writer's own words for the levels are no messages.
BEGINNING = re.compile(
    r"(ERROR|WARNING|CHECK|UNSTABLE|INFORMATION:) (\d{4}|- )|SORRY - |SOFTWARE CHECK - |NOTE - "
    r"|Should not be here|Invalid number|\.\.\.Unrecog| *Unrecog|Could not |Can't Open|No free "
    r"|Empty filename|FAILED| *Unable |The name differs|Standard input|\.dat type")
LITERAL = re.compile(r'R"\((?P<raw>.*?)\)"|"(?P<plain>(?:[^"\\\n]|\\.)*)"', re.S)
ESCAPES = {r"\"": '"', r"\\": "\\", r"\n": "\n"}


def literals(path):
    """String literals of a source; those with nothing but blanks between are one."""
    source = re.sub(r"^\s*(//|#include).*$", "", path.read_text(encoding="utf-8"), flags=re.M)
    found, end = [], None
    for match in LITERAL.finditer(source):
        text = match["raw"]
        if text is None:
            text = re.sub(r"\\.", lambda escape: ESCAPES.get(escape[0], escape[0]), match["plain"])
        if end is not None and not source[end:match.start()].strip():
            found[-1] += text
        else:
            found.append(text)
        end = match.end()
    return found


def is_raised(piece, raised):
    """Sources put some texts together from pieces: quotes, a number and its text, a routine's name."""
    def stands_in(text):
        return any(text in literal for literal in raised)

    bare = piece.strip('"')
    if stands_in(piece) or stands_in(bare):
        return True
    parts = re.split(r"(?<=\d{4})(?= - )|(?<= here )(?=gis)|(?=\[gisID)|(?= - contact )", bare)
    return all(stands_in(part) for part in parts)


def main():
    raised = [text for path in sorted((ROOT / "src").rglob("*.[ch]pp")) for text in literals(path)]
    page = PAGE.read_text(encoding="utf-8")
    # Messages stand in the first column.
    told = [text for line in page.splitlines() if line.startswith("| `")
            for text in re.findall(r"`([^`]+)`", line.split(" | ")[0]) if BEGINNING.match(text)]

    errors = [f"docs/messages.md lacks: {text}" for text in sorted(set(raised))
              if BEGINNING.match(text) and not any(text.rstrip() in entry for entry in told)]
    errors += [f"no source raises {piece!r} of: {text}" for text in told
               for piece in text.split(ELLIPSIS) if not is_raised(piece, raised)]
    for error in errors:
        print(error)
    print(f"{len(told)} texts on the page, {len(errors)} errors")
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
