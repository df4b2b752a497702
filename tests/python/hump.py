"""The smallest host, in Python: a hump of sand in a channel, as in examples/minimal."""
from __future__ import annotations

import pathlib
from typing import Any, Iterator

import numpy as np

import nivaro_morphology as nm

CONTROL_FILE = pathlib.Path(__file__).resolve().parents[2] / "examples/minimal/hump.mcf"
SHAPE = (18, 58)
OPTIONS = {
    "Set Morphology D50": 0.0002,
    "Set Morphology D90": 0.0003,
    "Morphology Fall Velocity": 0.025,
    "Morphology Current Related Roughness": 0.06,
    "Morphology Reference Level": 0.03,
    "Morphology Mixing Layer Thickness": 0.03,
}


def settings(**more: Any) -> nm.DomainSettings:
    return nm.DomainSettings(
        **{"shape": SHAPE, "dx": 5.0, "options": OPTIONS} | {"outside": "fixed"} | more
    )


def start() -> np.ndarray[Any, Any]:
    """The bed of the start."""
    i, j = np.arange(2, 60), np.arange(2, 20)[:, None]
    steps = np.minimum(np.minimum(i - 15, 32 - i), np.minimum(j - 4, 17 - j)).clip(0, 6)
    return -(20 - steps) / 20.0


def velocity(bed: np.ndarray[Any, Any]) -> np.ndarray[Any, Any]:
    """A steady discharge along x."""
    depth = np.ones((SHAPE[0], SHAPE[1] + 1))
    depth[:, 1:-1] = -0.5 * (bed[:, :-1] + bed[:, 1:])
    return 0.6 / depth


def fill(domain: nm.Domain) -> None:
    domain.bed, domain.water_level = start(), 0.0


def steps(domain: nm.Domain, count: int = 24) -> Iterator[int]:
    for k in range(count):
        domain.u = velocity(domain.bed)
        domain.step(600.0)
        yield k


def bed(count: int = 24, **more: Any) -> np.ndarray[Any, Any]:
    with nm.Morphology(SHAPE, 5.0, CONTROL_FILE, outside="fixed", **more) as model:
        fill(model)
        for _ in steps(model, count):
            pass
        if "output" in more:
            model.write_check_layer()
    return model.bed
