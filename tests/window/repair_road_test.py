#!/usr/bin/env python3
"""The repairs as a person goes through them in the built program, by the pointer alone and by the
keyboard alone: from the score to the fix queue, through each repair, to its undo in the change log
and back to a snapshot. What each did is read from the library on disk, and at the end of the road
its database is what it was, byte for byte.
"""

import argparse
import contextlib
import json
import pathlib
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "support"))
from desktop import Desktop, wait_until  # noqa: E402

MIDDLE_OF_SIDEBAR = 119  # from the window's left

BUILD = None
DESKTOP = None


def setUpModule():
    global DESKTOP
    DESKTOP = Desktop().__enter__()


def tearDownModule():
    DESKTOP.__exit__()


class ByPointer:
    def __init__(self, program):
        self.program = program

    def open(self, screen):
        self.program.scroll_to(screen, MIDDLE_OF_SIDEBAR)
        self.program.click(screen)
        self.program.wait_for(screen, "heading")

    def use(self, name, description=None):
        self.program.click(name, description=description)

    def roll_back_to_the_first(self):
        self.program.scroll_to_end("Snapshots")
        buttons = [item for item in self.program.items() if item.name == "Roll back"]
        last = max(buttons, key=lambda item: self.program.place(item)[1])
        self.use("Roll back", last.description)


class ByKeyboard:
    def __init__(self, program):
        self.program = program
        program.take_the_keyboard()

    def open(self, screen):
        # Tab goes in a ring through sidebar and screen.
        self.program.tab_to(screen)
        self.program.key("Return")
        self.program.wait_for(screen, "heading")

    def use(self, name, description=None):
        self.program.tab_to(name, description)
        self.program.key("space")

    def roll_back_to_the_first(self):
        self.program.tab_to("Roll back")
        self.program.key("End", "space")


class RepairRoadTest(unittest.TestCase):
    def setUp(self):
        made = tempfile.TemporaryDirectory(prefix="tarnwick-repairs-")
        self.addCleanup(made.cleanup)
        folder = pathlib.Path(made.name).resolve()
        self.home = folder / "home"
        self.data = folder / "data"
        expectations = folder / "expectations.json"
        subprocess.run([BUILD / "tools" / "demo_library", "--tracks", "120", "--seed", "11",
                        "--out", self.home, "--expect", expectations], check=True,
                       stdout=subprocess.DEVNULL)
        self.expected = json.loads(expectations.read_text(encoding="utf-8"))
        self.database = self.home / "Music/_Serato_/database V2"

    @contextlib.contextmanager
    def started(self):
        with DESKTOP.start([BUILD / "bin" / "tarnwick"], HOME=self.home, XDG_DATA_HOME=self.data,
                           TARNWICK_AUTOSCAN="1") as program:
            program.wait_for("The six dimensions")
            yield program
            self.assertEqual(program.output(), "")

    def changes(self, kind):
        """The change log's entries of a kind. It is being written when it doesn't end in a line."""
        log = self.data / "Tarnwick" / "changelog.json"
        wait_until(log.exists, "the change log")
        text = wait_until(lambda: (now := log.read_text(encoding="utf-8")).endswith("\n") and now,
                          "the change log to be written")
        return [entry for entry in json.loads(text) if entry["kind"] == kind]

    def wait_for_changes(self, kind, count):
        wait_until(lambda: len(self.changes(kind)) >= count, f"{count} changes of kind {kind}")
        self.assertEqual(len(self.changes(kind)), count)

    def test_by_the_pointer_alone(self):
        with self.started() as program:
            self.go(program, ByPointer(program))

    def test_by_the_keyboard_alone(self):
        with self.started() as program:
            self.go(program, ByKeyboard(program))

    def go(self, program, hand):
        before = self.database.read_bytes()
        self.take_a_snapshot(program, hand)
        self.follow_the_score(program, hand)
        self.relink_the_first_missing(program, hand)
        self.resolve_the_first_duplicates(program, hand)
        self.restore_the_cues(program, hand)
        self.fix_the_safe_ones(program, hand)
        self.assertNotEqual(self.database.read_bytes(), before)
        self.undo_everything(program, hand)
        self.roll_back(program, hand)
        self.assertEqual(self.database.read_bytes(), before)

    def take_a_snapshot(self, program, hand):
        hand.open("Library & safety")
        hand.use("Take snapshot")
        self.wait_for_changes("snapshot", 1)

    def follow_the_score(self, program, hand):
        hand.open("Library score")
        button = next(name for name in program.texts("push button") if name.startswith("Go to "))
        hand.use(button)
        program.wait_for(button.removeprefix("Go to "), "heading")

    def relink_the_first_missing(self, program, hand):
        hand.open("Missing files")
        first = next(item for item in program.items() if item.name == "Find it").description
        hand.use("Find it", first)
        program.wait_for("Hide", "push button")
        found = program.wait_for("Relink", "push button").description
        hand.use("Relink", found)
        self.wait_for_changes("relink", 1)
        relinked = self.changes("relink")[0]["after"]
        self.assertEqual(pathlib.PurePath(relinked).name, found)
        self.assertIn(relinked.encode("utf-16-be"), self.database.read_bytes())
        wait_until(lambda: not any(item.description == first for item in program.items()),
                   "the row to go")

    def resolve_the_first_duplicates(self, program, hand):
        hand.open("Duplicates")
        keep = next(item for item in program.items()
                    if item.name.startswith("Keep ") and item.role == "push button")
        hand.use(keep.name, keep.description)
        wait_until(lambda: self.changes("dedupe"), "the copies to be held")
        for entry in self.changes("dedupe"):
            self.assertFalse(pathlib.Path("/" + entry["before"].lstrip("/")).exists())

    def restore_the_cues(self, program, hand):
        hand.open("Cues & grids")
        every = next(name for name in program.texts("push button")
                     if name.startswith("Restore all "))
        hand.use(every)
        self.wait_for_changes("restoreCues", int(every.removeprefix("Restore all ")))

    def fix_the_safe_ones(self, program, hand):
        hand.open("Fix queue")
        safe = next(name for name in program.texts("push button") if name.startswith("Fix the "))
        hand.use(safe)
        wait_until(lambda: self.changes("tag"), "the genres to be set")
        program.wait_until_gone(safe, "push button")

    def undo_everything(self, program, hand):
        hand.open("Change log")
        hand.use("Undo everything")
        program.wait_for("Everything reversible has been undone.", "alert message")
        program.wait_until_gone("Undo everything", "push button")
        for entry in self.changes("dedupe"):
            self.assertTrue(pathlib.Path("/" + entry["before"].lstrip("/")).exists())
        relinked = self.changes("relink")[0]["after"]
        self.assertNotIn(relinked.encode("utf-16-be"), self.database.read_bytes())

    def roll_back(self, program, hand):
        hand.roll_back_to_the_first()
        self.wait_for_changes("rollback", 1)
        program.wait_for("The six dimensions", "heading")


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", type=pathlib.Path, required=True)
    options, rest = parser.parse_known_args()
    BUILD = options.build.resolve()
    unittest.main(argv=sys.argv[:1] + rest)
