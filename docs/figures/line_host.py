"""A host of one line of cells, for the numbers of the user guide: it loads the built library, gives
it a flow that follows from continuity (U = discharge / depth), and reads the bed back."""
import atexit
import ctypes
import math
import os
import pathlib
import shutil
import sys
import tempfile

N = 3  # cells across: a dry bank, the line, a dry bank
DENSITY = 2650.0

SAND = {  # a river of fine sand, 2 m deep at 1 m/s
    "Set Morphology D50": 0.0002, "Set Morphology D90": 0.0003,
    "Morphology Fall Velocity": 0.025, "Morphology Current Related Roughness": 0.05,
    "Morphology Reference Level": 0.025, "Morphology Mixing Layer Thickness": 0.025,
}

_scratch = tempfile.mkdtemp()
atexit.register(shutil.rmtree, _scratch)
_library = None


def load(path):
    global _library
    _library = ctypes.CDLL(str(pathlib.Path(path).resolve()))
    text, no = str(pathlib.Path(_scratch, "line")).encode(), i4(0)
    length = ctypes.c_longlong
    quietly(_library.QVMOR_INITIALISE_S1, b"line", text, text, no, b".tab", no, text, b" ", b" ", no,
            length(4), length(len(text)), length(len(text)), length(4), length(len(text)), length(1),
            length(1))


def library():
    return _library


def control_file(options):
    """The path of a file with the options, as the library takes paths."""
    path = pathlib.Path(_scratch, "line.mcf")
    path.write_text("".join(f"{key} == {value}\n" for key, value in options.items()
                            if value is not None))
    return str(path).encode()


def i4(value):
    return ctypes.byref(ctypes.c_int32(value))


def r8(value):
    return ctypes.byref(ctypes.c_double(value))


def quietly(call, *arguments):
    """The module tells the screen what it reads; these pages do not want to know."""
    sys.stdout.flush()
    kept, sink = os.dup(1), os.open(os.devnull, os.O_WRONLY)
    os.dup2(sink, 1)
    try:
        call(*arguments)
    finally:
        os.dup2(kept, 1)
        os.close(kept)
        os.close(sink)


class Line:
    """Cells 1 to `cells` along the second index; the margins, 0 and cells + 1, are wet at an open end."""

    def __init__(self, cells, dx, depth, discharge, options=None, **more):
        self.cells, self.m, self.dx = cells, cells + 2, dx
        self.depth_of = depth if callable(depth) else (lambda j: depth)
        self.discharge = discharge if callable(discharge) else (lambda j: discharge)
        reals = lambda: (ctypes.c_double * (N * self.m))()
        self.zc, self.z1, self.z2, self.zpts = reals(), reals(), reals(), reals()
        self.level, self.v1, self.v2 = reals(), reals(), reals()
        self.wet = (ctypes.c_int32 * (N * self.m))()
        for j in range(self.m):
            for i in range(N):
                self.zc[j * N + i] = self.depth_of(j)
            self.wet[j * N + 1] = -1
        for k in range(N * (self.m - 1)):
            self.z2[k] = 0.5 * (self.zc[k] + self.zc[k + N])
        for k in range(N * self.m):
            self.z1[k] = self.zc[k]
        self.start = [self.bed(j) for j in range(self.m)]
        real, integer = ctypes.c_int32(1), ctypes.c_int32(1)
        _library.QVMOR_SETUP_S2(i4(-1), i4(1), i4(N), i4(self.m), i4(0), i4(0), ctypes.byref(real),
                                ctypes.byref(integer))
        self.real = (ctypes.c_double * real.value)()
        self.integer = (ctypes.c_int32 * integer.value)()
        self.read({**SAND, **(options or {}), **more})
        quietly(self.call, -1, 0.0)

    def read(self, options):
        name = control_file(options)
        quietly(_library.QVMOR_RDINPF, name, i4(1), i4(2), i4(N), i4(self.m), i4(N - 1), i4(self.m - 1),
                i4(N - 2), i4(self.m - 2), i4(2), i4(2), r8(self.dx), r8(self.dx), r8(0), r8(0), r8(0),
                self.real, self.integer, None, None, None, ctypes.c_longlong(len(name)))

    def call(self, smoothing, seconds):
        _library.QVMOR_INIT_2D_DOMAIN(i4(1))
        no, nothing, size = i4(0), r8(0), r8(self.dx)
        _library.QVMORPHOLOGY(
            i4(smoothing), no, no, self.wet, self.wet, self.level, self.v2, self.v1, self.zpts, self.zc,
            self.z2, self.z1, i4(N), i4(self.m), i4(2), i4(2), i4(N - 1), i4(self.m - 1), size, size,
            size, None, r8(seconds), no, nothing, *[None] * 7, self.real, self.integer, None, None, None,
            i4(1))

    def field(self, number, j):
        """A real field of the module, counted from 1, in cell j."""
        return ctypes.c_double.from_buffer(self.real, 8 * ((number - 1) * N * self.m + j * N + 1))

    def bed(self, j):
        return -self.zc[j * N + 1]

    def raise_bed(self, j, height):
        self.zc[j * N + 1] -= height
        for k in (j - 1, j):
            self.z2[k * N + 1] = 0.5 * (self.zc[k * N + 1] + self.zc[(k + 1) * N + 1])
        self.start[j] = self.bed(j)

    def step(self, seconds, steps=1):
        """Side j lies between the cells j and j + 1."""
        for _ in range(steps):
            for j in range(self.m - 1):
                self.v2[j * N + 1] = self.discharge(j) / self.z2[j * N + 1]
            self.call(0, seconds)

    def change(self, j):
        return self.bed(j) - self.start[j]

    def gained(self, voids=0.4, density=DENSITY):
        """Sand that the bed has gained, kg per m of width."""
        return sum(self.change(j) for j in range(1, self.cells + 1)) * self.dx * (1 - voids) * density


def density_of(options):
    return next((float(value) for command, value in (options or {}).items()
                 if "sand grain density" in command.lower()), DENSITY)


def capacity(depth, speed, options=None):
    """Suspended transport and bed load, kg/(s m): of a cell from whose upper side alone sand leaves,
    first with its bed free, then at its bed limit, which stops the pick-up of suspended sand."""
    found = []
    for limit in (-99999.0, 0.0):
        extra = {"Morphology Time Centreing Factor": 1, "Morphology Bed Change Limit": 1e9,
                 "Set Morphology Bed Limit": limit, **(options or {})}
        line = Line(1, 1.0, depth, lambda j: speed * depth if j == 1 else 0.0, extra)
        line.step(1e-3)
        found.append(-line.gained(density=density_of(options)) / 1e-3)
    return found[0] - found[1], found[1]


def celerity(depth, speed, options=None):
    """Speed of bed waves, m/s, by suspended load and by bed load: dq/dz at a constant discharge."""
    low, high = (capacity(depth * f, speed / f, options) for f in (1.01, 0.99))
    return [(b - a) / (0.02 * depth) / (0.6 * density_of(options)) for a, b in zip(low, high)]


def spread(line, first, last):
    """Root mean square of the bed's second difference / 4 over the cells first..last: ripples of two
    to four cells count, longer shapes do not."""
    total = sum(((line.bed(j - 1) - 2 * line.bed(j) + line.bed(j + 1)) / 4) ** 2
                for j in range(first, last + 1))
    return math.sqrt(total / (last - first + 1))
