"""A conical dune in a uniform current: what the order and the direction of the sweeps leave behind."""
import numpy

import capacity
from plane_host import DENSITY, VOIDS, Plane
from report import BLUE, GREY, panels, size

DEPTH, DISCHARGE = 2.0, 2.0
HEIGHT, RADIUS, DX, CELLS, STEP = 0.4, 100.0, 10.0, 81, 100.0
AXES = {"+x": (1, 0), "+y": (0, 1), "-x": (-1, 0), "-y": (0, -1)}
DIAGONALS = {"+x+y": (1, 1), "-x+y": (-1, 1), "-x-y": (-1, -1), "+x-y": (1, -1)}


def dune():
    at = (numpy.arange(CELLS + 2) - (CELLS + 1) / 2) * DX
    return numpy.maximum(0, HEIGHT * (1 - numpy.hypot(*numpy.meshgrid(at, at)) / RADIUS))


def run(direction, steps, options=None):
    """The bed above the flat bed, [x, y]."""
    length = numpy.hypot(*direction)
    plane = Plane(dune() - DEPTH, DX, tuple(DISCHARGE * part / length for part in direction), options)
    plane.step(STEP, steps)
    return plane.bed() + DEPTH


def mirrored(bed, direction):
    """Across the axis of the flow."""
    x, y = direction
    if x * y == 0:
        return bed[:, ::-1] if y == 0 else bed[::-1]
    return bed.T if x == y else bed[::-1, ::-1].T


def turned(bed, quarters):
    """The bed of flow that is turned by quarters of a circle, from +x to +y, turned back."""
    return numpy.rot90(bed, -quarters)


GROUPS = {"along an axis": AXES, "along a diagonal": DIAGONALS}
STEPS, FACTOR = 864, {"Morphology Concentration Factor": 9}


def symmetry(group, steps):
    """Beds by direction, the largest difference of each from its mirror image, and from the first."""
    beds = {name: run(direction, steps, FACTOR) for name, direction in group.items()}
    first = next(iter(beds.values()))
    return beds, [(abs(bed - mirrored(bed, group[name])).max(), abs(turned(bed, quarters) - first).max())
                  for quarters, (name, bed) in enumerate(beds.items())]


def first_step(at):
    """What the first step does to a cell of the middle row where the dune rises, by hand: the capacities
    at its two sides, which lie half a cell before and behind it."""
    bed = HEIGHT * (1 - abs(numpy.array([at - DX, at, at + DX])) / RADIUS)
    sides = DEPTH - (bed[:-1] + bed[1:]) / 2
    lower, upper = (sum(capacity.transport(h, DISCHARGE / h, **capacity.RIVER)) for h in sides)
    return (lower - upper) * STEP / DX / DENSITY / (1 - VOIDS)


def report(page, build, scratch):
    rows, beds = [], {}
    for label, group in GROUPS.items():
        found, differences = symmetry(group, STEPS)
        beds[label] = next(iter(found.values()))
        rows += [[label, name, f"{bed.max():.4f}", size(mirror), size(turn)]
                 for (name, bed), (mirror, turn) in zip(found.items(), differences)]
    page.table("cone_symmetry", ["flow", "toward", "highest point (m)", "from its mirror image (m)",
                                 "from the first, turned (m)"], rows)
    one = run(AXES["+x"], 1, {**FACTOR, "Morphology Time Centreing Factor": 1})
    middle = CELLS // 2
    changes = {at: (one - dune()[1:-1, 1:-1])[middle + round(at / DX), middle] for at in (-50, -20)}
    line = Plane(dune()[:, middle + 1] - DEPTH, DX, (DISCHARGE, 0), FACTOR)
    line.step(STEP, STEPS)
    apart = abs(line.bed() + DEPTH - beds["along an axis"][:, middle]).max()
    page.numbers(cone_line=size(apart), cone_hours=f"{STEP * STEPS / 3600:.0f}",
                 cone_apart=f"{abs(beds['along an axis'].max() - beds['along a diagonal'].max()):.3f}",
                 **{f"cone_module{-at}": f"{1e3 * change:.5f}" for at, change in changes.items()},
                 **{f"cone_hand{-at}": f"{1e3 * first_step(at):.5f}" for at in changes})
    draw(page, beds)


def draw(page, beds):
    figure, *axes = panels(2, height=4.2)
    at = (numpy.arange(CELLS) - CELLS // 2) * DX
    circle = numpy.linspace(0, 2 * numpy.pi, 100)
    for axis, (label, bed), arrow in zip(axes, beds.items(), ((1, 0), (0.7, 0.7))):
        shown = axis.contourf(at, at, bed.T, levels=numpy.arange(-0.025, 0.22, 0.01), cmap="YlOrBr")
        axis.plot(RADIUS * numpy.cos(circle), RADIUS * numpy.sin(circle), "--", color=GREY)
        axis.annotate("", xy=(-250 + 80 * arrow[0], -250 + 80 * arrow[1]), xytext=(-250, -250),
                      arrowprops={"arrowstyle": "->", "color": BLUE})
        axis.set(title=f"flow {label}", aspect="equal", xlabel="x (m)", ylabel="y (m)", xlim=(-300, 380),
                 ylim=(-300, 380))
        axis.grid(False)
        figure.colorbar(shown, ax=axis, label="bed (m)", ticks=numpy.arange(0, 0.22, 0.05), shrink=0.8)
    page.picture(figure, "cone")
