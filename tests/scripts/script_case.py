"""A test case that runs one of the repository's scripts over a made-up tree."""

import subprocess
import tempfile
import unittest
from pathlib import Path

REPOSITORY = Path(__file__).resolve().parents[2]


class ScriptTest(unittest.TestCase):
    script = ""

    def setUp(self):
        scratch = tempfile.TemporaryDirectory(prefix="tarnwick-script-")
        self.addCleanup(scratch.cleanup)
        self.root = Path(scratch.name)

    def write(self, path, text):
        file = self.root / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text, encoding="utf-8")

    def run_script(self):
        command = [str(REPOSITORY / "scripts" / self.script), str(self.root)]
        return subprocess.run(command, capture_output=True, text=True, timeout=60)

    def passes(self):
        ran = self.run_script()
        self.assertEqual((ran.stdout + ran.stderr, ran.returncode), ("", 0))

    def fails_with(self, fault):
        ran = self.run_script()
        self.assertIn(fault, ran.stdout)
        self.assertEqual(ran.returncode, 1)
