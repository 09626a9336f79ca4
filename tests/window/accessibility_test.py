#!/usr/bin/env python3
"""What a screen reader is told of every screen of the built program: that each control has a name
and a state, that each can be pressed, and that Tab comes to all of them in the order in which they
are read.
"""

import argparse
import pathlib
import subprocess
import sys
import tempfile
import time
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "support"))
from desktop import Desktop, wait_until  # noqa: E402

MIDDLE_OF_SIDEBAR = 119  # from the window's left

BUILD = None

SCREENS = [
    "Library score", "Health", "Library & safety", "Fix queue", "Duplicates", "Missing files",
    "Cues & grids", "Versions", "Track ID", "Gig check", "Gig run", "Loudness", "Crate hygiene",
    "What's landing", "Change log", "USB & export", "Stems",
]
# What is pressed or written into.
CONTROLS = {"push button", "check box", "radio button", "toggle button", "text", "password text",
            "combo box", "menu item", "slider", "spin button", "link"}
# What only tells something.
TELLING = {"label", "heading", "list", "list item", "panel", "progress bar", "alert message",
           "image", "separator", "filler", "frame", "scroll pane", "popup menu"}


class AccessibilityTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        made = tempfile.TemporaryDirectory(prefix="tarnwick-heard-")
        cls.addClassCleanup(made.cleanup)
        folder = pathlib.Path(made.name).resolve()
        subprocess.run([BUILD / "tools" / "demo_library", "--tracks", "120", "--seed", "11",
                        "--out", folder / "home"], check=True, stdout=subprocess.DEVNULL)
        desktop = Desktop()
        cls.enterClassContext(desktop)
        cls.program = cls.enterClassContext(desktop.start(
            [BUILD / "bin" / "tarnwick"], HOME=folder / "home", XDG_DATA_HOME=folder / "data",
            TARNWICK_AUTOSCAN="1"))
        cls.program.wait_for("The six dimensions", "heading")

    def on_each_screen(self, check):
        """Calls `check(screen, items)` with what the screen beside the sidebar holds."""
        self.program.take_the_keyboard()
        for screen in SCREENS:
            with self.subTest(screen=screen):
                # From the top, since a screen may have a control of another screen's name.
                self.program.scroll_to("Library score", MIDDLE_OF_SIDEBAR)
                self.program.scroll_to(screen, MIDDLE_OF_SIDEBAR)
                self.program.press(screen)
                self.program.wait_for(screen, "heading")
                items = self.program.items()
                rescan = next(index for index, item in enumerate(items) if item.name == "Rescan")
                check(screen, items[rescan + 1:])

    def test_everything_has_a_role_and_a_name(self):
        def check(screen, items):
            self.assertLessEqual({item.role for item in items}, CONTROLS | TELLING)
            self.assertEqual([item.role for item in items if not item.name.strip()
                              and item.role in CONTROLS | {"label", "heading"}], [])
            headings = [item.name for item in items if item.role == "heading"]
            self.assertEqual(headings[0], screen)
        self.on_each_screen(check)

    def test_every_control_can_be_pressed(self):
        def check(_, items):
            deaf = [item.name for item in items
                    if item.role == "push button" and item.is_in("ENABLED")
                    and "Press" not in self.program.actions(item)]
            self.assertEqual(deaf, [])
        self.on_each_screen(check)

    def test_tab_comes_to_every_control_in_the_order_in_which_they_are_read(self):
        def check(_, items):
            controls = [(item.name, item.description) for item in items
                        if item.role in CONTROLS and item.is_in("ENABLED")
                        and not item.is_in("READ_ONLY")]
            self.program.tab_to("Rescan")
            reached = []
            while len(reached) < len(controls):
                self.program.key("Tab")
                time.sleep(0.05)
                item = self.program.focused_item()
                self.assertIsNotNone(item, f"a stop that has no name, after {reached}")
                if item.name == "Library score" and item.role == "push button":
                    break
                # A row of a long list is made when the keyboard comes to it: it could not be read
                # before.
                made_late = item.role == "check box" and (item.name, item.description) not in controls
                if item.role in CONTROLS and not made_late:
                    reached.append((item.name, item.description))
            self.assertEqual(reached, controls)
        self.on_each_screen(check)

    def test_the_access_key_is_told_to_nobody(self):
        program = self.program
        program.take_the_keyboard()
        program.scroll_to("What's landing", MIDDLE_OF_SIDEBAR)
        program.press("What's landing")
        program.wait_for("Signal server", "text")
        program.tab_to("Signal server")
        program.type("http://127.0.0.1:9")
        program.press("Connect")
        program.press("127.0.0.1")
        field = program.wait_for("", "text", description="Access key")
        while program.focused_item().description != "Access key":
            program.key("Tab")
            time.sleep(0.05)
        program.type("sesame")
        wait_until(lambda: program.text_of(field) == "●" * 6, "the key")
        for item in program.items():
            for words in (item.name, item.description, program.text_of(item)):
                self.assertNotIn("sesame", words)
        program.key("Escape")
        program.wait_until_gone("City", "text")


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", type=pathlib.Path, required=True)
    options, rest = parser.parse_known_args()
    BUILD = options.build.resolve()
    unittest.main(argv=sys.argv[:1] + rest)
