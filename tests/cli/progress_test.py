#!/usr/bin/env python3
"""Progress is one line on a terminal that is written anew, and nothing anywhere else."""

import argparse
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

BUILD = None
WIPE = "\r\033[K"


class ProgressTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory(prefix="tarnwick-progress-")
        home = pathlib.Path(cls.folder.name).resolve()
        cls.environment = {**os.environ, "HOME": str(home), "XDG_DATA_HOME": str(home / "data"),
                           "LC_ALL": "C.UTF-8"}
        subprocess.run([BUILD / "tools" / "demo_library", "--tracks", "30", "--seed", "4",
                        "--out", home], check=True, stdout=subprocess.DEVNULL,
                       env=cls.environment)

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def scan(self, stderr):
        subprocess.run([BUILD / "bin" / "tarnwick-cli", "scan"], check=True,
                       stdout=subprocess.DEVNULL, stderr=stderr, env=self.environment)

    def test_one_line_on_a_terminal(self):
        terminal, program_side = os.openpty()
        self.scan(program_side)
        shown = os.read(terminal, 65536).decode("utf-8")
        os.close(program_side)
        os.close(terminal)
        self.assertEqual(shown, "".join(WIPE + text for text in (
            "Reading database… 0 of 0 tracks",
            "Checking files and cues… 0 of 30 tracks",
            "Checking files and cues… 25 of 30 tracks",
            "Checking files and cues… 30 of 30 tracks",
            "Scoring… 30 of 30 tracks",
            "")))

    def test_nothing_anywhere_else(self):
        with tempfile.TemporaryFile() as elsewhere:
            self.scan(elsewhere)
            elsewhere.seek(0)
            self.assertEqual(elsewhere.read(), b"")


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", type=pathlib.Path, required=True)
    options, rest = parser.parse_known_args()
    BUILD = options.build.resolve()
    unittest.main(argv=sys.argv[:1] + rest)
