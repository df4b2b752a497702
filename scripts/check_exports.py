#!/usr/bin/env python3
"""Compares the names that each built library shows with those that the public header declares. Each of
them passes call() and has a row in the table of calls, or stands there with the file of its test,
which names it.

Usage: check_exports.py LIBRARY...    shared (.so or .dll) or static (.a)
"""
import pathlib
import re
import subprocess
import sys

from public_header import read_header

ROOT = pathlib.Path(__file__).resolve().parent.parent
HEADER = ROOT / "include/nivaro_morphology.h"


def export_table(library):
    listing = subprocess.run(
        ["x86_64-w64-mingw32-objdump", "-p", library], check=True, capture_output=True, text=True
    ).stdout
    table = listing.partition("[Ordinal/Name Pointer] Table\n")[2].partition("\n\n")[0]
    return [line.split()[-1] for line in table.splitlines()]


def shown_symbols(library):
    if library.endswith(".dll"):
        return export_table(library)
    table = "--extern-only" if library.endswith(".a") else "--dynamic"
    listing = subprocess.run(
        ["nm", table, "--defined-only", library], check=True, capture_output=True, text=True
    ).stdout
    rows = [line.split() for line in listing.splitlines()]
    return [row[2].split("@")[0] for row in rows if len(row) == 3]


def routines_without_call():
    """Those whose body begins neither with call() nor with a routine that does."""
    for source in (ROOT / "src/exports").glob("*_exports.cpp"):
        for name, first in re.findall(r"^\S+ ([A-Z]\w*)\([^)]*\) noexcept \{\s+(?:return )?(\w+)",
                                      source.read_text(encoding="utf-8"), re.M):
            if first != "call" and not first.isupper():
                yield name


def untested(names):
    table = (ROOT / "tests/exports/calls.table").read_text(encoding="utf-8")
    rows = " ".join(re.findall(r"^([A-Z][A-Z0-9_ ]+)\(", table, re.M)).split()
    tests = dict(re.findall(r"^([A-Z]\w+): (.+)$", table, re.M))
    for name in sorted(set(names) - set(rows) - {"DMESSAGES"}):
        if not (name in tests and f"{name}(" in (ROOT / tests[name]).read_text(encoding="utf-8")):
            yield name


def main():
    declared = sorted(read_header(HEADER).names)
    errors = 0
    for library in sys.argv[1:]:
        for name in sorted(set(declared) ^ set(shown_symbols(library))):
            print(f"{name} is missing in the {HEADER.name if name not in declared else library}")
            errors += 1
    for name in routines_without_call():
        print(f"{name} does not pass call()")
        errors += 1
    for name in untested(declared):
        print(f"{name} has no row in tests/exports/calls.table")
        errors += 1
    print(f"{len(declared)} names, {errors} errors")
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
