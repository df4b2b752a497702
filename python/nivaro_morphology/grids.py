"""Flow of the usual grids, brought to where a domain wants it.

A domain wants water levels at the centres of cells (ny, nx), velocities along x at the sides (ny, nx + 1)
and along y (ny + 1, nx), rows from south to north, all in m and m/s. Routines return new arrays.
"""

from __future__ import annotations

import numpy as np
from numpy.typing import ArrayLike, NDArray

Array = NDArray[np.float64]


def _grid(value: ArrayLike, name: str) -> Array:
    array = np.asarray(value, dtype=np.float64)
    if array.ndim != 2:
        raise ValueError(f"{name} has 2 dimensions [y, x], not {array.ndim}")
    return array


def _same_cells(u: Array, v: Array, more_u: int, more_v: int) -> None:
    """u has so many columns more than cells, v so many rows."""
    cells = (u.shape[0], u.shape[1] - more_u)
    if (v.shape[0] - more_v, v.shape[1]) != cells:
        raise ValueError(f"u and v have the shapes {u.shape} and {v.shape}, of different cells")


def from_centres(u: ArrayLike, v: ArrayLike) -> tuple[Array, Array]:
    """Velocities at the centres of cells, brought to their sides.

    Parameters
    ----------
    u, v : array_like
        Components along x and y at the centres, (ny, nx), m/s.

    Returns
    -------
    u, v : ndarray
        Means of both cells at the sides between them, (ny, nx + 1) and (ny + 1, nx); at the edges the
        velocity of the cell inside.
    """
    u, v = _grid(u, "u"), _grid(v, "v")
    _same_cells(u, v, 0, 0)
    wide, high = np.pad(u, ((0, 0), (1, 1)), mode="edge"), np.pad(v, ((1, 1), (0, 0)), mode="edge")
    return 0.5 * (wide[:, :-1] + wide[:, 1:]), 0.5 * (high[:-1] + high[1:])


def from_inner_sides(u: ArrayLike, v: ArrayLike) -> tuple[Array, Array]:
    """Velocities at the sides between cells, with walls at the edges.

    Parameters
    ----------
    u, v : array_like
        At the sides between cells, (ny, nx - 1) and (ny - 1, nx).

    Returns
    -------
    u, v : ndarray
        The same with 0 at the edges, (ny, nx + 1) and (ny + 1, nx).
    """
    u, v = _grid(u, "u"), _grid(v, "v")
    _same_cells(u, v, -1, -1)
    return np.pad(u, ((0, 0), (1, 1))), np.pad(v, ((1, 1), (0, 0)))


def from_lower_sides(u: ArrayLike, v: ArrayLike) -> tuple[Array, Array]:
    """Velocities that each cell keeps for its sides toward smaller x and y; 0 at the upper edges.

    Parameters
    ----------
    u, v : array_like
        At the left and the lower side of each cell, (ny, nx).

    Returns
    -------
    u, v : ndarray
        At all sides, (ny, nx + 1) and (ny + 1, nx).
    """
    u, v = _grid(u, "u"), _grid(v, "v")
    _same_cells(u, v, 0, 0)
    return np.pad(u, ((0, 0), (0, 1))), np.pad(v, ((0, 1), (0, 0)))


def from_upper_sides(u: ArrayLike, v: ArrayLike) -> tuple[Array, Array]:
    """Velocities that each cell keeps for its sides toward larger x and y; 0 at the lower edges.

    Parameters
    ----------
    u, v : array_like
        At the right and the upper side of each cell, (ny, nx).

    Returns
    -------
    u, v : ndarray
        At all sides, (ny, nx + 1) and (ny + 1, nx).
    """
    u, v = _grid(u, "u"), _grid(v, "v")
    _same_cells(u, v, 0, 0)
    return np.pad(u, ((0, 0), (1, 0))), np.pad(v, ((1, 0), (0, 0)))


def from_north_first(u: ArrayLike, v: ArrayLike) -> tuple[Array, Array]:
    """Velocities of a raster whose rows run from north to south, v positive toward larger rows.

    Cell arrays of such a raster are turned by ``[::-1]``, both ways.

    Parameters
    ----------
    u, v : array_like
        At the sides or at the centres, the row in the north first.

    Returns
    -------
    u, v : ndarray
        The same with the row in the south first, v positive toward north.
    """
    return _grid(u, "u")[::-1].copy(), -_grid(v, "v")[::-1]


def from_discharge(
    qx: ArrayLike, qy: ArrayLike, water_level: ArrayLike, bed: ArrayLike, dry_depth: float = 0.001
) -> tuple[Array, Array]:
    """Velocities that carry the discharge of a flow model through the depth that the library sees.

    The library takes the mean of both levels and both beds at a side, whatever depth the flow model
    has there; at the edges, level and bed of the cell inside.

    Parameters
    ----------
    qx, qy : array_like
        Discharge for each metre of a side, (ny, nx + 1) and (ny + 1, nx), m2/s.
    water_level, bed : array_like
        At the centres of cells, (ny, nx), m. Levels that are no number belong to dry cells.
    dry_depth : float
        Velocities are 0 where the water is not deeper, m.

    Returns
    -------
    u, v : ndarray
        Velocities at the sides, (ny, nx + 1) and (ny + 1, nx), m/s.
    """
    qx, qy = _grid(qx, "qx"), _grid(qy, "qy")
    _same_cells(qx, qy, 1, 1)
    depth = _grid(water_level, "water_level") - _grid(bed, "bed")
    _same_cells(qx, depth, 1, 0)
    x, y = from_centres(depth, depth)
    return _quotient(qx, x, dry_depth), _quotient(qy, y, dry_depth)


def _quotient(q: Array, depth: Array, dry_depth: float) -> Array:
    return np.divide(q, depth, out=np.zeros_like(q), where=depth > dry_depth)


def flow_flags(wet: ArrayLike, u: ArrayLike, v: ArrayLike) -> NDArray[np.bool_]:
    """Wet cells that send water to or take it from a dry neighbour: what `Domain.flow` wants.

    Parameters
    ----------
    wet : array_like
        True in wet cells, (ny, nx).
    u, v : array_like
        Velocities at the sides, (ny, nx + 1) and (ny + 1, nx).

    Returns
    -------
    ndarray of bool
        (ny, nx).
    """
    wet = np.asarray(wet, dtype=np.bool_)
    moves_x, moves_y = _grid(u, "u") != 0, _grid(v, "v") != 0
    dry = np.pad(~wet, 1)
    front: NDArray[np.bool_] = (dry[1:-1, :-2] & moves_x[:, :-1]) | (dry[1:-1, 2:] & moves_x[:, 1:])
    front |= (dry[:-2, 1:-1] & moves_y[:-1]) | (dry[2:, 1:-1] & moves_y[1:])
    front &= wet
    return front
