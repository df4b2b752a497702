"""Transport capacity after van Rijn (1989), written from the equations on docs/numerics.md and not
from the library: what the library computes is held against it."""
import numpy

from plane_host import DENSITY, VOIDS

GRAVITY, VISCOSITY, WATER = 9.81, 1e-6, 1000.0
MIXING = 1.05
RIVER = dict(d50=0.0002, d90=0.0003, fall=0.025, roughness=0.05, reference=0.025)
FLUME = dict(d50=0.00016, d90=0.0002, fall=0.013, roughness=0.025, reference=0.0125)


def transport(depth, speed, d50, d90, fall, roughness, reference):
    """Suspended transport and bed load, kg/(s m)."""
    size = d50 * ((DENSITY / WATER - 1) * GRAVITY / VISCOSITY ** 2) ** (1 / 3)
    critical = numpy.select(
        [size <= 4, size <= 10, size <= 20, size <= 150],
        [0.24 / size, 0.14 * size ** -0.64, 0.04 * size ** -0.1, 0.013 * size ** 0.29], 0.055)
    chezy, grain = numpy.log10(12 * depth / roughness), numpy.log10(4 * depth / d90)
    stress = 0.03 * speed ** 2 * WATER * (chezy / grain) ** 2 / chezy ** 2
    excess = numpy.maximum(
        (stress / ((DENSITY - WATER) * GRAVITY * d50) - critical) / critical, 0.0001)
    concentration = 0.015 * d50 / reference * excess ** 1.5 / size ** 0.3
    shear = numpy.sqrt(GRAVITY) * speed / (18 * chezy)
    z, r = fall / (0.4 * MIXING * shear), reference / depth
    shape = (r ** z - r ** 1.2) / ((1 - r) ** z * (1.2 - z))
    return (speed * depth * DENSITY * concentration * shape,
            0.25 * d50 * numpy.sqrt(stress / WATER) * excess ** 1.5 / size ** 0.3 * DENSITY)


def celerity(depth, discharge, sand, part=1e-4):
    """Speed of bed waves, m/s: dq/dz at a constant discharge, between depths a part less and more."""
    low, high = (sum(transport(depth * f, discharge / (depth * f), **sand))
                 for f in (1 + part, 1 - part))
    return (high - low) / (2 * part * depth) / (DENSITY * (1 - VOIDS))
