#!/usr/bin/env python3
"""Several programs on one data folder at once: nothing that one of them has kept is lost by another.

two_programs_test.py --build FOLDER
"""

import json
import shutil
import subprocess
import threading
import time
import unittest

import odd_case
from odd_case import IS_LONG, Home, OddCase, audio_with_cues, built, count, text, track

ROUNDS = 40 if IS_LONG else 8


class TwoProgramsTest(OddCase):
    def at_once(self, *streams):
        """Runs streams of commands beside each other; what each command printed, stream by stream."""
        answers = [[] for _ in streams]

        def run(number):
            for command in streams[number]:
                done = command()
                answers[number].append((done.returncode, done.stdout, done.stderr))
                count()

        threads = [threading.Thread(target=run, args=(number,)) for number in range(len(streams))]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        for stream in answers:
            for status, printed, complaint in stream:
                self.assertEqual(status, 0, complaint)
                json.loads(printed)
        return answers

    def home_with_tracks(self, number, **fields):
        home = Home(self.place)
        paths = [home.write(f"Music/Track {i}.mp3", audio_with_cues(b"%d" % i))
                 for i in range(number)]
        home.write_library([track(path, text(b"tsng", f"Song {i}"), text(b"tart", "Artist"))
                            for i, path in enumerate(paths)], **fields)
        home.ask("cues")
        return home, paths

    def test_every_change_of_two_command_lines_is_made_and_logged(self):
        home, paths = self.home_with_tracks(2 * ROUNDS)

        def genres(mine):
            return [lambda path=path: home.run("set-genre", "House", path) for path in mine]

        self.at_once(genres(paths[:ROUNDS]), genres(paths[ROUNDS:]))
        entries = home.ask("changes")["entries"]
        self.assertEqual(len(entries), 2 * ROUNDS)
        self.assertEqual(len({entry["id"] for entry in entries}), 2 * ROUNDS)
        self.assertEqual({scanned["genre"] for scanned in home.ask("scan")["tracks"]}, {"House"})
        snapshots = home.ask("snapshots")["snapshots"]
        self.assertEqual({entry["snapshotID"] for entry in entries}, {s["id"] for s in snapshots})
        home.ask("undo-everything")
        self.assertEqual({scanned["genre"] for scanned in home.ask("scan")["tracks"]}, {""})

    def test_a_window_and_command_lines_keep_each_others_entries(self):
        window = built("bin/tarnwick")
        if not window.exists():
            self.skipTest("the window isn't built")
        home, paths = self.home_with_tracks(ROUNDS)
        seen = 0
        for number in range(2):
            # It takes a snapshot behind its scan, and logs it.
            program = subprocess.Popen(
                [window], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                env=home.environment | {"TARNWICK_AUTOSCAN": "1", "TARNWICK_SNAPSHOT": "1"})
            try:
                end = time.monotonic() + 60
                while True:
                    home.ask("set-genre", f"Genre {seen}", paths[seen % ROUNDS])
                    seen += 1
                    count()
                    entries = home.ask("changes")["entries"]
                    kinds = [entry["kind"] for entry in entries]
                    if kinds.count("snapshot") > number:
                        break
                    self.assertLess(time.monotonic(), end, "the window takes no snapshot")
            finally:
                program.terminate()
                program.wait(30)
        entries = home.ask("changes")["entries"]
        self.assertEqual([entry["after"] for entry in entries if entry["kind"] == "tag"][::-1],
                         [f"Genre {number}" for number in range(seen)])
        self.assertEqual(len({entry["id"] for entry in entries}), seen + 2)

    def test_every_held_file_is_known_while_others_hold_and_look(self):
        home = Home(self.place)
        tracks = []
        for i in range(2 * ROUNDS):
            for copy in ("one", "two"):
                path = home.write(f"Music/{copy}/Song {i}.mp3", b"%d %s" % (i, copy.encode()))
                tracks.append(track(path, text(b"tsng", f"Song {i}"), text(b"tart", "Artist")))
        home.write_library(tracks)
        keys = [group["key"] for group in home.ask("score")["duplicateGroups"]]
        self.assertEqual(len(keys), 2 * ROUNDS)

        def resolved(mine):
            return [lambda key=key: home.run("resolve-duplicates", key) for key in mine]

        # Looking writes too: each launch tidies the list of what is held.
        looks = [lambda: home.run("held")] * (4 * ROUNDS)
        self.at_once(resolved(keys[:ROUNDS]), resolved(keys[ROUNDS:]), looks)
        items = home.ask("held")["items"]
        self.assertEqual(len(items), 2 * ROUNDS)
        self.assertEqual(len({item["id"] for item in items}), 2 * ROUNDS)
        for item in items:
            with open(item["heldPath"], "rb") as file:
                name = item["originalPath"].split("/")
                self.assertEqual(file.read(), b"%s %s" % (name[-1].split()[1][:-4].encode(),
                                                          name[-2].encode()))
        entries = home.ask("changes")["entries"]
        self.assertEqual({entry["holdingID"] for entry in entries}, {item["id"] for item in items})
        self.assertEqual(len(home.ask("scan")["tracks"]), 2 * ROUNDS)
        home.ask("undo-everything")
        self.assertEqual(len(home.ask("scan")["tracks"]), 4 * ROUNDS)
        self.assertEqual([scanned for scanned in home.ask("scan")["tracks"]
                          if not scanned["existsOnDisk"]], [])

    def test_the_vault_keeps_what_each_of_two_scans_has_copied(self):
        home = Home(self.place)
        libraries = []
        for name in "AB":
            folder = home.folder / name / "_Serato_"
            paths = [home.write(f"{name}/{i}.mp3", audio_with_cues(b"%s %d" % (name.encode(), i)))
                     for i in range(200)]
            home.write_library([track(path) for path in paths])
            folder.parent.mkdir(exist_ok=True)
            shutil.move(home.serato, folder)
            libraries.append(folder)
        for _ in range(ROUNDS):
            shutil.rmtree(home.store, ignore_errors=True)
            self.at_once(*([lambda folder=folder: home.run("--library", folder, "cues")]
                           for folder in libraries))
            vault = json.loads((home.store / "cuevault.json").read_bytes())
            self.assertEqual(len(vault), 400)

    def test_settings_are_one_of_those_that_were_set_and_never_begun_anew(self):
        home = Home(self.place)
        identity = home.ask("signal", "set")["signal"]["djHash"]

        def cities(prefix):
            return [lambda i=i: home.run("signal", "set", "--city", f"{prefix} {i}" * 50)
                    for i in range(4 * ROUNDS)]

        answers = self.at_once(cities("Oslo"), cities("Porto"))
        for _, printed, _ in answers[0] + answers[1]:
            self.assertEqual(json.loads(printed)["signal"]["djHash"], identity)
        stored = json.loads((home.store / "signal.json").read_bytes())
        last = 4 * ROUNDS - 1
        self.assertIn(stored["city"], (f"Oslo {last}" * 50, f"Porto {last}" * 50))

    def test_crates_gain_what_two_command_lines_file(self):
        home, paths = self.home_with_tracks(2)
        tracks = []
        for i in range(2 * ROUNDS):
            for cut in ("Clean", "Dirty"):
                path = home.write(f"Music/Song {i} ({cut}).mp3")
                tracks.append(track(path, text(b"tsng", f"Song {i} ({cut})"),
                                    text(b"tart", "Artist")))
        home.write_library(tracks)
        bases = [group["base"] for group in home.ask("versions")["groups"]]
        self.assertEqual(len(bases), 2 * ROUNDS)

        def archived(mine):
            return [lambda base=base: home.run("archive-versions", base) for base in mine]

        self.at_once(archived(bases[:ROUNDS]), archived(bases[ROUNDS:]))
        crates = home.ask("crates")["crates"]
        self.assertEqual([(c["name"], c["count"]) for c in crates], [("Archive", 2 * ROUNDS)])

    def test_two_that_write_the_tags_of_the_same_files_leave_them_whole(self):
        home, paths = self.home_with_tracks(ROUNDS)

        def gains(gain):
            return [lambda path=path: home.run("normalize", "--gain", gain, path)
                    for path in paths]

        self.at_once(gains("-1.5"), gains("-2.5"))
        for i, path in enumerate(paths):
            with open("/" + path, "rb") as file:
                content = file.read()
            self.assertTrue(content.endswith(b"\xff\xfbaudio"))
            self.assertIn(b"Serato Markers2\0\1\1%d" % i, content)
            self.assertTrue((b"-1.50 dB" in content) != (b"-2.50 dB" in content), content)
        self.assertEqual(len(home.ask("changes")["entries"]), 2 * ROUNDS)


if __name__ == "__main__":
    odd_case.main()
