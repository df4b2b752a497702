#!/usr/bin/env python3
"""Compares the names that leave the library in all places: version script, module definition file,
public header, and the symbols that each built library shows. Each of them passes call() and has a row
in the table of calls, or stands there with the file of its test, which names it.

Usage: check_exports.py LIBRARY...    shared (.so or .dll) or static (.a)
"""
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent


def names_in(pattern, path):
    return re.findall(pattern, (ROOT / path).read_text(encoding="utf-8"), re.M)


def export_table(library):
    listing = subprocess.run(["x86_64-w64-mingw32-objdump", "-p", library], check=True,
                             capture_output=True, text=True).stdout
    table = listing.partition("[Ordinal/Name Pointer] Table\n")[2].partition("\n\n")[0]
    return [line.split()[-1] for line in table.splitlines()]


def shown_symbols(library):
    if library.endswith(".dll"):
        return export_table(library)
    table = "--extern-only" if library.endswith(".a") else "--dynamic"
    listing = subprocess.run(["nm", table, "--defined-only", library], check=True,
                             capture_output=True, text=True).stdout
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
    table = (ROOT / "tests/exports/calls.txt").read_text(encoding="utf-8")
    rows = " ".join(re.findall(r"^([A-Z][A-Z0-9_ ]+)\(", table, re.M)).split()
    tests = dict(re.findall(r"^([A-Z]\w+): (.+)$", table, re.M))
    for name in sorted(set(names) - set(rows) - {"DMESSAGES"}):
        if not (name in tests and f"{name}(" in (ROOT / tests[name]).read_text(encoding="utf-8")):
            yield name


def main():
    lists = {
        "version script": names_in(r"^    ([A-Z]\w*);", "src/exports/exports.map"),
        "definition file": names_in(r"^  ([A-Z]\w*)(?: DATA)?$", "src/exports/exports.def"),
        "public header": names_in(r"^(?:extern )?NIVARO_API [\w *]+?\b([A-Z][A-Z0-9_]+)[;(]",
                                  "include/nivaro_morphology.h"),
    }
    lists |= {library: shown_symbols(library) for library in sys.argv[1:]}
    everything = set().union(*lists.values())
    errors = 0
    for place, names in lists.items():
        for name in sorted(everything - set(names)):
            print(f"{name} is missing in the {place}")
            errors += 1
        for name in sorted({n for n in names if names.count(n) > 1}):
            print(f"{name} stands twice in the {place}")
            errors += 1
    for name in routines_without_call():
        print(f"{name} does not pass call()")
        errors += 1
    for name in untested(everything):
        print(f"{name} has no row in tests/exports/calls.txt")
        errors += 1
    print(f"{len(everything)} names, {errors} errors")
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
