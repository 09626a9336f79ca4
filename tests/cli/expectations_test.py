#!/usr/bin/env python3
"""Holds the score of a demo library against the count that its maker kept while writing it.

The maker shares no code with the program, so the two can't be wrong in the same way.
"""

import argparse
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

BUILD = None


class ExpectationsTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory(prefix="tarnwick-expect-")
        home = pathlib.Path(cls.folder.name).resolve()
        expectations = home / "expectations.json"
        environment = {**os.environ, "HOME": str(home), "XDG_DATA_HOME": str(home / "data")}
        subprocess.run([BUILD / "tools" / "demo_library", "--tracks", "1500", "--seed", "11",
                        "--out", home, "--expect", expectations], check=True,
                       stdout=subprocess.DEVNULL, env=environment)
        score = subprocess.run([BUILD / "bin" / "tarnwick-cli", "--json", "score"], check=True,
                               stdout=subprocess.PIPE, env=environment)
        cls.expected = json.loads(expectations.read_text(encoding="utf-8"))
        cls.actual = json.loads(score.stdout)

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def test_counts(self):
        for name in ("total", "onDisk", "missing", "withMarkers", "withGrid", "withGain",
                     "withArtist", "withGenre", "withKey", "withBPM", "tagsReadable",
                     "duplicateExcess", "reclaimableBytes", "onDiskBytes", "score"):
            with self.subTest(name):
                self.assertEqual(self.actual[name], self.expected[name])

    def test_dimensions(self):
        scores = [dimension["score"] for dimension in self.actual["dimensions"]]
        self.assertEqual(scores, self.expected["dimensions"])

    def test_duplicate_groups(self):
        self.assertGreater(self.expected["duplicateGroups"], 10)
        self.assertEqual(len(self.actual["duplicateGroups"]), self.expected["duplicateGroups"])
        self.assertEqual({group["key"]: group for group in self.actual["duplicateGroups"]},
                         {group["key"]: group for group in self.expected["duplicates"]})

    def test_something_is_wrong_with_every_side_of_the_library(self):
        for score in self.expected["dimensions"]:
            self.assertLess(score, 100)


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", type=pathlib.Path, required=True)
    options, rest = parser.parse_known_args()
    BUILD = options.build.resolve()
    unittest.main(argv=sys.argv[:1] + rest)
