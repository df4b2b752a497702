#!/usr/bin/env python3
"""Compares the names that each built library shows with those that the public header declares.

Usage: check_exports.py LIBRARY...    shared (.so or .dll) or static (.a)
"""
import pathlib
import subprocess
import sys

from public_header import read_header

HEADER = pathlib.Path(__file__).resolve().parent.parent / "include/nivaro_morphology.h"


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


def main():
    declared = sorted(read_header(HEADER).names)
    errors = 0
    for library in sys.argv[1:]:
        for name in sorted(set(declared) ^ set(shown_symbols(library))):
            print(f"{name} is missing in the {HEADER.name if name not in declared else library}")
            errors += 1
    print(f"{len(declared)} names, {errors} errors")
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
