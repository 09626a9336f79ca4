#!/usr/bin/env python3
"""Prints what the files of a Serato library hold, record by record.

serato_dump.py [--tags] PATH...

A PATH is a `_Serato_` folder (its database, crates and history sessions), one file of one, or an
audio file (the frames of its ID3v2 tag). With --tags a folder's dump goes on with the tag of every
file that its database names.

Each record is a line: its tag and its value, what it holds indented below it. What can't be taken
apart is shown as bytes, and damage is told in brackets; nothing is left out in silence. It shares
no code with the program, so that tests may ask it what the program has written.
"""

import argparse
import hashlib
import json
import pathlib
import struct
import sys

HEADER = struct.Struct(">4sI")
TIP = "  "


class Dump:
    """Lines of text, indented as records lie in one another."""

    def __init__(self):
        self.lines = []

    def add(self, depth, *words):
        self.lines.append(TIP * depth + "  ".join(words))

    def text(self):
        return "".join(line + "\n" for line in self.lines)


def quoted(payload, encoding="utf-16-be"):
    """A text as JSON would write it; its bytes too where they say more than the text does."""
    text = payload.decode(encoding, errors="replace")
    shown = json.dumps(text, ensure_ascii=False)
    return shown if text.encode(encoding) == payload else f"{shown} ({payload.hex(' ')})"


def bytes_of(payload):
    if len(payload) <= 32:
        return payload.hex(" ") or "(nothing)"
    return f"{len(payload)} bytes, sha256 {hashlib.sha256(payload).hexdigest()[:16]}"


def number(payload):
    return str(int.from_bytes(payload, "big")) if 0 < len(payload) <= 8 else bytes_of(payload)


def flag(payload):
    return {b"\0": "false", b"\1": "true"}.get(payload, bytes_of(payload))


def fields(data, dump, depth):
    """The records of some bytes, as pairs of tag and payload, up to the first damage."""
    at = 0
    while at < len(data):
        if len(data) - at < HEADER.size:
            break
        tag, length = HEADER.unpack_from(data, at)
        start = at + HEADER.size
        if length > len(data) - start:
            break
        yield tag, data[start:start + length]
        at = start + length
    if at < len(data):
        dump.add(depth, f"[damaged: {len(data) - at} bytes from offset {at} are no record]")


def dump_record(tag, payload, dump, depth):
    name = tag.decode("latin-1") if tag.isalnum() else tag.hex(" ")
    if tag == b"adat":
        dump.add(depth, name)
        dump_play(payload, dump, depth + 1)
    elif tag[:1] == b"o":
        dump.add(depth, name)
        dump_records(payload, dump, depth + 1)
    elif tag[:1] in (b"t", b"p", b"v"):
        dump.add(depth, name, quoted(payload))
    elif tag[:1] == b"u" and len(payload) in (1, 2, 4, 8):
        dump.add(depth, name, number(payload))
    elif tag[:1] == b"b":
        dump.add(depth, name, flag(payload))
    else:
        dump.add(depth, name, bytes_of(payload))


def dump_records(data, dump, depth):
    for tag, payload in fields(data, dump, depth):
        dump_record(tag, payload, dump, depth)


# Of the numbered fields of a play, those whose meaning is known.
PLAY_TEXTS = {2: "path", 4: "file", 6: "title", 7: "artist", 8: "album", 9: "genre", 15: "bpm",
              51: "key"}
PLAY_NUMBERS = {1: "row", 28: "start", 29: "end", 31: "deck", 45: "length"}


def dump_play(data, dump, depth):
    for tag, payload in fields(data, dump, depth):
        code = int.from_bytes(tag, "big")
        if code in PLAY_TEXTS:
            dump.add(depth, f"{code} {PLAY_TEXTS[code]}", quoted(payload))
        elif code in PLAY_NUMBERS:
            dump.add(depth, f"{code} {PLAY_NUMBERS[code]}", number(payload))
        else:
            dump.add(depth, str(code), bytes_of(payload))


def syncsafe(data):
    value = 0
    for byte in data:
        value = value << 7 | byte
    return value


def value_of(frame, payload):
    """What a frame says, as far as that is text, else its bytes; objects are told by their name."""
    if payload[:1] == b"\0" and frame == "TXXX":
        name, _, value = payload[1:].partition(b"\0")
        return quoted(name, "latin-1") + "  " + quoted(value, "latin-1")
    if payload[:1] == b"\0" and frame.startswith("T"):
        return quoted(payload[1:], "latin-1")
    if frame == "GEOB" and payload.count(b"\0", 1) >= 3:
        name = payload[1:].split(b"\0", 3)[2]
        return quoted(name, "latin-1") + "  " + bytes_of(payload)
    return bytes_of(payload)


def dump_frames(body, major, dump, depth):
    at = 0
    while len(body) - at >= 10 and body[at] != 0:
        frame = body[at:at + 4].decode("latin-1")
        size = body[at + 4:at + 8]
        length = syncsafe(size) if major == 4 else int.from_bytes(size, "big")
        payload = body[at + 10:at + 10 + length]
        if len(payload) < length:
            break
        dump.add(depth, frame, f"flags {body[at + 8:at + 10].hex()}", value_of(frame, payload))
        at += 10 + length
    rest = body[at:]
    if rest.strip(b"\0"):
        dump.add(depth, f"[{len(rest)} bytes are no frame]")
    elif rest:
        dump.add(depth, f"padding  {len(rest)} bytes")


def dump_audio(data, dump, depth):
    if data[:3] != b"ID3" or len(data) < 10:
        dump.add(depth, "no tag")
        dump.add(depth, "audio", bytes_of(data))
        return
    major, revision, flags = data[3:6]
    end = 10 + syncsafe(data[6:10])
    dump.add(depth, f"ID3v2.{major}.{revision}", f"flags {flags:02x}", f"{end - 10} bytes")
    if end > len(data):
        dump.add(depth, "[the tag runs past the end of the file]")
    elif flags:
        dump.add(depth, "tag", bytes_of(data[10:end]))
    else:
        dump_frames(data[10:end], major, dump, depth + 1)
    dump.add(depth, "audio", bytes_of(data[end:]))


def is_of_serato(path):
    return path.name == "database V2" or path.suffix.lower() in (".crate", ".session")


def dump_file(path, dump, shown):
    dump.add(0, str(shown))
    try:
        data = path.read_bytes()
    except OSError as error:
        dump.add(1, f"[{error.strerror}]")
        return
    (dump_records(data, dump, 1) if is_of_serato(path) else dump_audio(data, dump, 1))


def tracks_of(database):
    """The paths of a database's tracks, from the root of the file system."""
    ignored = Dump()
    for tag, track in fields(database.read_bytes(), ignored, 0):
        if tag != b"otrk":
            continue
        for field, payload in fields(track, ignored, 0):
            if field == b"pfil":
                path = payload.decode("utf-16-be", errors="replace")
                yield pathlib.Path("/" + path.removeprefix("/"))


def files_of_library(folder):
    for path in (folder / "database V2", *sorted((folder / "Subcrates").glob("*")),
                 *sorted((folder / "History" / "Sessions").glob("*"))):
        if is_of_serato(path) and path.exists():
            yield path


def dump_library(folder, dump, tags):
    for path in files_of_library(folder):
        dump_file(path, dump, path.relative_to(folder))
    if tags:
        for path in tracks_of(folder / "database V2"):
            dump_file(path, dump, path)


def dumped(paths, tags=False):
    """The text for these paths."""
    dump = Dump()
    for path in paths:
        if path.is_dir():
            dump_library(path, dump, tags)
        else:
            dump_file(path, dump, path.name)
    return dump.text()


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--tags", action="store_true", help="the tags of a library's files too")
    parser.add_argument("paths", type=pathlib.Path, nargs="+", metavar="PATH")
    arguments = parser.parse_args()
    for path in arguments.paths:
        if not path.exists():
            sys.exit(f"serato_dump: no such file: {path}")
    text = dumped(arguments.paths, arguments.tags)
    sys.stdout.buffer.write(text.encode("utf-8", errors="backslashreplace"))


if __name__ == "__main__":
    main()
