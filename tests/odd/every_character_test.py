#!/usr/bin/env python3
"""Every character of Unicode, in every text that the program reads, keeps, writes or shows.

every_character_test.py --build FOLDER

All code points from 1 on but the surrogates: controls, noncharacters, marks of direction, what has no
meaning yet. Next to them the halves of pairs, and names that differ in nothing but their composition.
"""

import json
import os
import pathlib
import shutil
import sqlite3
import unittest
import urllib.parse
import xml.etree.ElementTree

import odd_case
from odd_case import Home, OddCase, audio_with_cues, count, crate, record, text, track

ALL = "".join(chr(code) for code in range(1, 0x110000) if not 0xD800 <= code <= 0xDFFF)
VERSION = text(b"vrsn", "2.0/Serato Scratch LIVE Database")


def pieces(characters, size):
    return [characters[i:i + size] for i in range(0, len(characters), size)]


def is_xml(character):
    """Whether XML 1.0 has a place for it."""
    return character in "\t\n\r" or ("\x20" <= character and character not in "\ufffe\uffff")


def names():
    """Every character that a file's name can hold, in names as long as they may be."""
    return [f"n{piece}.mp3" for piece in pieces(ALL.replace("/", ""), 60)]


class EveryCharacterTest(OddCase):
    def setUp(self):
        super().setUp()
        self.home = Home(self.place)

    def database(self, tracks):
        self.home.write("Music/_Serato_/database V2", VERSION + b"".join(tracks))

    # Texts of the database.

    def test_texts_come_out_as_they_went_in_and_an_edit_leaves_the_others_alone(self):
        tracks = []
        chunks = pieces(ALL, 2000)
        for i, chunk in enumerate(chunks):
            tracks.append(track(f"Music/{i}.mp3", text(b"tsng", chunk), text(b"tart", chunk),
                                text(b"talb", chunk), text(b"tgen", chunk), text(b"tkey", chunk),
                                text(b"tcom", chunk), record(b"\x01\x7f~!", chunk.encode())))
        last = track("Music/last.mp3", text(b"tsng", "last"), text(b"tgen", "old"))
        edited = track("Music/last.mp3", text(b"tsng", "last"), text(b"tgen", "new"))
        self.database([*tracks, last])
        scanned = self.home.ask("scan", "--no-tags")["tracks"]
        for i, chunk in enumerate(chunks):
            for field in ("title", "artist", "album", "genre", "key"):
                self.assertEqual(scanned[i][field], chunk)
            count(5)
        self.home.ask("set-genre", "new", "Music/last.mp3")
        self.assertEqual(self.home.database.read_bytes(), VERSION + b"".join([*tracks, edited]))
        self.home.ask("undo-everything")
        self.assertEqual(self.home.database.read_bytes(), VERSION + b"".join([*tracks, last]))

    def test_a_genre_of_any_characters_is_written_logged_shown_and_undone(self):
        def library(genre):
            return VERSION + track("Music/a.mp3", text(b"tsng", "a"), text(b"tgen", genre))

        self.home.write("Music/_Serato_/database V2", library("before"))
        chunks = pieces(ALL, 30000)
        for chunk in chunks:
            self.home.ask("--", "set-genre", f"G{chunk}", "Music/a.mp3")
            self.assertEqual(self.home.database.read_bytes(), library(f"G{chunk}"))
            self.assertEqual(self.home.ask("scan", "--no-tags")["tracks"][0]["genre"], f"G{chunk}")
            count()
        entries = self.home.ask("changes")["entries"]
        self.assertEqual([entry["after"] for entry in entries], [f"G{c}" for c in chunks[::-1]])
        stored = json.loads((self.home.store / "changelog.json").read_bytes())
        self.assertEqual([entry["after"] for entry in stored], [f"G{c}" for c in chunks[::-1]])
        self.home.ask("undo-everything")
        self.assertEqual(self.home.database.read_bytes(), library("before"))

    def test_a_genre_is_suggested_whatever_its_characters(self):
        tracks = []
        chunks = pieces(ALL, 1000)
        for i, chunk in enumerate(chunks):
            tracks += [track(f"{i} {j}.mp3", text(b"tart", f"A{chunk}z"), text(b"tgen", f"G{chunk}z"))
                       for j in range(3)]
            tracks.append(track(self.home.write(f"{i}.mp3"), text(b"tart", f"A{chunk}z")))
        self.database(tracks)
        suggested = [entry["genre"] for entry in self.home.ask("genres")["suggestions"]]
        self.assertTrue(suggested == [f"G{chunk}z" for chunk in chunks])
        count(len(chunks))

    def test_what_a_user_types_is_kept_as_it_is(self):
        self.database([track("a.mp3")])
        for chunk in pieces(ALL, 30000):
            self.home.ask("snapshot", "--reason", f"R{chunk}")
            snapshot = self.home.ask("snapshots")["snapshots"][0]
            self.assertTrue(snapshot["reason"] == f"R{chunk}")
            folder = self.home.store / "Snapshots" / snapshot["id"]
            stored = json.loads((folder / "meta.json").read_text("utf-8"))
            self.assertTrue(stored["reason"] == f"R{chunk}")
            shutil.rmtree(folder)
            self.home.ask("signal", "set", "--city", f"C{chunk}", "--key", f"K{chunk}")
            stored = json.loads((self.home.store / "signal.json").read_text("utf-8"))
            self.assertTrue((stored["city"], stored["apiKey"]) == (f"C{chunk}", f"K{chunk}"))
            count(4)

    def test_halves_of_pairs_stay_in_the_file_and_are_shown_as_replaced(self):
        halves = [b"\xd8\x00\x00A", b"\x00A\xdb\xff", b"\xdc\x00\xd8\x00", b"\xd8\x00" * 3, b"\xdf\xff"]
        tracks = [track(f"{i}.mp3", text(b"tsng", half), text(b"tart", half), text(b"tgen", half))
                  for i, half in enumerate(halves)]
        tracks.append(track(b"\0x\xd8\x00\0y", text(b"tsng", "a path of its own")))
        last = track("last.mp3", text(b"tgen", "old"))
        self.database([*tracks, last])
        scanned = self.home.ask("scan")["tracks"]
        for i, half in enumerate(halves):
            shown = half.decode("utf-16-be", "replace")
            self.assertEqual(set(scanned[i]["title"]) - {"A"}, {"\ufffd"}, shown)
            count()
        self.assertEqual(scanned[len(halves)]["relativePath"], "x\ufffdy")
        self.home.ask("set-genre", "new", "last.mp3")
        self.assertEqual(self.home.database.read_bytes(), VERSION + b"".join(tracks)
                         + track("last.mp3", text(b"tgen", "new")))
        self.home.ask("export", "rekordbox", self.place / "out")
        self.home.ask("export", "engine", self.place / "out")

    def test_stores_with_escaped_halves_are_read_or_taken_for_empty(self):
        entry = {"date": "2026-11-20T12:00:00Z", "detail": "\ud800", "id": "chg-1-1", "kind": "tag",
                 "reversed": False, "target": "\udfff\ud800x"}
        self.home.store.mkdir(parents=True)
        (self.home.store / "changelog.json").write_text(json.dumps([entry]))
        for shown in self.home.ask("changes")["entries"]:
            self.assertEqual(shown["detail"], "\ufffd")
        self.database([track("a.mp3")])
        self.home.ask("set-genre", "House", "a.mp3")
        (self.home.store / "changelog.json").read_text("utf-8")
        count()

    # Names of files and crates.

    def library_of_names(self, audio=lambda i: b"audio"):
        all_names = names()
        paths = [self.home.write(f"Music/{name}", audio(i)) for i, name in enumerate(all_names)]
        return all_names, paths

    def test_names_of_files_are_found_filed_exported_and_read_back(self):
        all_names, paths = self.library_of_names()
        tracks = [track(path, text(b"tsng", f"Title {i}"), text(b"tart", "Artist"))
                  for i, path in enumerate(paths)]
        self.home.write_library(tracks, {"Every": paths})
        scanned = self.home.ask("scan")["tracks"]
        self.assertEqual([entry["relativePath"] for entry in scanned], paths)
        self.assertEqual([entry["fileName"] for entry in scanned], all_names)
        self.assertTrue(all(entry["existsOnDisk"] for entry in scanned))
        self.assertEqual(self.home.ask("crates")["crates"][0]["paths"], paths)
        count(len(paths))
        out = self.place / "out"
        self.home.ask("export", "rekordbox", out)
        root = xml.etree.ElementTree.fromstring((out / "rekordbox.xml").read_bytes())
        found = [urllib.parse.unquote(element.get("Location"), errors="strict")
                 for element in root.iter("TRACK") if element.get("Location")]
        self.assertEqual(found, [f"file://localhost/{path}" for path in paths])
        count(len(found))
        self.home.ask("export", "engine", out)
        base = sqlite3.connect(out / "Engine Library/Database2/m.db")
        self.assertEqual([path for path, in base.execute("SELECT path FROM Track ORDER BY id")],
                         [f"/{path}" for path in paths])
        self.assertEqual(base.execute("PRAGMA integrity_check").fetchall(), [("ok",)])
        base.close()
        count(len(paths))
        for target in ("rekordbox", "engine"):
            self.assertEqual(self.home.ask("drift", target, out)["drift"],
                             {"seratoOnly": 0, "deviceOnly": 0})
        os.unlink(self.home.serato / "Subcrates/Every.crate")
        self.home.ask("file-orphans")
        filed = (self.home.serato / "Subcrates/Unsorted.crate").read_bytes()
        self.assertEqual(filed, crate(sorted(paths, key=lambda path: path.encode("utf-16-be"))))

    def test_cues_of_files_of_any_name_are_kept_and_put_back(self):
        all_names, paths = self.library_of_names(lambda i: audio_with_cues(b"%d" % i))
        self.home.write_library([track(path) for path in paths])
        self.assertEqual(self.home.ask("cues")["protected"], len(paths))
        vault = json.loads((self.home.store / "cuevault.json").read_text("utf-8"))
        self.assertEqual(set(vault), set(paths))
        self.assertEqual(list(vault), sorted(vault, key=lambda path: path.encode("utf-16-be")))
        count(len(paths))
        for path in paths[::3000]:
            whole = pathlib.Path("/" + path).read_bytes()
            pathlib.Path("/" + path).write_bytes(whole.replace(b"Serato M", b"Nobody M"))
            self.assertEqual([loss["path"] for loss in self.home.ask("cues")["losses"]], [path])
            self.home.ask("--", "restore-cues", path)
            self.assertIn(whole[20:60], pathlib.Path("/" + path).read_bytes())
            count()

    def test_duplicates_of_any_name_are_held_and_given_back(self):
        all_names, paths = self.library_of_names()
        chosen = paths[::500]
        self.home.write_library([
            track(path, text(b"tsng", f"Song {i // 2}"), text(b"tart", "Artist"))
            for i, path in enumerate(chosen)])
        before = self.home.database.read_bytes()
        for group in self.home.ask("score")["duplicateGroups"]:
            self.home.ask("resolve-duplicates", group["key"])
            count()
        held = self.home.ask("held")["items"]
        self.assertEqual(len(held), len(chosen) // 2)
        for item in held:
            self.assertFalse(os.path.exists(item["originalPath"]))
            self.assertTrue(os.path.exists(item["heldPath"]))
        self.home.ask("undo-everything")
        self.assertTrue(all(os.path.exists("/" + path) for path in chosen))
        after = self.home.database.read_bytes()
        self.assertEqual(sorted(after.split(b"otrk")), sorted(before.split(b"otrk")))

    def test_crates_of_any_name_are_listed_merged_copied_and_put_back(self):
        self.home.write_library([track("a.mp3")], {"Base": [f"{i}.mp3" for i in range(5)]})
        crate_names = [f"c{piece}" for piece in pieces(ALL.replace("/", ""), 60)]
        for name in crate_names:
            self.home.write(f"Music/_Serato_/Subcrates/{name}.crate", crate(["0.mp3"]))
        listed = [entry["name"] for entry in self.home.ask("crates")["crates"]]
        self.assertEqual(sorted(listed), sorted([*crate_names, "Base"]))
        count(len(listed))
        folder = self.home.serato / "Subcrates"
        shutil.rmtree(folder)
        chosen = crate_names[::900]
        self.home.write_library([track("a.mp3")], {"Base": [f"{i}.mp3" for i in range(5)]})
        for i, name in enumerate(chosen):
            self.home.write(f"Music/_Serato_/Subcrates/{name}.crate",
                            crate([*(f"{n}.mp3" for n in range(5)), f"other {i}.mp3"]))
        before = {path.name: path.read_bytes() for path in folder.iterdir()}
        self.home.ask("snapshot", "--reason", "before")
        snapshot = self.home.ask("snapshots")["snapshots"][0]["id"]
        for name in chosen:
            overlaps = {(overlap["a"], overlap["b"]) for overlap in self.home.ask("hygiene")["overlaps"]}
            pair = next((p for p in overlaps if name in p and "Base" in p), None)
            if pair:
                self.home.ask("--", "merge-crates", *pair)
                count()
        self.assertLess(len(list(folder.iterdir())), len(before))
        self.home.ask("rollback", snapshot)
        self.assertEqual({path.name: path.read_bytes() for path in folder.iterdir()}, before)

    def test_names_that_differ_in_composition_alone_are_two(self):
        pairs = [("caf\u00e9", "cafe\u0301"), ("\u00c5", "\u212b"), ("\u1e9b\u0323", "\u017f\u0323\u0307"),
                 ("\uac00", "\u1100\u1161"), ("a\u202eb", "ab"), ("\ufb01", "fi"), ("I\u0307", "\u0130")]
        paths = [self.home.write(f"Music/{name}.mp3", name.encode())
                 for pair in pairs for name in pair]
        self.home.write_library([track(path, text(b"tgen", "old")) for path in paths])
        for path in paths[::2]:
            self.home.ask("set-genre", "new", path)
            count()
        genres = [entry["genre"] for entry in self.home.ask("scan")["tracks"]]
        self.assertEqual(genres, ["new", "old"] * len(pairs))

    # Exports.

    def test_rekordbox_xml_is_well_formed_with_all_that_xml_has_a_place_for(self):
        allowed = "".join(filter(is_xml, ALL))
        chunks = pieces(allowed, 1000)
        self.export_titles(chunks)
        root = xml.etree.ElementTree.fromstring(self.exported())
        spaces = str.maketrans("\t\n\r", "   ")  # as XML reads them in an attribute
        titles = [element for element in root.iter("TRACK") if element.get("Name")]
        self.assertEqual([element.get("Name") for element in titles],
                         [f"T{chunk}".replace("\r\n", "\n").translate(spaces) for chunk in chunks])
        self.assertEqual([element.get("Genre") for element in titles],
                         [element.get("Name") for element in titles])
        count(len(chunks))

    def test_what_xml_has_no_place_for_passes_as_it_is_and_nothing_else_breaks(self):
        outside = [character for character in ALL if not is_xml(character)]
        self.assertEqual(len(outside), 31 - 3 + 2)
        self.export_titles(outside)
        written = self.exported().decode("utf-8")
        self.assertEqual({c for c in written if not is_xml(c)}, set(outside))
        root = xml.etree.ElementTree.fromstring("".join(filter(is_xml, written)))
        titles = [element.get("Name") for element in root.iter("TRACK") if element.get("Name")]
        self.assertEqual(titles, ["T"] * len(outside))
        count(len(outside))

    def export_titles(self, chunks):
        paths = [self.home.write(f"Music/{i}.mp3") for i in range(len(chunks))]
        self.home.write_library([
            track(path, text(b"tsng", f"T{chunk}"), text(b"tart", f"T{chunk}"),
                  text(b"talb", f"T{chunk}"), text(b"tgen", f"T{chunk}"), text(b"tkey", f"T{chunk}"))
            for path, chunk in zip(paths, chunks)])
        self.home.ask("export", "rekordbox", self.place / "out")

    def exported(self):
        return (self.place / "out/rekordbox.xml").read_bytes()

    def test_engine_databases_hold_every_text_whole(self):
        chunks = pieces(ALL, 1000)
        self.export_titles(chunks)
        self.home.ask("export", "engine", self.place / "out")
        base = sqlite3.connect(self.place / "out/Engine Library/Database2/m.db")
        rows = base.execute("SELECT title, artist, album, genre FROM Track ORDER BY id").fetchall()
        self.assertEqual(rows, [(f"T{chunk}",) * 4 for chunk in chunks])
        base.close()
        count(4 * len(rows))


if __name__ == "__main__":
    odd_case.main()
