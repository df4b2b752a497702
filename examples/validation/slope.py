"""A steep slope, and a heap, that collapse in still water."""
import numpy

from plane_host import Plane
from report import BLACK, BLUE, GREY, ORANGE, panels, size

HEIGHT, DX, CELLS = 3.0, 0.5, 120  # the step lies in the middle
DEEP = 5.0


def wall(slope, limit, steps):
    """The bed before, and after each of the counts of steps."""
    bed = numpy.where(numpy.arange(CELLS + 2) <= CELLS // 2, HEIGHT, 0.0) - DEEP
    line = Plane(bed, DX, options={"Morphology Slump Slope": slope,
                                   "Morphology Slump Bed Change Limit": limit})
    beds, done = [line.bed() + DEEP], 0
    for count in steps:
        line.step(1.0, count - done)
        done = count
        beds.append(line.bed() + DEEP)
    return beds


def heap(slope, limit, steps, cells=41):
    """A column of sand on a flat bed, before and after."""
    at = numpy.arange(cells + 2) - (cells + 1) / 2
    inside = numpy.hypot(*numpy.meshgrid(at, at)) <= 4.2
    plane = Plane(numpy.where(inside, HEIGHT, 0.0) - DEEP, DX,
                  options={"Morphology Slump Slope": slope,
                           "Morphology Slump Bed Change Limit": limit})
    before = plane.bed() + DEEP
    plane.step(1.0, steps)
    return before, plane.bed() + DEEP


def volume_error(before, after):
    return abs((after - before).sum()) / before.sum()


def steepest(bed):
    """Steepest slope between neighbours, vertical over horizontal."""
    return max(abs(numpy.diff(bed, axis=axis)).max() for axis in range(bed.ndim)) / DX


def ramp(slope):
    """The slope at rest: through the middle of the step, with the sand of the step."""
    x = (numpy.arange(CELLS) - CELLS / 2 + 0.5) * DX
    return numpy.clip(HEIGHT / 2 - x / slope, 0, HEIGHT)


def toe(bed):
    """Where the slope meets the ground, m from the face of the wall: the line of the two cells before
    the last that stands above the ground."""
    last = numpy.nonzero(bed > 0.001)[0][-1]
    low, high = bed[last - 1], bed[last - 2]
    return (last - 1 - CELLS / 2 + 0.5) * DX + low / (high - low) * DX


def one_slump():
    """What the cell at the foot of a step of 0.7 m gains in one pass at 1 : 2, without a limit."""
    bed = numpy.where(numpy.arange(12) < 6, 0.7, 0.0) - DEEP
    line = Plane(bed, DX, options={"Morphology Slump Slope": 2, "Morphology Slump Bed Change Limit": 10})
    before = line.bed()
    line.step(1.0)
    return (line.bed() - before).max()


def flaps(in_plane, share, cells=82, slope=5):
    """Whether a chequerboard of the size that flaps for ever, if any does, still moves in the middle
    after some steps. Those at the edges have fewer neighbours: they are too far away to matter."""
    limit = share * DX / slope
    odd = numpy.indices((cells,) * (2 if in_plane else 1)).sum(axis=0) % 2
    plane = Plane(odd * limit * (4 if in_plane else 2) - DEEP, DX, options={
        "Morphology Slump Slope": slope, "Morphology Slump Bed Change Limit": limit})
    plane.step(1.0, cells // 2 - 6)
    before = plane.bed()
    plane.step(1.0)
    middle = (slice(cells // 2 - 3, cells // 2 + 3),) * before.ndim
    return abs(plane.bed() - before)[middle].max() > 0


def flapping_from(in_plane):
    """The smallest limit, in parts of cell / slope, at which chequerboards live on."""
    low, high = 0.1, 2.0
    while high - low > 1e-4:
        middle = (low + high) / 2
        low, high = (low, middle) if flaps(in_plane, middle) else (middle, high)
    return high


SLOPES = ((1, 0.1), (2, 0.1), (2, 0.01), (5, 0.1), (5, 0.05), (5, 0.01),
          (20, 0.1), (20, 0.02), (20, 0.01))
STEPS = 8000


def report(page, build, scratch):
    rows = []
    for slope, limit in SLOPES:
        before, after = wall(slope, limit, (STEPS,))
        first, heaped = heap(slope, limit, STEPS)
        rows.append([f"{slope}", f"{limit:g}", f"{limit * slope / DX:g}", size(volume_error(before, after)),
                     f"{steepest(after) * slope:.3f}", f"{abs(after - ramp(slope)).max():.3f}",
                     size(volume_error(first, heaped)), f"{steepest(heaped) * slope:.3f}",
                     f"{abs(heaped - heaped[::-1]).max():.3f}"])
    page.table("slope_rest", [
        "set slope, horizontal : vertical", "limit of a slump (m)", "limit / (cell / slope)",
        "wall: volume, relative", "wall: steepest / set", "wall: off the ramp (m)",
        "heap: volume, relative", "heap: steepest / set", "heap: from its mirror image (m)"], rows)
    first, heaped = heap(2, 0.01, STEPS)
    corner = numpy.hypot(*numpy.gradient(heaped, DX)).max() * 2
    page.numbers(slope_steps=f"{STEPS}", slope_corner=f"{corner:.2f}",
                 slope_toe=f"{toe(wall(2, 0.01, (STEPS,))[-1]):.2f}", slope_one=f"{one_slump():.4f}",
                 slope_line=f"{flapping_from(False):.3f}", slope_plane=f"{flapping_from(True):.3f}")
    draw(page)


def draw(page):
    figure, left, right = panels(2)
    x = (numpy.arange(CELLS) - CELLS / 2 + 0.5) * DX
    before, early, later, rest = wall(2, 0.01, (100, 400, STEPS))
    left.plot(x, before, "--", color=GREY, label="before")
    left.plot(x, early, color="#c6dbef", label="100 steps")
    left.plot(x, later, color="#74a9cf", label="400 steps")
    left.plot(x, rest, color=BLUE, label="at rest")
    left.plot(x, ramp(2), "--", color=BLACK, linewidth=0.8, label="ramp of 1 : 2")
    left.plot(x, wall(20, 0.1, (STEPS,))[-1], color=ORANGE, linewidth=0.8, label="1 : 20, limit 0.1 m")
    left.set(title="a wall of sand, slope 1 : 2, limit of a slump 0.01 m", xlim=(-20, 20),
             xlabel="distance (m)", ylabel="bed (m)")
    left.legend()
    bed = heap(2, 0.01, STEPS)[1]
    at = (numpy.arange(len(bed)) - (len(bed) - 1) / 2) * DX
    contours = right.contour(at, at, bed.T, levels=numpy.arange(0.1, 3, 0.3), cmap="viridis")
    circle = numpy.linspace(0, 2 * numpy.pi, 100)
    right.plot(4.2 * DX * numpy.cos(circle), 4.2 * DX * numpy.sin(circle), "--", color=GREY)
    right.set(title="a round column at rest, slope 1 : 2", aspect="equal", xlabel="x (m)", ylabel="y (m)",
              xlim=(-6, 6), ylim=(-6, 6))
    figure.colorbar(contours, ax=right, label="bed (m)")
    page.picture(figure, "slope")
