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
SCAN = ("Reading database… 0 of 0 tracks",
        "Checking files and cues… 0 of 30 tracks",
        "Checking files and cues… 25 of 30 tracks",
        "Checking files and cues… 30 of 30 tracks",
        "Scoring… 30 of 30 tracks")
BACKUP = ("Starting… 0 of 0",
          "Copying library files… 0 of 5",
          "Copying library files… 1 of 5",
          "Copying library files… 2 of 5",
          "Copying library files… 3 of 5",
          "Copying library files… 4 of 5",
          "Copying library files… 5 of 5")


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

    def run_on(self, stderr, *arguments):
        subprocess.run([BUILD / "bin" / "tarnwick-cli", *arguments], check=True,
                       stdout=subprocess.DEVNULL, stderr=stderr, env=self.environment)

    def shown_on_a_terminal(self, *arguments):
        terminal, program_side = os.openpty()
        self.run_on(program_side, *arguments)
        shown = os.read(terminal, 65536).decode("utf-8")
        os.close(program_side)
        os.close(terminal)
        return shown

    def test_one_line_on_a_terminal(self):
        self.assertEqual(self.shown_on_a_terminal("scan"),
                         "".join(WIPE + text for text in (*SCAN, "")))

    def test_an_export_follows_its_scan(self):
        folder = os.path.join(self.folder.name, "USB")
        self.assertEqual(self.shown_on_a_terminal("export", "seratoBackup", folder),
                         "".join(WIPE + text for text in (*SCAN, "", *BACKUP, "")))

    def test_nothing_anywhere_else(self):
        with tempfile.TemporaryFile() as elsewhere:
            self.run_on(elsewhere, "scan")
            self.run_on(elsewhere, "export", "rekordbox", self.folder.name)
            elsewhere.seek(0)
            self.assertEqual(elsewhere.read(), b"")


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", type=pathlib.Path, required=True)
    options, rest = parser.parse_known_args()
    BUILD = options.build.resolve()
    unittest.main(argv=sys.argv[:1] + rest)
