#!/usr/bin/env python3
"""Data folders that can't be written: a disk that is full, a folder that is none, one without rights.

data_folder_test.py --build FOLDER

Whatever the program keeps for itself is then kept in memory alone; what it kept before stays as it
is, the library can be looked at, and what a command changes of it is told as it was.
"""

import json
import os
import pathlib
import shutil
import subprocess
import unittest

import odd_case
from odd_case import Home, OddCase, audio_with_cues, built, count, text, track

IN_OWN_MOUNTS = ("unshare", "-m") if os.geteuid() == 0 else ("unshare", "-rm")
LOOKS = (["libraries"], ["scan"], ["score"], ["queue"], ["cues"], ["changes"], ["held"],
         ["snapshots"], ["history"], ["signal", "set"])


def may_mount():
    try:
        return subprocess.run([*IN_OWN_MOUNTS, "mount", "-t", "tmpfs", "none", "/mnt"],
                              capture_output=True).returncode == 0
    except FileNotFoundError:
        return False


def tree(folder):
    return {str(path.relative_to(folder)): path.read_bytes() if path.is_file() else None
            for path in folder.rglob("*")}


class DataFolderTest(OddCase):
    def setUp(self):
        super().setUp()
        self.home = Home(self.place)
        self.paths = [self.home.write(f"Music/Track {i}.mp3", audio_with_cues(b"%d" % i))
                      for i in range(30)]
        self.home.write_library([track(path, text(b"tsng", f"Song {i}"), text(b"tart", "Artist"))
                                 for i, path in enumerate(self.paths)])

    def keep_something(self):
        """Fills every store."""
        self.home.ask("cues")
        self.home.ask("signal", "set", "--city", "Oslo")
        for path in self.paths[:3]:
            self.home.ask("set-genre", "House", path)

    def stores(self):
        """What the stores hold, as the program reads them."""
        return {"changes": self.home.ask("changes"), "cues": self.home.ask("cues")["protected"],
                "held": self.home.ask("held")["count"],
                "signal": self.home.ask("signal", "set")["signal"],
                "snapshots": self.home.ask("snapshots")}

    def within(self, script, *arguments):
        """Runs a command of the shell with mounts of its own; "$@" stands for the command line."""
        return subprocess.run([*IN_OWN_MOUNTS, "sh", "-euc", script, "sh",
                               *self.home.command(*arguments)], capture_output=True, timeout=120,
                              env=self.home.environment | {"DATA": str(self.home.data)})

    def look_at_everything(self, run):
        for look in LOOKS:
            done = run(*look)
            self.assertEqual(done.returncode, 0, (look, done.stderr))
            json.loads(done.stdout)
            self.assertEqual(done.stderr, b"", look)
            count()

    def check_the_window_starts(self, before, **environment):
        """With a scan and all that follows it, until it is told to end."""
        program = built("bin/tarnwick")
        if not program.exists():
            self.skipTest("the window isn't built")
        ran = subprocess.run([*before, "timeout", "--preserve-status", "-s", "TERM", "4", program],
                             env=self.home.environment | {"TARNWICK_AUTOSCAN": "1",
                                                          "DATA": str(self.home.data)} | environment,
                             capture_output=True, timeout=60)
        # Ended by the signal, and by nothing before it.
        self.assertIn(ran.returncode, (0, 143), ran.stderr)
        count()

    # A full disk.

    FULL = ("mkdir -p $DATA; mount -t tmpfs -o size=256k none $DATA; "
            "[ ! -d $DATA.kept ] || cp -a $DATA.kept/. $DATA/; "
            "cat /dev/zero >$DATA/filler 2>/dev/null || true; ")

    def on_a_full_disk(self, *arguments, after="true"):
        done = self.within(self.FULL + '"$@" || status=$?; ' + after + "; exit ${status:-0}",
                           *arguments)
        count()
        return done

    @unittest.skipUnless(may_mount(), "may not mount a file system here")
    def test_a_first_launch_on_a_full_disk_shows_everything(self):
        self.look_at_everything(self.on_a_full_disk)

    @unittest.skipUnless(may_mount(), "may not mount a file system here")
    def test_no_store_is_lost_to_a_full_disk(self):
        self.keep_something()
        kept = self.stores()
        shutil.copytree(self.home.data, f"{self.home.data}.kept")
        # What would make a store grow: more cues than the vault has, more entries, other settings.
        commands = [*LOOKS, ["set-genre", "Techno", self.paths[7]], ["snapshot"],
                    ["signal", "set", "--city", "Reykjavik" * 10000]]
        more = [self.home.write(f"Music/More {i}.mp3", audio_with_cues(b"m" * 30000))
                for i in range(20)]
        self.home.write_library([track(path) for path in self.paths + more])
        for command in commands:
            back = self.place / "after"
            done = self.on_a_full_disk(*command, after=f"rm $DATA/filler; cp -a $DATA {back}")
            self.assertIn(done.returncode, (0, 1), (command, done.stderr))
            json.loads(done.stdout)
            self.home.write_library([track(path) for path in self.paths])
            shutil.rmtree(self.home.data)
            shutil.move(back, self.home.data)
            left = self.stores()
            for store in ("cues", "signal", "held"):
                self.assertEqual(left[store], kept[store], command)
            for store, name in (("changes", "entries"), ("snapshots", "snapshots")):
                self.assertEqual([item for item in left[store][name] if item in kept[store][name]],
                                 kept[store][name], command)
            self.home.write_library([track(path) for path in self.paths + more])
        # With room again all of it is kept.
        self.home.ask("set-genre", "Disco", self.paths[9])
        self.assertEqual(self.home.ask("changes")["entries"][0]["after"], "Disco")
        self.assertEqual(self.home.ask("cues")["protected"], len(self.paths) + len(more))

    @unittest.skipUnless(may_mount(), "may not mount a file system here")
    def test_a_snapshot_that_has_no_room_is_told_and_leaves_nothing(self):
        self.home.write("Music/_Serato_/Subcrates/Large.crate", b"c" * 400_000)
        done = self.on_a_full_disk("snapshot", after="ls $DATA/Tarnwick/Snapshots >&2")
        self.assertEqual(done.returncode, 1)
        self.assertTrue(json.loads(done.stdout)["toasts"][0]["message"].startswith(
            "Snapshot failed: The file "))
        self.assertEqual(done.stderr.decode().count("\n"), 1, done.stderr)

    @unittest.skipUnless(may_mount(), "may not mount a file system here")
    def test_a_change_goes_on_without_a_snapshot_where_there_is_no_room(self):
        done = self.on_a_full_disk("set-genre", "House", self.paths[0])
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(self.home.ask("scan")["tracks"][0]["genre"], "House")

    @unittest.skipUnless(may_mount(), "may not mount a file system here")
    def test_a_database_on_a_full_disk_stays_as_it_was(self):
        before = self.home.database.read_bytes()
        script = ("mount -t tmpfs -o size=256k none $HOME/Music/_Serato_; "
                  "cat $HOME/../before >\"$HOME/Music/_Serato_/database V2\"; "
                  "cat /dev/zero >$HOME/Music/_Serato_/filler 2>/dev/null || true; "
                  '"$@" || status=$?; cat "$HOME/Music/_Serato_/database V2" >$HOME/../after; '
                  "ls -A $HOME/Music/_Serato_ >$HOME/../names; exit ${status:-0}")
        (self.place / "before").write_bytes(before)
        done = self.within(script, "set-genre", "House", self.paths[0])
        self.assertEqual(done.returncode, 1)
        self.assertEqual(json.loads(done.stdout)["toasts"][0]["message"],
                         "Write failed: The file “database V2” couldn't be written: "
                         "No space left on device.")
        self.assertEqual((self.place / "after").read_bytes(), before)
        self.assertEqual((self.place / "names").read_text().split("\n"),
                         ["database V2", "filler", ""])
        self.assertEqual(self.home.ask("changes")["entries"], [])
        count()

    @unittest.skipUnless(may_mount(), "may not mount a file system here")
    def test_the_window_starts_on_a_full_disk(self):
        self.check_the_window_starts([*IN_OWN_MOUNTS, "sh", "-euc", self.FULL + '"$@"', "sh"])

    # A data folder that is none.

    def test_a_file_in_the_place_of_the_data_folder_stays(self):
        for place in ("data", "data/Tarnwick"):
            shutil.rmtree(self.home.data, ignore_errors=True)
            self.home.data.unlink() if self.home.data.is_file() else None
            file = self.place / place
            file.parent.mkdir(exist_ok=True)
            file.write_bytes(b"a file of the user's")
            self.look_at_everything(self.home.run)
            messages = self.home.messages("snapshot", status=1)
            self.assertTrue(messages[0].startswith("Snapshot failed: "), messages)
            self.assertEqual(self.home.messages("set-genre", place, self.paths[0]), [])
            self.assertEqual(self.home.ask("scan")["tracks"][0]["genre"], place)
            self.assertEqual(file.read_bytes(), b"a file of the user's")
            self.check_the_window_starts([])

    def test_folders_in_the_place_of_the_stores_stay(self):
        for store in ("changelog.json", "cuevault.json", "signal.json", "Holding/manifest.json"):
            (self.home.store / store / "inside").mkdir(parents=True)
        self.look_at_everything(self.home.run)
        self.assertEqual(self.home.messages("set-genre", "House", self.paths[0]), [])
        self.assertEqual(self.home.ask("changes")["entries"], [])
        for store in ("changelog.json", "cuevault.json", "signal.json", "Holding/manifest.json"):
            self.assertTrue((self.home.store / store / "inside").is_dir())
        self.check_the_window_starts([])

    def test_a_file_in_the_place_of_holding_keeps_every_duplicate(self):
        copies = [self.home.write(f"Music/{i}.mp3", b"%d" % i) for i in range(2)]
        self.home.write_library([track(path, text(b"tsng", "Song"), text(b"tart", "Artist"))
                                 for path in copies])
        self.home.store.mkdir(parents=True)
        (self.home.store / "Holding").write_bytes(b"no folder")
        key = self.home.ask("score")["duplicateGroups"][0]["key"]
        before = tree(self.home.folder)
        messages = self.home.messages("resolve-duplicates", key, status=1)
        self.assertIn("couldn't be created", messages[0])
        self.assertEqual(tree(self.home.folder), before)
        self.assertEqual(self.home.ask("changes")["entries"], [])
        count()

    # Without rights.

    READ_ONLY = "mount --bind $DATA $DATA; mount -o remount,ro,bind $DATA; "

    @unittest.skipUnless(may_mount(), "may not mount a file system here")
    def test_a_read_only_data_folder_is_read_and_stays(self):
        self.keep_something()
        kept = tree(self.home.data)

        def run(*arguments):
            return self.within(self.READ_ONLY + 'exec "$@"', *arguments)

        self.look_at_everything(run)
        entries = json.loads(run("changes").stdout)["entries"]
        self.assertEqual(len(entries), 3)
        self.assertEqual(json.loads(run("signal", "set").stdout)["signal"]["city"], "Oslo")
        done = run("snapshot")
        self.assertEqual(done.returncode, 1)
        self.assertIn("Read-only file system", json.loads(done.stdout)["toasts"][0]["message"])
        done = run("set-genre", "Techno", self.paths[4])
        self.assertEqual((done.returncode, done.stderr), (0, b""))
        self.assertEqual(self.home.ask("scan")["tracks"][4]["genre"], "Techno")
        self.assertEqual(tree(self.home.data), kept)
        self.check_the_window_starts([*IN_OWN_MOUNTS, "sh", "-euc", self.READ_ONLY + 'exec "$@"',
                                      "sh"])
        self.assertEqual(tree(self.home.data), kept)

    @unittest.skipUnless(may_mount(), "may not mount a file system here")
    def test_a_read_only_home_can_be_looked_at_and_refuses_every_change(self):
        self.home.data = self.home.folder / ".local/share"
        self.home.environment |= {"XDG_DATA_HOME": ""}
        lost = self.home.write("Music/Lost.mp3")
        self.home.write_library([track(path, text(b"tsng", "Song"), text(b"tart", "Artist"))
                                 for path in [*self.paths[:2], lost]])
        os.unlink("/" + lost)
        before = tree(self.home.folder)
        script = "mount --bind $HOME $HOME; mount -o remount,ro,bind $HOME; exec \"$@\""

        def run(*arguments):
            return self.within(script, *arguments)

        self.look_at_everything(run)
        key = json.loads(run("score").stdout)["duplicateGroups"][0]["key"]
        for command in (["set-genre", "House", self.paths[0]], ["drop", lost],
                        ["relink", lost, "/" + self.paths[0]], ["resolve-duplicates", key],
                        ["normalize", "--gain", "-2", self.paths[0]], ["file-orphans"],
                        ["snapshot"]):
            done = run(*command)
            self.assertEqual(done.returncode, 1, command)
            for toast in json.loads(done.stdout)["toasts"]:
                self.assertIn("Read-only file system", toast["message"], command)
            count()
        self.assertEqual(tree(self.home.folder), before)

    @unittest.skipUnless(os.geteuid() == 0 and shutil.which("setpriv"),
                         "only root may become another user here")
    def test_a_data_folder_of_somebody_else_is_left_alone(self):
        self.keep_something()
        for path in [self.place, *self.place.rglob("*")]:
            os.chmod(path, 0o755 if path.is_dir() else 0o644)
        kept = tree(self.home.data)
        nobody = ("setpriv", "--reuid=65534", "--regid=65534", "--clear-groups")
        if subprocess.run([*nobody, built("bin/tarnwick-cli"), "--version"],
                          capture_output=True).returncode != 0:
            self.skipTest("nobody may run the program where it is built")

        def run(*arguments):
            return self.home.run(*arguments, before=nobody)

        self.look_at_everything(run)
        self.assertEqual(len(json.loads(run("changes").stdout)["entries"]), 3)
        done = run("set-genre", "Techno", self.paths[4])
        self.assertEqual(done.returncode, 1)
        self.assertIn("Permission denied", json.loads(done.stdout)["toasts"][0]["message"])
        os.chmod(self.home.store, 0o700)
        self.look_at_everything(run)
        self.assertEqual(json.loads(run("changes").stdout)["entries"], [])
        self.assertEqual(tree(self.home.data), kept)


if __name__ == "__main__":
    odd_case.main()
