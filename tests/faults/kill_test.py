#!/usr/bin/env python3
"""Hosts that are killed at random moments leave every record, message and line that they were told is
written, and files that readers take.

Usage: kill_test.py SCENARIO_HOST MORPHOLOGY_HOST [KILLS]
"""
import os
import pathlib
import random
import struct
import subprocess
import sys
import time
import unittest
from xml.etree import ElementTree

import result_files

sys.path.append(str(pathlib.Path(__file__).resolve().parents[1] / "support"))
from program_test import SAND, ProgramTest  # noqa: E402

SCENARIO_HOST = MORPHOLOGY_HOST = None
KILLS = 20  # of each host
# A hump in a flume, with a time record of each of 400 steps. It wears down to the bed limit, which
# makes messages.
CASE = """name = "run"
grid = { columns = 60, rows = 5, cell_size = 0.1 }
bed = { level = 0.0, box = [{ x = [1.0, 2.0], y = [0.0, 0.5], height = 0.05 }] }
roughness = { height = 0.025 }
boundary = { west = { discharge = 0.09945 }, east = { level = 0.39 } }
initial = { depth = 0.39, discharge = [0.1989, 0.0] }
messages = { label_height = 0.1, label_width = 1.0, spacing = 0.2 }
morphology = { control_file = "case.mcf" }
[time]
duration_h = 4.0
morphology_step_s = 36.0
output_every_h = 0.01
acceleration = 2000
spin_up_s = 1.0
"""


class KillTest(ProgramTest):
    random = random.Random(1)

    def kill_after(self, seconds, *command, first_line=False):
        """What a host said on standard error until it was killed, so long after its start or after
        its first line; it may have ended before."""
        host = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                stderr=subprocess.PIPE,
                                env=os.environ | {"NIVARO_MESSAGE_LAYERS": "both"})
        said = host.stderr.readline() if first_line else b""
        time.sleep(seconds)
        host.kill()
        said += host.stderr.read()
        host.stderr.close()
        host.wait(timeout=60)
        return said

    def check_log(self, prefix):
        with open(prefix + ".mlf", "rb") as file:
            log = file.read()
        self.assertTrue(log == b"" or log.endswith(b"\n"), log[-200:])
        return log.splitlines()

    def test_host_that_is_told_what_is_written(self):
        control = self.write("control.mcf", "Slump Slope == 2\n")
        prefix = str(self.folder / "run")
        for kill in range(KILLS):
            said = self.kill_after(self.random.uniform(0, 0.1), SCENARIO_HOST,
                                   "everything_endless", prefix, control, first_line=True)
            told = said.count(b"\n")
            log = self.check_log(prefix)
            records = result_files.dataset_records(prefix)
            messages = result_files.mif_objects(prefix + "_messages")
            self.assertGreaterEqual(min(len(records), len(messages)), told, kill)
            self.assertIn(b"XY: WARNING 2000 - scour number %d" % (told - 1), log)
            for number, (label, record) in enumerate(messages[:told]):
                self.assertIn(f'"WARNING 2000 - scour number {number}"\n', label)
                self.assertRegex(record, rf'^"WARNING 2000 - scour number {number}","http')
            self.assertEqual(len(result_files.mif_objects(prefix + "_mor_check")), 12)
            points = result_files.shapes(prefix + "_messages_P")
            self.assertGreaterEqual(len(points), told, kill)
            for number, (point, record) in enumerate(points):
                self.assertEqual(struct.unpack("<idd", point), (1, 10.0 + number, 20.0))
                self.assertRegex(record, b"^ WARNING 2000 - scour number %d  .*https:" % number)
            project = ElementTree.parse(prefix + "_messages.qgs").getroot()
            self.assertEqual([layer.text for layer in project.iter("datasource")],
                             [prefix + "_messages.mif", prefix + "_messages_P.shp"])

    def test_example_host(self):
        self.write("case.mcf", SAND + "Set Morphology Bed Limit Elevation == -0.01\n")
        self.write("case.toml", CASE)

        def run_for(seconds, out):
            self.kill_after(seconds, MORPHOLOGY_HOST, self.folder, "--out", self.folder / out)
            return str(self.folder / out / "run")

        start = time.monotonic()
        subprocess.run([MORPHOLOGY_HOST, self.folder, "--out", self.folder / "whole"], check=True,
                       stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, timeout=60)
        duration = time.monotonic() - start
        whole = str(self.folder / "whole" / "run")
        records = result_files.dataset_records(whole)
        messages = result_files.mif_objects(whole + "_messages")
        self.assertEqual(len(records), 401)
        self.assertGreater(len(messages), 3)

        for kill in range(KILLS):
            prefix = run_for(self.random.uniform(0, duration), f"{kill:05}")
            if not os.path.exists(prefix + "_mor_check.mid"):
                continue
            log = self.check_log(prefix)
            # The host's own table has the rows of a time before the module is given its record.
            times = set()
            if os.path.exists(prefix + "_profile.csv"):
                with open(prefix + "_profile.csv") as file:
                    times = {line.split(",")[0] for line in file.read().splitlines()[1:]}
            held = result_files.dataset_records(prefix)
            self.assertGreaterEqual(len(held), len(times) - 2, kill)
            self.assertEqual(held, records[:len(held)], kill)
            located = sum(line.startswith(b"XY: ") for line in log)
            if located:
                placed = result_files.mif_objects(prefix + "_messages")
                self.assertGreaterEqual(len(placed), located, kill)
                shapes = result_files.shapes(prefix + "_messages_P")
                self.assertGreaterEqual(len(shapes), located, kill)
                # The first message names the log.
                self.assertEqual(repr(placed[:located]).replace(f"/{kill:05}/", "/whole/"),
                                 repr(messages[:located]), kill)
            result_files.mif_objects(prefix + "_mor_check")


if __name__ == "__main__":
    SCENARIO_HOST, MORPHOLOGY_HOST = map(os.path.abspath, sys.argv[1:3])
    KILLS = int(sys.argv[3]) if len(sys.argv) > 3 else KILLS
    unittest.main(argv=sys.argv[:1])
