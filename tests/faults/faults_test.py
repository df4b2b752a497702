#!/usr/bin/env python3
"""What a run leaves and says when the machine fails it: each file that it has open fails at every
place in turn, memory runs out, standard streams are closed. What the host was told is written must be
there afterwards, to strict readers.

Usage: faults_test.py SHIM SCENARIO_HOST LONG_RUN_HOST [--every]
--every tries each byte of each file, and not only some.
"""
import errno
import os
import pathlib
import resource
import subprocess
import sys
import time
import unittest

import result_files

sys.path.append(str(pathlib.Path(__file__).resolve().parents[1] / "support"))
from program_test import ProgramTest  # noqa: E402

SHIM = SCENARIO_HOST = LONG_RUN_HOST = None
EVERY = False
DONE = 7  # exit code of a host whose run came to its end
EMPTY_LAYER = 'Version 300\nDelimiter ","\nColumns 1\n a Float\nData\n'

NO_HEADER = "ERROR 0412 - Could not write header of GIS layer file"
SHAPE = [NO_HEADER, 'ERROR 0439 - Writing .shp file object coordinates.\nFile "{file}": {reason}']
CANNOT_WRITE = 'ERROR - Could not write file "{file}": {reason}.'
# What a write error of each file makes of a run: the message that ends it (one of them), or that it
# goes on.
EVERYTHING = {
    ".mlf": None,
    "_mor.wor": [CANNOT_WRITE],
    "_morDH.dat": [CANNOT_WRITE],
    "_mor_check.mif": [CANNOT_WRITE],
    "_mor_check.mid": [CANNOT_WRITE],
    "_messages.mif": [NO_HEADER, "ERROR 0439 - Writing .mif file object coordinates."],
    "_messages.mid": ["ERROR 0254 - Failed to write attribute data record for a message"],
    "_messages_P.shp": SHAPE,
    "_messages_P.shx": SHAPE,
    "_messages_P.dbf": [NO_HEADER, 'ERROR 0417 - Writing .dbf record.\nFile "{file}": {reason}'],
    "_messages.qgs": ['ERROR 0437 - Could not write QGIS project file "{file}".'],
}


class Run:
    """A run of a host in a folder of its own, disturbed by the shim."""

    def __init__(self, folder, host, *arguments, standard_input=subprocess.DEVNULL,
                 standard_output=subprocess.PIPE, limit=None, layers="both", **faults):
        self.folder = folder
        self.prefix = str(folder / "run")
        environment = os.environ | {"NIVARO_MESSAGE_LAYERS": layers}
        environment |= {"FAULT_" + name.upper(): str(value) for name, value in faults.items()}
        if faults:
            # The loader takes a blank in a path for its end.
            shim = folder / "fault_shim.so"
            if not shim.is_symlink():
                shim.symlink_to(os.path.abspath(SHIM))
            environment["LD_PRELOAD"] = "./" + shim.name
        command = [host, *arguments[:1], self.prefix, *arguments[1:]]
        answers = {"stdin": standard_input}
        if isinstance(standard_input, bytes):
            answers = {"input": standard_input}
        run = subprocess.run(command, **answers, stdout=standard_output, stderr=subprocess.PIPE,
                             timeout=30, env=environment, cwd=folder, preexec_fn=limit)
        self.code, self.shown = run.returncode, (run.stdout or b"").decode(errors="replace")
        told = run.stderr.decode().split()
        self.reported = int(told[-1]) if told and told[-1].isdigit() else 0

    def holds(self):
        """For each kind of result the list of what is there."""
        found = {}
        for path in sorted(self.folder.glob("run*")):
            base = str(path)[:-4]
            if path.suffix == ".mif":
                found[path.name] = result_files.mif_objects(base)
            elif path.suffix == ".shp":
                found[path.name] = result_files.shapes(base)
            elif path.suffix == ".mlf":
                found[path.name] = result_files.log_lines(self.prefix)
            elif path.suffix == ".dat":
                found[path.name] = result_files.dataset_records(self.prefix)
        return found


class FaultsTest(ProgramTest):
    def setUp(self):
        super().setUp()
        self.control = self.write("control.mcf", "Slump Slope == 2\n")
        self.runs = 0

    def run_host(self, *command, code=None, **more):
        """A run in a new folder, which ends with this code."""
        self.runs += 1
        folder = self.folder / f"{self.runs:05}"  # a project file holds its own path: one length
        folder.mkdir()
        run = Run(folder, *command, **more)
        if code is not None:
            self.assertEqual(run.code, code, run.shown[-800:])
        return run

    def run_everything(self, **more):
        return self.run_host(SCENARIO_HOST, "everything", self.control, **more)

    def whole(self):
        return self.run_everything(code=DONE).holds()

    def check_held(self, run, whole, but=None):
        """What the undisturbed run holds is there, as far as it was reported to be."""
        held = run.holds()
        for name, pieces in whole.items():
            due = run.reported if run.code != DONE else len(pieces)
            if "check" in name and run.reported:
                due = len(pieces)  # a check layer is complete before the first report
            if name.endswith(".mlf") and run.code != DONE:
                last = f"number {run.reported - 1}".encode()
                due = max((i + 1 for i, line in enumerate(pieces) if line.endswith(last)), default=0)
            if name == but:
                due = 0
            self.assertEqual(held.get(name, [])[:due], pieces[:due], name)


class WriteFaults(FaultsTest):
    def places(self, size):
        if EVERY:
            return range(size + 1)
        # No file repeats itself every 11 bytes, so these are places of all kinds.
        step = 11 if size < 600 else size // 11
        return sorted({*range(0, size, step), 1, 2, size - 1, size})

    def test_disk_that_fails_under_any_file_of_a_run(self):
        whole_run = self.run_everything(code=DONE)
        whole = whole_run.holds()
        for suffix, messages in EVERYTHING.items():
            size = os.path.getsize(whole_run.prefix + suffix)
            faults = [(call, error, place) for place in self.places(size)
                      for call, error in (("size", errno.ENOSPC), ("write", errno.EIO))]
            for call, error, place in [*faults, ("size", 0, size // 2)]:
                with self.subTest(file=suffix, call=call, error=error, place=place):
                    run = self.run_everything(file="run" + suffix, call=call, at=place,
                                              errno=error)
                    if messages is None or (place == size and call == "size"):
                        self.assertEqual(run.code, DONE, run.shown)
                    # Bytes are written over: more of them are written than there are.
                    if run.code == DONE:
                        self.check_held(run, whole, but="run" + suffix if place < size else None)
                    else:
                        self.check_ended(run, [text.format(file=run.prefix + suffix,
                                                           reason=os.strerror(error or errno.EIO))
                                               for text in messages])
                        self.check_held(run, whole)

    def check_ended(self, run, messages):
        self.assertEqual(run.code, 1, run.shown)
        self.assertTrue(any(text in run.shown for text in messages), run.shown[-800:])
        self.assertEqual(run.shown.count("ERROR"), 1, run.shown[-800:])
        self.assertTrue(run.shown.endswith("\nPress Enter to Close\n"), run.shown[-300:])
        log = pathlib.Path(run.prefix + ".mlf")
        if log.exists():
            self.assertTrue(any(text in log.read_text() for text in messages))

    def test_log_goes_on_when_the_disk_has_room_again(self):
        whole = self.run_everything()
        lines = result_files.log_lines(whole.prefix)
        for place in self.places(os.path.getsize(whole.prefix + ".mlf"))[:-1]:
            run = self.run_everything(file="run.mlf", call="size", at=place, errno=errno.ENOSPC,
                                      times=1, code=DONE)
            held = result_files.log_lines(run.prefix)
            lost = [line for line in lines if line not in held]
            self.assertLessEqual(len(lost), 1, place)

    def test_file_size_limit_is_a_full_disk_and_no_signal(self):
        whole = self.whole()
        for limit in (0, 300, 1000, 2000, 4000):
            with self.subTest(limit=limit):
                run = self.run_everything(code=1, limit=lambda: resource.setrlimit(
                    resource.RLIMIT_FSIZE, (limit, limit)))
                self.assertIn("ERROR", run.shown)
                self.check_held(run, whole, but="run.mlf")

    def test_writes_in_pieces_and_interrupted_leave_the_same_bytes(self):
        whole = self.run_everything()
        for suffix in EVERYTHING:
            run = self.run_everything(file="run" + suffix, piece=3, code=DONE)
            bytes_of = [pathlib.Path(r.prefix + suffix).read_bytes() for r in (whole, run)]
            same_folder = bytes_of[1].replace(run.folder.name.encode(), whole.folder.name.encode())
            self.assertEqual(same_folder, bytes_of[0], suffix)

    def test_file_that_cannot_be_opened_is_waited_for(self):
        whole = self.whole()
        for suffix in EVERYTHING:
            for error in (errno.EACCES, errno.EMFILE, errno.ENOSPC):
                with self.subTest(file=suffix, error=error):
                    fault = {"file": "run" + suffix, "call": "open", "errno": error}
                    once = self.run_everything(times=1, code=DONE, **fault)
                    self.assertIn("...Can't Open: " + once.prefix + suffix, once.shown)
                    self.check_held(once, whole)
                    always = self.run_everything(standard_input=b"\n\n", code=1, **fault)
                    self.assertGreaterEqual(always.shown.count(" Another application or user"), 2)
                    self.assertIn("nobody can answer: Press Enter to Continue", always.shown)
                    self.check_held(always, whole)
            interrupted = self.run_everything(file="run" + suffix, call="open", errno=errno.EINTR,
                                              times=3)
            self.assertNotIn("Can't", interrupted.shown)
            self.check_held(interrupted, whole)

    def test_input_that_cannot_be_read_is_not_taken_for_one_that_has_ended(self):
        square = "Region 1\n 4\n0 0\n4 0\n4 4\n0 4\n    Pen (1,2,0)\n"
        self.write("layer.mif", EMPTY_LAYER + 3 * square)
        self.write("layer.mid", "1\n2\n3\n")
        self.write("table.mid", "1,1,0.5\n2,2,0.7\n")
        self.write("nested.mcf", "Slump Slope == 2\n" * 3)
        control = self.write("inputs.mcf", "Read MI Morphology D50 == layer\n"
                             "Read MID Morphology D90 == table.mid\nRead File == nested.mcf\n")
        command = [SCENARIO_HOST, "control_file", control]
        self.run_host(*command, code=DONE)
        for name in ("inputs.mcf", "layer.mif", "layer.mid", "table.mid", "nested.mcf"):
            size = os.path.getsize(self.folder / name)
            for place in [place for place in self.places(size) if place < size]:
                with self.subTest(file=name, place=place):
                    run = self.run_host(*command, file="/" + name, call="read", at=place,
                                        errno=errno.EIO, code=1)
                    self.assertIn("ERROR", run.shown)
            run = self.run_host(*command, file="/" + name, call="open", errno=errno.EIO, code=1)
            self.assertRegex(run.shown, f'Could not open ".*{name}": Input/output error')

    def test_close_that_fails_is_told(self):
        whole = self.whole()
        for suffix in ("_mor.wor", "_mor_check.mif", "_mor_check.mid"):
            run = self.run_everything(file="run" + suffix, call="close", errno=errno.EIO,
                                      code=DONE)
            self.assertIn(f"Could not write all of {run.prefix}{suffix}: Input/output error\n",
                          run.shown)
            self.check_held(run, whole)
        run = self.run_host(SCENARIO_HOST, "exits", file="run.mlf", call="close",
                            errno=errno.ENOSPC, code=1)
        self.assertTrue(run.shown.endswith("run.mlf: No space left on device\n"), run.shown)

    def test_layer_whose_place_cannot_be_found_ends_the_run(self):
        whole = self.whole()
        for suffix in [suffix for suffix in EVERYTHING if "messages" in suffix]:
            for at in (0, 1, 17):
                run = self.run_everything(file="run" + suffix, call="seek", at=at, errno=errno.EIO)
                if run.code != DONE:  # the place of the end is known without the system
                    self.check_ended(run, [text.split("\n")[0].split("{")[0] for text in
                                           EVERYTHING[suffix]])
                self.check_held(run, whole)


class StandardStreams(FaultsTest):
    def test_screen_that_takes_nothing_is_no_reason_to_stop(self):
        whole = self.whole()

        def pipe_nobody_reads():
            reader, writer = os.pipe()
            os.close(reader)
            return writer

        def pipe_that_is_full():
            """Its reader leaves while the host waits for room."""
            reader, writer = os.pipe()
            os.write(writer, b"." * 60000)
            if os.fork() == 0:
                os.close(writer)
                time.sleep(0.3)
                os._exit(0)
            os.close(reader)
            return writer

        screens = {"full": lambda: os.open("/dev/full", os.O_WRONLY),
                   "not for writing": lambda: os.open("/dev/null", os.O_RDONLY),
                   "a pipe nobody reads": pipe_nobody_reads,
                   "a full pipe": pipe_that_is_full,
                   "closed": None}
        for name, screen in screens.items():
            for scenario, code in (("everything", DONE), ("exits", 1)):
                with self.subTest(screen=name, scenario=scenario):
                    output = screen() if screen else None
                    run = self.run_host(SCENARIO_HOST, scenario, self.control, code=code,
                                        standard_output=output,
                                        limit=None if screen else lambda: os.close(1))
                    if output is not None:
                        os.close(output)
                    if code == DONE:
                        self.check_held(run, whole)

    def questions(self):
        """Scenario, the question, its exit code when nobody answers."""
        for extension, age in ((".tab", 0), (".mif", 100), (".mid", 100)):
            os.utime(self.write("late" + extension, EMPTY_LAYER), (1e9 - age, 1e9 - age))
        late = self.write("late.mcf", "Read MI Morphology D50 == late\n")
        nested = self.write("nested.mcf", "Read File == not_there.mcf\n")
        nobody = "nobody can answer: "
        return [
            (("control_file", "not_there.mcf"), nobody + "Check file exists", 1),
            (("control_file", nested), nobody + "Check file exists", 1),
            (("start_twice",), "run.mlf is already open, close it?", 1),
            (("save_date", late), nobody + "Re-export mif file and press Enter", 1),
            (("control_file", " "), "Empty filename specified.", 1),
            (("everything", self.control), "Press Enter to Continue\n", DONE),
            (("exits",), "Press Enter to Close\n", 1),
        ]

    def test_input_that_answers_no_question_never_hangs_a_run(self):
        inputs = {"ended": b"", "closed": None,
                  "null": lambda: os.open("/dev/null", os.O_RDONLY),
                  "zeros without end": lambda: os.open("/dev/zero", os.O_RDONLY),
                  "a folder": lambda: os.open("/", os.O_RDONLY),
                  "not for reading": lambda: os.open("/dev/null", os.O_WRONLY),
                  "garbage": bytes(range(256)) * 20, "no line end": b"\xff" * 5000}
        for command, question, code in self.questions():
            for name, given in inputs.items():
                with self.subTest(scenario=command, input=name):
                    source = given() if callable(given) else given
                    run = self.run_host(SCENARIO_HOST, *command, standard_input=source, code=code,
                                        limit=None if name != "closed" else lambda: os.close(0))
                    if callable(given):
                        os.close(source)
                    self.assertIn(question, run.shown)

    def test_input_that_does_not_wait_is_waited_for(self):
        reader, writer = os.pipe()
        os.set_blocking(reader, False)
        self.write("there.mcf", "")
        if os.fork() == 0:
            os.close(reader)
            time.sleep(0.5)
            os.write(writer, str(self.folder / "there.mcf").encode() + b"\n")
            os._exit(0)
        os.close(writer)
        self.run_host(SCENARIO_HOST, "control_file", "not_there.mcf", standard_input=reader,
                      code=DONE)
        os.close(reader)


class Memory(FaultsTest):
    def test_missing_memory_ends_the_run_with_its_message(self):
        self.write("all.mid", "1\n")
        self.write("all.mif", EMPTY_LAYER + "Region 1\n 4\n1 1\n45 1\n45 45\n1 45\n")
        control = self.write("all.mcf", "Read MI Morphology D50 == all\n")
        for largest, code in ((250_000, DONE), (100_000, 1)):  # 440 x 440 cells, one byte each
            run = self.run_host(LONG_RUN_HOST, "rounds", control, "1", "500", "500",
                                malloc=largest, code=code)
        long_line = self.write("long.mcf", "Hiding Exponent == " + 3_000_000 * "0")
        for job, calls, rows, purpose in (("rounds", long_line, "500", "control file"),
                                          ("steps", self.control, "500", "morphology step"),
                                          ("flags", self.control, "2500", "dataset")):
            other = self.run_host(LONG_RUN_HOST, job, calls, "1", rows, "500",
                                  malloc=1_000_000, layers="mif", code=1)
            self.assertTrue(other.shown.endswith(
                f"\nERROR - Could not allocate memory (RAM) for the {purpose}.\n\nClosing any "
                "unclosed GIS layers...\n\nPress Enter to Close\n"), other.shown)
        self.assertIn("ERROR - Could not allocate memory (RAM) for Inside Region == Method B.\n",
                      run.shown)
        self.assertTrue(run.shown.endswith("\nPress Enter to Close\n"), run.shown)

    def test_no_missing_piece_aborts_the_host(self):
        for times in (1, 10**9):
            pieces, code = 0, None
            while code != DONE:
                with self.subTest(pieces=pieces, times=times):
                    run = self.run_host(SCENARIO_HOST, "everything", self.control, new=pieces,
                                        times=times)
                    code = run.code
                    if code != DONE:
                        self.assertIn("ERROR - Could not allocate memory (RAM)", run.shown)
                        # An end in order has 0 before start-up.
                        self.assertIn(code, (1,) if "(RAM).\n" in run.shown else (0, 1), run.shown)
                pieces += 1 if EVERY else 1 + pieces // 20


if __name__ == "__main__":
    EVERY = "--every" in sys.argv
    SHIM, SCENARIO_HOST, LONG_RUN_HOST = map(os.path.abspath, sys.argv[1:4])
    unittest.main(argv=sys.argv[:1])
