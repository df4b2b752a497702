"""Uniform flow over sand everywhere: nothing may change."""
import numpy

import capacity
import line_host
from plane_host import Plane
from report import BLUE, GREY, ORANGE, panels, size

DEPTH, SPEED, DX, CELLS, STEP = 1.37, 1.13, 10.0, 22, 60.0  # no round numbers: sums are to round off
DIRECTIONS = {"+x": (1, 0), "-x": (-1, 0), "+y": (0, 1), "-y": (0, -1)}
SLOPE = 3.137e-4  # also no round number: depths then differ by rounding


def largest_changes(direction, slope, counts):
    """The largest change of any cell after each count of steps; bed and water fall along the flow."""
    j, i = numpy.meshgrid(numpy.arange(CELLS), numpy.arange(CELLS), indexing="ij")
    fall = -slope * DX * (j * direction[0] + i * direction[1])
    discharge = tuple(DEPTH * SPEED * part for part in direction)
    plane = Plane(fall - DEPTH, DX, discharge, level=fall)
    before, done, found = plane.bed(), 0, []
    for count in counts:
        plane.step(STEP, count - done)
        done = count
        found.append(abs(plane.bed() - before).max())
    return found


def perturbed(steps, height=1e-6, cells=60):
    """The same flow over one cell that is raised by a thousandth of a millimetre: what has changed."""
    bed = numpy.full(cells, -DEPTH)
    bed[10] += height
    line = Plane(bed, DX, (DEPTH * SPEED, 0), {"Morphology Time Centreing Factor": 1})
    before = line.bed()
    line.step(STEP, steps)
    return before + DEPTH, line.bed() + DEPTH


def report(page, build, scratch):
    counts = (1, 100, 10000)
    changes = {(name, slope): largest_changes(direction, slope, counts)
               for name, direction in DIRECTIONS.items() for slope in (0.0, SLOPE)}
    page.table("uniform_changes",
               ["flow toward"] + [f"{ground}, after {count} (m)" for ground in ("level", "sloping")
                                  for count in counts],
               [[name] + [size(change) for slope in (0.0, SLOPE) for change in changes[name, slope]]
                for name in DIRECTIONS])
    suspended, bed_load = capacity.transport(DEPTH, SPEED, **capacity.RIVER)
    celerity = capacity.celerity(DEPTH, DEPTH * SPEED, capacity.RIVER)
    before, after = perturbed(1)
    page.numbers(uniform_transport=f"{suspended:.4f} + {bed_load:.4f}",
                 uniform_transport_module="{:.4f} + {:.4f}".format(*line_host.capacity(DEPTH, SPEED)),
                 uniform_days=f"{counts[-1] * STEP / 86400:.0f}",
                 uniform_passed=f"{(suspended + bed_load) * counts[-1] * STEP / 1000:.0f}",
                 uniform_hand=f"{-celerity * 1e-6 * STEP / 2 / DX * 1e9:.3f}",
                 uniform_module=f"{(after - before)[8] * 1e9:.3f}")
    draw(page, perturbed(200))


def draw(page, raised):
    figure, axis = panels(1, height=2.6)
    level = Plane(numpy.full(60, -DEPTH), DX, (DEPTH * SPEED, 0))
    level.step(STEP, 200)
    at = DX * (numpy.arange(58) + 0.5)
    axis.plot(at, 1e6 * raised[0], "--", color=GREY, label="one cell raised by 1 µm: before")
    axis.plot(at, 1e6 * raised[1], ".-", color=ORANGE, linewidth=1, label="after 200 steps")
    axis.plot(at, 1e6 * (level.bed() + DEPTH), color=BLUE, label="level bed after 200 steps")
    axis.set(xlabel="distance along the flow (m)", ylabel="bed (µm)")
    axis.legend()
    page.picture(figure, "uniform")
