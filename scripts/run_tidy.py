#!/usr/bin/env python3
"""Runs clang-tidy over the sources of the library and the example host.

Usage: run_tidy.py BUILD_FOLDER
"""
import concurrent.futures
import json
import os
import pathlib
import subprocess
import sys


def tidy(build, source):
    return subprocess.run(
        ["clang-tidy-14", "--quiet", "--warnings-as-errors=*", "-p", build, source],
        capture_output=True, text=True)


def main():
    build = sys.argv[1]
    root = pathlib.Path(__file__).resolve().parent.parent
    commands = json.loads(pathlib.Path(build, "compile_commands.json").read_text())
    # clang-tidy does not know every option of g++.
    for command in commands:
        command["command"] = command["command"].replace(" -fno-gnu-unique", "")
    known = pathlib.Path(build, "tidy")
    known.mkdir(exist_ok=True)
    (known / "compile_commands.json").write_text(json.dumps(commands))
    sources = sorted({c["file"] for c in commands
                      if pathlib.Path(c["file"]).is_relative_to(root / "src")
                      or pathlib.Path(c["file"]).is_relative_to(root / "examples")
                      if c["file"].endswith(".cpp")})
    failed = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for source, result in zip(sources, pool.map(lambda s: tidy(str(known), s), sources)):
            if result.returncode != 0:
                failed += 1
                print(result.stdout, end="")
    print(f"{len(sources) - failed} passed, {failed} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
