#!/usr/bin/env python3
"""Files that are broken, endless, out of bounds or no files: whatever a run is given, it goes on or ends
in order, soon, in little memory, and says which file and what is wrong with it.

Usage: hostile_test.py SCENARIO_HOST LIBRARY
"""
import collections
import os
import pathlib
import re
import resource
import subprocess
import sys
import unittest

sys.path.append(str(pathlib.Path(__file__).resolve().parents[1] / "support"))
from program_test import ProgramTest  # noqa: E402

HOST = LIBRARY = None
GOES_ON, ENDED = 7, 1  # exit codes of the host: its own, and that of a run that cannot go on
PROCESSOR_SECONDS = 30  # for runs that take some hundredths
WAITING_SECONDS = 300  # on a busy machine
MEMORY = 1 << 30
MEGABYTE = 1 << 20

MIF = b"""Version 300
Charset "WindowsLatin1"
Delimiter ","
CoordSys NonEarth Units "m" Bounds (0, 0) (10, 10)
Columns 1
  value Float
Data

Point 1.5 1.5
    Symbol (1,2,3)
Line 0 0 3 2
Pline 3
0 0
1 1
2 0.5
Pline Multiple 2
2
0 0
1 0
2
0 1
1 1
Region 2
  5
0 0
3 0
3 3
0 3
0 0
  4
1 1
2 1
2 2
1 1
    Pen (1,2,0)
    Center 1 1
Multipoint 2
1 1
2 2
"""
WHOLE = {
    "run.mcf": b"Set Morphology D90 == 0.0003 ! grains\nSlump Slope == 2\nFall Velocity == AUTO\n"
               b"Read File == more.mcf\nRead MI Morphology D50 == layer.mif\n"
               b"Read MID Morphology D50 == cells.csv\n",
    "more.mcf": b"Bed Change Limit == 0.5\n",
    "layer.mif": MIF,
    "layer.mid": b'0.0002,"a"\n0.0003,"b, c"\n0.0004,"d"\n0.0005,"e"\n0.0006,"f"\n0.0007,"g"\n',
    "cells.csv": b"2,2,0.001\n3,3,1d-3\n4,4,2*.25\n",
}

Run = collections.namedtuple("Run", "code output")


class HostileTest(ProgramTest):
    def setUp(self):
        super().setUp()
        self.write(WHOLE)

    def write(self, files):
        for name, content in files.items():
            super().write(name, content)

    def run_host(self, what, control="run.mcf", stdin=b""):
        """The run with the files as they are. It ends in one of two ways, whatever they hold."""
        run = subprocess.run(
            [HOST, "control_file", self.folder / "run", self.folder / control], input=stdin,
            stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=WAITING_SECONDS,
            cwd=self.folder)
        self.assertIn(run.returncode, (GOES_ON, ENDED), (what, run.stdout[-500:]))
        self.assertNotIn(b"terminate called", run.stdout, what)
        return Run(run.returncode, run.stdout)

    def expect_end(self, what, *texts, **more):
        run = self.run_host(what, **more)
        self.assertEqual(run.code, ENDED, (what, run.output[-500:]))
        for text in texts:
            self.assertIn(text, run.output, what)

    def test_whole_files_are_read(self):
        run = self.run_host("whole")
        self.assertEqual(run.code, GOES_ON, run.output)
        self.assertIn(b"MULTIPOINT", run.output)

    def test_files_cut_off_anywhere(self):
        for name, whole in WHOLE.items():
            for length in range(len(whole)):
                self.write({name: whole[:length]})
                run = self.run_host((name, length))
                if run.code == ENDED:
                    self.assertTrue(b"ERROR" in run.output or b"Unrecognisable" in run.output or
                                    b"CHECK 0008" in run.output, (name, length, run.output))
            self.write(WHOLE)

    def test_counts_that_are_none(self):
        objects = (b"Pline %s", b"Pline Multiple %s", b"Pline Multiple 1\n%s", b"Region %s",
                   b"Region 1\n%s", b"Multipoint %s")
        for text in objects:
            for count in (b"-1", b"-2147483648", b"2147483647", b"99999999999999999999", b"1e9",
                          b"two", b"", b"0", b"1000"):
                self.write({"layer.mif": b"Data\n" + text.replace(b"%s", count) + b"\n0 0\n1 1\n2 2\n"})
                run = self.run_host((text, count))
                if run.code == ENDED:
                    self.assertIn(b"of file \"", run.output, (text, count))

    # What is far too long is cut or refused, in the time that reading it takes.
    def test_long_lines(self):
        long = b"1" * MEGABYTE
        for what, name, content in (
                ("command", "run.mcf", long),
                ("value", "run.mcf", b"Slump Slope == " + long),
                ("file name", "run.mcf", b"Read File == " + long),
                ("folders", "run.mcf", b"Read File == " + b"../" * 300),
                ("value of an object", "layer.mid", long + b"\n"),
                ("field", "layer.mid", b'"' + long),
                ("count", "layer.mif", b"Data\nPline " + long),
                ("row", "cells.csv", b"2,2," + long)):
            self.write({**WHOLE, name: content})
            self.expect_end(what)
        for what, name, content in (
                ("comment", "run.mcf", b"!" + long),
                ("header", "layer.mif", long + b"\n" + MIF),
                ("no objects", "layer.mif", MIF + (long + b"\n") * 5),
                ("blank lines", "cells.csv", b"\n" * (4 * MEGABYTE)),
                ("blank values", "layer.mid", b" \n" * (2 * MEGABYTE))):
            self.write({**WHOLE, name: content})
            self.assertEqual(self.run_host(what).code, GOES_ON, what)

    # Nothing of it reaches the screen as anything but characters to be seen.
    def test_bytes_that_are_no_text(self):
        every_byte = bytes(range(256))
        for name in WHOLE:
            for content in (every_byte * 40, every_byte[::-1], b"\0" * 5000, b"\xff\xfe2\0,\0\n\0",
                            b"Data\nPline \x1b[2J\x07\n", b"2,\x1b]0;title\x07", b"\x80\xe4 == \xff"):
                self.write({**WHOLE, name: content})
                run = self.run_host((name, content[:20]))
                shown = run.output.translate(None, delete=b"\t\n")
                self.assertTrue(all(byte >= 32 and byte != 127 for byte in shown), (name, run.output))

    def test_number_of_no_size_at_all(self):
        far = b"1e300 0 2.5e300 1e300"
        for text in (b"Line " + far, b"Line nan 0 inf 1", b"Region 1\n4\n-1e300 0\n1e300 0\n0 1e300\n0 0"):
            self.write({"layer.mif": b"Data\n" + text + b"\n"})
            self.run_host(text)

    def test_what_is_no_file(self):
        folder = self.folder
        for name in WHOLE:
            missing = b'CHECK 0008 - "'
            for what, text, make in (
                    ("folder", missing, lambda path: path.mkdir()),
                    ("link to itself", missing, lambda path: path.symlink_to(path.name)),
                    ("link to nothing", missing, lambda path: path.symlink_to("nowhere")),
                    ("pipe", b"It is a pipe, not a file", os.mkfifo),
                    ("endless", b"ead", lambda path: path.symlink_to("/dev/zero"))):
                path = folder / name
                path.unlink()
                make(path)
                self.expect_end((name, what), text, name.encode())
                path.rmdir() if what == "folder" else path.unlink()
                self.write(WHOLE)

    def test_pipe_that_nobody_reads_takes_no_output(self):
        os.mkfifo(self.folder / "run.mlf")
        self.expect_end("log", b"Can't Open", b"run.mlf")

    # Text that another program makes, and none at all.
    def test_streams(self):
        run = self.run_host("stdin", control="/dev/stdin", stdin=b"Slump Slope == 3\n")
        self.assertEqual((run.code, b"set to   3.0" in run.output), (GOES_ON, True), run.output)
        self.assertEqual(self.run_host("null", control="/dev/null").code, GOES_ON)

    def test_files_that_read_themselves(self):
        limit = b'ERROR - Exceeded limit of nested files (ie. of "Read File" files).'
        self.write({"run.mcf": b"Slump Slope == 2\nRead File == run.mcf\n"})
        place = b"Line 2 of file " + str(self.folder).encode().replace(b"/", b"\\") + b"\\run.mcf"
        self.expect_end("itself", place, limit)
        self.write({"run.mcf": b"Read File == more.mcf\n", "more.mcf": b"Read File == run.mcf\n"})
        self.expect_end("through another", limit)
        (self.folder / "more.mcf").unlink()
        (self.folder / "more.mcf").symlink_to("run.mcf")
        self.expect_end("through a link", limit)

    # No shell, no pattern, no format sees a name.
    def test_names_are_only_names(self):
        for name in ('a "b"', "a'b", "$(touch x)", "`touch x`", "a;touch x;", "a|touch x", "a&b", "-rf",
                     "%s%n%999999d", "*", "a>x", "~", "\u00e4\u00f6\u20ac"):
            self.write({name + ".mcf": b"Slump Slope == 3\n",
                        "run.mcf": b"Read File == " + name.encode() + b".mcf\n"})
            run = self.run_host(name)
            self.assertEqual((run.code, b"set to   3.0" in run.output), (GOES_ON, True), run.output)
            self.assertFalse((self.folder / "x").exists(), name)
        self.write({"run.mcf": b"Read File == more.mcf\0.txt\n"})
        self.expect_end("code of 0", b"cannot be found")
        self.expect_end("line end", b"cannot be found", control="run\n.mcf")

    # Nor can it: what starts programs, or changes the host's process behind its back, is not called.
    def test_library_starts_nothing_and_leaves_the_process_alone(self):
        def names_of(*options):
            listing = subprocess.run(["nm", *options, LIBRARY], check=True, stdout=subprocess.PIPE,
                                     text=True).stdout
            return {line.split()[-1].split("@")[0] for line in listing.splitlines()}

        if "__gcov_exit" in names_of():
            self.skipTest("what counts lines does both")
        names = names_of("-D", "--undefined-only")
        self.assertIn("open64" if "open64" in names else "open", names)
        never = re.compile(r"system|popen|(f?exec|posix_spawn).*|v?fork|clone|dlopen|setenv|chdir|"
                           r"umask|setlocale|signal|sigaction|fe(set|enable|disable|hold|update).*")
        self.assertEqual([name for name in names if never.fullmatch(name)], [])


if __name__ == "__main__":
    HOST, LIBRARY = (os.path.abspath(argument) for argument in sys.argv[1:])
    for limit, value in ((resource.RLIMIT_AS, MEMORY), (resource.RLIMIT_CPU, PROCESSOR_SECONDS),
                         (resource.RLIMIT_CORE, 0)):
        resource.setrlimit(limit, (value, value))  # what is run here has them too
    unittest.main(argv=sys.argv[:1])
