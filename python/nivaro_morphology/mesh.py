"""The mesh on which viewers show the bed change dataset: a corner of cells is a node, a cell an element."""

from __future__ import annotations

from typing import Any, Iterable

import numpy as np
from numpy.typing import NDArray


def mesh_text(parts: Iterable[tuple[NDArray[Any], NDArray[Any], NDArray[Any]]]) -> str:
    """A mesh in the format 2dm.

    Parameters
    ----------
    parts : iterable of (x, y, z)
        Places and bed elevations of the corners of each domain, (ny + 1, nx + 1), in m.
    """
    elements: list[str] = []
    nodes: list[str] = []
    for x, y, z in parts:
        number = np.arange(x.size).reshape(x.shape) + len(nodes) + 1
        corners = (number[:-1, :-1], number[:-1, 1:], number[1:, 1:], number[1:, :-1])
        # The dataset walks cells along y first.
        for four in np.stack([c.T.ravel() for c in corners], axis=1).tolist():
            elements.append(f"E4Q {len(elements) + 1} {four[0]} {four[1]} {four[2]} {four[3]} 1\n")
        for px, py, pz in zip(x.ravel().tolist(), y.ravel().tolist(), z.ravel().tolist()):
            nodes.append(f"ND {len(nodes) + 1} {px:.4f} {py:.4f} {pz:.5f}\n")
    return "MESH2D\n" + "".join(elements) + "".join(nodes)
