#!/usr/bin/env python3
"""Plants faults of one line in the sources, one at a time, and tells which tests fall.

Usage: scripts/plant_faults.py [--count N] [--seed S] [--tests REGEX] [--list] [FILE...]

FILE    sources to plant in, or folders of them, below src; all of src when none is named
--count how many faults (20), --seed which ones (1): the same seed plants the same faults as long
        as the sources stay as they are
--tests the tests to run, as ctest -R takes them; unit and abi tests when it is not given
--build programs to build for them, in one word; everything when it is not given
--list  only tells the faults

A fault turns a relation, a logical or arithmetic operator, a constant or a sign around, or drops a
statement. It is planted in a copy of the tree, build/planted, never in the tree itself. A line for
each fault: place, the line as it was and as it is, and the tests that fell or "NOTHING FELL". A fault
that changes nothing anyone can see falls nowhere, so a line without tests is a question.
"""
import argparse
import dataclasses
import pathlib
import random
import re
import resource
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
COPY = ROOT / "build" / "planted"

# A kind of fault: what it looks for, outside comments and texts, and what it puts there.
KINDS = {
    "relation": [(r" <= ", " < "), (r" >= ", " > "), (r" < ", " <= "), (r" > ", " >= "),
                 (r" == ", " != "), (r" != ", " == ")],
    "logic": [(r" && ", " || "), (r" \|\| ", " && "), (r"(?<=[(\s])!(?=[\w(])", ""),
              (r"\btrue\b", "false"), (r"\bfalse\b", "true")],
    "arithmetic": [(r" \+ ", " - "), (r" - ", " + "), (r" \* (?=[\w(])", " / "),
                   (r" / ", " * "), (r" \+= ", " -= "), (r" -= ", " += ")],
    "constant": [(r"(?<![\w.'])(\d+)(?![\w.'])", lambda m: str(int(m[1]) + 1)),
                 (r"(?<![\w.'])(\d+\.\d+)(?![\w.'])", lambda m: repr(float(m[1]) * 1.5 + 1))],
    "drop": [(r"^\s*(?!return|using|const|auto|struct|class|case|default|static|break|continue|"
              r"std::[\w<>:]+ \w|[\w:<>]+&? \w+[;({= ])[*+\w][^{}?]*;$", ";")],
}


@dataclasses.dataclass
class Fault:
    file: pathlib.Path
    number: int
    old: str
    new: str

    def __str__(self):
        return f"{self.file}:{self.number}: {self.old.strip()}  ->  {self.new.strip()}"


def code_of(line):
    """The line with blanks for what stands in texts, characters and comments."""
    blank = lambda m: m[0][0] + " " * (len(m[0]) - 2) + m[0][-1]
    line = re.sub(r'"(?:\\.|[^"\\])*"|\'(?:\\.|[^\'\\])+\'', blank, line)
    return re.sub(r"//.*", lambda m: " " * len(m[0]), line)


def faults_in(file, kind):
    for number, line in enumerate((ROOT / file).read_text().splitlines(), 1):
        code = code_of(line)
        if re.match(r"\s*(#|template|using|static_assert)", code):
            continue
        for pattern, replacement in KINDS[kind]:
            for match in re.finditer(pattern, code):
                put = replacement(match) if callable(replacement) else replacement
                yield Fault(file, number, line, line[: match.start()] + put + line[match.end() :])


def choose(files, count, seed):
    """Each kind of fault as likely as the others, wherever there are fewer places for it."""
    rng = random.Random(seed)
    pools = {kind: [f for file in files for f in faults_in(file, kind)] for kind in KINDS}
    while count > 0 and any(pools.values()):
        pool = pools[rng.choice([kind for kind, pool in pools.items() if pool])]
        yield pool.pop(rng.randrange(len(pool)))
        count -= 1


def run(*command, memory=resource.RLIM_INFINITY):
    return subprocess.run(command, capture_output=True, text=True, errors="replace",
                          preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (memory,) * 2))


def build(targets):
    return run("cmake", "--build", str(COPY / "build"), *(["--target", *targets] if targets else []))


def prepare(targets):
    for item in run("git", "-C", str(ROOT), "ls-files", "-co", "--exclude-standard").stdout.split():
        copied = COPY / item
        copied.parent.mkdir(parents=True, exist_ok=True)
        if (ROOT / item).exists() and (
            not copied.exists() or copied.read_bytes() != (ROOT / item).read_bytes()
        ):
            shutil.copy(ROOT / item, copied)
    configured = run("cmake", "-S", str(COPY), "-B", str(COPY / "build"), "-G", "Ninja",
                     "-DNIVARO_TESTS=ON", "-DNIVARO_WARNINGS_AS_ERRORS=OFF")
    built = build(targets)
    if configured.returncode or built.returncode:
        sys.exit(configured.stderr + built.stdout[-3000:])


def fallen(tests):
    chosen = ("-R", tests) if tests else ("-L", "unit|abi")
    # A fault may make a loop endless, and fill the memory.
    told = run("ctest", "--test-dir", str(COPY / "build"), *chosen, "-j2", "--timeout", "60",
               memory=4 << 30).stdout
    return re.findall(r"^\s+\d+ - (\S+) \(", told, re.M)


def verdict(fault, arguments):
    file = COPY / fault.file
    right = file.read_text()
    lines = right.splitlines(keepends=True)
    lines[fault.number - 1] = fault.new + "\n"
    file.write_text("".join(lines))
    try:
        if build(arguments.build).returncode:
            return None
        return fallen(arguments.tests)
    finally:
        file.write_text(right)


def main():
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("--count", type=int, default=20)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--tests")
    parser.add_argument("--build", type=str.split, default=[])
    parser.add_argument("--list", action="store_true")
    parser.add_argument("files", nargs="*", default=["src"])
    arguments = parser.parse_args()
    named = [ROOT / name for name in arguments.files]
    found = {f for n in named for f in ([n] if n.is_file() else n.rglob("*.?pp"))}
    files = sorted(f.relative_to(ROOT) for f in found)
    faults = choose(files, 10**6, arguments.seed)
    planted = 0
    if not arguments.list:
        prepare(arguments.build)
        if already := fallen(arguments.tests):
            sys.exit(f"These tests fall without a fault: {already}")
    for fault in faults:
        if planted == arguments.count:
            break
        tests = [] if arguments.list else verdict(fault, arguments)
        if tests is None:
            continue  # does not compile
        planted += 1
        print(f"{planted:3} {fault}", flush=True)
        if not arguments.list:
            print("      " + (" ".join(tests) or "NOTHING FELL"), flush=True)


if __name__ == "__main__":
    main()
