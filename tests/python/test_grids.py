"""Flow of other grids comes to the places that a domain wants."""
from __future__ import annotations

import numpy as np
import pytest

from nivaro_morphology import grids

# 2 x 3 cells.
U = np.array([[1.0, 3.0, 5.0], [2.0, 4.0, 8.0]])
V = np.array([[1.0, 2.0, 3.0], [5.0, 6.0, 9.0]])


@pytest.mark.parametrize(
    "brought, u, v",
    [
        (grids.from_centres(U, V), [[1, 2, 4, 5], [2, 3, 6, 8]], [[1, 2, 3], [3, 4, 6], [5, 6, 9]]),
        (
            grids.from_inner_sides(U[:, :2], V[:1]),
            [[0, 1, 3, 0], [0, 2, 4, 0]],
            [[0] * 3, V[0], [0] * 3],
        ),
        (grids.from_lower_sides(U, V), [[1, 3, 5, 0], [2, 4, 8, 0]], [V[0], V[1], [0] * 3]),
        (grids.from_upper_sides(U, V), [[0, 1, 3, 5], [0, 2, 4, 8]], [[0] * 3, V[0], V[1]]),
        (grids.from_north_first(U, V), U[::-1], -V[::-1]),
    ],
)
def test_velocities(brought, u, v):
    np.testing.assert_array_equal(brought[0], u)
    np.testing.assert_array_equal(brought[1], v)


def test_discharge_goes_through_the_depth_of_both_cells():
    bed = [[-1.0, -2.0], [-1.0, 5.0]]
    level = [[0.0, 1.0], [0.0, np.nan]]  # depths 1, 3; 1 and a dry cell
    u, v = grids.from_discharge(np.ones((2, 3)), np.ones((3, 2)), level, bed)
    np.testing.assert_array_equal(u, [[1, 1 / 2, 1 / 3], [1, 0, 0]])
    np.testing.assert_array_equal(v, [[1, 1 / 3], [1, 0], [1, 0]])
    with pytest.raises(ValueError, match="of different cells"):
        grids.from_discharge(np.ones((2, 3)), np.ones((2, 2)), level, bed)


def test_flow_flags_are_where_water_crosses_to_dry_cells():
    wet = [[True, False], [True, True]]
    u, v = np.zeros((2, 3)), np.zeros((3, 2))
    assert not grids.flow_flags(wet, u, v).any()
    u[0, 1] = 1.0
    assert grids.flow_flags(wet, u, v).tolist() == [[True, False], [False, False]]
    v[1, 1], u[:, 0] = 1.0, 1.0  # the edges of the model are no dry cells
    assert grids.flow_flags(wet, u, v).tolist() == [[True, False], [False, True]]
