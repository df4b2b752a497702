#!/usr/bin/env python3
"""Makes the pictures and numbers of docs/user-guide.md with the built library: the trench case in
variations through the example host, single lines of cells through line_host.py.

Usage: make.py BUILD_DIR      writes docs/images/guide_*.png, prints the numbers
"""
import csv
import math
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

import line_host
from line_host import Line, capacity, celerity

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent.parent
TRENCH = ROOT / "examples" / "host" / "trench"
FACTORS = (1, 2, 3, 4, 6, 8, 9, 10, 12, 15, 20, 30)
STEPS = (8, 64, 256)
EXACT = {"Morphology Time Centreing Factor": 1, "Morphology Bed Change Limit": 1e9}


# ---- The trench ----

def trench_case(folder, cell_size):
    """The case with cells of another size, one across."""
    columns = round((22.5 if cell_size == 0.75 else 22) / cell_size)
    text = (TRENCH / "case.toml").read_text(encoding="utf-8")
    outside = -6 + (columns + 0.5) * cell_size
    for key, value in {"columns": columns, "rows": 1, "cell_size": cell_size}.items():
        text = re.sub(rf"^{key} = \S+", f"{key} = {value}", text, flags=re.M)
    text = re.sub(r"(west.*= )[\d.]+ }", rf"\g<1>{0.51 * 0.39 * cell_size:.6f} }}", text)
    text = re.sub(r"(east.*= )[\d.]+ }", rf"\g<1>{0.39 - 0.00039865 * outside:.5f} }}", text)
    folder.mkdir(parents=True)
    (folder / "case.toml").write_text(text, encoding="utf-8")
    for name in ("trench.mcf", "measured.csv"):
        (folder / name).write_bytes((TRENCH / name).read_bytes())


def run_host(build, case, out, options=None, step=None):
    command = [build / "morphology_host", case, "--out", out]
    if options:
        control = case / f"{out.name}.mcf"
        control.write_text("Read File == trench.mcf\n" +
                           "".join(f"{key} == {value}\n" for key, value in options.items()))
        command += ["--control", control]
    if step:
        command += ["--step", str(step)]
    subprocess.run(command, check=True, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL)
    summary = next(out.glob("*_summary.csv"))
    with summary.open() as file:
        return {row["quantity"]: float(row["value"]) for row in csv.DictReader(file)}


def ripples(run, reference):
    """Largest difference of the beds after 15 h at the head of the trench, and elsewhere."""
    beds = []
    for folder in (run, reference):
        with (folder / "trench_profile.csv").open() as file:
            beds.append([(float(row["distance_m"]), float(row["bed_m"])) for row in csv.DictReader(file)
                         if float(row["time_h"]) == 15])
    differences = [(x, abs(z - other)) for (x, z), (_, other) in zip(*beds)]
    return (max(d for x, d in differences if x < 2.2), max(d for x, d in differences if x >= 2.2))


def trench_runs(build, scratch):
    trench_case(scratch / "fine", 0.1)
    for step in STEPS:
        run_host(build, scratch / "fine", scratch / f"step{step}", step=step)
    for theta in (1, 0.25):
        run_host(build, scratch / "fine", scratch / f"theta{theta}",
                 {"Morphology Time Centreing Factor": theta}, 64)
    for run in ("step64", "step256", "theta1", "theta0.25"):
        head, elsewhere = ripples(scratch / run, scratch / "step8")
        print(f"  {run} against step8: {head:.4f} m at the head, {elsewhere:.4f} m elsewhere")
    with (scratch / "calibration.txt").open("w") as file:
        for factor in FACTORS:
            result = run_host(build, scratch / "fine", scratch / f"factor{factor}",
                              {"Morphology Concentration Factor": factor}, 16)
            print(factor, result["rms"], result["skill"], file=file)
            print(f"  factor {factor:2}: rms {result['rms']:.4f} m, skill {result['skill']:.2f}")
    trench_case(scratch / "coarse", 0.5)
    for switch in ("OFF", "ON"):
        for case in ("fine", "coarse"):
            result = run_host(build, scratch / case, scratch / f"{case}_{switch}",
                              {"Cell Sides High": switch, "Morphology Concentration Factor": 9}, 16)
            print(f"  cell sides high {switch}, {case} cells: rms {result['rms']:.3f} m")


def unset_runs(build, scratch):
    """What a missing reference level does in a straight flume and where the flow turns."""
    for name, lines_of, hours in (("trench", "trench.mcf", 1.0), ("reach", "sand.mcf", 0.2)):
        case, out = scratch / f"unset_{name}", scratch / f"unset_{name}_out"
        shutil.copytree(TRENCH.parent / name, case)
        sand = case / lines_of
        sand.write_text(re.sub(r"^.*Reference Level.*\n", "", sand.read_text(), flags=re.M))
        subprocess.run([build / "morphology_host", case, "--out", out, "--duration", str(hours)],
                       check=True, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL)
        with (out / f"{name}_bed_change.csv").open() as file:
            largest = max(abs(float(row["bed_change_m"])) for row in csv.DictReader(file))
        print(f"  {name} without a reference level: the bed changes by {largest:.2f} m in {hours} h")


# ---- A pit in a river ----

PIT = """name = "pit"
[grid]
columns = {columns}
rows = 1
cell_size = {cell}
[bed]
level = 0.0
slope = [-0.0001705, 0.0]
[[bed.profile]]
along = "x"
depths = [[{0}, 0], [{1}, 1.5], [{2}, 1.5], [{3}, 0]]
[roughness]
height = 0.05
[boundary]
west = {{ discharge = {discharge} }}
east = {{ level = 1.7937 }}
[initial]
depth = 2.0
discharge = [2.0, 0.0]
[time]
duration_h = 240
morphology_step_s = {step}
acceleration = 60
spin_up_s = 7200
output_every_h = 240
[morphology]
control_file = "pit.mcf"
[profile]
along = "x"
"""


def pit_run(build, folder, edge, options=None, cell=20, step=900):
    """Half the height of ripples before a pit of 1.5 m from 400 to 520 m, whose edges are as long as
    given, and the sand in it, m3 of bed for a metre of width."""
    folder.mkdir()
    half = max(edge, 0.01) / 2
    corners = (400 - half, 400 + half, 520 - half, 520 + half)
    (folder / "case.toml").write_text(PIT.format(*corners, cell=cell, columns=1200 // cell, step=step,
                                                 discharge=2 * cell))
    (folder / "pit.mcf").write_text("".join(
        f"{key} == {value}\n" for key, value in {**line_host.SAND, **(options or {})}.items()))
    subprocess.run([build / "morphology_host", folder, "--out", folder / "out"], check=True,
                   stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL)
    with (folder / "out" / "pit_profile.csv").open() as file:
        bed = [(float(row["distance_m"]), float(row["bed_change_m"])) for row in csv.DictReader(file)
               if float(row["time_h"]) == 240]
    ripple = max(abs(a - 2 * b + c) / 4 for (_, a), (x, b), (_, c) in zip(bed, bed[1:], bed[2:]) if x < 340)
    return ripple, sum(change for x, change in bed if 400 < x < 520) * cell


def print_pits(build, scratch):
    print("A pit of 1.5 m in 2 m of water at 1 m/s after 10 days")
    slump, theta, factor = ("Morphology " + name for name in (
        "Slump Slope", "Time Centreing Factor", "Concentration Factor"))
    for number, (edge, options, more) in enumerate((
            (0, {}, {}), (0, {}, dict(step=3600)), (0, {}, dict(step=14400)), (0, {theta: 1}, {}),
            (0, {factor: 9}, {}), (0, {factor: 27}, {}), (0, {slump: 30}, {}),
            (0, {}, dict(cell=5, step=60)), (40, {}, {}), (80, {}, {}), (80, {factor: 3}, {}),
            (80, {}, dict(cell=10, step=240)), (80, {}, dict(cell=5, step=60)))):
        ripple, sand = pit_run(build, scratch / f"pit{number}", edge, options, **more)
        print(f"  edges of {edge} m {options or ''} {more or ''}: ripples of {ripple:.3f} m, {sand:.0f} m2 settled")


# ---- One line of cells ----

def print_sensitivity():
    print("Transport of 2 m at 1 m/s, and how it answers to one option")
    suspended, bed_load = capacity(2, 1)
    for speed in (0.8, 1.0, 1.1):
        s, b = capacity(2, speed)
        print(f"  at {speed} m/s {s:.3f} suspended, {b:.3f} bed load, kg/(s m)")
    for name, values in {
            "Set Morphology D50": (0.0001, 0.0004), "Set Morphology D90": (0.00025, 0.0006),
            "Morphology Fall Velocity": (0, 0.0125, 0.05),
            "Morphology Current Related Roughness": (0, 0.025, 0.1),
            "Morphology Reference Level": (0, 0.00625, 0.0125, 0.05, 0.1),
            "Morphology Mixing Layer Thickness": (0, 0.1, 1.61),
            "Morphology Mixing Coefficient": (0.8, 1.2, 2.0),
            "Morphology Sand Grain Density": (2600, 2700), "Morphology Water Density": (1025,)}.items():
        for value in values:
            s, b = capacity(2, 1, {name: value})
            print(f"  {name} {value}: {s:.3f} + {b:.3f}, x {(s + b) / (suspended + bed_load):.2f}")


def print_losses():
    print("Sand made or lost")
    reaches = sum(capacity(2, 1)) * 10
    for factor in (1, 9):
        for dx in (5, 20, 100):
            options = {**EXACT, "Morphology Concentration Factor": factor}
            up = Line(20, dx, 2, lambda j: 2.0 if j < 20 else 0.0, options)
            down = Line(20, dx, 2, lambda j: -2.0 if j > 0 else 0.0, options)
            up.step(10), down.step(10)
            print(f"  closed side, factor {factor}, cells of {dx} m: settles {up.gained() / reaches:.2f}"
                  f" upward, {down.gained() / reaches:.2f} downward")
    picked_up = sum(capacity(2, 1)) - sum(capacity(2, 0.8))
    for voids in (0.4, 0.5):
        options = {**EXACT, "Set Morphology Insitu Voids": 0.4, "Set Morphology Deposition Voids": voids}
        up = Line(20, 20, 2, lambda j: 1.6 + 0.02 * j, options)
        down = Line(20, 20, 2, lambda j: -2.0 + 0.02 * j, options)
        up.step(1), down.step(1)
        print(f"  voids 0.4 and {voids}: the bed gives {-up.gained() / picked_up:.3f} upward,"
              f" {-down.gained() / picked_up:.3f} downward")
    grains = Line(40, 20, 2, 2.0, EXACT)
    for j in range(21, 41):
        grains.field(1, j).value, grains.field(2, j).value = 0.0004, 0.0006
    grains.step(60)
    leaves = sum(capacity(2, 1, {"Set Morphology D50": 0.0004, "Set Morphology D90": 0.0006}))
    print(f"  grains 0.2 to 0.4 mm: in {sum(capacity(2, 1)):.3f}, out {leaves:.3f},"
          f" the bed gains {grains.gained() / 60:.3f} kg/(s m)")
    rock = Line(40, 20, 2, 2.0, EXACT)
    for j in range(1, 11):
        rock.field(5, j).value = rock.bed(j)
    rock.step(60, 10)
    print(f"  behind 10 cells of bare rock the first cell of sand changes by {rock.change(11):.6f} m")
    limited = Line(20, 20, 2, lambda j: 2.0 if j < 10 else 3.0,
                   {"Morphology Time Centreing Factor": 1, "Morphology Bed Change Limit": 0.01})
    limited.step(600)
    print(f"  bed change limit met: the bed gives {-limited.gained() / 600:.2f} of"
          f" {sum(capacity(2, 1.5)) - sum(capacity(2, 1)):.2f} kg/(s m)")


def growth(theta, courant, dx=10.0, steps=60):
    """Growth of ripples of four cells per step in coarse sand, which travels near the bed; `courant`
    is that of the bed load's waves."""
    coarse = {"Set Morphology D50": 0.001, "Set Morphology D90": 0.0015,
              "Morphology Fall Velocity": 0.13}
    seconds = courant * dx / celerity(2, 1, coarse)[1]
    line = Line(400, dx, lambda j: 2 + 1e-4 * math.cos(math.pi * j / 2 + 0.3), 2.0,
                {**coarse, "Morphology Time Centreing Factor": theta})

    def size():
        c, s = (sum((line.bed(j) + 2) * wave(math.pi * j / 2) for j in range(301, 381))
                for wave in (math.cos, math.sin))
        return math.hypot(c, s)

    line.step(seconds, 10)
    before = size()
    line.step(seconds, steps)
    return math.log(size() / before) / steps


def print_step_rule():
    for name, flow in {"2 m, 1 m/s, fine sand": (2, 1, None),
                       "fastest cell of the reach": (3.11, 1.69, {
                           "Set Morphology D50": 0.00028, "Set Morphology D90": 0.0005,
                           "Morphology Fall Velocity": 0.035,
                           "Morphology Current Related Roughness": 0.1,
                           "Morphology Reference Level": 0.05,
                           "Morphology Mixing Layer Thickness": 0.05}),
                       "trench": (0.39, 0.51, {
                           "Set Morphology D50": 0.00016, "Set Morphology D90": 0.0002,
                           "Morphology Fall Velocity": 0.013,
                           "Morphology Current Related Roughness": 0.025,
                           "Morphology Reference Level": 0.0125,
                           "Morphology Mixing Layer Thickness": 0.0125})}.items():
        suspended, bed_load = celerity(*flow)
        print(f"Bed waves, {name}: {suspended:.2e} + {bed_load:.2e} m/s")
    for theta in (1, 0.5, 0.25):
        for courant in (0.08, 0.16):
            print(f"  theta {theta}, Courant {courant}: ripples grow by {growth(theta, courant):.4f} a step,"
                  f" C^2 (1/theta - 1/2) = {courant ** 2 * (1 / theta - 0.5):.4f}")


def lag_profile(scratch):
    """A current that quickens at 100 m and slackens at 400 m."""
    bed_load = capacity(2, 1)[1] - capacity(2, 0.8)[1]
    to_height = 600 / 20 / 0.6 / line_host.DENSITY
    with (scratch / "lag.txt").open("w") as file:
        for factor in (1, 3, 9):
            line = Line(500, 20, 2, lambda j: 2.0 if 5 <= j < 20 else 1.6,
                        {**EXACT, "Morphology Concentration Factor": factor})
            line.step(600)
            for j in range(1, 61):
                print((j - 0.5) * 20, line.change(j) * 1000, file=file)
            print("\n", file=file)
            near, all_of_it = (sum(line.change(j) for j in range(20, last)) - bed_load * to_height
                               for last in (25, 501))
            print(f"  factor {factor}: {near / all_of_it:.2f} of what settles does so in 100 m")


# ---- Pictures ----

def check_layer_cells(scratch):
    """Centre and D50 in mm of each cell, from the check layer."""
    with (scratch / "layers" / "layers_mor_check.mid").open() as records, \
            (scratch / "cells.txt").open("w") as cells:
        for record in csv.reader(records):
            row, column = int(record[0]), int(record[1])
            print(10 * column - 5, 10 * row - 5, float(record[6]) * 1000, file=cells)


def main():
    build = pathlib.Path(sys.argv[1]).resolve()
    line_host.load(build / "libnivaro_morphology.so")
    print_sensitivity()
    print_losses()
    print_step_rule()
    with tempfile.TemporaryDirectory() as folder:
        scratch = pathlib.Path(folder)
        print("Settling behind a current that slackens")
        lag_profile(scratch)
        print("The trench")
        trench_runs(build, scratch)
        unset_runs(build, scratch)
        print_pits(build, scratch)
        subprocess.run([build / "morphology_host", HERE / "layers", "--out", scratch / "layers"],
                       check=True, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL)
        check_layer_cells(scratch)
        for plot in ("step", "calibration", "cell_sides", "lag", "layers"):
            target = ROOT / "docs" / "images" / f"guide_{plot}.png"
            subprocess.run(["gnuplot", "-e", f"runs='{scratch}'; measured='{TRENCH}/measured.csv';"
                            f"target='{target}'", HERE / f"{plot}.gp"], check=True, cwd=HERE)


if __name__ == "__main__":
    main()
