#!/usr/bin/env python3
"""What only a whole process shows: how a run ends, what stands on the console, what is on the disk.

Usage: process_test.py SCENARIO_HOST RESTART_HOST
       process_test.py UNDER_WINE SCENARIO_HOST RESTART_HOST
"""
import os
import pathlib
import signal
import struct
import subprocess
import sys
import time
import unittest

sys.path.append(str(pathlib.Path(__file__).resolve().parents[1] / "support"))
from program_test import ProgramTest  # noqa: E402

HOST = RESTART_HOST = None  # commands: under Wine a launcher comes first
IS_WINDOWS = False
LINE_END = b"\n"
HEADER_BYTES = 15 * 4 + 40
RECORD_BYTES = 4 + 1 + 4 + 30 + 6 * 4


class ProcessTest(ProgramTest):
    def setUp(self):
        super().setUp()
        self.set_run(self.folder / "run")

    def set_run(self, run):
        self.run_files = str(run)
        self.prefix = self.name(run)

    # A file as the host names it.
    def name(self, path):
        return "Z:" + str(path).replace("/", "\\") if IS_WINDOWS else str(path)

    def run_host(self, scenario, *arguments, answers="", environment=None):
        return subprocess.run([*HOST, scenario, self.prefix, *arguments], input=answers,
                              stdout=subprocess.PIPE, text=True, timeout=60,
                              env=os.environ | (environment or {}))

    def write(self, name, content):
        return self.name(super().write(name, content))

    def read(self, suffix):
        return pathlib.Path(self.run_files + suffix).read_bytes()

    def test_exits_before_start_up_neither_waits_nor_fails(self):
        run = self.run_host("exits_first")
        self.assertTrue(run.stdout.endswith("\n\nPROCESS EXITING WITHOUT PROMPT\n\n"), run.stdout)
        self.assertEqual(run.returncode, 0)

    def test_exits_waits_for_enter_and_ends_with_code_1(self):
        host = subprocess.Popen([*HOST, "exits", self.prefix], stdin=subprocess.PIPE,
                                stdout=subprocess.PIPE, text=True)
        output = ""
        while not output.endswith("\nPress Enter to Close"):
            output += host.stdout.read(1) or self.fail(output)
        self.assertIsNone(host.poll())
        rest, _ = host.communicate("\n", timeout=60)
        self.assertEqual(host.returncode, 1)
        self.assertNotIn("host goes on", rest)

    def test_exits_does_not_wait_for_ever_without_standard_input(self):
        self.assertEqual(self.run_host("exits").returncode, 1)
        closed = subprocess.run([*HOST, "exits", self.prefix], stdout=subprocess.DEVNULL, timeout=60,
                                preexec_fn=lambda: os.close(0))
        self.assertEqual(closed.returncode, 1)

    def test_missing_control_file_is_asked_for_until_it_is_there(self):
        other = self.write("other.mcf", "Slump Slope == 2\n")
        run = self.run_host("control_file", "missing.mcf", answers=f"\n{other}\n")
        self.assertIn('CHECK 0008 - "missing.mcf" cannot be found or opened.\n', run.stdout)
        self.assertIn("No file name entered.  Trying file again...", run.stdout)
        self.assertIn("host goes on", run.stdout)
        self.assertEqual(run.returncode, 7)

    def test_unanswered_question_ends_the_run_in_order(self):
        run = self.run_host("control_file", "missing.mcf")
        self.assertIn("Check file exists and press enter or enter another file name: ", run.stdout)
        self.assertNotIn("host goes on", run.stdout)
        self.assertEqual(run.returncode, 1)
        self.assertIn(b"NIVARO MORPHOLOGY", self.read(".mlf"))

    def test_bad_control_file_ends_the_run_with_its_message_in_the_log(self):
        control = self.write("bad.mcf", "Slump Slope == steep\n")
        run = self.run_host("control_file", control, answers="\n")
        self.assertEqual(run.returncode, 1)
        self.assertIn(b"ERROR - Reading parameter(s)", self.read(".mlf"))
        self.assertIn(b"Slump Slope == steep", self.read(".mlf"))

    def test_normal_end_leaves_every_file_whole(self):
        run = self.run_host("run", self.write("run.mcf", "Slump Slope == 2\n"))
        self.assertEqual(run.returncode, 7)
        dataset = self.read("_morDH.dat")
        self.assertEqual(len(dataset), HEADER_BYTES + 3 * RECORD_BYTES + 4)
        for record in range(3):
            card, status, hours = struct.unpack_from(
                "<ibf", dataset, HEADER_BYTES + record * RECORD_BYTES)
            self.assertEqual((card, status, hours), (200, 1, float(record)))
        self.assertEqual(struct.unpack("<i", dataset[-4:])[0], 210)
        self.assertEqual(self.read(".mlf").count(b"one more record" + LINE_END), 3)

    def test_killed_host_loses_no_record_and_no_line(self):
        control = self.write("run.mcf", "")
        host = subprocess.Popen([*HOST, "endless", self.prefix, control],
                                stdin=subprocess.DEVNULL, stdout=subprocess.PIPE)
        for line in host.stdout:
            if line == b"one more record" + LINE_END:
                break
        time.sleep(0.05)
        host.send_signal(signal.SIGKILL)
        host.wait(timeout=60)
        shown = 1 + host.stdout.read().count(b"one more record" + LINE_END)
        host.stdout.close()
        dataset, log = self.read("_morDH.dat"), self.read(".mlf")
        self.assertGreaterEqual((len(dataset) - HEADER_BYTES) // RECORD_BYTES, shown)
        # The last line may have reached the screen, which comes first, and not yet the log.
        self.assertGreaterEqual(log.count(b"one more record" + LINE_END), shown - 1)
        self.assertTrue(log.endswith(LINE_END))

    def test_environment_chooses_the_format_of_the_messages_layers(self):
        control = self.write("run.mcf", "Slump Slope == 2\n")
        self.run_host("everything", control, environment={"NIVARO_MESSAGE_LAYERS": "shp"})
        self.assertEqual(len(self.read("_messages_P.shx")), 100 + 20 * 8)
        self.assertIn(b"run_messages_P.shp</datasource>", self.read("_messages.qgs"))
        self.assertFalse(os.path.exists(self.run_files + "_messages.mif"))

    def test_output_folder_is_made_without_a_shell(self):
        self.set_run(self.folder / "a; touch b" / "$(c)" / "run")
        self.assertEqual(self.run_host("run", self.write("run.mcf", "")).returncode, 7)
        self.assertTrue(pathlib.Path(self.run_files + ".mlf").exists())
        self.assertFalse((self.folder / "b").exists())

    def restart(self, prefix, steps, *state_in):
        """State and dataset of a run of the restart host, which goes on from a state or begins."""
        sand = ("Morphology Fall Velocity == 0.02\nMorphology Current Related Roughness == 0.05\n"
                "Morphology Reference Level == 0.02\nMorphology Mixing Layer Thickness == 0.02\n"
                "Set Morphology Bed Limit Elevation == -1.2\n")
        self.write("1.mcf", sand)
        self.write("2.mcf", sand + "Slump Slope == 3\n")
        # From the root of the drive on, these names mean the same to all systems.
        files = [self.folder / "1.mcf", self.folder / "2.mcf"]
        state = self.folder / (prefix + ".state")
        run = subprocess.run([*RESTART_HOST, self.folder / prefix, *files, str(steps),
                              state, *state_in], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                             text=True, timeout=60)
        self.assertEqual(run.returncode, 0, run.stdout)
        return state, (self.folder / (prefix + "_morDH.dat")).read_bytes()[100:-4]

    def test_restored_run_goes_on_bit_for_bit(self):
        whole, records = self.restart("whole", 12)
        first, first_records = self.restart("first", 6)
        second, second_records = self.restart("second", 6, first)
        self.assertEqual(second.read_bytes(), whole.read_bytes())
        self.assertEqual(first_records + second_records, records)
        self.assertNotEqual(first.read_bytes(), whole.read_bytes())


if __name__ == "__main__":
    programs = [os.path.abspath(argument) for argument in sys.argv[1:]]
    if len(programs) == 3:
        IS_WINDOWS, LINE_END = True, b"\r\n"
        launcher, host, restart_host = programs
        HOST, RESTART_HOST = [launcher, host], [launcher, restart_host]
    else:
        HOST, RESTART_HOST = ([program] for program in programs)
    unittest.main(argv=sys.argv[:1])
