"""What the tests of this folder share: a home folder with a library, and the real command line."""

import json
import os
import pathlib
import subprocess
import sys
import tempfile
import time
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "support"))
import counted
from counted import built, count

IS_LONG = os.environ.get("TARNWICK_ODD") == "long"
REFUSALS = (b"Close Serato", b"Serato is running")


def record(tag, payload):
    return tag + len(payload).to_bytes(4, "big") + payload


def text(tag, words):
    """A field in UTF-16; bytes stand as they are."""
    return record(tag, words if isinstance(words, bytes) else words.encode("utf-16-be"))


def track(path, *fields):
    return record(b"otrk", text(b"pfil", path) + b"".join(fields))


def crate(paths):
    return text(b"vrsn", "1.0/Serato ScratchLive Crate") + b"".join(
        record(b"otrk", text(b"ptrk", path)) for path in paths)


def frame(identifier, payload):
    return identifier + len(payload).to_bytes(4, "big") + b"\0\0" + payload


def audio_with_cues(mark, audio=b"\xff\xfbaudio"):
    """An MP3 file with hot cues; the mark tells them from those of other files."""
    cues = frame(b"GEOB", b"\0application/octet-stream\0\0Serato Markers2\0" + b"\1\1" + mark)
    size = len(cues)
    synchsafe = bytes((size >> shift) & 0x7F for shift in (21, 14, 7, 0))
    return b"ID3\3\0\0" + synchsafe + cues + audio


class Home:
    """A user with a library, below a folder that exists."""

    def __init__(self, folder):
        self.folder = pathlib.Path(folder) / "home"
        self.data = pathlib.Path(folder) / "data"
        self.folder.mkdir()
        self.environment = {"HOME": str(self.folder), "XDG_DATA_HOME": str(self.data),
                            "PATH": os.environ["PATH"], "LC_ALL": "C.UTF-8", "TZ": "UTC",
                            "QT_QPA_PLATFORM": "offscreen", "QT_QUICK_BACKEND": "software"}
        self.environment |= {name: value for name, value in os.environ.items()
                             if name.endswith("SAN_OPTIONS")}

    @property
    def serato(self):
        return self.folder / "Music/_Serato_"

    @property
    def database(self):
        return self.serato / "database V2"

    @property
    def store(self):
        return self.data / "Tarnwick"

    def write(self, name, content=b"not really audio"):
        """A file below the home folder; gives its path as a database holds it."""
        file = self.folder / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_bytes(content)
        return str(file)[1:]

    def write_library(self, tracks, crates=None):
        self.write("Music/_Serato_/database V2",
                   text(b"vrsn", "2.0/Serato Scratch LIVE Database") + b"".join(tracks))
        for name, paths in (crates or {}).items():
            self.write(f"Music/_Serato_/Subcrates/{name}.crate", crate(paths))

    def command(self, *arguments):
        return [str(built("bin/tarnwick-cli")), "--json", *map(str, arguments)]

    def run(self, *arguments, before=()):
        # Other tests on this machine start programs that bear Serato's name, for a moment.
        for _ in range(200):
            done = subprocess.run([*before, *self.command(*arguments)], capture_output=True,
                                  timeout=300, env=self.environment)
            if done.returncode == 0 or not any(word in done.stdout for word in REFUSALS):
                break
            time.sleep(0.1)
        return done

    def start(self, *arguments):
        return subprocess.Popen(self.command(*arguments), env=self.environment,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE)

    def ask(self, *arguments, status=0):
        """The answer as Python reads JSON."""
        done = self.run(*arguments)
        if done.returncode != status:
            raise AssertionError(f"{arguments} ends with {done.returncode}: {done.stderr.decode()}")
        return json.loads(done.stdout)

    def messages(self, *arguments, status=0):
        return [toast["message"] for toast in self.ask(*arguments, status=status)["toasts"]]


class OddCase(unittest.TestCase):
    def setUp(self):
        made = tempfile.TemporaryDirectory(prefix="tarnwick-odd-")
        self.addCleanup(made.cleanup)
        self.place = pathlib.Path(made.name).resolve()


def main():
    counted.main("cases")
