#!/usr/bin/env python3
"""Compares what the Fortran module binds with the public header: names, arguments in their order with
their types and names, and the fields of the message record. The compiler itself says what C it takes
the module for.

Usage: check_fortran_module.py GFORTRAN
"""
import pathlib
import re
import subprocess
import sys
import tempfile

INCLUDE = pathlib.Path(__file__).resolve().parent.parent / "include"
SAME_TYPES = {"int32_t": "int", "nivaro_logical": "int", "int64_t": "long", "nivaro_length": "long"}


def routines(code, pattern):
    """Name: (result, arguments), all in plain C types; an address of anything is an address."""
    found = {}
    for result, name, arguments in re.findall(pattern, code):
        plain = [re.sub(r"const void ?\*", "void *", re.sub(r" ?\* ?", " *", " ".join(a.split())))
                 for a in arguments.split(",") if a.strip() not in ("", "void")]
        found[name] = (result, plain)
    return found


def fields(code):
    return re.findall(r"(int|char|double) (\w+(?:\[\d+\])?);",
                      re.search(r"typedef struct nivaro_messages \{(.*?)\}", code, re.S)[1])


def differ(header, module):
    """Logical arrays travel as bare addresses; everything else is the same."""
    if header[0] != module[0] or len(header[1]) != len(module[1]):
        return True
    return any(h != m and re.sub(r"^const int ", "void ", h) != m
               for h, m in zip(header[1], module[1]))


def main():
    header = re.sub(r"/\*.*?\*/", "", (INCLUDE / "nivaro_morphology.h").read_text(), flags=re.S)
    header = re.sub(r"\w+", lambda word: SAME_TYPES.get(word[0], word[0]), header)
    with tempfile.TemporaryDirectory() as folder:  # for the compiler's module file
        module = subprocess.run([sys.argv[1], "-fsyntax-only", "-fc-prototypes",
                                 INCLUDE / "nivaro_morphology.f90"], cwd=folder,
                                check=True, capture_output=True, text=True).stdout
    header = header.replace("nivaro_messages* ", "void *")
    wanted = routines(header, r"NIVARO_API (\w+ \*?)([A-Z]\w+)\(([^)]*)\)")
    bound = routines(module, r"(?m)^(\w+ \*?)([A-Z]\w+) \(([^)]*)\)")

    errors = [f"{name} is missing in the Fortran module" for name in wanted.keys() - bound.keys()]
    errors += [f"{name} is bound and not declared" for name in bound.keys() - wanted.keys()]
    errors += [f"{name}:\n  header {wanted[name]}\n  module {bound[name]}"
               for name in wanted.keys() & bound.keys() if differ(wanted[name], bound[name])]
    if fields(header) != fields(module):
        errors.append("the fields of nivaro_messages differ")
    print("\n".join(sorted(errors) + [f"{len(bound)} routines, {len(errors)} errors"]))
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
