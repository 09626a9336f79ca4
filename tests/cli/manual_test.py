#!/usr/bin/env python3
"""The manual knows every command, every option and every field that the program prints."""

import argparse
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

BUILD = None
ROOT = pathlib.Path(__file__).resolve().parents[2]
MANUAL = (ROOT / "packaging" / "man" / "tarnwick-cli.1").read_text(encoding="utf-8")
#: Objects whose names are data.
OPEN_OBJECTS = {"laneMap", "signal", "poolStats", "landing"}


def fields_in(value):
    if isinstance(value, list):
        return set().union(*map(fields_in, value)) if value else set()
    if not isinstance(value, dict):
        return set()
    names = set(value)
    for name, member in value.items():
        if name not in OPEN_OBJECTS:
            names |= fields_in(member)
    return names


def section_of(command):
    """The fields that the manual lists for a command."""
    start = MANUAL.index(f".Ss {command}\n")
    end = min(place for place in (MANUAL.find("\n.Ss ", start + 1), MANUAL.find("\n.Sh ", start + 1))
              if place > 0)
    return set(re.findall(r"^\.It Va (\w+)", MANUAL[start:end], re.M))


class ManualTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory(prefix="tarnwick-manual-")
        cls.home = pathlib.Path(cls.folder.name).resolve()
        cls.environment = {**os.environ, "HOME": str(cls.home), "LC_ALL": "C.UTF-8",
                           "XDG_DATA_HOME": str(cls.home / "data"), "USER": "nobody"}
        subprocess.run([BUILD / "tools" / "demo_library", "--tracks", "80", "--seed", "6",
                        "--out", cls.home], check=True, stdout=subprocess.DEVNULL,
                       env=cls.environment)

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def run_cli(self, *arguments):
        return subprocess.run([BUILD / "bin" / "tarnwick-cli", *arguments], check=True,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                              env=self.environment).stdout.decode("utf-8")

    def fields(self, *arguments):
        return fields_in(json.loads(self.run_cli("--json", *arguments)))

    def commands(self):
        listed = self.run_cli("--help").split("Commands:\n")[1]
        return re.findall(r"^  (\S+(?: \S+)?)  ", listed, re.M)

    def test_every_command_and_option_is_in_the_manual(self):
        commands = self.commands()
        self.assertIn("gig-run", commands)
        for command in commands:
            name = command.split()[0]
            self.assertRegex(MANUAL, rf"(?m)^\.It Cm {re.escape(name)}\b", command)
            for option in re.findall(r"--([a-z-]+)", self.run_cli(*command.split(), "--help")):
                self.assertIn(f"Fl -{option}", MANUAL, f"{command} --{option}")

    def test_every_field_of_a_reading_command_is_in_its_section(self):
        scan = json.loads(self.run_cli("--json", "scan"))
        missing = next(track for track in scan["tracks"] if track["isMissing"])
        marked = next(track for track in scan["tracks"] if track["hasMarkers"])
        self.run_cli("snapshot")
        self.run_cli("gig-run", "--apply-safe-fixes")
        commands = {
            "libraries": (), "scan": (), "score": (), "health": (), "queue": (), "versions": (),
            "genres": (), "loudness": (), "crates": (), "hygiene": (), "gig": (),
            "snapshots": (), "changes": (), "held": (), "cues": (), "history": (),
            "candidates": (missing["relativePath"],), "probe": (marked["absolutePath"],),
            "drift": ("rekordbox", str(self.home)),
        }
        self.assertEqual(self.fields("signal", "lanes") - section_of("signal lanes"), set())
        for command, arguments in commands.items():
            printed = self.fields(command, *arguments)
            self.assertTrue(printed, command)
            self.assertEqual(printed - section_of(command), set(), command)

    def test_every_field_of_a_writing_command_is_in_the_manual(self):
        known = section_of("all writing commands")
        for arguments in (("gig-run",), ("export", "rekordbox", str(self.home)),
                          ("snapshot",), ("undo-everything",)):
            self.assertEqual(self.fields(*arguments) - known, set(), arguments[0])


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", type=pathlib.Path, required=True)
    options, rest = parser.parse_known_args()
    BUILD = options.build.resolve()
    unittest.main(argv=sys.argv[:1] + rest)
