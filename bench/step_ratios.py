#!/usr/bin/env python3
"""Prints the step's time in ns per active cell and its ratio to the plain form, from one run.

Usage: step_ratios.py STEP_BENCHMARK [BENCHMARK_OPTION...]
"""
import json
import subprocess
import sys


def measure(arguments):
    output = subprocess.run(arguments + ["--benchmark_format=json"], check=True,
                            stdout=subprocess.PIPE, stderr=subprocess.DEVNULL).stdout
    best = {}
    for run in json.loads(output)["benchmarks"]:
        if run.get("run_type") == "aggregate":
            continue
        form, variant, size = run["run_name"].split("/")[:3]
        nanoseconds = run["cpu_time"] * 1e6 / run["active_cells"]
        key = (variant, int(size))
        times = best.setdefault(key, {})
        times[form] = min(nanoseconds, times.get(form, nanoseconds))
    return best


def main():
    table = measure(sys.argv[1:])
    forms = [f for f in ("portable", "avx2", "avx512") if any(f in t for t in table.values())]
    print("| Case | Cells | plain, ns |" + "".join(f" {f}, ns (ratio) |" for f in forms))
    print("|---|---|---|" + "---|" * len(forms))
    for (variant, size), times in table.items():
        cells = "".join(f" {times[f]:.0f} ({times['plain'] / times[f]:.1f}) |" for f in forms)
        print(f"| {variant} | {size} x {size} | {times['plain']:.0f} |{cells}")


if __name__ == "__main__":
    main()
