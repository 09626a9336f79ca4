#!/usr/bin/env python3
"""A drive that goes away while the program reads from it or writes to it.

vanishing_drive_test.py --build FOLDER

The drive is a file system in memory, in mounts of the test's own. The program is stopped at several
moments of a run, the drive is taken from its place, and the program goes on. What was on the drive is
looked at afterwards through a descriptor that was opened before.
"""

import json
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import time
import unittest

import odd_case
from odd_case import IS_LONG, Home, OddCase, audio_with_cues, count, text, track

MARK = "TARNWICK_OWN_MOUNTS"
MOMENTS = 24 if IS_LONG else 6
TRACKS = 400


def enter_own_mounts():
    """Starts the test anew where it may mount; without that right it goes on and skips."""
    if MARK in os.environ:
        return
    unshare = ["unshare", "-m"] if os.geteuid() == 0 else ["unshare", "-rm"]
    try:
        tried = subprocess.run([*unshare, "mount", "-t", "tmpfs", "none", "/mnt"],
                               capture_output=True)
    except FileNotFoundError:
        return
    if tried.returncode == 0:
        os.execvpe("unshare", [*unshare, sys.executable, "-B", *sys.argv],
                   os.environ | {MARK: "1"})


class Drive:
    """A file system at a folder, until it vanishes; its content can be looked at until the end."""

    def __init__(self, folder, content):
        self.folder = folder
        folder.mkdir(exist_ok=True)
        subprocess.run(["mount", "-t", "tmpfs", "none", folder], check=True)
        shutil.copytree(content, folder, dirs_exist_ok=True)
        self.handle = os.open(folder, os.O_RDONLY)

    def vanish(self):
        subprocess.run(["umount", "-l", self.folder], check=True)

    def files(self):
        place = pathlib.Path(f"/proc/self/fd/{self.handle}/.")
        return {str(path.relative_to(place)): path.read_bytes()
                for path in place.rglob("*") if path.is_file()}

    def close(self):
        os.close(self.handle)
        if os.path.ismount(self.folder):
            self.vanish()


@unittest.skipUnless(MARK in os.environ, "may not mount a file system here")
class VanishingDriveTest(OddCase):
    def setUp(self):
        super().setUp()
        self.home = Home(self.place)
        self.drive_place = self.home.folder / "drive"
        self.library = self.drive_place / "_Serato_"
        self.paths = []

    def fill(self, cues=b"cue"):
        """What lies on the drive: a library with its files, and duplicates and crates in it."""
        self.paths = [f"{self.drive_place}/Music/Track {i}.mp3"[1:] for i in range(TRACKS)]
        tracks = [track(path, text(b"tsng", f"Song {i // 2}"), text(b"tart", f"Artist {i % 2}"))
                  for i, path in enumerate(self.paths)]
        tracks += [track(f"{self.drive_place}/Music/Copy.mp3"[1:], text(b"tsng", "Song 0"),
                         text(b"tart", "Artist 0"))]
        content = self.place / "content"
        shutil.rmtree(content, ignore_errors=True)
        (content / "Music").mkdir(parents=True)
        for i in range(TRACKS):
            (content / f"Music/Track {i}.mp3").write_bytes(audio_with_cues(cues + b" %d" % i))
        (content / "Music/Copy.mp3").write_bytes(b"a small copy")
        self.home.write_library(tracks, {"A": self.paths[:50], "B": self.paths[:40]})
        shutil.move(self.home.serato, content / "_Serato_")
        return content

    def stopped_runs(self, content, command, stores=None):
        """Runs the command again and again on a fresh drive that vanishes at another moment each
        time; gives the answer and the drive of each."""
        length = self.length_of(content, command, stores)
        for number in range(1, MOMENTS + 1):
            self.renew_data(stores)
            drive = Drive(self.drive_place, content)
            try:
                process = self.home.start(*command)
                time.sleep(length * number / (MOMENTS + 1))
                process.send_signal(signal.SIGSTOP)
                drive.vanish()
                process.send_signal(signal.SIGCONT)
                printed, complaint = process.communicate(timeout=120)
                # 2 where what the command names went with the drive.
                self.assertIn(process.returncode, (0, 1, 2), complaint)
                if printed:
                    json.loads(printed)
                count()
                yield process.returncode, printed, drive
            finally:
                drive.close()

    def renew_data(self, stores):
        shutil.rmtree(self.home.data, ignore_errors=True)
        if stores:
            shutil.copytree(stores, self.home.data)

    def length_of(self, content, command, stores):
        """How long the command takes where nobody disturbs it, in seconds."""
        self.renew_data(stores)
        drive = Drive(self.drive_place, content)
        try:
            begun = time.monotonic()
            done = self.home.run(*command)
            self.assertEqual(done.returncode, 0, done.stderr)
            return time.monotonic() - begun
        finally:
            drive.close()

    def check_stores_and_drive(self, drive, before, after):
        """Every file of the drive is old or new, or held; what the stores hold can be read."""
        self.check_nothing_in_its_place()
        held = {content for content in self.held_files()}
        present = drive.files()
        for path, content in present.items():
            if not path.endswith(".twtmp"):
                self.assertIn(content, (before.get(path), after.get(path)), path)
        for path, content in before.items():
            self.assertTrue(path in present or content in held, f"{path} is lost")
        for look in ("changes", "held", "snapshots"):
            self.home.ask(look)

    def check_nothing_in_its_place(self):
        self.assertEqual(list(self.drive_place.iterdir()), [],
                         "written to the place of a drive that has gone")

    def held_files(self):
        holding = self.home.store / "Holding"
        return [path.read_bytes() for path in holding.rglob("*")
                if path.is_file() and path.name != "manifest.json"]

    def outcome(self, content, *command):
        """The drive after an undisturbed run."""
        drive = Drive(self.drive_place, content)
        try:
            done = self.home.run(*command)
            self.assertEqual(done.returncode, 0, done.stderr)
            return drive.files()
        finally:
            drive.close()
            shutil.rmtree(self.home.data, ignore_errors=True)

    def test_a_scan_ends_with_what_it_still_found(self):
        content = self.fill()
        seen = set()
        for status, printed, _ in self.stopped_runs(content, ["--library", self.library, "scan"]):
            self.check_nothing_in_its_place()
            answer = json.loads(printed)
            if status == 1:
                self.assertIn("database V2", answer["toasts"][0]["message"])
                continue
            self.assertEqual(answer["total"], TRACKS + 1)
            last = answer["progress"][-1]
            self.assertEqual((last["phase"], last["processed"]), ("Scoring…", TRACKS + 1))
            self.assertEqual(last["filesOnDisk"] + last["missing"], TRACKS + 1)
            found = [scanned["existsOnDisk"] for scanned in answer["tracks"]]
            self.assertEqual(sum(found), last["filesOnDisk"])
            self.assertEqual(found, sorted(found, reverse=True), "found again behind the end")
            seen.add(sum(found))
        self.assertTrue(seen, "no scan went on")

    def test_copies_of_cues_stay_whatever_the_scan_can_no_longer_read(self):
        old = self.fill(b"the old cues")
        drive = Drive(self.drive_place, old)
        self.home.ask("--library", self.library, "cues")
        drive.close()
        vault = json.loads((self.home.store / "cuevault.json").read_bytes())
        self.assertEqual(len(vault), TRACKS)
        kept = self.place / "kept"
        shutil.move(self.home.data, kept)
        # Other sizes, so that every file is to be captured anew.
        new = self.fill(b"the new and longer cues")
        for _ in self.stopped_runs(new, ["--library", self.library, "cues"], kept):
            self.check_nothing_in_its_place()
            after = json.loads((self.home.store / "cuevault.json").read_bytes())
            self.assertEqual(after.keys(), vault.keys())
            for path, entry in after.items():
                if entry != vault[path]:
                    self.assertEqual(entry["fileSize"], vault[path]["fileSize"] + 11)
                    self.assertGreater(len(entry["markers2"]), len(vault[path]["markers2"]))

    def check_command(self, *command):
        content = self.fill()
        before = {str(path.relative_to(content)): path.read_bytes()
                  for path in content.rglob("*") if path.is_file()}
        command = ["--library", self.library, *command]
        after = self.outcome(content, *command)
        self.assertNotEqual(before, after)
        for _, _, drive in self.stopped_runs(content, command):
            self.check_stores_and_drive(drive, before, after)

    def test_an_edit_of_the_database_is_made_or_not(self):
        self.check_command("set-genre", "House", f"{self.drive_place}/Music/Track 3.mp3"[1:])

    def test_a_crate_is_merged_or_not(self):
        self.check_command("merge-crates", "A", "B")

    def test_a_duplicate_is_held_or_not(self):
        self.check_command("resolve-duplicates", "artist 0|song 0")

    def test_a_gain_is_written_or_not(self):
        self.check_command("normalize", "--gain", "-3",
                           f"{self.drive_place}/Music/Track 3.mp3"[1:])

    def test_an_export_of_a_drive_that_goes_is_whole_or_told_as_failed(self):
        content = self.fill()
        for target in ("rekordbox", "engine", "seratoBackup"):
            out = self.home.folder / "out"
            command = ["--library", self.library, "export", target, out]
            for status, printed, _ in self.stopped_runs(content, command):
                answer = json.loads(printed)
                outcome = answer.get("outcome")
                self.assertEqual(bool(outcome), status == 0, answer)
                if outcome:
                    self.assertTrue(pathlib.Path(outcome["path"]).exists())
                else:
                    self.assertEqual(len(answer["toasts"]), 1)
                shutil.rmtree(out, ignore_errors=True)

    def test_an_export_to_a_drive_that_goes_claims_only_what_it_has_written(self):
        files = [self.home.write(f"Music/{i}.mp3", b"%d" % i) for i in range(TRACKS)]
        self.home.write_library([track(path) for path in files], {"A": files[:50]})
        before = {path: path.read_bytes() for path in self.home.folder.rglob("*")
                  if path.is_file()}
        empty = self.place / "empty"
        empty.mkdir()
        for target in ("rekordbox", "engine", "seratoBackup"):
            command = ["export", target, self.drive_place]
            for status, printed, drive in self.stopped_runs(empty, command):
                answer = json.loads(printed)
                outcome = answer.get("outcome")
                self.assertEqual(bool(outcome), status == 0, answer)
                if outcome:
                    written = pathlib.Path(outcome["path"])
                    inside = f"/proc/self/fd/{drive.handle}/{written.relative_to(self.drive_place)}"
                    self.assertTrue(written.exists() or os.path.exists(inside), answer)
                for left in self.drive_place.iterdir():
                    shutil.rmtree(left) if left.is_dir() else left.unlink()
        self.assertEqual({path: path.read_bytes() for path in self.home.folder.rglob("*")
                          if path.is_file()}, before)


if __name__ == "__main__":
    enter_own_mounts()
    odd_case.main()
