#!/usr/bin/env python3
"""Nothing that a host does to the processor's floating-point settings changes a bit of the results, nor
do its settings and flags change; Windows has the results of Linux.

Usage: settings_test.py [--same-as HOST] COMMAND...
"""
import os
import subprocess
import sys
import tempfile
import unittest

COMMAND = []
OTHER = None


class SettingsTest(unittest.TestCase):
    def bits(self, command, settings):
        with tempfile.TemporaryDirectory() as folder:
            run = subprocess.run([*command, settings, "run"], cwd=folder, timeout=120,
                                 stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                 stderr=subprocess.PIPE, text=True)
        self.assertEqual(run.returncode, 0, f"{settings}: {run.stdout[-500:]}{run.stderr}")
        return run.stderr.split()[-1]

    def test_every_setting_gives_the_same_bits(self):
        plain = self.bits(COMMAND, "plain")
        for settings in ("trap", "up", "down", "zero", "flush", "x87", "flags", "pending"):
            self.assertEqual(self.bits(COMMAND, settings), plain, settings)
        if OTHER and os.path.exists(OTHER):
            self.assertEqual(self.bits([OTHER], "plain"), plain)


if __name__ == "__main__":
    arguments = sys.argv[1:]
    if arguments[0] == "--same-as":
        OTHER, arguments = arguments[1], arguments[2:]
    COMMAND = arguments
    unittest.main(argv=sys.argv[:1])
