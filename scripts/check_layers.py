#!/usr/bin/env python3
"""Checks that includes run down the floors (the table in docs/architecture.md), without cycles
between files, and that nothing but the module itself holds static state.

Usage: check_layers.py [SRC_FOLDER]
"""
import pathlib
import re
import sys

# What control may include of the step: data only.
CONTROL_FROM_MORPHOLOGY = {"morphology/parameters.hpp", "morphology/fields.hpp"}

# The step and its engine are pure: nothing of the platform that could do input or output.
PURE = {"morphology", "morphology/engine"}
MORPHOLOGY_FROM_PLATFORM = {"platform/grid.hpp", "platform/logical.hpp"}

# The public header belongs to the message record (which lays it out) and the skin.
PUBLIC_HEADER = "nivaro_morphology.h"
PUBLIC_HEADER_USERS = {"messages", "exports"}

# The one place of state, and the block shared with the host.
STATE_OWNERS = {"exports/the_module.cpp", "exports/dmessages.cpp"}

STATIC = re.compile(r"^\s*(?:inline\s+)?(?:static|thread_local)\s+(?!const\b|constexpr\b)"
                    r"[\w:<>,\s*&]+?\b\w+\s*(?:=[^=]|;|\{[^}]*\};)")


def read_floors(document):
    """Folder of src/ -> folders whose headers it may include beside its own."""
    rows = re.findall(r"^\| `([\w/]+)` \|([^|]*)\|", document.read_text(encoding="utf-8"), re.M)
    return {folder: re.findall(r"`([\w/]+)`", allowed) for folder, allowed in rows
            if not folder.startswith("tests")}


def floor_of(path):
    return str(pathlib.PurePosixPath(path).parent)


def check_include(floors, file, floor, include, errors):
    if include == PUBLIC_HEADER:
        if floor not in PUBLIC_HEADER_USERS:
            errors.append(f"{file}: {floor} must not include {include}")
        return
    target = floor_of(include)
    if target not in floors:
        errors.append(f"{file}: includes {include}, which is in no floor")
    elif target != floor and target not in floors[floor]:
        errors.append(f"{file}: {floor} must not include {include}")
    elif (floor, target) == ("control", "morphology") and include not in CONTROL_FROM_MORPHOLOGY:
        errors.append(f"{file}: control may include only data of the step, not {include}")
    elif floor in PURE and target == "platform" and include not in MORPHOLOGY_FROM_PLATFORM:
        errors.append(f"{file}: the step is pure and must not include {include}")


def find_cycle(graph):
    done, path = set(), []

    def visit(node):
        if node in path:
            return path[path.index(node):] + [node]
        if node in done:
            return None
        path.append(node)
        for target in graph.get(node, []):
            if cycle := visit(target):
                return cycle
        path.pop()
        done.add(node)
        return None

    for node in sorted(graph):
        if cycle := visit(node):
            return cycle
    return None


def main():
    root = pathlib.Path(__file__).resolve().parent.parent
    src = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else root / "src"
    floors = read_floors(root / "docs" / "architecture.md")
    errors, graph, count = [], {}, 0
    for path in sorted(src.rglob("*.[ch]pp")):
        file = path.relative_to(src).as_posix()
        floor = floor_of(file)
        count += 1
        if floor not in floors:
            errors.append(f"{file}: {floor} is no floor")
            continue
        text = path.read_text(encoding="utf-8")
        includes = re.findall(r'^#include "([^"]+)"', text, re.M)
        for include in includes:
            check_include(floors, file, floor, include, errors)
        graph[file] = [i for i in includes if i != PUBLIC_HEADER]
        if file not in STATE_OWNERS:
            for number, line in enumerate(text.splitlines(), 1):
                if STATIC.match(line):
                    errors.append(f"{file}:{number}: static state outside the module: {line.strip()}")
    if cycle := find_cycle(graph):
        errors.append("includes run in a circle: " + " -> ".join(cycle))
    for error in errors:
        print(error)
    print(f"{count} files, {len(errors)} errors")
    return 1 if errors else 0


if __name__ == "__main__":
    sys.exit(main())
