"""What goes wrong is an exception that names it, and nothing is left behind."""
from __future__ import annotations

import os
import pathlib
import resource
import signal
import subprocess
import sys

import hump
import numpy as np
import pytest
from conftest import children_of, wait_until

import nivaro_morphology as nm

HERE = pathlib.Path(__file__).parent


@pytest.mark.parametrize(
    "lines, number, line, text",
    [
        ("Foo Bar == 3", None, 2, "Unrecognisable command in .mcf file\nFoo Bar == 3"),
        ("Fall Velocity == abc", None, 2, "ERROR - Reading parameter(s) or option"),
        ("Read MI Morphology D50 == none", 8, None, 'none.mif" cannot be found'),
        ("Read File == self.mcf", None, None, "ERROR - Exceeded limit of nested files"),
    ],
)
def test_reason_of_the_end(tmp_path, lines, number, line, text):
    path = tmp_path / "self.mcf"
    path.write_text(f"! A control file\n{lines}\n")
    with pytest.raises(nm.MorphologyError) as caught:
        nm.Morphology((3, 3), 5.0, path, output=tmp_path / "out")
    error = caught.value
    assert text in error.text
    assert (error.number, error.line) == (number, line)
    assert error.file == (str(path) if line else None)
    assert error.log == str(tmp_path / "out.mlf") and os.path.exists(error.log)
    assert "TRANSFERRED" in error.screen


def test_what_is_no_model():
    def model(shape=(3, 4), dx=5.0, options=hump.OPTIONS, **more):
        nm.Morphology(shape, dx, options, **more)

    for error, match, make in [
        (FileNotFoundError, "none.mcf", lambda: model(options="none.mcf")),
        (ValueError, "D5O", lambda: model(options={"Set Morphology D5O": 1})),
        (ValueError, "cannot stand", lambda: model(options={"Fall Velocity": "1 ! 2"})),
        (ValueError, "shape", lambda: model(shape=(0, 4))),
        (ValueError, "dx", lambda: model(dx=-1.0)),
        (ValueError, "outside", lambda: model(outside="inside")),
        (MemoryError, "GB", lambda: model(shape=(10**6, 10**6))),
        (OSError, "none.so", lambda: model(library="none.so", isolated=False)),
        (nm.MorphologyError, "none.so", lambda: model(library="none.so")),
    ]:
        with pytest.raises(error, match=match) as held:
            make()
        assert children_of(os.getpid()) == [], held
    with pytest.warns(UserWarning, match='"Fall Velocity", "Reference Level"'):
        model(options={"Current Related Roughness": 0.05})


def test_what_is_no_array_and_what_is_out_of_order(tmp_path):
    with nm.Morphology((3, 4), 5.0, hump.OPTIONS) as model:
        for error, match, name, value in [
            (ValueError, r"u has the shape \(3, 5\), not \(3, 4\)", "u", np.zeros((3, 4))),
            (ValueError, r"not \(4, 3\)", "bed", np.zeros((4, 3))),
            (TypeError, "float64, not complex128", "v", np.zeros((4, 4), complex)),
            (TypeError, "int32, not float64", "bed_code", 1.5),
            (ValueError, "read-only", "depth", 1.0),
        ]:
            with pytest.raises(error, match=match):
                setattr(model, name, value)
        model.u = np.asfortranarray(np.full((3, 5), 0.5, "f4"))  # any order and kind of real
        with pytest.raises(ValueError, match=r"bed\[0, 0\] is no number"):
            model.water_level = 0.0
            model.step(1.0)
        model.bed, model.water_level = -1.0, np.nan
        with pytest.raises(ValueError, match="water_level was not set"):
            model.step(1.0)
        for seconds in (0, -1.0, np.inf, np.nan):
            with pytest.raises(ValueError, match="a time in seconds"):
                model.step(seconds)
        for write in (lambda: model.write_record(1.0), model.write_check_layer):
            with pytest.raises(ValueError, match="needs a run with an output"):
                write()
        model.water_level, model.u[1, 2] = 0.0, np.nan
        with pytest.raises(
            nm.MorphologyError, match=r"the bed is no number .*u\[1, 2\] is no number"
        ):
            model.step(1.0)
        assert (model.bed == -1.0).all()
    with pytest.raises(nm.MorphologyError, match="has ended"):
        model.step(1.0)
    model.close()


def test_killed_child_and_full_disk(tmp_path):
    with nm.Morphology((30, 40), 5.0, hump.OPTIONS) as model:
        model.bed, model.water_level = -1.0, 0.0
        os.kill(model.run._engine._process.pid, signal.SIGKILL)
        with pytest.raises(nm.MorphologyError, match="SIGKILL"):
            model.step(1.0)
    with pytest.raises(nm.MorphologyError, match="Could not write file") as caught:
        with nm.Morphology((30, 40), 5.0, hump.OPTIONS, output=tmp_path / "full") as model:
            model.bed, model.water_level = -1.0, 0.0
            limit = (20000, resource.RLIM_INFINITY)
            resource.prlimit(model.run._engine._process.pid, resource.RLIMIT_FSIZE, limit)
            for hours in range(10):
                model.write_record(hours)
    assert caught.value.log == str(tmp_path / "full.mlf")


def test_exceptions_of_the_caller_and_forgotten_runs_leave_nothing(tmp_path):
    with pytest.raises(ZeroDivisionError):
        with nm.Morphology((3, 3), 5.0, hump.OPTIONS):
            1 / 0
    nm.Morphology((3, 3), 5.0, hump.OPTIONS)  # forgotten
    model = nm.Morphology((3, 3), 5.0, hump.OPTIONS)
    logs = set((tmp_path / "runs").glob("*/run.mlf"))
    fork = os.fork()
    if fork == 0:
        try:
            model.bed = model.water_level = 0.0
            model.step(1.0)
        except nm.MorphologyError as error:
            model.close()
            os._exit(0 if "fork" in str(error) else 1)
        os._exit(2)
    assert os.waitpid(fork, 0)[1] == 0
    assert logs == set((tmp_path / "runs").glob("*/run.mlf"))
    model.bed = model.water_level = 0.0
    model.step(1.0)
    model.close()


def test_interrupted_step_ends_the_run():
    def interrupt(number, frame):
        raise KeyboardInterrupt

    before = signal.signal(signal.SIGALRM, interrupt)
    with nm.Morphology((1000, 1000), 5.0, hump.OPTIONS) as model:
        model.bed, model.water_level, model.u = -1.0, 0.0, 0.5
        model.step(1.0)
        signal.setitimer(signal.ITIMER_REAL, 0.02)
        with pytest.raises(KeyboardInterrupt):
            model.run._engine.run(model._step)
        with pytest.raises(nm.MorphologyError, match="has ended"):
            model.step(1.0)
    signal.signal(signal.SIGALRM, before)


@pytest.mark.parametrize("killed_by", [signal.SIGINT, signal.SIGKILL])
def test_parent_that_is_ended_takes_its_child_along(tmp_path, killed_by):
    code = "import hump\nhump.bed(10**9)\n"
    env = os.environ | {"PYTHONPATH": os.pathsep.join([str(HERE), *sys.path])}
    parent = subprocess.Popen(
        [sys.executable, "-c", code], env=env, stderr=subprocess.PIPE, text=True
    )
    assert wait_until(lambda: children_of(parent.pid))
    (child,) = children_of(parent.pid)
    folder = tmp_path / "runs"
    assert wait_until(lambda: any(folder.glob("*/run.mlf")))
    parent.send_signal(killed_by)
    _, told = parent.communicate(timeout=20)
    assert ("KeyboardInterrupt" in told) == (killed_by == signal.SIGINT)
    assert wait_until(lambda: not os.path.exists(f"/proc/{child}"))
    assert wait_until(lambda: not any(folder.iterdir()))
