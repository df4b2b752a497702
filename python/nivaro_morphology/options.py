"""Options of the control file, from and to Python values."""

from __future__ import annotations

import os
import re
from typing import Mapping, Union

Value = Union[str, bool, float]

# In the library's order: a command is the first of these that is found anywhere in it.
_DEFAULTS: dict[str, Value] = {
    "Erosion Method": "VANRIJN89",
    "Deposition Method": "EYESINKVERMAAS",
    "Fall Velocity": 0.0,
    "Current Related Roughness": 0.0,
    "Wave Related Roughness": 0.0,
    "Mixing Layer Thickness": 0.0,
    "Reference Level": 0.0,
    "Mixing Coefficient": 1.05,
    "Cell Sides High": False,
    "Velocity Centred": False,
    "Sand Grain Density": 2650.0,
    "Water Density": 1000.0,
    "Slump Slope": 1.0,
    "Time Centreing Factor": 0.5,
    "Slump Bed Change Limit": 0.1,
    "Bed Change Limit": 0.1,
    "Concentration Factor": 1.0,
}

_FIELDS = ("D50", "D90", "INSITU VOIDS", "DEPOSITION VOIDS", "BED LIMIT", "BED CODE")

# What a run hardly means to leave at 0.
_NEEDED = ("Fall Velocity", "Current Related Roughness", "Reference Level")

_NUMBER = re.compile(r"[-+]?(?:\d+\.?\d*|\.\d+)(?:[eEdD][-+]?\d+)?")


def control_text(options: Mapping[str, object], folder: str) -> str:
    """The lines of a control file for options given as a mapping.

    Parameters
    ----------
    options : mapping
        Values by commands of the control file (docs/user-guide.md), such as
        ``{"Set Morphology D50": 2e-4, "Cell Sides High": False}``, in the order in which they are to
        be read. Paths of files count from the current folder.
    folder : str
        Folder of the control file.

    Raises
    ------
    ValueError
        A command that the library would pass over without a message, or a text that it would cut.
    """
    lines = []
    for command, value in options.items():
        upper = command.upper()
        if ("SET" in upper or "READ MI" in upper) and _option_in(upper) is None:
            if "MORPHOLOGY" not in upper or not any(name in upper for name in _FIELDS):
                raise ValueError(f"{command!r} sets none of {', '.join(_FIELDS)}")
        if "READ " in upper:
            # The library knows no absolute paths but those of Windows.
            text = os.path.relpath(os.fspath(value), folder)  # type: ignore[call-overload]
        elif isinstance(value, str):
            text = value
        elif str(value) in ("True", "False"):  # of numpy too
            text = "ON" if value else "OFF"
        else:
            text = repr(float(value))  # type: ignore[arg-type]
        line = f"{command} == {text}"
        if re.search(r"[!#\r\n]", line) or len(command) > 60 or len(line) > 1000:
            raise ValueError(f"{line!r} cannot stand in a control file")
        lines.append(line + "\n")
    return "".join(lines)


def options_in_force(control_file: str) -> dict[str, Value]:
    """What a control file and the files that it reads set, and the defaults of all other options.

    Parameters
    ----------
    control_file : str
        A file that the library has read without ending the run.

    Returns
    -------
    dict
        Numbers in SI units, switches and methods by the names of the user guide.
    """
    options = dict(_DEFAULTS)
    _read(control_file, os.path.dirname(control_file), options)
    return options


def zeros_among(options: Mapping[str, Value]) -> list[str]:
    """Names of the options that are 0 and spoil a run so, of which the library does not tell."""
    return [name for name in _NEEDED if options.get(name) == 0]


def _option_in(upper_command: str) -> Union[str, None]:
    return next((name for name in _DEFAULTS if name.upper() in upper_command), None)


def _read(path: str, folder: str, options: dict[str, Value]) -> None:
    with open(path, encoding="latin-1") as file:
        for line in file:
            command, separator, value = re.split("[!#]", line)[0].partition("==")
            upper, value = command.replace("\t", "").upper()[:60], value.strip()
            name = _option_in(upper)
            if not separator:
                continue
            if "READ FILE" in upper:
                _read(folder + "/" + value.replace("\\", "/"), folder, options)
            elif name is None or isinstance(_DEFAULTS[name], str):
                continue
            elif isinstance(_DEFAULTS[name], bool):
                options[name] = "ON" in value.upper()
            else:
                number = _NUMBER.match(value)  # none: AUTO, which leaves what was there
                if number:
                    options[name] = float(number[0].upper().replace("D", "E"))
