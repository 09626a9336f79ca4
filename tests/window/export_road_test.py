#!/usr/bin/env python3
"""The dialogs for a folder and for a file, and an export to a drive, in the built program on a
desktop that brings no dialog of its own: Qt's takes its place then, drawn in the window. What was
written is read from the drive, and what is revealed is what the desktop's file manager is told.
"""

import argparse
import contextlib
import pathlib
import sqlite3
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "support"))
from desktop import Desktop, wait_until  # noqa: E402

BUILD = None
DESKTOP = None

FILE_MANAGER = "org.freedesktop.FileManager1"
INTERFACE = f"""<node><interface name="{FILE_MANAGER}"><method name="ShowItems">
<arg type="as" direction="in"/><arg type="s" direction="in"/></method></interface></node>"""


def setUpModule():
    global DESKTOP
    DESKTOP = Desktop().__enter__()


def tearDownModule():
    DESKTOP.__exit__()


@contextlib.contextmanager
def file_manager():
    """The list of what the desktop's file manager is told to show."""
    from gi.repository import Gio

    shown = []

    def show(_connection, _sender, _path, _interface, _method, parameters, answer):
        shown.extend(parameters.unpack()[0])
        answer.return_value(None)

    flags = Gio.DBusConnectionFlags
    bus = Gio.DBusConnection.new_for_address_sync(
        DESKTOP.environment["DBUS_SESSION_BUS_ADDRESS"],
        flags.AUTHENTICATION_CLIENT | flags.MESSAGE_BUS_CONNECTION, None, None)
    bus.set_exit_on_close(False)
    bus.register_object("/org/freedesktop/FileManager1",
                        Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0], show, None, None)
    Gio.bus_own_name_on_connection(bus, FILE_MANAGER, Gio.BusNameOwnerFlags.NONE, None, None)
    try:
        yield shown
    finally:
        bus.close_sync(None)


class ExportRoadTest(unittest.TestCase):
    def setUp(self):
        made = tempfile.TemporaryDirectory(prefix="tarnwick-export-")
        self.addCleanup(made.cleanup)
        self.folder = pathlib.Path(made.name).resolve()
        self.drive = self.folder / "drives" / "GIG USB"
        self.drive.mkdir(parents=True)
        subprocess.run([BUILD / "tools" / "demo_library", "--tracks", "60", "--seed", "3",
                        "--out", self.folder / "home"], check=True, stdout=subprocess.DEVNULL)

    def start(self, screen):
        """Works in the folder of the drives, on which the dialog opens."""
        return DESKTOP.start(["env", "-C", self.drive.parent, BUILD / "bin" / "tarnwick"],
                             HOME=self.folder / "home", XDG_DATA_HOME=self.folder / "data",
                             TARNWICK_AUTOSCAN="1", TARNWICK_SCREEN=screen)

    def test_a_library_goes_to_a_drive_and_is_revealed_there(self):
        with self.start("export") as program, file_manager() as shown:
            program.click("Choose destination…")
            program.wait_for("Pick a drive or folder to export to", "dialog")
            program.click("Choose")
            program.wait_until_gone("Pick a drive or folder to export to", "dialog")
            program.wait_for("GIG USB", "push button")
            program.wait_for("No previous export here yet — nothing to compare.")
            export = next(name for name in program.texts("push button")
                          if name.startswith("Export "))
            count = int(export.split()[1])
            program.click(export)
            program.wait_for("Drift from the device", "heading")
            outcome = next(text for text in program.texts() if text.endswith(" → m.db"))
            self.assertTrue(outcome.startswith(f"{count} tracks · "), outcome)
            written = self.drive / "Engine Library" / "Database2" / "m.db"
            with contextlib.closing(sqlite3.connect(written)) as database:
                self.assertEqual(database.execute("SELECT count(*) FROM Track").fetchone()[0],
                                 count)
            program.click("Reveal")
            wait_until(lambda: program.find("Reveal") and shown, "the file manager to be told")
            self.assertEqual(shown, [written.as_uri()])
            self.assertEqual(program.output(), "")

    def test_nothing_is_chosen_where_the_dialog_is_cancelled(self):
        with self.start("export") as program:
            program.click("Choose destination…")
            program.click("Cancel")
            program.wait_until_gone("Cancel", "push button")
            program.wait_for("Choose destination…", "push button")
            self.assertIsNone(program.find("GIG USB"))
            # A screen reader reaches what lies below a dialog; there is one all the same.
            for _ in range(2):
                program.press("Choose destination…")
            program.wait_for("Cancel", "push button")
            self.assertEqual(len([item for item in program.items() if item.name == "Cancel"]), 1)

    def test_the_window_closes_over_an_open_dialog(self):
        for screen, button in (("export", "Choose destination…"), ("missing", "Browse…")):
            with self.subTest(button), self.start(screen) as program:
                program.click(button)
                program.wait_for("Cancel", "push button")
                program.close()
                self.assertEqual(program.wait_for_end(), 0)
                self.assertEqual(program.output(), "")


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", type=pathlib.Path, required=True)
    options, rest = parser.parse_known_args()
    BUILD = options.build.resolve()
    unittest.main(argv=sys.argv[:1] + rest)
