"""The arrays of one 2D domain, and its morphology step.

The library wants a margin around the cells, places for sides and corners, and its indices in an order of
its own. All that stays in here: callers see arrays [y, x] of their own cells. x lies along the library's
first index, which varies fastest, so that these arrays are views of the library's without a copy. Only
what is read and written as layers of a map counts x along the second index, and is turned.
"""

from __future__ import annotations

import dataclasses
import math
import os
import sys
from typing import Any, Literal, Mapping, Optional, Union, overload

import numpy as np
from numpy.typing import ArrayLike, NDArray

from .calls import At, Call
from .engine import Engine
from .errors import MorphologyError
from .memory import Layout
from .options import Value, zeros_among

Array = NDArray[Any]

# Cells around the model: layers count from the third element on.
MARGIN = 2

# Arrays of the host with a value for each cell, margin included, and the fields of the library.
_HOST = ("level", "v1", "v2", "zc", "z1", "z2", "zpts")
_FLAGS = ("wet", "flow")
_FIELDS = (
    "d50",
    "d90",
    "insitu_voids",
    "deposition_voids",
    "bed_limit",
    "previous_change",
    "slump_change",
    "bed_change",
    "concentration",
    "adaptation",
    "spare",
    "corner_change",
)
# Of these, what callers see by the same name.
_CELL_ARRAYS = ("wet", "flow", *_FIELDS[:5], "bed_code", "bed_change", "slump_change")
_ZERO = np.zeros(())  # numpy compares with an array faster than with a number
_CELLS = (slice(MARGIN, -MARGIN), slice(MARGIN, -MARGIN))


@dataclasses.dataclass(frozen=True)
class DomainSettings:
    """What makes a domain.

    Parameters
    ----------
    shape : (int, int)
        Cells along y and x, (ny, nx).
    dx : float
        Cell size, m.
    options : mapping, str or path
        Values by commands of the control file, or the path of a control file.
    origin : (float, float)
        Lower left corner of cell [0, 0] on the map, m.
    angle : float
        Direction of the grid's x, radians counter-clockwise from the map's.
    wet_depth : float or None
        A cell is wet where its water is deeper, m. None: `wet` is the caller's.
    outside : {"follow", "fixed", "own"}
        The bed outside the model's edges. "follow": where water leaves, it goes up and down with the
        cell inside; where water enters, it stands still. "fixed": it stands still. "own": margin and
        sides of the `padded` arrays are the caller's.
    raise_factor : float or None
        The water at a side is at least this part of the depth that the higher of both levels gives
        there; None: no such rule.
    """

    shape: tuple[int, int]
    dx: float
    options: Union[Mapping[str, object], str, "os.PathLike[str]"]
    origin: tuple[float, float] = (0.0, 0.0)
    angle: float = 0.0
    wet_depth: Optional[float] = 0.05
    outside: Literal["follow", "fixed", "own"] = "follow"
    raise_factor: Optional[float] = None

    def __post_init__(self) -> None:
        ny, nx = self.shape
        if not all(isinstance(n, (int, np.integer)) and n > 0 for n in (ny, nx)):
            raise ValueError(f"shape is (ny, nx), two positive integers, not {self.shape!r}")
        if not self.dx > 0:
            raise ValueError(f"dx is a cell size in m, not {self.dx!r}")
        # Other kinds of numbers, of numpy for one, do not travel to another process.
        for name, value in {"shape": (int(ny), int(nx)), "dx": float(self.dx)}.items():
            object.__setattr__(self, name, value)
        if self.outside not in ("follow", "fixed", "own"):
            raise ValueError(f"outside is 'follow', 'fixed' or 'own', not {self.outside!r}")


class _GridArray:
    """An array of a domain: read as the array itself, assigned as a whole into it."""

    def __init__(self, doc: str) -> None:
        self.__doc__ = doc

    def __set_name__(self, owner: type, name: str) -> None:
        self._name = name

    @overload
    def __get__(self, domain: None, owner: type) -> "_GridArray":
        ...

    @overload
    def __get__(self, domain: "Domain", owner: type) -> Array:
        ...

    def __get__(self, domain: Optional["Domain"], owner: type) -> Union["_GridArray", Array]:
        return self if domain is None else domain._arrays[self._name]

    def __set__(self, domain: "Domain", value: ArrayLike) -> None:
        target = domain._arrays[self._name]
        given = np.asarray(value)
        if given.dtype.kind not in "buif" or not np.can_cast(
            given.dtype, target.dtype, "same_kind"
        ):
            raise TypeError(f"{self._name} holds {target.dtype}, not {given.dtype}")
        if given.shape not in ((), target.shape):
            raise ValueError(f"{self._name} has the shape {target.shape}, not {given.shape}")
        target[...] = given


class Domain:
    """One 2D domain of a run. All arrays are ordinary numpy arrays [y, x], and stay the same objects.

    What is assigned to one of them (``domain.u = u``) is copied into it, after a look at shape and type.
    """

    bed = _GridArray("(ny, nx) bed elevation, m, positive upward. Yours to write at any time.")
    water_level = _GridArray("(ny, nx) water level, m. NaN where a cell is dry.")
    u = _GridArray("(ny, nx + 1) velocity along x at the sides; u[:, k] is left of cell k, m/s.")
    v = _GridArray("(ny + 1, nx) velocity along y at the sides; v[k] is below row k, m/s.")
    wet = _GridArray("(ny, nx) int32, wet cells. Set by each step, unless `wet_depth` is None.")
    flow = _GridArray("(ny, nx) int32, wet cells that send water into a dry neighbour. Yours.")
    depth = _GridArray("(ny, nx) the library's own bed, m below datum. Not to be written.")
    d50 = _GridArray("(ny, nx) median grain size, m.")
    d90 = _GridArray("(ny, nx) grain size that 90 % are smaller than, m.")
    insitu_voids = _GridArray("(ny, nx) pores of the bed in place, 0 to 1.")
    deposition_voids = _GridArray("(ny, nx) pores of fresh deposits, 0 to 1.")
    bed_limit = _GridArray("(ny, nx) elevation below which no suspended sand is picked up, m.")
    bed_code = _GridArray(
        "(ny, nx) int32, 1: the bed moves, 0: it stands still. See the user guide."
    )
    bed_change = _GridArray("(ny, nx) change of the latest step by transport, m, positive upward.")
    slump_change = _GridArray("(ny, nx) change of the latest step by slumping, m, positive upward.")

    def __init__(self, settings: DomainSettings, number: int, last: int, layout: Layout) -> None:
        self.settings = settings
        self.options: dict[str, Value] = {}
        self._number, self._last = number, last
        ny, nx = settings.shape
        self._padded_shape = (ny + 2 * MARGIN, nx + 2 * MARGIN)
        self._host = layout.place((len(_HOST), *self._padded_shape), "f8")
        self._flags = layout.place((len(_FLAGS), *self._padded_shape), "i4")
        self._fields = layout.place((len(_FIELDS), *self._padded_shape), "f8")
        self._codes = layout.place((2, *self._padded_shape), "i4")  # bed codes, codes of outputs
        self._seconds = layout.place((1,), "f8")
        self._positions = layout.place((2,), "i4")
        self._started = False  # the library has had the bed
        self._has_levels = False

    def __repr__(self) -> str:
        ny, nx = self.settings.shape
        return f"<{type(self).__name__} of {ny} x {nx} cells>"

    # What the run asks for, in this order.

    def _attach(self, engine: Engine) -> None:
        """Finds the arrays in the engine's memory and prepares the calls."""
        self._engine = engine
        memory = engine.memory
        host, flags = self._host.array(memory), self._flags.array(memory)
        fields, codes = self._fields.array(memory), self._codes.array(memory)
        padded: dict[str, Array] = {"bed_code": codes[0]}
        padded.update(zip(_HOST + _FLAGS + _FIELDS, [*host, *flags, *fields]))
        self._padded = padded
        self._turned = [*fields, codes[0], padded["zc"]]
        codes[1] = 1
        self._time_step = self._seconds.array(memory)
        self._positions.array(memory)[:] = 1

        self._arrays = {name: padded[name][_CELLS] for name in _CELL_ARRAYS}
        self._zc = padded["zc"][_CELLS]
        self._arrays["depth"] = self._zc.view()
        self._arrays["water_level"] = padded["level"][_CELLS]
        self._arrays["u"] = padded["v1"][MARGIN:-MARGIN, MARGIN - 1 : -MARGIN]
        self._arrays["v"] = padded["v2"][MARGIN - 1 : -MARGIN, MARGIN:-MARGIN]
        self._arrays["bed"] = np.full(self.settings.shape, np.nan)
        self._arrays["water_level"][...] = np.nan
        for name in ("depth", "bed_change", "slump_change"):
            self._arrays[name].flags.writeable = False

        self._scratch = np.empty(self.settings.shape)
        self._scratch_row = self._scratch.reshape(-1)
        self._cells_where = np.empty(self.settings.shape, bool)
        self._find_edges(host, flags[0])
        self._smoothing = engine.prepare(self._morphology(smoothing=True))
        self._step = engine.prepare(self._morphology(smoothing=False))

    def _setup_call(self) -> Call:
        n, m = self._counts
        places = (self._positions.at, At(self._positions.offset + 4))
        return Call("QVMOR_SETUP_S2", (True, self._number, n, m, 0, 0, *places))

    def _read_control_file(self, path: str) -> None:
        settings = self.settings
        ny, nx = settings.shape
        rows, columns = ny + 2 * MARGIN, nx + 2 * MARGIN
        dx, angle, (x0, y0) = float(settings.dx), float(settings.angle), settings.origin
        # Rows of cell tables and objects of layers count the model's own cells from 1.
        bounds = (ny + MARGIN, nx + MARGIN, ny, nx, 0, 0)
        frame = (dx, dx, angle, float(x0), float(y0))
        works = (self._fields.at, self._codes.at, None, None, None)
        args = (path, self._number, self._last, rows, columns, *bounds, *frame, *works)
        calls = [Call("QVMOR_RDINPF", args), self._options_call]
        self._engine.run(self._engine.prepare(calls))
        for array in self._turned[:-1]:  # all but the bed
            self._from_layers(array)

    def _write_check_layer(self) -> None:
        self._bring_bed()
        settings = self.settings
        ny, nx = settings.shape
        zc = self._host.plane(_HOST.index("zc"))
        area = (MARGIN + 1, MARGIN + 1, MARGIN + ny, MARGIN + nx)
        steps = (settings.dx * math.cos(settings.angle), settings.dx * math.sin(settings.angle))
        place = (float(settings.origin[0]), float(settings.origin[1]), *steps)
        head = (self._number, self._last, True, self._codes.plane(1), zc, ny + 2 * MARGIN, None)
        args = (*head, *area, 0, 0, *place, self._fields.at, self._codes.at)
        for array in self._turned:
            self._to_layers(array)
        try:
            self._engine.run(self._engine.prepare([Call("QVMOR_WRMIFF", args)]))
        finally:
            for array in self._turned:
                self._from_layers(array)

    def _record_calls(self, hours: At, counts: At, points: tuple[At, At]) -> tuple[Call, Call]:
        """Flags and values of this domain in a record of the dataset."""
        n, _ = self._counts
        domain = (self._number, self._last)
        zc, level = (self._host.plane(_HOST.index(name)) for name in ("zc", "level"))
        cells = (self._codes.plane(1), self._flags.plane(0), level, zc)
        flags = (*domain, hours, 0.0, -1, *cells, n, None, *self._area)
        values = (*domain, counts, None, True, n, None, *self._area, *points, None, self._fields.at)
        return Call("QVMOR_WRSMSF_DAT_FLAGS", flags), Call("QVMOR_WRSMSF_DAT_RESULTS", values)

    # What the user asks for.

    def padded(self, name: str) -> Array:
        """An array of the library with its margin of two cells.

        Parameters
        ----------
        name : str
            level, v1, v2, zc, z1, z2, zpts, wet or flow, as docs/host-guide.md calls them, or a field:
            d50, bed_limit, bed_code, previous_change, concentration, adaptation, ...

        Returns
        -------
        ndarray
            (ny + 4, nx + 4), a view: element [j + 2, i + 2] belongs to cell [j, i]. v1 and z1 hold the
            side toward larger x, v2 and z2 the one toward larger y, zpts the corner of both.
        """
        array: Array = self._padded[name]
        return array

    def step(self, seconds: float) -> None:
        """One morphology step with the bed, the levels and the velocities as they stand.

        Parameters
        ----------
        seconds : float
            Length of the step.

        Raises
        ------
        ValueError
            The step is no time; the bed, or all water levels, were not set.
        MorphologyError
            The run has ended, or the bed would be no number. `bed` is as it was before the step.
        """
        if not 0 < seconds < math.inf:
            raise ValueError(f"a step takes a time in seconds, not {seconds!r}")
        self._time_step[0] = seconds
        self._bring_bed()
        wet_depth = self.settings.wet_depth
        arrays = self._arrays
        if not self._has_levels:
            if np.isnan(arrays["water_level"]).all():
                raise ValueError("water_level was not set")
            self._has_levels = True
        if wet_depth is not None:
            np.add(arrays["water_level"], self._zc, out=self._scratch)
            np.greater(self._scratch, wet_depth, out=self._cells_where)
            arrays["wet"][...] = self._cells_where
        if self.settings.outside != "own":
            self._bring_edges()
        self._engine.run(self._step)
        np.negative(self._zc, out=self._scratch)
        if not math.isfinite(self._scratch_row.dot(self._scratch_row)):  # the fastest look at all
            raise self._no_number()
        arrays["bed"][...] = self._scratch

    def state(self) -> dict[str, Array]:
        """Copies of all that a later run needs to go on bit for bit, to be kept with `numpy.savez`."""
        self._bring_bed()
        return {name: array.copy() for name, array in self._padded.items()}

    def restore(self, state: Mapping[str, Array]) -> None:
        """Goes on from a `state` of a domain of the same shape and options.

        Raises
        ------
        ValueError
            The state belongs to a domain of another shape, or lacks an array.
        """
        for name, array in self._padded.items():
            if name not in state or state[name].shape != array.shape:
                raise ValueError(f"this is no state of a domain of {self.settings.shape}: {name}")
        for name, array in self._padded.items():
            array[...] = state[name]
        np.negative(self._zc, out=self._arrays["bed"])
        self._started = True

    # The library's side of it.

    @property
    def _counts(self) -> tuple[int, int]:
        """Cells along the first index (x) and the second (y), margin included."""
        return self._padded_shape[1], self._padded_shape[0]

    @property
    def _area(self) -> tuple[int, int, int, int]:
        n, m = self._counts
        return MARGIN + 1, MARGIN + 1, n - MARGIN, m - MARGIN

    def _morphology(self, smoothing: bool) -> list[Call]:
        plane = {name: self._host.plane(k) for k, name in enumerate(_HOST)}
        flags = (self._flags.plane(0), self._flags.plane(1))
        arrays = [plane[name] for name in ("level", "v2", "v1", "zpts", "zc", "z2", "z1")]
        dx = float(self.settings.dx)
        factor = self.settings.raise_factor
        rule = (factor is not None, float(factor or 0.0), *[None] * 7)
        works = (self._fields.at, self._codes.at, None, None, None, self._number)
        place = (*self._counts, *self._area, dx, dx, dx, None, self._seconds.at)
        args = [smoothing, False, False, *flags, *arrays, *place, *rule, *works]
        call = Call("QVMORPHOLOGY", args)
        # The options of an only domain stay the current ones.
        return [call] if self._last == 1 else [self._options_call, call]

    @property
    def _options_call(self) -> Call:
        return Call("QVMOR_INIT_2D_DOMAIN", (self._number,))

    def _from_layers(self, array: Array) -> None:
        rows, columns = array.shape
        array[...] = array.reshape(columns, rows).T.copy()

    def _to_layers(self, array: Array) -> None:
        rows, columns = array.shape
        array.reshape(columns, rows)[...] = array.T.copy()

    def _bring_bed(self) -> None:
        """Gives the library the caller's bed, with sides and corners, where it is not the library's."""
        bed, scratch = self._arrays["bed"], self._scratch
        np.negative(bed, out=scratch)
        changed = np.not_equal(scratch, self._zc, out=self._cells_where)
        if self._started and not np.count_nonzero(changed):
            return
        if not np.isfinite(bed).all():
            where = np.argwhere(~np.isfinite(bed))[0].tolist()
            raise ValueError(
                f"bed{where} is no number: give cells without a bed any, and bed_code 0"
            )
        first = not self._started
        if first:
            changed[...] = True
        self._zc[...] = scratch
        if self.settings.outside != "own":
            self._continue_bed(np.pad(changed, MARGIN, mode="edge"))
        # Smoothing lowers bed limits to the bed. That is for the start: later a bed below its limit is
        # one that bed load has worn.
        limits = self._padded["bed_limit"]
        kept = None if first else limits.copy()
        self._engine.run(self._smoothing)
        if kept is not None:
            limits[...] = kept
        self._started = True

    def _continue_bed(self, changed: Array) -> None:
        """Continues the bed across the edges, and fills sides and corners next to changed cells."""
        zc, z1, z2, zpts = (self._padded[name] for name in ("zc", "z1", "z2", "zpts"))
        np.copyto(zc, np.pad(self._zc, MARGIN, mode="edge"), where=changed)
        along_x = changed[:, :-1] | changed[:, 1:]
        along_y = changed[:-1] | changed[1:]
        np.copyto(z1[:, :-1], 0.5 * (zc[:, :-1] + zc[:, 1:]), where=along_x)
        np.copyto(z2[:-1], 0.5 * (zc[:-1] + zc[1:]), where=along_y)
        four = 0.25 * (zc[:-1, :-1] + zc[:-1, 1:] + zc[1:, :-1] + zc[1:, 1:])
        np.copyto(zpts[:-1, :-1], four, where=along_x[:-1] | along_x[1:])

    def _find_edges(self, host: Array, wet: Array) -> None:
        """Where the sides of the edges lie, the cells inside and outside of them, all in one row."""
        self._all_host, self._all_wet = host.reshape(-1), wet.reshape(-1)
        start = {name: k * wet.size for k, name in enumerate(_HOST)}
        row = self._padded_shape[1]
        inner = np.arange(wet.size).reshape(wet.shape)[_CELLS]
        edges = [(inner[:, 0], -1), (inner[:, -1], 1), (inner[0], -row), (inner[-1], row)]
        inside = np.concatenate([cells for cells, _ in edges])
        way_out = np.concatenate([np.full(cells.size, way) for cells, way in edges])
        outside = inside + way_out
        side = np.minimum(inside, outside)  # named for the lower of its cells
        velocity = side + np.where(np.abs(way_out) == 1, start["v1"], start["v2"])
        side_bed = velocity - start["v1"] + start["z1"]
        self._outside = outside
        self._outward = np.sign(way_out).astype(float)
        self._from = np.stack([velocity, inside, inside + start["zc"], outside + start["zc"]])
        self._to = np.concatenate([outside, outside + start["zc"], side_bed])
        self._edge = np.empty(self._from.shape)
        self._edge_open = np.zeros(inside.size, "i4")
        low_byte = 0 if sys.byteorder == "little" else 3
        self._edge_open_bytes = self._edge_open.view(np.bool_)[low_byte::4]
        self._edge_enters = np.empty(inside.size, bool)

    def _bring_edges(self) -> None:
        """Opens the edges that water crosses, with the level inside, and lets the bed outside follow."""
        host, edge = self._all_host, self._edge
        host.take(self._from, None, edge, "clip")
        velocity, _, bed_inside, bed_outside = edge
        np.not_equal(velocity, _ZERO, out=self._edge_open_bytes)
        self._all_wet[self._outside] = self._edge_open  # a side is open between two wet cells
        if self.settings.outside == "fixed":
            host[self._outside] = edge[1]
            return
        np.multiply(velocity, self._outward, out=velocity)
        np.less_equal(velocity, _ZERO, out=self._edge_enters)
        np.putmask(bed_inside, self._edge_enters, bed_outside)
        bed_outside[...] = bed_inside
        host[self._to] = edge.reshape(-1)[velocity.size :]  # level and bed outside, bed of the side

    def _no_number(self) -> MorphologyError:
        cells = np.argwhere(~np.isfinite(self._zc)).tolist()
        causes = [
            f"{name}{np.argwhere(~np.isfinite(self._arrays[name]))[0].tolist()} is no number"
            for name in ("u", "v", "d50", "d90", "insitu_voids", "deposition_voids")
            if not np.isfinite(self._arrays[name]).all()
        ]
        causes += [f'"{name}" is 0' for name in zeros_among(self.options)]
        text = f"after this step the bed is no number at {len(cells)} cells, first at {cells[0]}"
        return MorphologyError("; ".join([text, *causes]))
