#!/usr/bin/env python3
"""Checks that a library of Windows needs nothing but what every Windows has.

Usage: check_imports.py LIBRARY
"""
import re
import subprocess
import sys

OF_THE_SYSTEM = {"kernel32.dll", "msvcrt.dll"}


def main():
    listing = subprocess.run(["x86_64-w64-mingw32-objdump", "-p", sys.argv[1]], check=True, capture_output=True,
                             text=True).stdout
    needed = {name.lower() for name in re.findall(r"^\s*DLL Name: (\S+)", listing, re.M)}
    foreign = sorted(needed - OF_THE_SYSTEM)
    print(f"needs {', '.join(sorted(needed))}; not of the system: {', '.join(foreign) or 'none'}")
    return 1 if foreign or not needed else 0


if __name__ == "__main__":
    sys.exit(main())
