"""Tags as another program sees them: mutagen's reading and writing, for interop_mutagen_test.

    foreign_tags.py read FILE            prints frames and audio as JSON
    foreign_tags.py write FILE MINOR     puts a tag of version 2.MINOR with Serato's objects
    foreign_tags.py check                succeeds if mutagen is there
"""

import hashlib
import json
import sys

import mutagen.id3
import mutagen.mp3


def described(frame):
    if frame.FrameID == "GEOB":
        return [frame.mime, frame.filename, frame.desc, frame.data.hex()]
    if frame.FrameID == "TXXX":
        return [frame.desc, *frame.text]
    if frame.FrameID == "APIC":
        return [frame.mime, frame.desc, hashlib.sha256(frame.data).hexdigest()]
    return [str(frame)]


def read(path):
    tag = mutagen.id3.ID3(path, translate=False)
    info = mutagen.mp3.MP3(path).info
    return {
        "version": list(tag.version),
        "frames": {key: described(frame) for key, frame in sorted(tag.items())},
        "unknown": [frame.hex() for frame in tag.unknown_frames],
        "seconds": info.length,
        "bitrate": info.bitrate,
    }


def write(path, minor):
    tag = mutagen.id3.ID3()
    tag.add(mutagen.id3.TIT2(encoding=1, text=["A títle"]))
    for name in ("Serato Markers2", "Serato Markers_", "Serato BeatGrid", "Serato Autotags"):
        tag.add(mutagen.id3.GEOB(encoding=0, mime="application/octet-stream", filename="",
                                 desc=name, data=name.encode() * 30))
    tag.add(mutagen.id3.TXXX(encoding=0, desc="REPLAYGAIN_TRACK_GAIN", text=["9.99 dB"]))
    tag.save(path, v2_version=minor)


def main(mode, *arguments):
    if mode == "read":
        print(json.dumps(read(arguments[0])))
    elif mode == "write":
        write(arguments[0], int(arguments[1]))


main(*sys.argv[1:])
