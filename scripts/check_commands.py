#!/usr/bin/env python3
"""Compares the commands of control files in the sources with the table of docs/user-guide.md, both
ways, and with the words that the fuzz target of control files knows; and checks their order, since
a command is the first keyword found anywhere in it.
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
READING = {"READ FILE", "READ MI", "READ MID"}


def keywords(source, behind):
    """First texts of the rows of a table."""
    text = (ROOT / "src" / "control" / source).read_text(encoding="utf-8")
    return re.findall(r'^    \{"([A-Z0-9 ]+)",\s*' + behind, text, re.M)


def main():
    options = keywords("option_table.cpp", "OptionKind")
    commands = {*options, *keywords("spatial_target.cpp", '"Morphology')} | READING

    guide = (ROOT / "docs" / "user-guide.md").read_text(encoding="utf-8")
    table = guide.partition("\n## All commands\n")[2].partition("\n## ")[0]
    told = {re.sub(r"^SET |MORPHOLOGY|\.\.\.", "", text.upper()).strip()
            for row in re.findall(r"^\| (`[^|]*)\|", table, re.M)
            for text in re.findall(r"`([^`]+)`", row)}
    words = (ROOT / "tests" / "fuzz" / "cases.dict").read_text(encoding="utf-8").upper()

    errors = [f"docs/user-guide.md lacks the command {c}" for c in sorted(commands - told)]
    errors += [f"docs/user-guide.md tells of {c}, which no source knows" for c in sorted(told - commands)]
    errors += [f"tests/fuzz/cases.dict lacks {c}" for c in sorted(commands) if c not in words]
    errors += [f"{short} is found in {long}, which stands behind it" for k, short in enumerate(options)
               for long in options[k + 1:] if short in long]
    for error in errors:
        print(error)
    print(f"{len(commands)} commands, {len(errors)} errors")
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
