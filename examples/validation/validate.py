#!/usr/bin/env python3
"""Makes docs/validation.md from page.md: runs the built library through all cases, and puts their
tables, numbers and pictures where the page names them.

Usage: validate.py BUILD_DIR RESULTS_DIR [CASE...]     with cases named, only shows their tables
"""
import pathlib
import string
import sys
import tempfile

import plane_host  # first: it knows where the other hosts are
import cone
import hump
import line_host
import settling
import slope
import trench
import uniform
from report import Report

CASES = {"trench": trench, "hump": hump, "settling": settling, "uniform": uniform, "slope": slope,
         "cone": cone}


def main():
    build, results, *names = sys.argv[1:]
    build = pathlib.Path(build).resolve()
    line_host.load(build / "libnivaro_morphology.so")
    page = Report(results, plane_host.ROOT / "docs" / "images")
    with tempfile.TemporaryDirectory() as scratch:
        for name in names or CASES:
            print(f"==== {name}\n", flush=True)
            CASES[name].report(page, build, pathlib.Path(scratch))
    if not names:
        template = pathlib.Path(__file__).with_name("page.md").read_text(encoding="utf-8")
        target = plane_host.ROOT / "docs" / "validation.md"
        target.write_text(string.Template(template).substitute(page.values), encoding="utf-8")
        print(f"Page     {target}")
    print(f"Results  {page.results.resolve()}")


if __name__ == "__main__":
    main()
