"""A host of a plane of cells: it loads the built library, gives it a discharge per width that is the
same everywhere (velocity = discharge / depth), and lets the bed move."""
import ctypes
import pathlib
import sys

import numpy

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
sys.path.insert(0, str(ROOT / "docs" / "figures"))
import line_host  # noqa: E402
from line_host import DENSITY, SAND, i4, quietly, r8  # noqa: E402, F401

VOIDS = 0.4
# No limit on the change of a step, which would hide errors.
FREE = {**SAND, "Morphology Bed Change Limit": 1e9}
D50, CONCENTRATION = 0, 8  # places of real fields in the work array


class Plane:
    """Wet cells [j, i], x along j and y along i, with a margin of one cell whose bed stands still.
    The library keeps one set of options here: a plane is run to its end before the next is made."""

    def __init__(self, bed, dx, discharge=(0.0, 0.0), options=None, level=0.0):
        bed = numpy.asarray(bed, dtype=float)
        if bed.ndim == 1:  # a line of cells and its two sides
            bed = numpy.repeat(bed[:, None], 3, axis=1)
        self.m, self.n = bed.shape
        self.dx, self.discharge = dx, discharge
        self.zc = -bed
        self.z2, self.z1 = self.zc.copy(), self.zc.copy()
        self.z2[:-1] = (self.zc[:-1] + self.zc[1:]) / 2
        self.z1[:, :-1] = (self.zc[:, :-1] + self.zc[:, 1:]) / 2
        self.zpts, self.v1, self.v2 = (numpy.zeros_like(self.zc) for _ in range(3))
        self.level = self.v1 + level
        self.wet = numpy.full(bed.shape, -1, dtype=numpy.int32)
        self.reserve_fields()
        self.read({**FREE, **(options or {})})
        quietly(self.call, -1, 0.0)

    def reserve_fields(self):
        real, integer = ctypes.c_int32(1), ctypes.c_int32(1)
        line_host.library().QVMOR_SETUP_S2(i4(-1), i4(1), i4(self.n), i4(self.m), i4(0), i4(0),
                                           ctypes.byref(real), ctypes.byref(integer))
        self.real = numpy.zeros((12, self.m, self.n))
        self.integer = numpy.zeros((self.m, self.n), dtype=numpy.int32)

    def read(self, options):
        control = line_host.control_file(options)
        quietly(line_host.library().QVMOR_RDINPF, control, i4(1), i4(2), i4(self.n), i4(self.m),
                i4(self.n - 1), i4(self.m - 1), i4(self.n - 2), i4(self.m - 2), i4(2), i4(2),
                r8(self.dx), r8(self.dx), r8(0), r8(0), r8(0), pointer(self.real),
                pointer(self.integer), None, None, None, ctypes.c_longlong(len(control)))

    def call(self, smoothing, seconds):
        library = line_host.library()
        library.QVMOR_INIT_2D_DOMAIN(i4(1))
        no, nothing, size = i4(0), r8(0), r8(self.dx)
        grids = (self.wet, self.wet, self.level, self.v2, self.v1, self.zpts, self.zc, self.z2, self.z1)
        library.QVMORPHOLOGY(
            i4(smoothing), no, no, *map(pointer, grids), i4(self.n), i4(self.m), i4(2), i4(2),
            i4(self.n - 1), i4(self.m - 1), size, size, size, None, r8(seconds), no, nothing,
            *[None] * 7, pointer(self.real), pointer(self.integer), None, None, None, i4(1))

    def step(self, seconds, steps=1):
        """The water surface stays as it is."""
        level2 = (self.level[:-1] + self.level[1:]) / 2
        level1 = (self.level[:, :-1] + self.level[:, 1:]) / 2
        for _ in range(steps):
            self.v2[:-1] = self.discharge[0] / (level2 + self.z2[:-1])
            self.v1[:, :-1] = self.discharge[1] / (level1 + self.z1[:, :-1])
            self.call(0, seconds)

    def bed(self):
        """The bed without the margin; of a line of cells, the line."""
        inside = -self.zc[1:-1, 1:-1]
        return (inside[:, 0] if self.n == 3 else inside).copy()


def pointer(array):
    return array.ctypes.data_as(ctypes.c_void_p)
