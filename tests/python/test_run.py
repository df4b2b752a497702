"""Runs through the package do what runs in C do."""
from __future__ import annotations

import os
import pathlib
import re
import shutil
import subprocess
import sys

import hump
import numpy as np
import pytest

import nivaro_morphology as nm

HERE = pathlib.Path(__file__).parent


@pytest.fixture(scope="module")
def c_bed(tmp_path_factory: pytest.TempPathFactory) -> np.ndarray:
    """The bed of the smallest host in C, without its margin of one cell."""
    prefix = tmp_path_factory.mktemp("c") / "hump"
    host = [os.environ["NIVARO_MINIMAL_HOST"], str(hump.CONTROL_FILE), str(prefix)]
    subprocess.run(host, check=True, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL)
    return -np.fromfile(f"{prefix}_bed.bin").reshape(20, 60)[1:-1, 1:-1]


def test_isolated_runs_at_once_have_the_bed_of_the_c_host(c_bed):
    still = hump.settings(options=hump.OPTIONS | {"Bed Change Limit": 0})
    pair = [hump.settings(), hump.settings(outside="own"), still]
    runs = [nm.Run(some) for some in ([hump.settings(options=hump.CONTROL_FILE)], pair, pair[:1])]
    domains = [domain for run in runs for domain in run.domains]
    for domain in domains:
        hump.fill(domain)
    own = domains[2]
    own.padded("wet")[2:-2, [1, -2]] = 1
    own.padded("zc")[...] = np.pad(-own.bed, 2, mode="edge")
    for name, axis in (("z1", 1), ("z2", 0)):
        own.padded(name)[...] = 0.5 * (own.padded("zc") + np.roll(own.padded("zc"), -1, axis))
    for _ in zip(*[hump.steps(domain) for domain in domains]):
        pass
    for run in runs:
        run.close()
    np.testing.assert_array_equal(domains.pop(3).bed, hump.start())
    for domain in domains:
        np.testing.assert_array_equal(domain.bed, c_bed)


def test_run_in_the_own_process_reads_no_standard_input(c_bed, tmp_path):
    code = (
        "import hump, sys, numpy, nivaro_morphology as nm\n"
        "numpy.save('bed.npy', hump.bed(isolated=False, output='own/hump', coord_sys=' '))\n"
        "try: nm.Morphology((3, 3), 5.0, hump.OPTIONS, isolated=False)\n"
        "except nm.MorphologyError: pass\n"
        "assert sys.stdin.read() == 'mine\\n'\n"
        "nm.Morphology((3, 3), 5.0, {'Foo': 1})\n"
    )
    env = os.environ | {"PYTHONPATH": os.pathsep.join([str(HERE), *sys.path])}
    python = [sys.executable, "-c", code]
    ended = subprocess.run(
        python, input="mine\n", text=True, cwd=tmp_path, env=env, capture_output=True
    )
    assert "MorphologyError: ...Unrecognisable command in .mcf file" in ended.stderr, ended.stderr
    np.testing.assert_array_equal(np.load(tmp_path / "bed.npy"), c_bed)


def test_saved_run_goes_on_bit_for_bit(c_bed, tmp_path):
    for first, file in ((True, "a.npz"), (False, "b.npz")):
        with nm.Run([hump.settings()]) as run:
            (domain,) = run.domains
            if first:
                hump.fill(domain)
            else:
                run.load(tmp_path / "a.npz")
                domain.water_level = 0.0
            list(hump.steps(domain, 12))
            run.save(tmp_path / file)
    np.testing.assert_array_equal(domain.bed, c_bed)
    with nm.Morphology((3, 3), 5.0, hump.OPTIONS) as other:
        with pytest.raises(ValueError, match="no state of a domain of"):
            other.load(tmp_path / "a.npz")


def test_layers_and_tables_set_the_cells_of_their_map(tmp_path):
    # Cell [1, 4] by a table, cell [0, 2] by a point of a turned grid: x runs north, y runs west.
    (tmp_path / "d90.mid").write_text("2, 5, 0.0007\n9, 9, 1.0\n")
    (tmp_path / "d50.mif").write_text(
        'Version 300\nDelimiter ","\nCoordSys NonEarth Units "m" Bounds (0,0) (9000,9000)\n'
        "Columns 1\n  v Float\nData\n\nPoint 95 225\n"
    )
    (tmp_path / "d50.mid").write_text("0.0004\n")
    options = hump.OPTIONS | {
        "Read MID Morphology D90": tmp_path / "d90.mid",
        "Read MI Morphology D50": tmp_path / "d50.mif",
    }
    output = tmp_path / "out" / "layers"
    place = {"origin": (100.0, 200.0), "angle": np.pi / 2, "output": output}
    with nm.Morphology((3, 6), 10.0, options, **place) as model:
        model.bed = np.arange(18).reshape(3, 6)
        model.write_check_layer()
        assert np.argwhere(model.d90 == 0.0007).tolist() == [[1, 4]]
        assert np.argwhere(model.d50 == 0.0004).tolist() == [[0, 2]]
        (message,) = model.messages
        assert message.level == "WARNING" and message.text.startswith("WARNING - Some/all")
    rows = [line.split(",") for line in output.with_name("layers_mor_check.mid").open()]
    assert len(rows) == 18
    cell = next(row for row in rows if (row[0].strip(), row[1].strip()) == ("2", "5"))
    assert float(cell[5]) == 10.0 and float(cell[8]) == 0.0007


def test_options_in_force_are_those_of_all_files(tmp_path):
    for name, text in [
        (
            "top",
            "! Mixing Coefficient == 2\nSlump Slope == 2 ! Water Density == 1\nRead File == sub/more.mcf\nSet Morphology D90 == 3e-4",
        ),
        (
            "sub/more",
            "cell sides high == on\nMorphology Water Density == 1.025d3\nFall Velocity == AUTO",
        ),
    ]:
        (tmp_path / "sub").mkdir(exist_ok=True)
        (tmp_path / f"{name}.mcf").write_text(text)
    with pytest.warns(UserWarning), nm.Morphology((3, 3), 5.0, tmp_path / "top.mcf") as model:
        assert (model.d90 == 3e-4).all() and (model.d50 == 1.6e-4).all()
    names = (
        "Slump Slope",
        "Water Density",
        "Cell Sides High",
        "Fall Velocity",
        "Mixing Coefficient",
    )
    assert [model.options[name] for name in names] == [2.0, 1025.0, True, 0.0, 1.05]


def test_bed_written_between_steps_brings_sides_and_margin_along():
    shape = tuple(np.array([4, 5]))  # any integers
    with nm.Morphology(
        shape, np.float32(10), hump.OPTIONS | {"Set Morphology Bed Limit": -1.2}
    ) as model:
        model.bed, model.water_level, model.u = -1.0, 0.0, 0.5
        model.bed_code[0, 0] = 0
        model.step(1.0)
        assert model.wet.all() and model.padded("wet")[2:-2, 1].all()
        assert not model.padded("wet")[1].any()  # nothing crosses the edges along y
        model.bed[0, 0] = -2.0
        model.bed[2, 4] += 0.5
        model.bed[3, 0] = -1.5
        limits = model.bed_limit.copy()
        model.u = 0.0
        model.step(1.0)
        z1, zc = model.padded("z1"), model.padded("zc")
        assert z1[2, 2] == 1.5 and z1[4, 5] == 0.75 and z1[4, 6] == 0.5 and zc[2, 1] == 2.0
        assert model.padded("z2")[2, 2] == 1.5 and model.padded("zpts")[1, 1] == 2.0
        assert model.bed[0, 0] == -2.0 and model.depth[2, 4] == 0.5
        np.testing.assert_array_equal(model.bed_limit, limits)
        # Outside the edge where water leaves the bed follows, where it enters it stands still.
        model.u[...] = 0.5 + 0.1 * np.arange(6)
        for _ in range(5):
            model.step(100.0)
        assert model.padded("zc")[3, 1] == 1.0 and model.depth[1, 4] != 1.0
        model.step(100.0)
        before = model.depth[1].copy()
        model.step(100.0)
        assert model.padded("zc")[3, 1] == 1.0 and model.padded("zc")[3, 7] == before[-1]


def test_dataset_fits_its_mesh_and_the_screen_is_seen(tmp_path, capsys):
    output = tmp_path / "hump"
    for _ in range(2):  # as a cell of a notebook that is run again
        with nm.Run(
            [hump.settings(shape=(2, 3)), hump.settings(shape=(1, 2))], output=output, echo=True
        ) as run:
            for domain in run.domains:
                domain.bed, domain.water_level = -1.0, 0.0
                domain.step(10.0)
            run.write_record(0.5)
            run.write_record(1.0)
    assert capsys.readouterr().out.count("TRANSFERRED TO MORPHOLOGY MODULE") == 2
    mesh = output.with_suffix(".2dm").read_text().splitlines()
    nodes, elements = 3 * 4 + 2 * 3, 2 * 3 + 2
    assert [sum(line.startswith(card) for line in mesh) for card in ("ND", "E4Q")] == [
        nodes,
        elements,
    ]
    record = 4 + 1 + 4 + elements + 4 * nodes
    heads = 15 * 4 + 40  # see docs/user-guide.md
    assert output.with_name("hump_morDH.dat").stat().st_size == heads + 2 * record + 4
    assert "E4Q 2 5 6 10 9 1" in mesh and "ND 18 10.0000 5.0000 -1.00000" in mesh


def test_installed_package_finds_the_library_beside_it(tmp_path):
    source, target = tmp_path / "source", tmp_path / "target"
    shutil.copytree(HERE.parents[1] / "python", source)
    shutil.copy(nm.find_library(), source / "nivaro_morphology" / "libnivaro_morphology.so.1")
    install = ["-m", "pip", "install", "-q", "--no-index", "--no-deps", "--no-build-isolation"]
    subprocess.run([sys.executable, *install, "--target", target, source], check=True)
    env = {k: v for k, v in os.environ.items() if "NIVARO" not in k} | {"PYTHONPATH": str(target)}
    code = f"import sys; sys.path.append({str(HERE)!r}); import hump; print(hump.bed(1).shape)"
    ended = subprocess.run([sys.executable, "-c", code], env=env, check=True, capture_output=True)
    assert ended.stdout == b"(18, 58)\n"


def test_code_of_the_page_runs(tmp_path, monkeypatch, capsys):
    monkeypatch.chdir(tmp_path)
    page = (HERE.parents[1] / "docs" / "python.md").read_text(encoding="utf-8")
    exec("\n".join(re.findall(r"```python\n(.*?)```", page, re.DOTALL)), {})
    told = capsys.readouterr().out
    assert "the hump is 0.2" in told and "Unrecognisable command" in told and "5.0 .mif" in told
    assert (tmp_path / "results" / "two.2dm").exists()
