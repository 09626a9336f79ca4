#!/usr/bin/env python3
"""Cuts small seeds for the fuzz targets out of a made-up library and of what the program stores.

make_seeds.py --build FOLDER [--out FOLDER]

Writes corpus/TARGET/seed-* beside this file, or below --out. Needs demo_library and tarnwick-cli in
the build. The same build gives the same seeds, but for the dates in the stores.
"""

import argparse
import json
import os
import pathlib
import sqlite3
import subprocess
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
LARGEST_FRAME = 600


def records(data):
    """(tag, payload, whole) of each record."""
    at = 0
    while at + 8 <= len(data):
        size = int.from_bytes(data[at + 4:at + 8], "big")
        yield data[at:at + 4], data[at + 8:at + 8 + size], data[at:at + 8 + size]
        at += 8 + size


def first_of(data, tag, count):
    """The file with no more than so many records of a tag."""
    kept, left = b"", count
    for name, _, whole in records(data):
        left -= name == tag
        if name != tag or left >= 0:
            kept += whole
    return kept


def syncsafe(number):
    return bytes(number >> shift & 0x7F for shift in (21, 14, 7, 0))


def small_tag(data):
    """An audio file with the tag's smaller frames and hardly any audio; nothing without a tag."""
    if data[:3] != b"ID3":
        return b""
    of_frame = 7 if data[3] == 4 else 8
    number = lambda text, bits: sum(byte << bits * (3 - i) for i, byte in enumerate(text))
    end = 10 + number(data[6:10], 7)
    at, frames = 10, b""
    while at + 10 <= end and data[at]:
        whole = data[at:at + 10 + number(data[at + 4:at + 8], of_frame)]
        frames += whole if len(whole) < LARGEST_FRAME else b""
        at += len(whole)
    return data[:6] + syncsafe(len(frames)) + frames + data[end:end + 24]


def counted(*texts):
    """Each text behind a byte that tells its length."""
    encoded = [text if isinstance(text, bytes) else text.encode() for text in texts]
    return b"".join(bytes([min(len(text), 255)]) + text[:255] for text in encoded)


class Library:
    """A made-up library, and the program's files after some commands."""

    def __init__(self, build, folder):
        self.build, self.home = build, folder / "home"
        self.environment = os.environ | {"HOME": str(self.home), "LC_ALL": "C.UTF-8",
                                         "XDG_DATA_HOME": str(self.home / "data")}
        self.call("tools/demo_library", "--tracks", "60", "--seed", "7", "--today", "2026-11-20",
                  "--out", self.home)
        for command in ("score", "fix-safe", "tag-ready", "signal set --server signal.example "
                        "--key k --city Detroit", f"export rekordbox {self.home}/device",
                        f"export engine {self.home}/device"):
            self.call("bin/tarnwick-cli", *command.split())

    def call(self, program, *arguments):
        subprocess.run([self.build / program, *arguments], check=True, env=self.environment,
                       stdout=subprocess.DEVNULL)

    def serato(self, name):
        return (self.home / "Music/_Serato_" / name).read_bytes()

    def store(self, name):
        return json.loads((self.home / "data/Tarnwick" / name).read_text())

    def first_file(self, pattern):
        return sorted(self.home.rglob(pattern))[0]

    def anonymous(self, data):
        """Without the place of this run: another of the same length stands for it."""
        place = str(self.home).lstrip("/")
        other = ("Users/demo" + "/music" * 40)[:len(place)]
        for encoding in ("utf-8", "utf-16-be"):
            data = data.replace(place.encode(encoding), other.encode(encoding))
        return data


def pretty(value):
    return (json.dumps(value, indent=2, sort_keys=True, ensure_ascii=False) + "\n").encode()


def small_database(path):
    """An exported database with three rows and small pages."""
    with tempfile.TemporaryDirectory() as folder:
        small = os.path.join(folder, "m.db")
        connection = sqlite3.connect(path)
        for table in ("PlaylistEntity", "Playlist"):
            connection.execute(f"DELETE FROM {table}")
        connection.execute("DELETE FROM Track WHERE rowid > 3")
        connection.commit()
        connection.execute("PRAGMA page_size = 512")
        connection.execute("VACUUM INTO ?", (small,))
        connection.close()
        return pathlib.Path(small).read_bytes()


def titles(database):
    for tag, payload, _ in records(database):
        for field, text, _ in records(payload) if tag == b"otrk" else ():
            if field == b"tsng":
                yield text


def from_library(library):
    """(target, name, bytes) of all seeds that come out of the library."""
    database = library.serato("database V2")
    tracks = first_of(database, b"otrk", 2)
    for target in ("records", "record_file", "database"):
        yield target, "library", tracks
    yield "database", "cut", tracks[:-7]
    yield "document_edits", "library", counted(b"\0\5\0\4\0H\0i\1\6\0\4\0a\0b\2\7\3\0\1x") + tracks
    crate = library.first_file("*.crate").read_bytes()
    yield "crate", "library", first_of(crate, b"otrk", 3)
    yield "crate_add", "library", b"\2\4\0/\0a\4\0b\0c" + first_of(crate, b"otrk", 2)
    sessions = library.first_file("*.session").read_bytes()
    yield "session", "library", first_of(sessions, b"oent", 3)

    tags = [small_tag(path.read_bytes()) for path in sorted(library.home.rglob("*.mp3"))]
    marked = [tag for tag in tags if b"Serato Markers2" in tag]
    for version in (3, 4):
        tag = min((tag for tag in marked if tag[3] == version), key=len)
        yield "id3_tag", f"version{version}", tag
        yield "presence", f"version{version}", tag
        yield "audio_file", f"version{version}", b"\7\3abc\3def\3ghi" + tag
    yield "pattern_scan", "patterns", b"xaaaabaaaabaaaaaaaaaabREPLAYGAIN\x80aaaaaaaaaabababababab"

    for number, title in enumerate([t for t in titles(database) if len(t) > 50][:4]):
        yield "title_cut", f"title{number}", title
        yield "title_cut", f"utf8-{number}", title.decode("utf-16-be").encode()

    yield "change_log", "entries", pretty(library.store("changelog.json")[:2])
    yield "holding_manifest", "items", pretty(library.store("Holding/manifest.json")[:2])
    vault = {key: value for key, value in library.store("cuevault.json").items()
             if len(str(value)) < 900}
    few = dict(sorted(vault.items())[:2])
    yield "cue_vault", "entries", pretty(few)
    yield "cue_entry", "entry", pretty(next(iter(few.values())))
    yield "json", "vault", pretty(few)
    yield "signal_config", "settings", pretty(library.store("signal.json"))
    yield "snapshot_meta", "snapshot", library.first_file("meta.json").read_bytes()

    collection = library.first_file("rekordbox.xml").read_text().splitlines(keepends=True)
    yield "rekordbox_read", "collection", "".join(collection[:9] + collection[-4:]).encode()
    yield "engine_read", "database", small_database(library.first_file("m.db"))


def written_by_hand():
    """Seeds for what no library holds."""
    track = {"track_key": "080ad13bd1f71d876f9d", "title": "Song", "artist": None, "djs": 3,
             "plays": 7, "lanes": "House,Techno"}
    for name, reply in {"landing": {"min_djs": 2, "tracks": [track, track]},
                        "stats": {"djs": 1, "plays": 2, "tracks": 3},
                        "events": {"accepted": 4, "you_feed": 5}, "leave": {"deleted": 6}}.items():
        yield "signal_replies", name, json.dumps(reply).encode()
    yield "signal_address", "host", counted("signal.example:8080/pool", "key", "House", "Köln")
    yield "signal_address", "scheme", counted(" http://[::1]/ ", "", "All", "")
    yield "json", "escapes", rb'{"a": ["\u00e9\ud83d\ude00\n\/", -0, 1.5e3, true, null, {}, []]}'
    for name, text in {"number": "-12.5e3", "hexadecimal": "0x1p-3", "date": "2024-02-29T23:59:59Z",
                       "length": "1:02:03"}.items():
        yield "texts", name, text.encode()
    yield "export_texts", "track", counted("music/a & b%.mp3", "A - <Song>", "", "Al\"bum", "House",
                                           "Am", "mp3", "128.00", "4:23", "320.0kbps", "Crate")
    yield "mounts", "list", (b"22 28 0:20 / /proc rw,nosuid shared:5 - proc proc rw\n"
                             b"31 28 0:27 / /mnt/a\\040b rw - nfs4 server:/ rw\n"
                             b"32 28 8:2 / /home rw - ext4 /dev/sda2 rw\n")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--build", type=pathlib.Path, required=True)
    parser.add_argument("--out", type=pathlib.Path, default=HERE / "corpus")
    wanted = parser.parse_args()
    with tempfile.TemporaryDirectory(prefix="tarnwick-seeds-") as folder:
        library = Library(wanted.build.resolve(), pathlib.Path(folder))
        seeds = [*from_library(library), *written_by_hand()]
        seeds = [(target, name, library.anonymous(seed)) for target, name, seed in seeds]
    for target, name, seed in seeds:
        place = wanted.out / target
        place.mkdir(parents=True, exist_ok=True)
        (place / f"seed-{name}").write_bytes(seed)


if __name__ == "__main__":
    main()
