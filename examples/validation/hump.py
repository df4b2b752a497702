"""A low hump in a uniform current, where sand settles at once: against the characteristics."""
import numpy

import capacity
import line_host
import make
from plane_host import Plane
from report import BLACK, BLUE, GREEN, GREY, ORANGE, panels, size

DEPTH, DISCHARGE = 2.0, 2.0  # m, m2/s
HEIGHT, SPREAD, START = 0.05, 50.0, 300.0  # m: a Gaussian hump, and where its crest lies
LENGTH = 900.0
AT_ONCE = {"Morphology Concentration Factor": 1e6}
THETA = 0.5


def initial(x, height=HEIGHT):
    return height * numpy.exp(-((x - START) / SPREAD) ** 2 / 2)


def celerity(z):
    return capacity.celerity(DEPTH - z, DISCHARGE, capacity.RIVER)


def breaking_time():
    x = numpy.linspace(0, LENGTH, 90001)
    return -1 / numpy.gradient(celerity(initial(x)), x).min()


def exact(x, time, height=HEIGHT):
    """z is carried along x + c(z) t, until the first of these lines cross."""
    origin = numpy.linspace(-LENGTH, 2 * LENGTH, 300001)
    return numpy.interp(x, origin + celerity(initial(origin, height)) * time,
                        initial(origin, height))


def crest(x, z):
    """Place and height of the crest: the parabola through the three highest cells."""
    k = int(numpy.argmax(z))
    low, top, high = z[k - 1:k + 2]
    shift = (low - high) / (low - 2 * top + high) / 2
    return x[k] + shift * (x[1] - x[0]), top - (low - high) * shift / 4


def run(dx, step, time, options=AT_ONCE, height=HEIGHT, length=LENGTH):
    """Cell centres and the bed there, above the flat bed."""
    x = (numpy.arange(round(length / dx) + 2) - 0.5) * dx
    plane = Plane(initial(x, height) - DEPTH, dx, (DISCHARGE, 0), options)
    steps = round(time / step)
    plane.step(time / steps, steps)
    return x[1:-1], plane.bed() + DEPTH


def errors(dx, step, time, height=HEIGHT):
    """Against the characteristics: celerity and height of the crest, relative; rms difference over the
    height; volume."""
    x, z = run(dx, step, time, height=height)
    true = exact(x, time, height)
    place, top = crest(x, z)
    difference = (z - true)[true > 0.01 * height]
    return {"x": x, "z": z, "celerity": (place - START) / (celerity(height) * time) - 1,
            "height": top / height - 1, "rms": numpy.sqrt(numpy.mean(difference ** 2)) / height,
            "volume": abs(z.sum() / initial(x, height).sum() - 1)}


def percent(value):
    return f"{100 * value:+.2f} %"


def linear_errors(dx, step, time):
    """Errors of celerity and height of a wave that does not steepen, from the leading terms of the
    scheme: centred differences travel slower by (dx / s)^2 / 2 on a Gaussian, and steps forward in
    time act as a diffusion of -c^2 dt (1 / theta - 1 / 2)."""
    return (-(dx / SPREAD) ** 2 / 2,
            celerity(0) ** 2 * step * (1 / THETA - 0.5) * time / SPREAD ** 2)


def report(page, build, scratch):
    time = breaking_time() / 2
    refinement = {dx: errors(dx, 2 * dx ** 2, time) for dx in (20, 10, 5, 2.5)}
    page.table("hump_cells", ["cells (m)", "step (s)", "celerity of the crest", "height of the crest",
                              "rms / height", "order", "volume, relative"],
               [[f"{dx:g}", f"{2 * dx ** 2:g}", percent(e["celerity"]), percent(e["height"]),
                 f"{e['rms']:.4f}",
                 f"{numpy.log2(refinement[2 * dx]['rms'] / e['rms']):.1f}" if dx < 20 else "",
                 size(e["volume"])] for dx, e in refinement.items()])
    low = []
    for dx, step in ((20, 800), (10, 200), (5, 50), (2.5, 12.5), (10, 25), (10, 100), (10, 400),
                     (10, 800)):
        e, (slower, higher) = errors(dx, step, time, 0.01 * HEIGHT), linear_errors(dx, step, time)
        low.append([f"{dx:g}", f"{step:g}", percent(e["celerity"]), percent(slower),
                    percent(e["height"]), percent(higher)])
    page.table("hump_low", ["cells (m)", "step (s)", "celerity", "expected", "height", "expected"], low)
    lagging = report_lag(page, time)
    page.numbers(
        hump_time=f"{time / 3600:.0f}", hump_way=f"{celerity(HEIGHT) * time:.0f}",
        hump_flat=f"{1000 * celerity(0):.3f}",
        hump_hand=f"{1000 * capacity.celerity(DEPTH, DISCHARGE, capacity.RIVER, 0.01):.4f}",
        hump_module=f"{1000 * sum(make.celerity(DEPTH, DISCHARGE / DEPTH)):.4f}",
        hump_top=f"{1000 * celerity(HEIGHT):.3f}",
        hump_transport="{:.4f} + {:.4f}".format(*capacity.transport(DEPTH, 1, **capacity.RIVER)),
        hump_transport_module="{:.4f} + {:.4f}".format(*line_host.capacity(DEPTH, 1)))
    draw(page, time, refinement, lagging)


def report_lag(page, time):
    runs = {factor: run(5, 50, time, {"Morphology Concentration Factor": factor}, length=2 * LENGTH)
            for factor in (1, 9, 100)}
    true = celerity(HEIGHT) * time
    rows = []
    for factor, (x, z) in runs.items():
        place, height = crest(x, z)
        rows.append([f"{factor}", f"{place - START:.0f} m of {true:.0f} m", f"{height / HEIGHT:.2f}",
                     f"{z.sum() * 5 / (HEIGHT * SPREAD * numpy.sqrt(2 * numpy.pi)):.2f}"])
    page.table("hump_lag", ["factor", "way of the crest", "height / height before",
                            "sand still in the 1800 m"], rows)
    return runs


def draw(page, time, refinement, lagging):
    figure, left, right = panels(2, sharey=True)
    x = numpy.linspace(0, LENGTH, 2000)
    for axis in (left, right):
        axis.plot(x, initial(x), "--", color=GREY, label="before")
        axis.plot(x, exact(x, time), color=BLACK, label="by characteristics", linewidth=2.5, alpha=0.5)
        axis.set(xlabel="distance along the flow (m)", xlim=(100, 850))
    for (dx, e), color in zip(refinement.items(), (ORANGE, GREEN, BLUE)):
        left.plot(e["x"], e["z"], ".-", color=color, markersize=3, linewidth=0.8, label=f"cells of {dx:g} m")
    for (factor, (at, z)), color in zip(lagging.items(), (ORANGE, GREEN, BLUE)):
        right.plot(at, z, color=color, label=f"factor {factor}")
    left.set(title="sand that settles at once", ylabel="bed above the flat bed (m)")
    right.set(title="sand that settles over a distance")
    left.legend(), right.legend()
    page.picture(figure, "hump")
