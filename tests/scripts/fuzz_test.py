#!/usr/bin/env python3
"""scripts/fuzz and scripts/torture know every target, and refuse what they don't know."""

import subprocess
import unittest
from pathlib import Path

REPOSITORY = Path(__file__).resolve().parents[2]


def run(script, *arguments):
    return subprocess.run([REPOSITORY / "scripts" / script, *arguments], capture_output=True,
                          text=True, timeout=60)


class FuzzTest(unittest.TestCase):
    def test_lists_every_target_with_a_corpus(self):
        fuzz = REPOSITORY / "fuzz"
        sources = {path.name.removesuffix("_fuzz.cpp") for path in fuzz.glob("*_fuzz.cpp")}
        listed = run("fuzz").stdout.split()
        self.assertEqual(set(listed), sources)
        self.assertEqual(len(listed), len(sources))
        for name in listed:
            self.assertTrue(any((fuzz / "corpus" / name).iterdir()), name)

    def test_refuses_an_unknown_target(self):
        ran = run("fuzz", "nonsense", "1")
        self.assertEqual((ran.returncode, ran.stderr), (2, "scripts/fuzz: no target named nonsense\n"))

    def test_refuses_an_unknown_step(self):
        ran = run("torture", "--only", "nonsense")
        self.assertEqual(ran.returncode, 2)
        self.assertIn("no step named nonsense", ran.stderr)


if __name__ == "__main__":
    unittest.main()
