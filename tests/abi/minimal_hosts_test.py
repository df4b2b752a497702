#!/usr/bin/env python3
"""The smallest hosts of both languages do the same to the last bit, and the host guide quotes them.

Usage: minimal_hosts_test.py C_HOST FORTRAN_HOST FORTRAN_HOST_THAT_TRAPS [WHAT_RUNS_THEM]
"""
import pathlib
import re
import struct
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
MINIMAL = ROOT / "examples" / "minimal"
HOSTS, RUNNER = [], []
N, M = 60, 20


class MinimalHostsTest(unittest.TestCase):
    def results_of(self, host):
        with tempfile.TemporaryDirectory() as folder:
            run = subprocess.run([*RUNNER, host, MINIMAL / "hump.mcf", f"{folder}/run"], timeout=60,
                                 stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True)
            self.assertEqual(run.returncode, 0, run.stdout)
            return [pathlib.Path(f"{folder}/run{name}").read_bytes()
                    for name in ("_bed.bin", "_morDH.dat")]

    def test_both_languages_give_the_same_bits(self):
        bed, dataset = self.results_of(HOSTS[0])
        for host in HOSTS[1:]:
            self.assertEqual(self.results_of(host), [bed, dataset], host)

        # The flow goes toward the larger index, and the hump's crest, at first from 21 to 26, with it.
        depth = struct.unpack(f"<{N * M}d", bed)
        row = depth[9 * N:10 * N]
        self.assertLess(row[25], row[20])
        self.assertTrue(all(0.6 < d < 1.1 for d in depth))
        # Four records of 57 x 17 values and 58 x 18 flags, their cards, header and end card.
        self.assertEqual(len(dataset), 100 + 4 * (4 + 1 + 4 + 58 * 18 + 57 * 17 * 4) + 4)

    def test_an_error_in_the_control_file_ends_the_trial_alone(self):
        host = pathlib.Path(HOSTS[0]).with_name("trial_host")
        if not host.exists():
            self.skipTest("no POSIX system")
        with tempfile.TemporaryDirectory() as folder:
            for control_file, outcome in (("hump.mcf", "with morphology"),
                                          ("minimal_host.c", "without morphology")):
                run = subprocess.run([host, MINIMAL / control_file, f"{folder}/run"], timeout=60,
                                     stdout=subprocess.PIPE, text=True)
                self.assertEqual(run.returncode, 0)
                self.assertIn(f"The host goes on {outcome}", run.stdout)

    def test_host_guide_quotes_what_is_compiled(self):
        guide = (ROOT / "docs" / "host-guide.md").read_text()
        for language, file in (("c", "minimal_host.c"), ("c", "trial_host.c"),
                               ("fortran", "minimal_host.f90")):
            source = (MINIMAL / file).read_text()
            quotes = re.findall(rf"<!-- {file} -->\n```{language}\n(.*?)```", guide, re.S)
            self.assertTrue(quotes, file)
            for quote in quotes:
                self.assertIn(quote, source)


if __name__ == "__main__":
    HOSTS, RUNNER = sys.argv[1:4], sys.argv[4:]
    unittest.main(argv=sys.argv[:1])
