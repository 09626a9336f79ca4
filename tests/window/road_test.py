#!/usr/bin/env python3
"""The whole road as a person goes it: the built program over a library on disk, from its start to
the score and through every screen. What stands on the window is held against the count that the
library's maker kept while writing it, which shares no code with the program.
"""

import argparse
import json
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "support"))
from desktop import Desktop  # noqa: E402

MIDDLE_OF_SIDEBAR = 119  # from the window's left

BUILD = None
DESKTOP = None

SCREENS = [
    "Library score", "Health", "Library & safety", "Fix queue",
    "Duplicates", "Missing files", "Cues & grids", "Versions", "Track ID",
    "Gig check", "Gig run", "Loudness", "Stems", "Crate hygiene",
    "Suggestions", "What's landing", "Transitions", "Debrief", "Booth companion", "Community IDs",
    "Always clean", "Change log", "USB & export", "Account",
]
UNBUILT = {"Stems", "Suggestions", "Transitions", "Debrief", "Booth companion", "Community IDs",
           "Always clean", "Account"}
DIMENSIONS = ["Files & links", "Cues & grids", "Duplicates", "Tags & genres", "Levels",
              "Export parity"]
GRADES = [(90, "This library is gig-ready."), (75, "Solid. A few fixes from spotless."),
          (55, "Playable, but it needs a clean."), (35, "Rough. Let's fix the big things first."),
          (0, "Needs work before the next set.")]


def setUpModule():
    global DESKTOP
    DESKTOP = Desktop().__enter__()


def tearDownModule():
    DESKTOP.__exit__()


def bytes_text(count):
    """A number of bytes as people read it."""
    if count == 0:
        return "0 MB"
    for unit, size, decimals in (("GB", 1e9, 2), ("MB", 1e6, 1)):
        if count >= size:
            number = f"{count / size:.{decimals}f}".rstrip("0").rstrip(".")
            return f"{number} {unit}"
    return f"{count / 1e3:.0f} KB"


class RoadTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.made = tempfile.TemporaryDirectory(prefix="tarnwick-road-")
        cls.addClassCleanup(cls.made.cleanup)
        folder = pathlib.Path(cls.made.name).resolve()
        cls.library = folder / "home"
        expectations = folder / "expectations.json"
        subprocess.run([BUILD / "tools" / "demo_library", "--tracks", "300", "--seed", "11",
                        "--out", cls.library, "--expect", expectations], check=True,
                       stdout=subprocess.DEVNULL)
        cls.expected = json.loads(expectations.read_text(encoding="utf-8"))

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="tarnwick-home-")
        self.addCleanup(folder.cleanup)
        self.data = pathlib.Path(folder.name).resolve() / "data"
        self.empty = pathlib.Path(folder.name).resolve() / "home"
        self.empty.mkdir()

    def start(self, home=None, **environment):
        return DESKTOP.start([BUILD / "bin" / "tarnwick"], HOME=home or self.library,
                             XDG_DATA_HOME=self.data, **environment)

    def start_and_scan(self, **environment):
        program = self.start(TARNWICK_AUTOSCAN="1", **environment)
        program.wait_for("The six dimensions")
        return program

    def test_the_score_of_a_library_stands_on_the_window(self):
        expected = self.expected
        with self.start_and_scan() as program:
            texts = program.texts()
            score = expected["score"]
            self.assertEqual(texts[texts.index("/100") - 1], str(score))
            self.assertIn(next(text for least, text in GRADES if score >= least), texts)
            self.assertIn(f"System disk · {expected['total']} tracks · scanned just now", texts)
            rows = texts[texts.index("avg = score") + 1:]
            self.assertEqual(rows[0::3], DIMENSIONS)
            self.assertEqual(rows[2::3], [str(score) for score in expected["dimensions"]])
            missing = expected["missing"]
            self.assertIn(f"{missing} files can't be found", rows)
            self.assertEqual(program.output(), "")

    def test_the_sidebar_counts_what_the_library_holds(self):
        expected = self.expected
        untagged = expected["total"] - expected["withGenre"]
        minutes = round(untagged / 5 + expected["missing"] + expected["duplicateExcess"])
        badges = {
            "Library score": str(expected["score"]),
            "Health": f"{minutes}m",
            "Fix queue": str(expected["duplicateExcess"] + expected["missing"]),
            "Duplicates": str(expected["duplicateGroups"]),
            "Missing files": str(expected["missing"]),
            "Track ID": str(untagged),
        }
        with self.start_and_scan() as program:
            shown = {item.name: item.description for item in program.items()
                     if item.role == "push button" and item.description}
            self.assertEqual(shown, badges)
            texts = program.texts()
            for label, value in (("Tracks", str(expected["total"])),
                                 ("On disk", bytes_text(expected["onDiskBytes"])),
                                 ("Reclaim", bytes_text(expected["reclaimableBytes"]))):
                self.assertEqual(texts[texts.index(label) - 1], value)

    def test_every_row_of_the_sidebar_leads_to_its_screen(self):
        with self.start_and_scan() as program:
            for title in [*SCREENS[1:], SCREENS[0]]:
                program.scroll_to(title, MIDDLE_OF_SIDEBAR)
                program.click(title)
                program.wait_for(title, "heading")
                selected = [item.name for item in program.items()
                            if item.is_in("SELECTED") and item.name in SCREENS]
                self.assertEqual(selected, [title])
                if title in UNBUILT:
                    program.wait_for("This screen is designed and scheduled.", "heading")
            self.assertEqual(program.output(), "")

    def test_the_environment_names_the_first_screen(self):
        with self.start(TARNWICK_AUTOSCAN="1", TARNWICK_SCREEN="stems") as program:
            program.wait_for("This screen is designed and scheduled.", "heading")
            program.wait_for("Stems", "heading")
        with self.start_and_scan(TARNWICK_SCREEN="Stems") as program:
            self.assertIsNone(program.find("Stems", "heading"))

    def test_a_library_is_chosen_and_scanned_by_keyboard_alone(self):
        with self.start() as program:
            program.wait_for("Let's look at your library", "heading")
            program.wait_for(str(self.library / "Music/_Serato_"))
            self.assertEqual(program.find("Library score").description, "")
            self.assertNotIn("Tracks", program.texts())
            program.take_the_keyboard()
            self.assertEqual(program.focus_order(), [*SCREENS, "Rescan", "Scan"])
            self.assertEqual(program.focus_after("Down"), "Health")
            self.assertEqual(program.focus_after("End"), "Account")
            self.assertEqual(program.focus_after("Tab"), "Rescan")
            self.assertEqual(program.focus_after("Tab"), "Scan")
            program.key("Return")
            program.wait_for("The six dimensions", "heading")
            self.assertEqual(program.focus_after("Tab"), "Library score")
            program.key("Down", "Down", "space")
            program.wait_for("Library & safety", "heading")

    def test_a_library_is_chosen_and_scanned_through_a_screen_reader(self):
        with self.start() as program:
            program.press("Scan")
            program.wait_for("The six dimensions", "heading")
            program.press("Missing files")
            program.wait_for("Missing files", "heading")
            program.press("Library score")
            program.wait_for("The six dimensions", "heading")
            worst = min(self.expected["dimensions"])
            kind = DIMENSIONS[self.expected["dimensions"].index(worst)]
            screen = {"Files & links": "Missing files", "Tags & genres": "Track ID",
                      "Levels": "Loudness", "Export parity": "USB & export"}.get(kind, kind)
            program.press(f"Go to {screen}")
            program.wait_for(screen, "heading")

    def test_a_rescan_finds_what_has_changed(self):
        home = self.empty / "copy"
        shutil.copytree(self.library / "Music/_Serato_", home / "Music/_Serato_")
        with self.start(home, TARNWICK_AUTOSCAN="1") as program:
            program.wait_for("The six dimensions", "heading")
            before = program.find("Missing files").description
            database = home / "Music/_Serato_/database V2"
            database.write_bytes(database.read_bytes()[:20000])
            program.click("Health")
            program.wait_for("Health", "heading")
            program.click("Rescan")
            program.wait_for("The six dimensions", "heading")
            self.assertLess(int(program.find("Missing files").description or 0), int(before))

    def test_a_library_that_cannot_be_read_is_told_of(self):
        (self.empty / "Music/_Serato_").mkdir(parents=True)
        with self.start(self.empty) as program:
            program.wait_for("No database")
            self.assertIsNone(program.find("Scan"))
            program.press("Rescan")
            program.wait_for("Couldn't read that library: The file “database V2” couldn't be "
                             "opened: No such file or directory.", "alert message")
            program.wait_for("Let's look at your library", "heading")

    def test_without_a_library_the_window_says_so(self):
        with self.start(self.empty) as program:
            program.wait_for("No _Serato_ database found. Open Serato once to create one, "
                                  "then rescan.")
            program.click("Rescan")
            program.click("Health")
            program.wait_for("Let's look at your library", "heading")

    def test_closing_the_window_ends_the_program(self):
        with self.start_and_scan() as program:
            program.close()
            self.assertEqual(program.wait_for_end(), 0)
            self.assertEqual(program.output(), "")


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", type=pathlib.Path, required=True)
    options, rest = parser.parse_known_args()
    BUILD = options.build.resolve()
    unittest.main(argv=sys.argv[:1] + rest)
