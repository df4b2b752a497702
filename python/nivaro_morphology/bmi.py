"""The Basic Model Interface 2.0 of the earth-surface community, for the morphology of one domain.

Names follow the rules of the CSDMS Standard Names. Values are flat arrays in the order of their grid,
[y, x] with the row in the south first. There are three uniform rectilinear grids: 0 for the centres of
cells, 1 and 2 for the sides across x and y, where the components of the velocity stand.
"""

from __future__ import annotations

import math
import os
import pathlib
import tomllib
from typing import Any, NamedTuple, NoReturn, Optional

import numpy as np
from numpy.typing import NDArray

from . import run

Array = NDArray[Any]

_CENTRES, _X_SIDES, _Y_SIDES = 0, 1, 2
_COPIED = ("water_level", "u", "v", "d50", "d90")
_OPTIONAL = ("origin", "output", "wet_depth", "outside")
_ROUNDING = 1e-9  # of a step: shorter ones are what sums of times lose


class _Variable(NamedTuple):
    attribute: str  # of the domain
    grid: int
    units: str
    is_input: bool
    is_output: bool


_VARIABLES = {
    "channel_bottom_surface__elevation": _Variable("bed", _CENTRES, "m", True, True),
    "channel_water_surface__elevation": _Variable("water_level", _CENTRES, "m", True, False),
    "channel_water_flow__x_component_of_velocity": _Variable("u", _X_SIDES, "m s-1", True, False),
    "channel_water_flow__y_component_of_velocity": _Variable("v", _Y_SIDES, "m s-1", True, False),
    "channel_bottom_sediment_grain__d50_diameter": _Variable("d50", _CENTRES, "m", True, False),
    "channel_bottom_sediment_grain__d90_diameter": _Variable("d90", _CENTRES, "m", True, False),
    "channel_bottom_surface__increment_of_elevation": _Variable(
        "increment", _CENTRES, "m", False, True
    ),
}


class Morphology:
    """A morphology run by the functions of the Basic Model Interface.

    The TOML file of `initialize`; paths count from its folder::

        control_file = "model.mcf"      # or a table [options] of commands and values
        shape = [20, 60]                # cells along y and x
        spacing = 5.0                   # m
        origin = [0.0, 0.0]             # lower left corner on the map, x and y, m; optional
        time_step = 600.0               # s
        end_time = 86400.0              # s; optional
        output = "results/model"        # optional: files are left
        wet_depth = 0.05                # m; optional
        outside = "follow"              # optional
    """

    def __init__(self) -> None:
        self._model: Optional[run.Morphology] = None

    # Control.

    def initialize(self, config_file: str) -> None:
        """Starts a run as a file says.

        Raises
        ------
        ValueError
            A key of the file is missing or not known.
        MorphologyError
            The library cannot start or cannot read its options.
        """
        folder = pathlib.Path(config_file).parent
        with open(config_file, "rb") as file:
            keys = tomllib.load(file)
        try:
            ny, nx = keys.pop("shape")
            spacing, time_step = float(keys.pop("spacing")), float(keys.pop("time_step"))
            options = keys.pop("options") if "options" in keys else keys.pop("control_file")
        except KeyError as missing:
            raise ValueError(f"{os.fspath(config_file)!r} lacks the key {missing}") from None
        if isinstance(options, str):
            options = folder / options
        else:  # paths stand behind commands that read files
            options = {k: folder / v if "READ " in k.upper() else v for k, v in options.items()}
        end_time = float(keys.pop("end_time", math.inf))
        named: dict[str, Any] = {k: keys.pop(k) for k in _OPTIONAL if k in keys}
        if keys:
            raise ValueError(f"{os.fspath(config_file)!r} has unknown keys: {', '.join(keys)}")
        if "output" in named:
            named["output"] = folder / named["output"]
        self.finalize()
        model = run.Morphology((ny, nx), spacing, options, **named)
        self._model, self._time, self._time_step, self._end_time = model, 0.0, time_step, end_time
        # In one piece, so that others may hold them as flat arrays. The bed is so already.
        self._arrays: dict[str, Array] = {"increment": np.zeros(model.bed.shape), "bed": model.bed}
        self._arrays |= {name: getattr(model, name).copy() for name in _COPIED}

    def update(self) -> None:
        """One step of `get_time_step` seconds."""
        self._advance([self.get_time_step()])

    def update_until(self, time: float) -> None:
        """Steps to a time, the last of them shorter where it does not fit.

        Raises
        ------
        ValueError
            The time has passed.
        """
        step, span = self.get_time_step(), time - self.get_current_time()
        if span < 0:
            raise ValueError(f"it is {self._time} s already, not {time}")
        whole = math.floor(span / step + _ROUNDING)
        rest = span - whole * step
        self._advance([step] * whole + ([rest] if rest > _ROUNDING * step else []))
        self._time = time  # without what sums of steps lose

    def finalize(self) -> None:
        """Ends the run. Nothing happens before `initialize`, or twice."""
        if self._model is not None:
            self._model.close()
            self._model = None

    def _advance(self, steps: list[float]) -> None:
        model = self._running()
        before = model.bed.copy()
        for name in _COPIED:
            setattr(model, name, self._arrays[name])
        for seconds in steps:
            model.step(seconds)
            self._time += seconds
        np.subtract(model.bed, before, out=self._arrays["increment"])

    def _running(self) -> run.Morphology:
        if self._model is None:
            raise RuntimeError("initialize comes first")
        return self._model

    # Items.

    def get_component_name(self) -> str:
        """Name of the component."""
        return "NIVARO Morphology"

    def get_input_item_count(self) -> int:
        """Number of input variables."""
        return len(self.get_input_var_names())

    def get_output_item_count(self) -> int:
        """Number of output variables."""
        return len(self.get_output_var_names())

    def get_input_var_names(self) -> tuple[str, ...]:
        """Names of what others may set."""
        return tuple(name for name, variable in _VARIABLES.items() if variable.is_input)

    def get_output_var_names(self) -> tuple[str, ...]:
        """Names of what steps change; the increment is that of the latest update."""
        return tuple(name for name, variable in _VARIABLES.items() if variable.is_output)

    # Variables.

    def get_var_grid(self, name: str) -> int:
        """Grid of a variable."""
        return _variable(name).grid

    def get_var_type(self, name: str) -> str:
        """Type of its elements, as numpy names it."""
        return str(self._array(name).dtype)

    def get_var_units(self, name: str) -> str:
        """Its units, as UDUNITS has them."""
        return _variable(name).units

    def get_var_itemsize(self, name: str) -> int:
        """Bytes of an element."""
        return self._array(name).itemsize

    def get_var_nbytes(self, name: str) -> int:
        """Bytes of all elements."""
        return self._array(name).nbytes

    def get_var_location(self, name: str) -> str:
        """Values stand at the nodes of their grid."""
        _variable(name)
        return "node"

    # Time.

    def get_current_time(self) -> float:
        """Time of the run."""
        self._running()
        return self._time

    def get_start_time(self) -> float:
        """Time at the start."""
        return 0.0

    def get_end_time(self) -> float:
        """Time at the end, as the file says; nothing ends there by itself."""
        self._running()
        return self._end_time

    def get_time_units(self) -> str:
        """Seconds."""
        return "s"

    def get_time_step(self) -> float:
        """Length of a step."""
        self._running()
        return self._time_step

    # Values.

    def get_value(self, name: str, dest: Array) -> Array:
        """Copies a variable into a flat array."""
        dest[...] = self.get_value_ptr(name)
        return dest

    def get_value_ptr(self, name: str) -> Array:
        """A variable itself, as a flat array that goes along with the run."""
        return self._array(name).reshape(-1)

    def get_value_at_indices(self, name: str, dest: Array, inds: Array) -> Array:
        """Copies some elements of a variable."""
        dest[...] = self.get_value_ptr(name)[inds]
        return dest

    def set_value(self, name: str, src: Array) -> None:
        """Sets an input variable."""
        self._input(name)[...] = src

    def set_value_at_indices(self, name: str, inds: Array, src: Array) -> None:
        """Sets some elements of an input variable."""
        self._input(name)[inds] = src

    def _array(self, name: str) -> Array:
        self._running()
        return self._arrays[_variable(name).attribute]

    def _input(self, name: str) -> Array:
        flat = self.get_value_ptr(name)
        if not _variable(name).is_input:
            raise ValueError(f"{name} is no input variable")
        return flat

    # Grids.

    def get_grid_rank(self, grid: int) -> int:
        """Number of dimensions."""
        return len(self._shape(grid))

    def get_grid_size(self, grid: int) -> int:
        """Number of nodes."""
        return math.prod(self._shape(grid))

    def get_grid_type(self, grid: int) -> str:
        """All are uniform and rectilinear."""
        self._shape(grid)
        return "uniform_rectilinear"

    def get_grid_shape(self, grid: int, shape: Array) -> Array:
        """Nodes along y and x."""
        shape[...] = self._shape(grid)
        return shape

    def get_grid_spacing(self, grid: int, spacing: Array) -> Array:
        """Distances along y and x, m."""
        self._shape(grid)
        spacing[...] = self._running().settings.dx
        return spacing

    def get_grid_origin(self, grid: int, origin: Array) -> Array:
        """Place of the first node, y and x, m."""
        self._shape(grid)
        settings = self._running().settings
        half = 0.5 * settings.dx
        x0, y0 = settings.origin
        origin[0] = y0 if grid == _Y_SIDES else y0 + half
        origin[1] = x0 if grid == _X_SIDES else x0 + half
        return origin

    def get_grid_x(self, grid: int, x: Array) -> Array:
        """Places of the columns, m."""
        x[...] = self._places(grid, 1)
        return x

    def get_grid_y(self, grid: int, y: Array) -> Array:
        """Places of the rows, m."""
        y[...] = self._places(grid, 0)
        return y

    def get_grid_z(self, grid: int, z: Array) -> Array:
        """Not of a plane grid."""
        _not_of_this_grid("z")

    def get_grid_node_count(self, grid: int) -> int:
        """Number of nodes."""
        return self.get_grid_size(grid)

    def get_grid_edge_count(self, grid: int) -> int:
        """Of unstructured grids."""
        _not_of_this_grid("edges")

    def get_grid_face_count(self, grid: int) -> int:
        """Of unstructured grids."""
        _not_of_this_grid("faces")

    def get_grid_edge_nodes(self, grid: int, edge_nodes: Array) -> Array:
        """Of unstructured grids."""
        _not_of_this_grid("edges")

    def get_grid_face_edges(self, grid: int, face_edges: Array) -> Array:
        """Of unstructured grids."""
        _not_of_this_grid("faces")

    def get_grid_face_nodes(self, grid: int, face_nodes: Array) -> Array:
        """Of unstructured grids."""
        _not_of_this_grid("faces")

    def get_grid_nodes_per_face(self, grid: int, nodes_per_face: Array) -> Array:
        """Of unstructured grids."""
        _not_of_this_grid("faces")

    def _shape(self, grid: int) -> tuple[int, int]:
        ny, nx = self._running().settings.shape
        shapes = {_CENTRES: (ny, nx), _X_SIDES: (ny, nx + 1), _Y_SIDES: (ny + 1, nx)}
        if grid not in shapes:
            raise ValueError(f"there is no grid {grid}")
        return shapes[grid]

    def _places(self, grid: int, axis: int) -> Array:
        first = self.get_grid_origin(grid, np.empty(2))[axis]
        count = self._shape(grid)[axis]
        places: Array = first + self._running().settings.dx * np.arange(count)
        return places


def _variable(name: str) -> _Variable:
    if name not in _VARIABLES:
        raise ValueError(f"there is no variable {name!r}")
    return _VARIABLES[name]


def _not_of_this_grid(what: str) -> NoReturn:
    raise NotImplementedError(f"a uniform rectilinear grid in the plane has no {what}")
