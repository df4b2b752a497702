#!/usr/bin/env python3
"""The promises of docs/validation.md that seconds can check. Usage: promises.py LIBRARY"""
import pathlib
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "examples" / "validation"))
import plane_host  # noqa: E402, first: it knows where the other hosts are
import capacity  # noqa: E402
import cone  # noqa: E402
import line_host  # noqa: E402
import settling  # noqa: E402
import slope  # noqa: E402
import uniform  # noqa: E402

ROUNDING = 1e-12  # of levels of metres, over some hundred steps


class Promises(unittest.TestCase):
    def test_uniform_flow_changes_nothing(self):
        for name, direction in uniform.DIRECTIONS.items():
            for fall in (0.0, uniform.SLOPE):
                self.assertLess(uniform.largest_changes(direction, fall, (100,))[0], ROUNDING, name)

    def test_a_collapsed_heap_keeps_its_volume_and_has_the_set_slope(self):
        before, after = slope.heap(2, 0.1, 500)

        self.assertLess(slope.volume_error(before, after), ROUNDING)
        self.assertAlmostEqual(slope.steepest(after), 1 / 2, 9)

    def test_a_dune_is_symmetric_whatever_the_direction_of_the_flow(self):
        for group in cone.GROUPS.values():
            beds, differences = cone.symmetry(group, 50)
            for name, pair in zip(beds, differences):
                self.assertGreater(abs(beds[name] - cone.dune()[1:-1, 1:-1]).max(), 0.01, name)
                self.assertLess(max(pair), ROUNDING, name)

    def test_without_capacity_a_suspension_decays_by_the_concentration_factor(self):
        self.assertAlmostEqual(settling.decay_number(*settling.without_capacity(1.5, 0.5)), 1.5, 9)

    def test_capacities_are_those_of_the_formulas(self):
        for depth, speed in ((2, 1), (0.5, 0.8), (8, 1.5)):
            for module, hand in zip(line_host.capacity(depth, speed),
                                    capacity.transport(depth, speed, **capacity.RIVER)):
                self.assertAlmostEqual(module / hand, 1, 6)


if __name__ == "__main__":
    line_host.load(sys.argv.pop())
    unittest.main()
