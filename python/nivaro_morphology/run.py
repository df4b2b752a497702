"""A run of the library: its files, its messages, and its domains."""

from __future__ import annotations

import math
import os
import pathlib
import re
import shutil
import sys
import tempfile
import warnings
from types import TracebackType
from typing import Any, Literal, Mapping, Optional, Sequence, Type, TypeVar, Union

import numpy as np

from .calls import At, Call
from .domain import MARGIN, Domain, DomainSettings
from .engine import ChildProcess, Engine, OwnProcess
from .errors import MorphologyError
from .library import find_library
from .memory import Layout
from .mesh import mesh_text
from .messages import Message, messages_in
from .options import control_text, options_in_force, zeros_among

Path = Union[str, "os.PathLike[str]"]
Self = TypeVar("Self", bound="_Ended")


class _Ended:
    """What ends with its `with` block."""

    def close(self) -> None:
        raise NotImplementedError

    def __enter__(self: Self) -> Self:
        return self

    def __exit__(
        self,
        kind: Optional[Type[BaseException]],
        error: Optional[BaseException],
        traceback: Optional[TracebackType],
    ) -> None:
        self.close()


class Run(_Ended):
    """A run of one or several domains.

    Parameters
    ----------
    domains : sequence of DomainSettings
        The domains, at most 100.
    output : str, path or None
        Folder and base name of the files that the run leaves: log, workspace, bed change dataset with
        its mesh, check layer. None: no files are left.
    name : str
        Name of the simulation, in the head of the workspace and of the dataset.
    coord_sys : str or None
        CoordSys line of the map, in the words of MapInfo. None: plain metres.
    isolated : bool
        The library runs in a process of its own, and what ends the run raises `MorphologyError`. False:
        it runs in this process, one run in the life of it, and what ends the run ends the interpreter.
    echo : bool
        Shows the library's screen on `sys.stdout`, as in a notebook.
    library : str, path or None
        File of the library. None: see `find_library`.

    Attributes
    ----------
    domains : list of Domain
        The domains, in their order.
    log : str or None
        Path of the log.

    Raises
    ------
    MorphologyError
        The library cannot start or cannot read a control file.
    FileNotFoundError
        A control file does not exist.
    ImportError
        The library was not found.
    """

    def __init__(
        self,
        domains: Sequence[DomainSettings],
        *,
        output: Optional[Path] = None,
        name: str = "run",
        coord_sys: Optional[str] = None,
        isolated: bool = True,
        echo: bool = False,
        library: Optional[Path] = None,
    ) -> None:
        if not 1 <= len(domains) <= 100:
            raise ValueError(f"a run has 1 to 100 domains, not {len(domains)}")
        layout = Layout()
        last = len(domains)
        made = [Domain(settings, k + 1, last, layout) for k, settings in enumerate(domains)]
        self._start(made, layout, output, name, coord_sys, isolated, echo, library)

    def _start(
        self,
        domains: Sequence[Domain],
        layout: Layout,
        output: Optional[Path],
        name: str,
        coord_sys: Optional[str],
        isolated: bool,
        echo: bool,
        library: Optional[Path],
    ) -> None:
        self.domains = list(domains)
        self._name, self._echo, self._shown = name, echo, 0
        self._has_records = False
        self._hours = layout.place((1,), "f8")
        self._counts = layout.place((len(domains),), "i4")
        self._points = [
            layout.place((2, math.prod(n + 1 for n in d.settings.shape)), "i4") for d in domains
        ]
        found = os.fspath(library) if library is not None else find_library()
        folder = tempfile.mkdtemp(prefix="nivaro_morphology_")
        try:
            self._output = None if output is None else os.path.abspath(os.fspath(output))
            self.log = None if self._output is None else self._output + ".mlf"
            self._engine: Engine = (
                ChildProcess(found, layout.size, self.log, folder)
                if isolated
                else OwnProcess(found, layout.size, folder)
            )
        except BaseException:
            shutil.rmtree(folder, ignore_errors=True)
            raise
        try:
            self._initialise(folder, coord_sys)
        except BaseException:
            self._engine.close()
            raise

    def _initialise(self, folder: str, coord_sys: Optional[str]) -> None:
        engine, memory = self._engine, self._engine.memory
        prefix = self._output or os.path.join(folder, "run")
        header = coord_sys or self._plain_metres()
        # Plain metres are no projection that layers could be held against.
        plain = header.upper().startswith("COORDSYS NONEARTH")
        projection = "" if plain else re.sub(r"[\s\"']", "", header).upper()
        names = (
            self._name,
            prefix,
            prefix,
            False,
            ".tab",
            False,
            prefix,
            header,
            projection,
            False,
        )
        points = sum(place.shape[1] for place in self._points)
        cells = sum(math.prod(domain.settings.shape) for domain in self.domains)
        self._call(Call("QVMOR_INITIALISE_S1", names))
        self._call(Call("QVMOR_INITIALISE_S2", (0, 0.0, 0, 0, points, cells)))
        for domain in self.domains:
            domain._attach(engine)
            self._call(domain._setup_call())
        for domain in self.domains:
            path = self._control_file(domain, folder)
            domain._read_control_file(path)
            domain.options = options_in_force(path)
            zeros = ", ".join(f'"{name}"' for name in zeros_among(domain.options))
            if zeros:
                warnings.warn(f"{zeros} not set, and so 0: see docs/user-guide.md", stacklevel=5)
        self._counts.array(memory)[:] = [place.shape[1] for place in self._points]
        for domain, place in zip(self.domains, self._points):
            ny, nx = domain.settings.shape
            j, i = np.mgrid[0 : ny + 1, 0 : nx + 1] + MARGIN
            place.array(memory)[:] = i.ravel(), j.ravel()
        self._show()

    # Data of the run.

    @property
    def screen(self) -> str:
        """All that the library has written to its screen; blank where `isolated` is False."""
        return self._engine.screen()

    @property
    def messages(self) -> list[Message]:
        """All messages of the library; none where `isolated` is False."""
        return messages_in(self.screen)

    # Files of the run.

    def write_record(self, hours: float) -> None:
        """A record of the bed change dataset: the change of the latest step of all domains.

        The first record makes the mesh (.2dm) on which viewers show the dataset.

        Parameters
        ----------
        hours : float
            Time of the record.
        """
        prefix = self._required_output("write_record")
        if not self._has_records:
            for domain in self.domains:
                domain._bring_bed()
            with open(prefix + ".2dm", "w", encoding="ascii") as mesh:
                mesh.write(mesh_text(self._corners(domain) for domain in self.domains))
            self._call(Call("QVMOR_WRSMSF_WRITE_HEADER", (self._name[:34] + "\0",)))
            calls = []
            for domain, place in zip(self.domains, self._points):
                points = (place.plane(0), place.plane(1))
                calls.append(domain._record_calls(self._hours.at, self._counts.at, points))
            flags, values = zip(*calls)
            self._record = self._engine.prepare([*flags, *values])
            self._has_records = True
        self._hours.array(self._engine.memory)[0] = hours
        self._engine.run(self._record)

    def write_check_layer(self) -> None:
        """A layer of all cells with what was read for them, to be looked at over the map."""
        self._required_output("write_check_layer")
        for domain in self.domains:
            domain._write_check_layer()
        self._show()

    def save(self, file: Path) -> None:
        """Saves all that a later run needs to go on bit for bit (.npz)."""
        states = [domain.state() for domain in self.domains]
        arrays = {f"{k}/{name}": a for k, state in enumerate(states) for name, a in state.items()}
        with open(file, "wb") as out:
            np.savez(out, **arrays)

    def load(self, file: Path) -> None:
        """Goes on from where a run of the same domains and options was saved.

        Raises
        ------
        ValueError
            The file belongs to other domains.
        """
        with np.load(file) as arrays:
            states: list[dict[str, Any]] = [{} for _ in self.domains]
            for key in arrays.files:
                number, _, name = key.partition("/")
                if int(number) >= len(states):
                    raise ValueError(f"{os.fspath(file)!r} holds more domains than this run")
                states[int(number)][name] = arrays[key]
        for domain, state in zip(self.domains, states):
            domain.restore(state)

    def close(self) -> None:
        """Completes the files and ends the library's process. Arrays stay readable."""
        if not self._engine.close.alive:
            return
        try:
            if self._has_records:
                self._call(Call("QVMOR_WRSMSF_CLOSE", ()))
            self._show()
        finally:
            self._engine.screen()  # which is kept
            self._engine.close()

    # Details.

    def _call(self, call: Call) -> None:
        self._engine.run(self._engine.prepare([call]))

    def _show(self) -> None:
        if self._echo:
            text = self.screen
            sys.stdout.write(text[self._shown :])
            self._shown = len(text)

    def _required_output(self, what: str) -> str:
        if self._output is None:
            raise ValueError(f"{what} needs a run with an output")
        return self._output

    def _control_file(self, domain: Domain, folder: str) -> str:
        options = domain.settings.options
        if isinstance(options, Mapping):
            path = pathlib.Path(folder, f"options_{domain._number}.mcf")
            path.write_text(control_text(options, folder), encoding="latin-1")
            return str(path)
        given = os.path.abspath(os.fspath(options))
        if not os.path.isfile(given):
            raise FileNotFoundError(f"control file {given!r} does not exist")
        return given

    def _corners(self, domain: Domain) -> tuple[Any, Any, Any]:
        ny, nx = domain.settings.shape
        y, x = np.mgrid[0 : ny + 1, 0 : nx + 1] * float(domain.settings.dx)
        c, s = math.cos(domain.settings.angle), math.sin(domain.settings.angle)
        x0, y0 = domain.settings.origin
        z = -domain.padded("zpts")[MARGIN - 1 : -MARGIN, MARGIN - 1 : -MARGIN]
        return x0 + c * x - s * y, y0 + s * x + c * y, z

    def _plain_metres(self) -> str:
        low = np.full(2, math.inf)
        high = -low
        for domain in self.domains:
            settings = domain.settings
            reach = settings.dx * math.hypot(*settings.shape)
            low = np.minimum(low, np.array(settings.origin) - reach)
            high = np.maximum(high, np.array(settings.origin) + reach)
        bounds = f"({low[0]:.3f},{low[1]:.3f}) ({high[0]:.3f},{high[1]:.3f})"
        return f'CoordSys NonEarth Units "m" Bounds {bounds}'


class Morphology(Domain, _Ended):
    """A run of one domain: the domain itself, with what a run has.

    Parameters
    ----------
    shape : (int, int)
        Cells along y and x, (ny, nx).
    dx : float
        Cell size, m.
    options : mapping, str or path
        Values by commands of the control file, or the path of a control file.
    output, name, coord_sys, isolated, echo, library
        As of `Run`.
    origin, angle, wet_depth, outside, raise_factor
        As of `DomainSettings`.

    Attributes
    ----------
    run : Run
        The run, with its files, messages and screen.

    Examples
    --------
    >>> options = {
    ...     "Set Morphology D50": 2e-4,
    ...     "Morphology Fall Velocity": 0.025,
    ...     "Morphology Current Related Roughness": 0.06,
    ...     "Morphology Reference Level": 0.03,
    ... }
    >>> with Morphology((20, 60), dx=5.0, options=options) as model:
    ...     model.bed = -1.0
    ...     model.water_level = 0.0
    ...     model.u = 0.6
    ...     model.step(600.0)
    """

    def __init__(
        self,
        shape: tuple[int, int],
        dx: float,
        options: Union[Mapping[str, object], Path],
        *,
        origin: tuple[float, float] = (0.0, 0.0),
        angle: float = 0.0,
        output: Optional[Path] = None,
        name: str = "run",
        coord_sys: Optional[str] = None,
        wet_depth: Optional[float] = 0.05,
        outside: Literal["follow", "fixed", "own"] = "follow",
        raise_factor: Optional[float] = None,
        isolated: bool = True,
        echo: bool = False,
        library: Optional[Path] = None,
    ) -> None:
        layout = Layout()
        settings = DomainSettings(
            shape, dx, options, origin, angle, wet_depth, outside, raise_factor
        )
        super().__init__(settings, 1, 1, layout)
        self.run = Run.__new__(Run)
        self.run._start([self], layout, output, name, coord_sys, isolated, echo, library)

    @property
    def messages(self) -> list[Message]:
        """All messages of the library."""
        return self.run.messages

    @property
    def screen(self) -> str:
        """All that the library has written to its screen."""
        return self.run.screen

    def write_record(self, hours: float) -> None:
        """A record of the bed change dataset, see `Run.write_record`."""
        self.run.write_record(hours)

    def write_check_layer(self) -> None:
        """A layer of all cells with what was read for them, see `Run.write_check_layer`."""
        self.run.write_check_layer()

    def save(self, file: Path) -> None:
        """Saves all that a later run needs to go on bit for bit (.npz)."""
        self.run.save(file)

    def load(self, file: Path) -> None:
        """Goes on from where a run of the same shape and options was saved."""
        self.run.load(file)

    def close(self) -> None:
        """Completes the files and ends the library's process. Arrays stay readable."""
        self.run.close()
