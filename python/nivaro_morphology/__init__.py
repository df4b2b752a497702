"""NIVARO Morphology for numpy: sand transport and bed evolution for 2D hydraulic models.

`Morphology` is a run of one domain, `Run` one of several. What ends a run raises `MorphologyError`.
`grids` brings velocities and depths of other grids to the places where a domain wants them, `abi` has
the library's routines as they are. docs/python.md goes through it with an example.
"""

from . import grids
from .domain import Domain, DomainSettings
from .errors import MorphologyError
from .library import find_library
from .messages import Message
from .run import Morphology, Run

__all__ = [
    "Domain",
    "DomainSettings",
    "Message",
    "Morphology",
    "MorphologyError",
    "Run",
    "find_library",
    "grids",
]
