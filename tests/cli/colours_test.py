#!/usr/bin/env python3
"""Colours are for a terminal whose user has not asked to be spared them."""

import argparse
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

BUILD = None
ESCAPE = "\033["


class ColoursTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory(prefix="tarnwick-colours-")
        home = pathlib.Path(cls.folder.name).resolve()
        cls.environment = {**os.environ, "HOME": str(home), "XDG_DATA_HOME": str(home / "data"),
                           "LC_ALL": "C.UTF-8"}
        cls.environment.pop("NO_COLOR", None)
        subprocess.run([BUILD / "tools" / "demo_library", "--tracks", "30", "--seed", "4",
                        "--out", home], check=True, stdout=subprocess.DEVNULL,
                       env=cls.environment)

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def score(self, stdout, **variables):
        return subprocess.run([BUILD / "bin" / "tarnwick-cli", "score"], check=True, stdout=stdout,
                              stderr=subprocess.DEVNULL, env={**self.environment, **variables})

    def score_on_a_terminal(self, **variables):
        terminal, program_side = os.openpty()
        self.score(program_side, **variables)
        os.close(program_side)
        shown = os.read(terminal, 65536).decode("utf-8")
        os.close(terminal)
        return shown

    def test_a_terminal_shows_colours(self):
        self.assertIn(ESCAPE, self.score_on_a_terminal())

    def test_an_empty_no_color_asks_for_nothing(self):
        self.assertIn(ESCAPE, self.score_on_a_terminal(NO_COLOR=""))

    def test_no_color_spares_them(self):
        self.assertNotIn(ESCAPE, self.score_on_a_terminal(NO_COLOR="1"))

    def test_a_pipe_gets_none(self):
        piped = self.score(subprocess.PIPE).stdout.decode("utf-8")
        self.assertIn("Library score", piped)
        self.assertNotIn(ESCAPE, piped)


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", type=pathlib.Path, required=True)
    options, rest = parser.parse_known_args()
    BUILD = options.build.resolve()
    unittest.main(argv=[sys.argv[0], *rest])
