#!/usr/bin/env python3
"""What the built program owes a desktop: one process for a data folder, keys that act everywhere, and an
end that doesn't let itself be waited for.
"""

import argparse
import pathlib
import subprocess
import sys
import tempfile
import time
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "support"))
from desktop import Desktop, Program, wait_until  # noqa: E402

BUILD = None
DESKTOP = None

# What a run keeps of which the user has changed nothing.
KEPT = ["Holding/manifest.json", "cuevault.json", "signal.json"]


def setUpModule():
    global DESKTOP
    DESKTOP = Desktop().__enter__()


def tearDownModule():
    DESKTOP.__exit__()


def record(tag, payload):
    return tag + len(payload).to_bytes(4, "big") + payload


def text(tag, words):
    return record(tag, words.encode("utf-16-be"))


class MannersTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.made = tempfile.TemporaryDirectory(prefix="tarnwick-manners-")
        cls.addClassCleanup(cls.made.cleanup)
        cls.library = pathlib.Path(cls.made.name).resolve() / "home"
        subprocess.run([BUILD / "tools" / "demo_library", "--tracks", "200", "--seed", "3",
                        "--out", cls.library], check=True, stdout=subprocess.DEVNULL)

    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="tarnwick-home-")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name).resolve()
        self.data = self.folder / "data"

    def start(self, home=None, **environment):
        return DESKTOP.start([BUILD / "bin" / "tarnwick"], HOME=home or self.library,
                             XDG_DATA_HOME=self.data, **environment)

    def start_and_scan(self, **environment):
        program = self.start(TARNWICK_AUTOSCAN="1", **environment)
        program.wait_for("The six dimensions", "heading")
        return program

    def start_again(self, **environment):
        """Another start beside the first; its status, and how long it took."""
        begun = time.monotonic()
        ran = subprocess.run(
            [BUILD / "bin" / "tarnwick"], capture_output=True, text=True, timeout=60,
            stdin=subprocess.DEVNULL,
            env={**DESKTOP.environment, "QT_QPA_PLATFORM": "xcb", "QT_QUICK_BACKEND": "software",
                 "HOME": str(self.library), "XDG_DATA_HOME": str(self.data), **environment})
        self.assertEqual(ran.stdout, "")
        return ran.returncode, ran.stderr, time.monotonic() - begun

    def has_the_keyboard(self, program):
        program.key("Tab")
        return program.focused()

    # One process.

    def test_a_second_start_brings_the_first_window_to_the_front(self):
        with self.start_and_scan() as program, \
                DESKTOP.start([BUILD / "bin" / "tarnwick"], HOME=self.library,
                              XDG_DATA_HOME=self.folder / "other") as other:
            # A window that comes up later covers the first and has the keyboard.
            other.take_the_keyboard()
            wait_until(lambda: self.has_the_keyboard(other), "the keyboard of the other window")
            self.assertIsNone(program.focused())
            self.assertEqual(self.start_again()[:2], (0, ""))
            wait_until(lambda: self.has_the_keyboard(program), "the keyboard of the first window")
            self.assertEqual(program.output(), "")

    def test_a_second_start_is_as_good_without_a_message_bus(self):
        nowhere = {"DBUS_SESSION_BUS_ADDRESS": f"unix:path={self.folder}/no-bus"}
        with self.start_and_scan() as program:
            self.assertEqual(self.start_again(**nowhere)[:2], (0, ""))
            wait_until(lambda: self.has_the_keyboard(program), "the keyboard of the first window")

    def test_a_second_start_touches_nothing(self):
        with self.start_and_scan():
            wait_until(lambda: (self.data / "Tarnwick/cuevault.json").exists(), "the vault")
            before = self.files()
            self.assertEqual(self.start_again(TARNWICK_AUTOSCAN="1", TARNWICK_SNAPSHOT="1")[0], 0)
            time.sleep(0.5)
            self.assertEqual(self.files(), before)

    def test_the_next_start_after_one_that_was_killed_is_the_first(self):
        program = self.start_and_scan()
        program.end()
        with self.start_and_scan() as again:
            self.assertEqual(again.output(), "")

    def files(self):
        return {str(file): file.stat().st_mtime_ns for folder in (self.data, self.library)
                for file in folder.rglob("*")}

    # Keys.

    def test_keys_lead_to_the_first_nine_screens_and_scan_again(self):
        with self.start_and_scan() as program:
            program.take_the_keyboard()
            for number, title in enumerate(
                    ["Library score", "Health", "Library & safety", "Fix queue", "Duplicates",
                     "Missing files", "Cues & grids", "Versions", "Track ID"], 1):
                program.key(f"ctrl+{number}")
                program.wait_for(title, "heading")
            for key in ("F5", "ctrl+r"):
                program.key("ctrl+2")
                program.wait_for("Health", "heading")
                program.key(key)
                program.wait_for("The six dimensions", "heading")
            self.assertEqual(program.output(), "")

    # Questions.

    def test_a_file_is_asked_for_in_a_dialog(self):
        with self.start_and_scan() as program:
            program.take_the_keyboard()
            program.key("ctrl+6")
            program.wait_for("Missing files", "heading")
            program.click("Browse…")
            dialog = wait_until(
                lambda: next((item for item in program.items() if item.role == "dialog"), None),
                lambda: f"the dialog; there is {program.output()}{program}")
            self.assertTrue(dialog.name.startswith("Find "), dialog.name)
            program.click("Cancel")
            program.wait_until_gone(dialog.name, "dialog")
            self.assertEqual(program.output(), "")

    # The end.

    def test_a_key_quits(self):
        with self.start_and_scan() as program:
            program.take_the_keyboard()
            program.key("ctrl+q")
            self.assertEqual(program.wait_for_end(), 0)
            self.assertEqual(program.output(), "")

    def large_library(self):
        """A home with so many tracks that a scan has seconds to go."""
        home = self.folder / "large"
        library = home / "Music/_Serato_"
        library.mkdir(parents=True)
        # Each is looked for on disk, behind as many links as the system follows.
        (home / "link0").mkdir()
        for number in range(1, 39):
            (home / f"link{number}").symlink_to(home / f"link{number - 1}")
        tracks = (record(b"otrk", text(b"pfil", f"{str(home)[1:]}/link38/{number}.mp3"))
                  for number in range(400_000))
        (library / "database V2").write_bytes(
            text(b"vrsn", "2.0/Serato Scratch LIVE Database") + b"".join(tracks))
        return home

    def test_it_quits_at_once_in_the_middle_of_a_scan(self):
        home = self.large_library()
        ways = {"key": lambda program: program.key("ctrl+q"), "title bar": Program.close,
                "end of the session": Program.ask_to_end}
        for name, end in ways.items():
            with self.subTest(name), self.start(home) as program:
                program.wait_for("Scan", "push button")
                program.take_the_keyboard()
                before = self.files_of(home)
                program.press("Scan")
                wait_until(lambda: program.find("Missing") and
                           not program.find("The six dimensions"), "the scan")
                begun = time.monotonic()
                end(program)
                self.assertEqual(program.wait_for_end(), 0)
                # A scan of this size has seconds to go; the machine may be busy.
                self.assertFalse((self.data / "Tarnwick/cuevault.json").exists())
                print(f"quit after {time.monotonic() - begun:.2f} s", file=sys.stderr)
                self.assertEqual(self.files_of(home), before)
                self.assertEqual(program.output(), "")

    def test_it_remembers_nothing_but_what_it_says(self):
        home = self.folder / "home"
        subprocess.run([BUILD / "tools" / "demo_library", "--tracks", "60", "--seed", "3",
                        "--out", home], check=True, stdout=subprocess.DEVNULL)
        before = self.files_of(home)
        with DESKTOP.start(
                [BUILD / "bin" / "tarnwick"], HOME=home, TARNWICK_AUTOSCAN="1",
                XDG_DATA_HOME=home / ".local/share", XDG_CONFIG_HOME=home / ".config",
                XDG_CACHE_HOME=home / ".cache", XDG_STATE_HOME=home / ".local/state") as program:
            program.wait_for("The six dimensions", "heading")
            program.take_the_keyboard()
            for number in range(1, 10):
                program.key(f"ctrl+{number}")
            program.press("Missing files")
            program.press("Browse…")
            program.click("Cancel")
            program.wait_until_gone("Cancel", "push button")
            program.press("What's landing")
            program.wait_for("What's landing", "heading")
            vault = home / ".local/share/Tarnwick/cuevault.json"
            wait_until(vault.exists, "the vault")
            program.key("ctrl+q")
            self.assertEqual(program.wait_for_end(), 0)
        left = sorted(set(self.files_of(home)) - set(before))
        self.assertEqual(left, [f".local/share/Tarnwick/{name}" for name in KEPT])
        self.assertEqual({name: stamp for name, stamp in self.files_of(home).items()
                          if name in before}, before)

    @staticmethod
    def files_of(home):
        return {str(file.relative_to(home)): file.stat().st_mtime_ns for file in home.rglob("*")
                if file.is_file()}


class ScaleTest(unittest.TestCase):
    """The window on a desktop that draws everything larger."""

    def setUp(self):
        made = tempfile.TemporaryDirectory(prefix="tarnwick-scale-")
        self.addCleanup(made.cleanup)
        self.folder = pathlib.Path(made.name).resolve()

    def test_everything_grows_with_the_desktop(self):
        subprocess.run([BUILD / "tools" / "demo_library", "--tracks", "60", "--seed", "3",
                        "--out", self.folder / "home"], check=True, stdout=subprocess.DEVNULL)
        sizes = {}
        with Desktop(size=(2600, 1800)) as desktop:
            for factor in (1, 1.5, 2):
                with self.subTest(factor=factor), desktop.start(
                        [BUILD / "bin" / "tarnwick"], HOME=self.folder / "home",
                        XDG_DATA_HOME=self.folder / "data", TARNWICK_AUTOSCAN="1",
                        QT_SCALE_FACTOR=factor) as program:
                    program.wait_for("The six dimensions", "heading")
                    sizes[factor] = desktop.largest_window()
                    # What is within is told in the layout's points, and takes no other place.
                    sizes[factor, "Rescan"] = program.place(program.find("Rescan"))
                    program.press("Health")
                    program.wait_for("Health", "heading")
                    self.assertEqual(program.output(), "")
        for factor in (1.5, 2):
            self.assertEqual(sizes[factor], tuple(factor * length for length in sizes[1]))
            self.assertEqual(sizes[factor, "Rescan"], sizes[1, "Rescan"])


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", type=pathlib.Path, required=True)
    options, rest = parser.parse_known_args()
    BUILD = options.build.resolve()
    unittest.main(argv=sys.argv[:1] + rest)
