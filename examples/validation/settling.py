"""A suspension that enters a reach whose bed gives little or nothing: the decay along the flow."""
import numpy

import capacity
from plane_host import CONCENTRATION, D50, DENSITY, VOIDS, Plane
from report import BLUE, GREEN, GREY, ORANGE, panels

DEPTH, SPEED = 0.2, 0.5
DISCHARGE = DEPTH * SPEED
SAND = dict(d50=0.0001, d90=0.00015, fall=0.0065, roughness=0.01, reference=0.005)
OPTIONS = {"Set Morphology D50": SAND["d50"], "Set Morphology D90": SAND["d90"],
           "Morphology Fall Velocity": SAND["fall"],
           "Morphology Current Related Roughness": SAND["roughness"],
           "Morphology Reference Level": SAND["reference"],
           "Morphology Time Centreing Factor": 1}
MEASURED = (1.4, 1.6)
SHARES = (1e-5, 1e-4, 1e-3, 0.01, 0.03, 0.1, 0.3, 0.6, 0.9)
SUPPLY = capacity.transport(DEPTH, SPEED, **SAND)[0]


def without_capacity(factor, dx, length=30.0):
    """Distance along the flow and concentration, from where the capacity ends. There the depth falls by
    0.2 mm, below the one that the mixing layer asks for."""
    cells = round(length / dx)
    bed = numpy.where(numpy.arange(cells + 4) < 3, -DEPTH - 1e-4, -DEPTH + 1e-4)
    line = Plane(bed, dx, (DISCHARGE, 0), {
        **OPTIONS, "Morphology Concentration Factor": factor,
        "Morphology Mixing Layer Thickness": DEPTH / 1.25})
    line.step(1.0)
    return dx * numpy.arange(cells), line.real[CONCENTRATION, 2:-2, 1]


def share_of(grain):
    """Capacity over coarser grains, in parts of the supply."""
    return capacity.transport(DEPTH, SPEED, **{**SAND, "d50": grain, "d90": SAND["d90"]})[0] / SUPPLY


def grain_for(share):
    """Between the grain that the flow just carries as the supply, and one that it does not move."""
    low, high = 0.0005, 0.002
    for _ in range(60):
        middle = (low + high) / 2
        low, high = (middle, high) if share_of(middle) > share else (low, middle)
    return low


def decay_over(grain, factor=1.0, dx=0.05):
    """The decay number over other grains, in uniform flow, from what the bed gains: of the second cell,
    since the bed load ends in the first."""
    line = Plane(numpy.full(8, -DEPTH), dx, (DISCHARGE, 0),
                 {**OPTIONS, "Morphology Concentration Factor": factor})
    line.real[D50, 3:] = grain
    before = line.bed()
    line.step(1.0)
    settled = (line.bed() - before)[3] * dx * (1 - VOIDS) * DENSITY
    arriving = line.real[CONCENTRATION, 4, 1] * DISCHARGE
    excess = arriving - share_of(grain) * SUPPLY
    rate = -numpy.log(1 - settled / excess) / dx
    return share_of(grain) * SUPPLY / arriving, rate * DISCHARGE / SAND["fall"]


def decay_number(x, concentration):
    """k of exp(-k ws x / (U h)), fitted."""
    return -numpy.polyfit(x, numpy.log(concentration), 1)[0] * DISCHARGE / SAND["fall"]


def formula(share):
    return (1 - share ** 0.2) / (1 - share)


def report(page, build, scratch):
    rows = []
    for factor in (1, 1.4, 1.5, 1.6, 3, 9):
        numbers = [decay_number(*without_capacity(factor, dx)) for dx in (0.05, 0.5, 2)]
        rows.append([f"{factor:g}", *(f"{number:.6f}" for number in numbers)])
    page.table("settling_decay", ["factor", "k, cells of 0.05 m", "of 0.5 m", "of 2 m"], rows)
    found = [decay_over(grain_for(share)) for share in SHARES]
    page.table("settling_share", ["capacity / what arrives", "k / factor", "by the formula"],
               [[f"{share:.2g}", f"{number:.4f}", f"{formula(share):.4f}"] for share, number in found])
    x, concentration = without_capacity(1.5, 0.5)
    left = concentration[20] / concentration[0]
    deeper = DEPTH + 1e-4
    supply = capacity.transport(deeper, DISCHARGE / deeper, **SAND)[0] / DISCHARGE
    page.numbers(settling_supply=f"{supply:.6f}", settling_first=f"{concentration[0]:.6f}",
                 settling_left=f"{left:.5f}",
                 settling_hand=f"{numpy.exp(-1.5 * SAND['fall'] * 10 / DISCHARGE):.5f}")
    draw(page, found)


def draw(page, found):
    figure, left, right = panels(2)
    for factor, color in ((1, ORANGE), (1.5, GREEN), (3, BLUE)):
        x, concentration = without_capacity(factor, 1.0)
        left.semilogy(x, concentration / concentration[0], ".", color=color, label=f"factor {factor:g}")
    x = numpy.linspace(0, 30, 2)
    low, high = (numpy.exp(-k * SAND["fall"] * x / DISCHARGE) for k in MEASURED)
    left.fill_between(x, low, high, color=GREY, alpha=0.4, linewidth=0, label="measured, k = 1.4 to 1.6")
    left.set(title="no capacity: the suspension decays", xlabel="distance along the flow (m)",
             ylabel="concentration / that at the start")
    left.legend()
    share = numpy.logspace(-6, -0.001, 300)
    right.semilogx(share, formula(share), color=GREY, label="(1 - r$^{0.2}$) / (1 - r)")
    right.semilogx(*zip(*found), "o", color=BLUE, markersize=4, label="computed")
    right.set(title="some capacity is left: the decay slows down", ylim=(0, 1),
              xlabel="r: capacity / what arrives", ylabel="decay number / concentration factor")
    right.legend()
    page.picture(figure, "settling")
