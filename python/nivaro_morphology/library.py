"""Where the shared library is."""

from __future__ import annotations

import ctypes
import os
import pathlib

#: Environment variable that names the library's file.
VARIABLE = "NIVARO_MORPHOLOGY_LIBRARY"

_NAMES = (
    ["nivaro_morphology.dll"]
    if os.name == "nt"
    else ["libnivaro_morphology.so.1", "libnivaro_morphology.so"]
)

_HELP = f"""The library of NIVARO Morphology was not found. Either
- install its package (docs/install.md), so that the system's loader finds {_NAMES[0]}, or
- build it, and name its file: export {VARIABLE}=build/release/{_NAMES[-1]}"""


def find_library() -> str:
    """The library's file, or its name for the system's loader.

    It is looked for in the package itself, then in the environment variable
    NIVARO_MORPHOLOGY_LIBRARY, then by the system's loader.

    Raises
    ------
    ImportError
        There is none; the text says how to get it.
    """
    for name in _NAMES:
        own = pathlib.Path(__file__).with_name(name)
        if own.exists():
            return str(own)
    named = os.environ.get(VARIABLE)
    if named:
        if not os.path.exists(named):
            raise ImportError(f"{VARIABLE} names {named!r}, which does not exist")
        return os.path.abspath(named)
    for name in _NAMES:
        if _can_load(name):
            return name
    raise ImportError(_HELP)


def _can_load(name: str) -> bool:
    # Loading begins nothing: the library starts with its first call.
    try:
        ctypes.CDLL(name)
    except OSError:
        return False
    return True
