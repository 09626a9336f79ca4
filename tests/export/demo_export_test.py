#!/usr/bin/env python3
"""Exports a demo library to each target and reads what was written with readers that are not ours.

What they find is held against what the scan tells. demo_export_test.py --build FOLDER [CLASS]
"""

import argparse
import json
import os
import pathlib
import sqlite3
import struct
import subprocess
import sys
import tempfile
import unittest
import urllib.parse
import xml.etree.ElementTree

BUILD = None
DATABASE = "Engine Library/Database2/m.db"
HOST = "file://localhost"

AWKWARD_NAMES = [
    "Don't \"stop\" & <go> 'now'.mp3",
    "100% + #1; a=b?.mp3",
    "line\nbreak\tand tab.mp3",
    "🎧 漢字 e\u0301.mp3",
    "é" * 125 + "x.mp3",  # 255 bytes
]


def record(tag, payload):
    return tag.encode() + struct.pack(">I", len(payload)) + payload


def text(tag, value):
    return record(tag, value.encode("utf-16-be"))


def seconds_of(length):
    """The whole seconds of "m:s" and "h:m:s"; 0 for anything else."""
    numbers = [int(piece) for piece in length.split(":") if piece.lstrip("+-").isdecimal()]
    if len(numbers) not in (2, 3):
        return 0
    return sum(number * 60 ** place for place, number in enumerate(reversed(numbers)))


def tempo_of(bpm):
    try:
        return float(bpm)
    except ValueError:
        return 0.0


def as_xml_reads_it(value):
    """Readers of XML take white space in an attribute for blanks."""
    return value.replace("\r\n", "\n").translate({ord(blank): " " for blank in "\r\n\t"})


class Library:
    """A demo library, some tracks and crates of awkward names among the rest, and its exports."""

    def __init__(self, home):
        self.home = home
        self.folder = home / "Music" / "_Serato_"
        self.device = home / "USB stick"
        self.environment = {**os.environ, "HOME": str(home), "XDG_DATA_HOME": str(home / "data"),
                            "LC_ALL": "C.UTF-8"}
        subprocess.run([BUILD / "tools" / "demo_library", "--tracks", "400", "--seed", "23",
                        "--out", home], check=True, stdout=subprocess.DEVNULL,
                       env=self.environment)
        for name in AWKWARD_NAMES:
            self.add_track(name, title=name)
        entries = b"".join(record("otrk", text("ptrk", self.path_of(name)))
                           for name in [*AWKWARD_NAMES, "nowhere.mp3", AWKWARD_NAMES[0]])
        for name in ["Don't \"stop\" & <go> 🎧", "two\nlines", "é" * 124 + "x"]:
            crate = self.folder / "Subcrates" / f"{name}.crate"
            crate.write_bytes(text("vrsn", "1.0/Serato ScratchLive Crate") + entries)
        (self.folder / "Subcrates" / "Empty.crate").write_bytes(b"")

    def path_of(self, name):
        return str(self.home / "Music" / name).lstrip("/")

    def add_track(self, name, title):
        (self.home / "Music" / name).write_bytes(b"not really audio")
        with open(self.folder / "database V2", "ab") as database:
            database.write(record("otrk", text("ttyp", "mp3") + text("pfil", self.path_of(name)) +
                                  text("tsng", title) + text("tart", "O'Brien & Søn") +
                                  text("tlen", "04:23") + text("tbpm", "174.5") +
                                  text("tbit", "320.0kbps")))

    def run(self, *arguments):
        done = subprocess.run([BUILD / "bin" / "tarnwick-cli", "--json", *arguments], check=True,
                              stdout=subprocess.PIPE, env=self.environment)
        return json.loads(done.stdout)

    def export(self, target):
        return self.run("export", target, self.device)

    def drift(self, target):
        return self.run("drift", target, self.device)["drift"]

    def tracks_on_disk(self):
        return [track for track in self.run("scan", "--no-tags")["tracks"]
                if track["existsOnDisk"]]

    def playlists(self, tracks):
        """Each crate with an entry, and the places of its tracks, counted from 1."""
        places = {}
        for place, track in enumerate(tracks, 1):
            places[track["relativePath"].removeprefix("/")] = place
        return [(crate["name"], [places[path] for path in crate["paths"] if path in places])
                for crate in self.run("crates")["crates"] if crate["paths"]]


class DemoLibraryTest(unittest.TestCase):
    """A library that is exported once to each target."""

    @classmethod
    def setUpClass(cls):
        cls.home = tempfile.TemporaryDirectory(prefix="tarnwick-export-")
        cls.library = Library(pathlib.Path(cls.home.name).resolve())
        cls.results = {target: cls.library.export(target)
                       for target in ("engine", "rekordbox", "seratoBackup")}
        cls.tracks = cls.library.tracks_on_disk()
        cls.playlists = cls.library.playlists(cls.tracks)

    @classmethod
    def tearDownClass(cls):
        cls.home.cleanup()


class ReadersTest(DemoLibraryTest):
    """What Python's own readers find."""

    def test_the_library_is_worth_exporting(self):
        self.assertGreater(len(self.tracks), 350)
        self.assertGreater(len(self.playlists), 10)
        self.assertLess(len(self.tracks), 400 + len(AWKWARD_NAMES))  # some are missing

    def test_outcomes(self):
        count = len(self.tracks)
        crates = len(list((self.library.folder / "Subcrates").glob("*.crate")))
        items = len(list((self.library.device / "_Serato_ backup").iterdir()))
        expected = {
            "engine": ("Engine DJ SD", DATABASE, count, len(self.playlists)),
            "rekordbox": ("rekordbox USB", "rekordbox.xml", count, len(self.playlists)),
            "seratoBackup": ("Serato backup", "_Serato_ backup", items, crates),
        }
        for target, (name, path, tracks, lists) in expected.items():
            with self.subTest(target):
                self.assertEqual(self.results[target], {
                    "toasts": [{"message": f"Exported {tracks} tracks to {name}",
                                "reversible": False}],
                    "outcome": {"target": name, "path": str(self.library.device / path),
                                "trackCount": tracks, "crateCount": lists}})

    def test_rekordbox_tracks(self):
        document = xml.etree.ElementTree.parse(self.library.device / "rekordbox.xml").getroot()
        self.assertEqual(document.find("COLLECTION").get("Entries"), str(len(self.tracks)))
        elements = document.findall("COLLECTION/TRACK")
        self.assertEqual(len(elements), len(self.tracks))
        for place, (element, track) in enumerate(zip(elements, self.tracks), 1):
            with self.subTest(track["relativePath"]):
                self.assertEqual(element.attrib, self.rekordbox_attributes(place, track))
                tempo = tempo_of(track["bpm"])
                marker = {"Inizio": "0.000", "Bpm": f"{tempo:.2f}", "Metro": "4/4", "Battito": "1"}
                self.assertEqual([child.attrib for child in element],
                                 [marker] if tempo > 0 else [])

    def rekordbox_attributes(self, place, track):
        attributes = {
            "TrackID": str(place),
            "Name": track["displayTitle"],
            "Artist": track["displayArtist"],
            "Album": track["album"],
            "Genre": track["genre"],
            "Kind": track["fileType"].upper() + " File",
            "TotalTime": seconds_of(track["lengthText"]) or "",
            "AverageBpm": f"{tempo:.2f}" if (tempo := tempo_of(track["bpm"])) > 0 else "",
            "Tonality": track["key"],
            "BitRate": track["bitrateKbps"] or "",
        }
        present = {name: as_xml_reads_it(str(value)) for name, value in attributes.items()
                   if name in ("Name", "Artist") or value != ""}
        path = urllib.parse.quote(track["absolutePath"], safe="/-._~")
        return {**present, "Location": HOST + path}

    def test_rekordbox_playlists(self):
        document = xml.etree.ElementTree.parse(self.library.device / "rekordbox.xml").getroot()
        root = document.find("PLAYLISTS/NODE")
        self.assertEqual(root.attrib,
                         {"Type": "0", "Name": "ROOT", "Count": str(len(self.playlists))})
        found = [(node.get("Name"), node.get("Entries"),
                  [int(entry.get("Key")) for entry in node]) for node in root]
        self.assertEqual(found, [(as_xml_reads_it(name), str(len(places)), places)
                                 for name, places in self.playlists])

    def rows(self, query):
        database = sqlite3.connect(f"file:{self.library.device / DATABASE}?mode=ro", uri=True)
        try:
            return database.execute(query).fetchall()
        finally:
            database.close()

    def test_engine_tracks(self):
        expected = [
            (place, track["absolutePath"], track["fileName"], track["displayTitle"],
             track["displayArtist"], track["album"], track["genre"],
             seconds_of(track["lengthText"]), tempo_of(track["bpm"]), track["bitrateKbps"] * 1000,
             track["fileType"], 1, 1)
            for place, track in enumerate(self.tracks, 1)]
        self.assertEqual(
            self.rows("SELECT id, path, filename, title, artist, album, genre, length, bpm, "
                      "bitrate, fileType, isAvailable, isAnalyzed FROM Track ORDER BY id"),
            expected)

    def test_engine_playlists(self):
        lists = [(number, name, 0) for number, (name, _) in enumerate(self.playlists, 1)]
        self.assertEqual(self.rows("SELECT id, title, parentListId FROM Playlist ORDER BY id"),
                         lists)
        entries = [(number, track, "", 0, place)
                   for number, (_, tracks) in enumerate(self.playlists, 1)
                   for place, track in enumerate(tracks, 1)]
        self.assertEqual(
            self.rows("SELECT listId, trackId, databaseUuid, nextEntityId, membershipReference "
                      "FROM PlaylistEntity ORDER BY id"), entries)

    def test_engine_database_is_sound(self):
        self.assertEqual(self.rows("PRAGMA integrity_check"), [("ok",)])
        self.assertEqual(self.rows("PRAGMA foreign_key_check"), [])
        self.assertEqual(self.rows("SELECT id, schemaVersionMajor, schemaVersionMinor, "
                                   "schemaVersionPatch FROM Information"), [(1, 2, 20, 1)])

    def test_backup(self):
        backup = self.library.device / "_Serato_ backup"
        names = {"database V2", "Subcrates", "SmartCrates", "neworder.pref", "window.pref"}
        present = {path.name for path in self.library.folder.iterdir()} & names
        self.assertEqual({path.name for path in backup.iterdir()}, present)
        self.assertIn("database V2", present)
        originals = [path for name in present for path in
                     [self.library.folder / name, *(self.library.folder / name).rglob("*")]]
        self.assertEqual(len(list(backup.rglob("*"))), len(originals))
        for original in originals:
            copy = backup / original.relative_to(self.library.folder)
            self.assertEqual(copy.is_dir(), original.is_dir(), copy)
            if original.is_file():
                self.assertEqual(copy.read_bytes(), original.read_bytes(), copy)


class ToolsTest(DemoLibraryTest):
    """What programs say that others use on such files. One that is missing is a failure."""

    def test_xmllint(self):
        done = subprocess.run(["xmllint", "--noout", self.library.device / "rekordbox.xml"],
                              capture_output=True, text=True, check=False)
        self.assertEqual((done.returncode, done.stderr), (0, ""))

    def test_sqlite3(self):
        done = subprocess.run(["sqlite3", self.library.device / DATABASE,
                               "PRAGMA integrity_check; SELECT count(*) FROM Track;"],
                              capture_output=True, text=True, check=False)
        self.assertEqual((done.returncode, done.stdout, done.stderr),
                         (0, f"ok\n{len(self.tracks)}\n", ""))


class DriftTest(DemoLibraryTest):
    """How far library and device come apart as the library changes."""

    def test_drift(self):
        for target in ("engine", "rekordbox"):
            self.assertEqual(self.library.drift(target), {"seratoOnly": 0, "deviceOnly": 0})
        self.library.add_track("one more.mp3", title="One more")
        (self.library.home / "Music" / AWKWARD_NAMES[2]).unlink()
        for target in ("engine", "rekordbox"):
            self.assertEqual(self.library.drift(target), {"seratoOnly": 1, "deviceOnly": 1})
            self.library.export(target)
            self.assertEqual(self.library.drift(target), {"seratoOnly": 0, "deviceOnly": 0})
        self.assertIsNone(self.library.drift("seratoBackup"))


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", type=pathlib.Path, required=True)
    options, rest = parser.parse_known_args()
    BUILD = options.build.resolve()
    unittest.main(argv=sys.argv[:1] + rest)
