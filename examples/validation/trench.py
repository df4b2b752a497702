"""The measured trench, through the example host: over time, over cells and steps."""
import csv

import numpy

import capacity
import line_host
from make import run_host, trench_case
from report import BLACK, BLUE, GREEN, GREY, ORANGE, panels

FACTORS = {"default": 1, "calibrated": 9}
HOURS = (4.5, 9.0, 15.0)
CELLS = ((0.5, 200), (0.2, 32), (0.1, 8), (0.05, 2))  # m, and the steps that go with them, s


def run(build, scratch, dx, step, factor):
    case, out = scratch / f"cells{dx}", scratch / f"trench{dx}_{step}_{factor}"
    if out.exists():
        return out
    if not case.exists():
        trench_case(case, dx)
    run_host(build, case, out, {"Morphology Concentration Factor": factor}, step)
    return out


def profile(out, hours, column="below_plane_m"):
    """Distance, and bed above the flat bed."""
    with (out / "trench_profile.csv").open() as file:
        rows = [row for row in csv.DictReader(file) if abs(float(row["time_h"]) - hours) < 1e-3]
    return numpy.array([(float(row["distance_m"]), -float(row[column])) for row in rows]).T


def measured(case):
    with (case / "measured.csv").open() as file:
        rows = list(csv.DictReader(line for line in file if not line.startswith("#")))
    return numpy.array([(float(row["distance_m"]), -float(row["depth_m"])) for row in rows]).T


def rms_of(out, points):
    x, z = profile(out, 15)
    return numpy.sqrt(numpy.mean((numpy.interp(points[0], x, z) - points[1]) ** 2))


def skill_of(out, points):
    x, z = profile(out, 15, "below_plane_before_m")
    before = numpy.interp(points[0], x, z) - points[1]
    return 1 - rms_of(out, points) ** 2 / numpy.mean(before ** 2)


def host_rms(out):
    with (out / "trench_summary.csv").open() as file:
        return next(float(row["value"]) for row in csv.DictReader(file) if row["quantity"] == "rms")


def difference(out, reference):
    """Largest difference of the beds after 15 h at the head of the trench, and elsewhere."""
    x, z = profile(reference, 15)
    other_x, other = profile(out, 15)
    apart = abs(numpy.interp(x, other_x, other) - z)
    inside = (x > other_x[0]) & (x < other_x[-1])
    return apart[inside & (x < 3.2)].max(), apart[inside & (x >= 3.2)].max()


def deepest(points):
    """Distance and depth."""
    x, z = points[:, points[0] > 1.5]
    k = numpy.argmin(z)
    return x[k], -z[k]


def deepest_text(points):
    return "{1:.3f} m at {0:.1f} m".format(*deepest(points))


def highest_ripple(out):
    """The highest point of the bed at the head of the trench, above the flat bed."""
    x, z = profile(out, 15)
    return z[(x > 0) & (x < 2.2)].max()


def refinement_row(build, scratch, dx, step, reference, points):
    row = [f"{dx:g}", f"{step:g}"]
    for factor in FACTORS.values():
        out = run(build, scratch, dx, step, factor)
        head, elsewhere = difference(out, run(build, scratch, *reference, factor))
        row += [f"{rms_of(out, points):.4f}", f"{head:.4f}", f"{elsewhere:.4f}"]
    return row


def report(page, build, scratch):
    runs = {name: run(build, scratch, 0.1, 8, factor) for name, factor in FACTORS.items()}
    points = measured(scratch / "cells0.1")
    before = profile(runs["default"], 15, "below_plane_before_m")
    still = numpy.sqrt(numpy.mean((numpy.interp(points[0], *before) - points[1]) ** 2))
    page.table("trench_result", ["", "rms difference (m)", "skill", "deepest"],
               [["the bed as it was", f"{still:.4f}", "0", "0.150 m from 1.5 to 4.5 m"]]
               + [[f"factor {FACTORS[name]} ({name})", f"{rms_of(out, points):.4f}",
                   f"{skill_of(out, points):.2f}", deepest_text(profile(out, 15))]
                  for name, out in runs.items()]
               + [["measured", "", "", deepest_text(points)]])
    head = ["cells (m)", "step (s)"] + [f"factor {factor}: {what}" for factor in FACTORS.values()
                                        for what in ("rms (m)", "head (m)", "elsewhere (m)")]
    page.table("trench_cells", head, [
        refinement_row(build, scratch, dx, step, (0.05, 2), points)
        for dx, step in CELLS])
    page.table("trench_steps", head, [
        refinement_row(build, scratch, 0.1, step, (0.1, 2), points)
        for step in (128, 64, 32, 16, 8, 4)])
    report_hand_numbers(page)
    place, depth = (a - b for a, b in zip(deepest(points), deepest(profile(runs["calibrated"], 15))))
    behind = points[:, points[0] > 7]
    page.numbers(
        trench_place=f"{place:.1f}", trench_depth=f"{depth:.2f}",
        trench_behind=f"{(numpy.interp(behind[0], *profile(runs['calibrated'], 15)) - behind[1]).mean():.2f}",
        trench_ripples=", ".join(f"{highest_ripple(run(build, scratch, dx, step, 1)):.3f}"
                                 for dx, step in CELLS),
        **{f"trench_skill{FACTORS[name]}": f"{skill_of(out, points):.2f}" for name, out in runs.items()},
        trench_rms_page=", ".join(f"{rms_of(out, points):.5f}" for out in runs.values()),
        trench_rms_host=", ".join(f"{host_rms(out):.5f}" for out in runs.values()))
    draw_over_time(page, runs, before, points)
    draw_refinement(page, {dx: {factor: run(build, scratch, dx, step, factor)
                                for factor in FACTORS.values()}
                           for dx, step in CELLS}, points)


def report_hand_numbers(page):
    """The transport of the approach, and how far the capacity falls over the trench."""
    flume = {"Set Morphology D50": 0.00016, "Set Morphology D90": 0.0002,
             "Morphology Fall Velocity": 0.013, "Morphology Current Related Roughness": 0.025,
             "Morphology Reference Level": 0.0125, "Morphology Mixing Layer Thickness": 0.0125}
    module = line_host.capacity(0.39, 0.51, flume)
    hand = capacity.transport(0.39, 0.51, **capacity.FLUME)
    floor = capacity.transport(0.54, 0.51 * 0.39 / 0.54, **capacity.FLUME)
    share = floor[0] / hand[0]
    page.numbers(trench_hand=f"{hand[0]:.6f} + {hand[1]:.6f}",
                 trench_module=f"{module[0]:.6f} + {module[1]:.6f}", trench_share=f"{share:.2f}",
                 trench_decay=f"{9 * (1 - share ** 0.2) / (1 - share):.1f}")


def draw_over_time(page, runs, before, points):
    figure, *axes = panels(2, sharey=True)
    for axis, (name, out) in zip(axes, runs.items()):
        axis.plot(*before, "--", color=GREY, label="before")
        for hours, color in zip(HOURS, ("#c6dbef", "#74a9cf", BLUE)):
            axis.plot(*profile(out, hours), color=color, label=f"{hours:g} h")
        axis.plot(*points, "o", color=BLACK, markersize=4, label="measured, 15 h")
        axis.set(title=f"concentration factor {FACTORS[name]} ({name})", xlim=(-1, 12),
                 ylim=(-0.16, 0.06), xlabel="distance along the flume (m)")
    axes[0].set_ylabel("bed above the flat bed (m)")
    axes[1].legend(loc="lower right")
    page.picture(figure, "trench")


def draw_refinement(page, runs, points):
    figure, *axes = panels(2, sharey=True)
    for axis, factor in zip(axes, FACTORS.values()):
        for (dx, outs), color in zip(runs.items(), (ORANGE, GREEN, BLUE, BLACK)):
            axis.plot(*profile(outs[factor], 15), color=color, label=f"cells of {dx:g} m", linewidth=1.2)
        axis.plot(*points, "o", color=GREY, markersize=4, label="measured")
        axis.set(title=f"concentration factor {factor}, after 15 h", xlim=(-1, 12), ylim=(-0.16, 0.09),
                 xlabel="distance along the flume (m)")
    axes[0].set_ylabel("bed above the flat bed (m)")
    axes[1].legend(loc="lower right")
    page.picture(figure, "trench_cells")
