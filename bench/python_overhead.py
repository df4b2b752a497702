#!/usr/bin/python3
"""What a step costs through the Python package, in a process of the library's own and in this one, and what
of it is the call of the library: for the smallest domain, where all is overhead, and for larger ones.

Usage: bench/python_overhead.py [LIBRARY]
"""
from __future__ import annotations

import pathlib
import subprocess
import sys
import time
from typing import Callable

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "python"))
import nivaro_morphology as nm  # noqa: E402

OPTIONS = {
    "Morphology Fall Velocity": 0.025,
    "Morphology Current Related Roughness": 0.06,
    "Morphology Reference Level": 0.03,
}


def quartile(call: Callable[[], object], times: int) -> float:
    """Time that a quarter of all calls stay below, microseconds: others want the processor too."""
    taken = []
    for _ in range(times):
        start = time.perf_counter()
        call()
        taken.append(time.perf_counter() - start)
    return 1e6 * sorted(taken)[times // 4]


def measure(library: str, side: int, isolated: bool) -> None:
    times = max(20, 20000 // side**2)
    settings = nm.DomainSettings((side, side), 5.0, OPTIONS)
    with nm.Run([settings], isolated=isolated, library=library) as run:
        domain = run.domains[0]
        domain.bed, domain.water_level, domain.u = -1.0, 0.0, 0.6
        step = quartile(lambda: domain.step(1.0), times)
        call = quartile(lambda: run._engine.run(domain._step), times)
    where = "isolated" if isolated else "own process"
    print(f"{side:>5} x {side:<5} {where:12} {step:10.1f} {call:10.1f}", file=sys.stderr)


def main() -> None:
    library = sys.argv[1] if len(sys.argv) > 1 else nm.find_library()
    if len(sys.argv) > 2:
        return measure(library, int(sys.argv[2]), sys.argv[3] == "isolated")
    print(f"{'cells':13} {'where':12} {'step (us)':>10} {'call (us)':>10}", flush=True)
    for side in (3, 100, 1000):
        for where in ("own", "isolated"):  # a process has one run of its own
            again = [sys.executable, __file__, library, str(side), where]
            subprocess.run(again, check=True, stdout=subprocess.DEVNULL)


if __name__ == "__main__":
    main()
