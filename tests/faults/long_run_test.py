#!/usr/bin/env python3
"""Very long runs hold the same memory and the same open files all along, and their beds stay beds.

Usage: long_run_test.py LONG_RUN_HOST [STEPS ROUNDS]
"""
import os
import pathlib
import subprocess
import sys
import unittest

sys.path.append(str(pathlib.Path(__file__).resolve().parents[1] / "support"))
from program_test import SAND, ProgramTest  # noqa: E402

LONG_RUN_HOST = None
STEPS, ROUNDS = 40_000, 10_000
DEPTH, TRENCH = 0.39, 0.15  # of the host's flume, m


class LongRunTest(ProgramTest):
    def run_host(self, what, control, count):
        run = subprocess.run([LONG_RUN_HOST, what, str(self.folder / "run"), control, str(count)],
                             stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                             stderr=subprocess.PIPE, text=True)
        self.assertEqual(run.returncode, 7, run.stderr)
        told = {name: float(value) for name, value in map(str.split, run.stderr.splitlines())}
        print(what, count, told)
        self.assertEqual(told["files_end"], told["files_half"])
        self.assertLess(told["memory_end"] - told["memory_half"], 128)
        return told

    def test_steps(self):
        limit = 0.6
        control = self.write("trench.mcf", SAND + f"Set Morphology Bed Limit Elevation == -{limit}\n")
        told = self.run_host("steps", control, STEPS)
        # Nothing is piled up out of the water, and a cell at its limit loses no more than what its bed
        # load takes beyond it.
        self.assertGreater(told["low"], 0.5 * DEPTH)
        self.assertLess(told["high"], limit + DEPTH)

    def test_slopes_that_collapse_in_still_water(self):
        limit = 0.001
        control = self.write("mound.mcf",
                             SAND + f"Slump Slope == 3\nSlump Bed Change Limit == {limit}\n")
        told = self.run_host("collapse", control, STEPS // 4)
        # A slump gives one cell what it takes from another: the sum changes by rounding alone.
        self.assertLess(abs(told["volume_after"] - told["volume_before"]),
                        1e-12 * told["volume_before"])
        # The mound sinks and its surroundings rise, by four neighbours' limits too much at most.
        self.assertGreater(told["low"], DEPTH - TRENCH - 4 * limit)
        self.assertLess(told["high"], DEPTH + 4 * limit)

    def test_control_files_and_layers_read_again_and_again(self):
        self.write("square.mid", "0.0002\n")
        self.write("square.mif", 'Version 300\nDelimiter ","\nColumns 1\n a Float\nData\n'
                                 "Region 1\n 4\n0 0\n4 0\n4 4\n0 4\n")
        self.write("table.mid", "1,1,0.0003\n")
        self.write("inner.mcf", SAND + "Read MI Morphology D50 == square\n")
        self.write("middle.mcf", "Read File == inner.mcf\nRead MID Morphology D90 == table.mid\n")
        self.run_host("rounds", self.write("outer.mcf", "Read File == middle.mcf\n"), ROUNDS)


if __name__ == "__main__":
    LONG_RUN_HOST = os.path.abspath(sys.argv[1])
    if len(sys.argv) == 4:
        STEPS, ROUNDS = map(int, sys.argv[2:])
    unittest.main(argv=sys.argv[:1])
