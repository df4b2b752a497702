#!/usr/bin/env python3
"""Prints what reading and writing cost beside their measures, with target and verdict, from one run.

Usage: io_ratios.py BENCH_FOLDER [REPETITIONS]

The verdict goes by CPU time (user and system); the time on the clock also counts what others do on
the machine. BENCH_FOLDER holds the built benchmark programs. Files go to a temporary folder
(TMPDIR chooses the file system). Needs gdal_rasterize and ogr2ogr.
"""
import json
import os
import resource
import subprocess
import sys
import tempfile
import time
from collections import namedtuple
from pathlib import Path

Cost = namedtuple("Cost", "cpu wall")  # s


def least(costs):
    costs = list(costs)
    return Cost(min(c.cpu for c in costs), min(c.wall for c in costs))


def program(*arguments):
    """User and system time, and the time on the clock, of a program."""
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    start = time.perf_counter()
    subprocess.run([str(a) for a in arguments], check=True, stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL)
    wall = time.perf_counter() - start
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return Cost(after.ru_utime - before.ru_utime + after.ru_stime - before.ru_stime, wall)


def in_turns(repetitions, *jobs):
    """The least cost of each job; the jobs take turns, so that a slow spell meets all of them."""
    rounds = [[job() for job in jobs] for _ in range(repetitions)]
    return [least(costs) for costs in zip(*rounds)]


def benchmarks(path, repetitions, folder):
    report = folder / "benchmarks.json"
    subprocess.run([str(path), f"--benchmark_repetitions={repetitions}",
                    "--benchmark_enable_random_interleaving=true", f"--benchmark_out={report}"],
                   check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    seconds = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}
    runs = {}
    for run in json.loads(report.read_text())["benchmarks"]:
        if run["run_type"] == "iteration":
            unit = seconds[run["time_unit"]]
            runs.setdefault(run["run_name"], []).append(
                Cost(run["cpu_time"] * unit, run["real_time"] * unit))
    return {name: least(costs) for name, costs in runs.items()}


def layer_against_rasterize(bench, repetitions, folder):
    job = bench / "one_job"
    program(job, "make_layer", folder)

    def rasterize():
        raster = folder / "regions.tif"
        raster.unlink(missing_ok=True)
        return program("gdal_rasterize", "-q", "-a", "D50", "-ot", "Float64", "-te", 500000, 6000000,
                       520000, 6020000, "-tr", 10, 10, folder / "regions.mif", raster)

    return in_turns(repetitions, lambda: program(job, "read_layer", folder), rasterize)


def check_layer_against_ogr2ogr(bench, repetitions, folder):
    job = bench / "one_job"
    program(job, "write_check_layer", folder)
    squares = folder / "squares.fgb"
    program("ogr2ogr", "-f", "FlatGeobuf", "-lco", "SPATIAL_INDEX=NO", squares,
            folder / "job_mor_check.mif")

    def convert():
        for file in folder.glob("converted.*"):
            file.unlink()
        return program("ogr2ogr", "-f", "MapInfo File", "-dsco", "FORMAT=MIF",
                       folder / "converted.mif", squares)

    # What ogr2ogr takes to read the squares is not its writing.
    ours, theirs, reading = in_turns(
        repetitions, lambda: program(job, "write_check_layer", folder), convert,
        lambda: program("ogrinfo", "-q", "-al", "-geom=NO", "-fields=NO", squares))
    return ours, Cost(theirs.cpu - reading.cpu, theirs.wall - reading.wall)


class Table:
    def __init__(self):
        print("| What | ours: CPU, wall | measure | its CPU, wall | ratio, CPU | wall | target | |")
        print("|---|---|---|---|---|---|---|---|")

    @staticmethod
    def times(cost):
        unit, factor = ("s", 1.0) if cost.wall >= 1.0 else ("ms", 1e3)
        return f"{cost.cpu * factor:.3g}, {cost.wall * factor:.3g} {unit}"

    def row(self, what, ours, measure, theirs, ratio, target, passed):
        print(f"| {what} | {self.times(ours)} | {measure} | {self.times(theirs) if theirs else ''} | "
              f"{f'{ratio.cpu:.1f}' if ratio else ''} | {f'{ratio.wall:.1f}' if ratio else ''} | "
              f"{target} | {'pass' if passed else 'MISSED'} |", flush=True)

    def times_faster(self, what, ours, measure, theirs, least_ratio):
        ratio = Cost(theirs.cpu / ours.cpu, theirs.wall / ours.wall)
        self.row(what, ours, measure, theirs, ratio, f"{least_ratio} times faster",
                 ratio.cpu >= least_ratio)

    def within(self, what, ours, measure, theirs, most):
        ratio = Cost(ours.cpu / theirs.cpu, ours.wall / theirs.wall)
        self.row(what, ours, measure, theirs, ratio, f"within {most} times", ratio.cpu <= most)

    def below(self, what, ours, most):
        self.row(what, ours, "", None, None, f"under {most * 1e3:g} ms", ours.cpu < most)


def main():
    bench = Path(sys.argv[1]).resolve()
    repetitions = int(sys.argv[2]) if len(sys.argv) > 2 else 3
    with tempfile.TemporaryDirectory(prefix="nivaro_bench_") as name:
        folder = Path(name)
        os.environ["TMPDIR"] = name
        system = subprocess.run(["stat", "-f", "-c", "%T", name], check=True, capture_output=True,
                                text=True).stdout.strip()
        print(f"Files on {system}; least of {repetitions}.\n")
        reading = benchmarks(bench / "reading_benchmark", repetitions, folder)
        writing = benchmarks(bench / "writing_benchmark", repetitions, folder)
        table = Table()
        ours, theirs = layer_against_rasterize(bench, repetitions, folder)
        table.times_faster("Read MI, 20,000 polygons", ours, "gdal_rasterize", theirs, 3)
        table.within("Read MID, a million rows", reading["readControlFile/table"],
                     "from_chars on its numbers", reading["parseNumbers"], 3)
        record = writing["writeRecord/points_along_first"]
        table.within("time record, 4 million cells", record, "plain write of its bytes",
                     writing["writePlainly/bytes"], 2)
        table.within("the same", record, "and a look at the arrays it is made of",
                     writing["writePlainly/arrays_and_bytes"], 2)
        ours, theirs = check_layer_against_ogr2ogr(bench, repetitions, folder)
        table.times_faster("check layer, 4 million cells", ours, "ogr2ogr", theirs, 5)
        table.below("start-up and control file", reading["startUp"], 0.005)


if __name__ == "__main__":
    main()
