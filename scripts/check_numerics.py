#!/usr/bin/env python3
"""Checks the table of sources in docs/numerics.md: every section of the method has a row, every function that
it names is defined in the file named beside it, and every pair of sources of the plain step is named.
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
PAGE = ROOT / "docs" / "numerics.md"
MORPHOLOGY = ROOT / "src" / "morphology"

# From the first section of the method to the last.
FIRST, LAST = "Grid", "Corners and sides"

# Sources of the plain step that are no part of the method: functions of numbers.
NO_METHOD = {"elementary.cpp"}


def anchor(title: str) -> str:
    return "#" + re.sub(r"[^\w -]", "", title.lower()).replace(" ", "-")


def defines(source: str, name: str) -> bool:
    """A function is defined where a type stands before its name, a table where it gets its rows."""
    pattern = rf"^\s*(?!return\b|//)[\w\[][^=(;/]*[\s&*]{name}(\(|\[\] =)"
    return re.search(pattern, source, re.M) is not None


def main() -> int:
    page = PAGE.read_text(encoding="utf-8")
    titles = re.findall(r"^## (.+)$", page, re.M)
    method = titles[titles.index(FIRST) : titles.index(LAST) + 1]
    # | [title](#anchor), what of it | `function` in `file` | ... |
    rows = re.findall(r"^\| \[[^\]]+\]\((#[^)]+)\)[^|]*\|(.*)\|$", page, re.M)

    errors = [
        f"docs/numerics.md: no sources of section {title!r}"
        for title in method
        if anchor(title) not in {target for target, _ in rows}
    ]
    named = set()
    for _, cells in rows:
        for cell in cells.split("|"):
            *names, file = re.findall(r"`([^`]+)`", cell)
            named.add(file)
            path = MORPHOLOGY / file
            source = path.read_text(encoding="utf-8") if path.is_file() else ""
            errors += [
                f"docs/numerics.md: {file} defines no {name}"
                for name in names
                if not defines(source, name)
            ]
    errors += [
        f"docs/numerics.md: no section names {path.name}"
        for path in sorted(MORPHOLOGY.glob("*.cpp"))
        if path.name not in named | NO_METHOD
    ]
    for error in errors:
        print(error)
    print(f"{len(rows)} rows, {len(errors)} errors")
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
