#!/usr/bin/env python3
"""Compares what the Python package declares with the public header: names, arguments in their order with
their names and types, results, hidden lengths, and the fields of the message record.
"""
import ctypes
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "python" / "nivaro_morphology"))  # abi needs no other module of it
import abi  # noqa: E402

RESULTS = {"None": "void", "float": "double", "int": "int32_t", "bool": "nivaro_logical", "str": "void",
           "c_void_p": "nivaro_messages*"}
FIELDS = {"int": ctypes.c_int32, "double": ctypes.c_double, "char": ctypes.c_char}


def declared(routine):
    """The prototype in C that a routine of the package stands for."""
    arguments, result = abi.signature(routine)
    ordinary = [(c_type.removesuffix(" without length"), name) for name, c_type in arguments.items()]
    texts = [name for name, c_type in arguments.items() if c_type in ("const char*", "char*")]
    lengths = [("nivaro_length", name + "_length") for name in texts]
    if result == "str":
        ordinary = [("char*", "result"), ("nivaro_length", "result_length")] + ordinary
    return RESULTS[result], ordinary + lengths


def in_header(code):
    found = {}
    for result, name, arguments in re.findall(r"NIVARO_API ([\w*]+) ([A-Z]\w+)\(([^)]*)\)", code):
        split = [tuple(" ".join(a.split()).rsplit(" ", 1)) for a in arguments.split(",")]
        # The header shortens the names of two lengths.
        found[name] = (result, [(t, re.sub(r"^(old|new)_length$", r"\1_text_length", n))
                                for t, n in split if t != "void"] if arguments != "void" else [])
    return found


def fields(code):
    record = re.search(r"typedef struct nivaro_messages \{(.*?)\n\}", code, re.S)[1]
    found = re.findall(r"(int|double|char)(?:32_t)? (\w+)(?:\[(\d+)\])?;",
                       record.replace("nivaro_logical", "int32_t"))
    return [(name, FIELDS[kind] * int(size) if size else FIELDS[kind]) for kind, name, size in found]


def main():
    header = re.sub(r"/\*.*?\*/", "", (ROOT / "include/nivaro_morphology.h").read_text(), flags=re.S)
    wanted = in_header(header)
    bound = {name: declared(name) for name in abi.routines()}
    errors = [f"{name} is missing in the package" for name in wanted.keys() - bound.keys()]
    errors += [f"{name} is in the package and not declared" for name in bound.keys() - wanted.keys()]
    errors += [f"{name}:\n  header  {wanted[name]}\n  package {bound[name]}"
               for name in wanted.keys() & bound.keys() if wanted[name] != bound[name]]
    if fields(header) != list(abi.MessageRecord._fields_):
        errors.append("the fields of nivaro_messages differ")
    print("\n".join(sorted(errors) + [f"{len(bound)} routines, {len(errors)} errors"]))
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
