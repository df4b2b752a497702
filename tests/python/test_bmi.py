"""A run by the functions of the Basic Model Interface alone."""
from __future__ import annotations

import hump
import numpy as np
import pytest

from nivaro_morphology import bmi

BED = "channel_bottom_surface__elevation"
LEVEL = "channel_water_surface__elevation"
U = "channel_water_flow__x_component_of_velocity"
CHANGE = "channel_bottom_surface__increment_of_elevation"
CONFIG = """control_file = '{file}'
shape = [18, 58]
spacing = 5.0
origin = [1000.0, 200.0]
time_step = 600.0
end_time = 14400.0
outside = "fixed"
"""


@pytest.fixture
def model(tmp_path):
    (tmp_path / "model.toml").write_text(CONFIG.format(file=hump.CONTROL_FILE))
    model = bmi.Morphology()
    model.initialize(str(tmp_path / "model.toml"))
    yield model
    model.finalize()


def values(model, name):
    size = model.get_grid_size(model.get_var_grid(name))
    return model.get_value(name, np.empty(size, model.get_var_type(name)))


def test_run_has_the_bed_of_the_package(model):
    expected = hump.bed(24)
    ny, nx = model.get_grid_shape(model.get_var_grid(BED), np.empty(2, int))
    start = hump.start()
    model.set_value(BED, start.ravel())
    model.set_value_at_indices(LEVEL, np.arange(ny * nx), np.zeros(ny * nx))
    model.set_value("channel_water_flow__y_component_of_velocity", np.zeros((ny + 1) * nx))
    bed = model.get_value_ptr(BED)
    while model.get_current_time() < model.get_end_time():
        before = bed.copy()
        model.set_value(U, hump.velocity(bed.reshape(ny, nx)).ravel())
        if model.get_current_time() < 6000.0:
            model.update()
        else:
            model.update_until(model.get_current_time() + model.get_time_step())
        np.testing.assert_array_equal(values(model, CHANGE), bed - before)
    np.testing.assert_array_equal(bed.reshape(ny, nx), expected)
    some = np.array([5, 600])
    assert (model.get_value_at_indices(BED, np.empty(2), some) == expected.ravel()[some]).all()
    model.update_until(14400.0 + 700.0)  # a step, and a sixth of one
    assert model.get_current_time() == 15100.0
    with pytest.raises(ValueError, match="already"):
        model.update_until(0.0)


def test_what_the_model_says_of_itself(model):
    assert model.get_component_name() == "NIVARO Morphology"
    inputs, outputs = model.get_input_var_names(), model.get_output_var_names()
    assert (model.get_input_item_count(), model.get_output_item_count()) == (6, 2)
    assert outputs == (BED, CHANGE) and BED in inputs and CHANGE not in inputs
    for name in {*inputs, *outputs}:
        grid = model.get_var_grid(name)
        count = model.get_grid_node_count(grid)
        assert model.get_var_nbytes(name) == model.get_var_itemsize(name) * count
        assert model.get_var_location(name) == "node" and model.get_grid_rank(grid) == 2
        assert model.get_grid_type(grid) == "uniform_rectilinear"
        assert model.get_var_units(name) == ("m s-1" if "velocity" in name else "m")
        assert values(model, name).shape == (count,)
    assert [model.get_start_time(), model.get_time_step(), model.get_time_units()] == [0, 600, "s"]
    assert model.get_grid_origin(1, np.empty(2)).tolist() == [202.5, 1000.0]
    assert model.get_grid_spacing(2, np.empty(2)).tolist() == [5.0, 5.0]
    assert model.get_grid_x(0, np.empty(58))[[0, -1]].tolist() == [1002.5, 1287.5]
    assert model.get_grid_y(2, np.empty(19))[[0, -1]].tolist() == [200.0, 290.0]


def test_what_is_out_of_order(model, tmp_path):
    for error, call in [
        (ValueError, lambda: model.set_value(CHANGE, 0.0)),
        (ValueError, lambda: model.get_value_ptr("water")),
        (ValueError, lambda: model.set_value(U, np.zeros(3))),
        (ValueError, lambda: model.get_grid_size(3)),
        (NotImplementedError, lambda: model.get_grid_face_nodes(0, np.empty(0))),
        (RuntimeError, bmi.Morphology().update),
    ]:
        with pytest.raises(error):
            call()
    for text, match in [
        ("shape = [1, 1]", "lacks the key 'spacing'"),
        (None, "unknown keys: sahpe"),
    ]:
        text = text or CONFIG.format(file=hump.CONTROL_FILE) + "sahpe = 1"
        (tmp_path / "bad.toml").write_text(text)
        with pytest.raises(ValueError, match=match):
            model.initialize(str(tmp_path / "bad.toml"))
