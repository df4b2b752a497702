#!/usr/bin/env python3
"""A host for layers: reads a control file for one domain, writes the check layer and the D50 field.

Usage: layer_host.py LIBRARY CASE.json
"""
import array
import ctypes
import json
import math
import sys

RIM = 2  # field elements around the grid's cells on each side


def integer(value):
    return ctypes.byref(ctypes.c_int32(value))


def real(value):
    return ctypes.byref(ctypes.c_double(value))


def logical(value):
    return integer(-1 if value else 0)


def call(routine, *arguments, texts=()):
    """Texts are ordinary arguments too; their lengths follow at the end."""
    lengths = [ctypes.c_int64(len(text)) for text in texts]
    routine(*arguments, *lengths)


def main():
    library = ctypes.CDLL(sys.argv[1])
    with open(sys.argv[2], encoding="utf-8") as file:
        case = json.load(file)
    prefix = case["prefix"].encode()
    control = case["control"].encode()
    source = case["header_source"].encode()
    name = b"layers"
    call(library.QVMOR_INITIALISE_S1, name, prefix, prefix, logical(False), b".tab", logical(False),
         prefix, source, b" ", logical(False),
         texts=(name, prefix, prefix, b".tab", prefix, source, b" "))

    rows, columns = case["rows"], case["columns"]  # along the first and the second index
    n, m = rows + 2 * RIM, columns + 2 * RIM
    cells = n * m
    next_real, next_integer = ctypes.c_int32(1), ctypes.c_int32(1)
    library.QVMOR_SETUP_S2(logical(True), integer(1), integer(n), integer(m), None, None,
                           ctypes.byref(next_real), ctypes.byref(next_integer))
    real_work = (ctypes.c_double * (12 * cells))()
    integer_work = (ctypes.c_int32 * cells)()
    size, angle = case["cell_size"], case["angle"]
    x0, y0 = case["origin"]
    call(library.QVMOR_RDINPF, control, integer(1), integer(1), integer(n), integer(m),
         integer(rows + RIM), integer(columns + RIM), integer(rows), integer(columns), integer(0),
         integer(0), real(size), real(size), real(angle), real(x0), real(y0), real_work,
         integer_work, None, None, None, texts=(control,))

    # Depth below datum and code differ from cell to cell; a code of 0 leaves a cell out.
    codes = (ctypes.c_int32 * cells)(*[c % 3 for c in range(cells)])
    depth = (ctypes.c_double * cells)(*[c / 8.0 - 20.0 for c in range(cells)])
    library.QVMOR_WRMIFF(integer(1), integer(1), logical(True), codes, depth, integer(n), None,
                         integer(RIM + 1), integer(RIM + 1), integer(rows + RIM),
                         integer(columns + RIM), integer(100), integer(700), real(x0), real(y0),
                         real(size * math.cos(angle)), real(size * math.sin(angle)), real_work,
                         integer_work)
    with open(case["prefix"] + ".d50", "wb") as file:
        array.array("d", real_work[:cells]).tofile(file)


if __name__ == "__main__":
    main()
