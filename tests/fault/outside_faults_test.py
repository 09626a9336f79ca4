#!/usr/bin/env python3
"""Lets system calls of the real program fail from outside, or kills it at them, with strace.

outside_faults_test.py --build FOLDER

Each run changes a fresh copy of one library with one command, of which the n-th call of one kind
goes wrong; some writes are cut short as well, by a limit to the size of files. After it every file
is the one before or the one after the command, nothing is lost, the next launch reads its stores or
takes them for empty, and what the log has as reversible is undone.
A few calls in each run of the tests; all of them with TARNWICK_FAULTS=long.
"""

import json
import os
import pathlib
import re
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "support"))
import counted_test
from counted_test import built, count

CALLS = ("writev", "ftruncate", "fsync", "rename", "renameat2", "unlink", "mkdir", "fchmod",
         "copy_file_range")
FAILURES = ("error=EIO", "error=ENOSPC", "error=EACCES", "error=EROFS", "signal=SIGKILL")
TEMPORARY = re.compile(r"/\.[^/]*\.twtmp")
IS_LONG = os.environ.get("TARNWICK_FAULTS") == "long"
CASES_IN_SHORT_FORM = 12
DATABASE = "Music/_Serato_/database V2"


def may_trace():
    """Whether a process may be traced here, with a fault put into it."""
    try:
        done = subprocess.run(["strace", "-f", "-qq", "-o", "/dev/null", "-e",
                               "inject=fsync:error=EIO:when=1", "true"], capture_output=True)
    except FileNotFoundError:
        return False
    return done.returncode == 0


def limit_files(size):
    """In a process that is about to start a program."""
    signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
    resource.setrlimit(resource.RLIMIT_FSIZE, (size, size))


def without_cues(content):
    """An audio file as a program leaves it that takes the cues away."""
    return content.replace(b"Serato Markers2", b"Nobody Markers2") \
        .replace(b"Serato BeatGrid", b"Nobody BeatGrid")


class Home:
    """A home folder with a library, always at the same place, and what it was at first."""

    def __init__(self, folder):
        self.folder = folder / "home"
        self.kept = folder / "kept"
        self.environment = {"HOME": str(self.folder), "XDG_DATA_HOME": str(self.folder / "data"),
                            "PATH": os.environ["PATH"], "LC_ALL": "C.UTF-8", "TZ": "UTC"}
        for name in ("ASAN_OPTIONS", "UBSAN_OPTIONS", "TSAN_OPTIONS"):
            if name in os.environ:
                self.environment[name] = os.environ[name]
        # The checker of leaks traces the process itself.
        self.environment["LSAN_OPTIONS"] = "detect_leaks=0"
        subprocess.run([built("tools/demo_library"), "--tracks", "40", "--seed", "8", "--today",
                        "2026-11-20", "--out", self.folder], check=True,
                       stdout=subprocess.DEVNULL)

    def keep(self):
        shutil.copytree(self.folder, self.kept, symlinks=True)

    def renew(self):
        shutil.rmtree(self.folder)
        shutil.copytree(self.kept, self.folder, symlinks=True)

    def run(self, *arguments, tracer=(), before=None):
        return subprocess.run([*tracer, built("bin/tarnwick-cli"), "--json", *arguments],
                              env=self.environment, capture_output=True, timeout=120,
                              preexec_fn=before)

    def ask(self, *arguments):
        done = self.run(*arguments)
        if done.returncode != 0:
            raise AssertionError(f"{arguments} fails: {done.stderr.decode()}")
        return json.loads(done.stdout)

    def files(self, below=""):
        """The content of every file, by its path below the home folder."""
        place = self.folder / below
        return {str(path.relative_to(self.folder)): path.read_bytes()
                for path in place.rglob("*") if path.is_file() and not path.is_symlink()}

    def user_files(self):
        """Audio and Serato's own, without what the program keeps and what it writes beside them."""
        return {path: content for path, content in self.files().items()
                if not path.startswith("data/") and not TEMPORARY.search(path)}

    def held(self):
        return set(self.files("data/Tarnwick/Holding").values())


# Each prepares a library and gives the command that is then interrupted.

def relink(home):
    tracks = home.ask("scan")["tracks"]
    # An undo sets Serato's flag, whether or not it was set before.
    missing = next(track["relativePath"] for track in tracks if track["flaggedMissing"])
    found = home.folder / "Music/Found again.mp3"
    found.write_bytes(b"some audio")
    return "relink", missing, str(found)


def resolve_duplicates(home):
    groups = home.ask("score")["duplicateGroups"]
    return "resolve-duplicates", next(g["key"] for g in groups if len(g["members"]) == 2)


def merge_crates(home):
    overlap = home.ask("hygiene")["overlaps"][0]
    return "merge-crates", overlap["a"], overlap["b"]


def restore_cues(home):
    home.ask("cues")  # which fills the vault
    marked = [track["absolutePath"] for track in home.ask("scan")["tracks"] if track["hasMarkers"]]
    for path in marked[:2]:
        file = pathlib.Path(path)
        file.write_bytes(without_cues(file.read_bytes()))
    return "restore-cues", "--all"


def roll_back(home):
    home.ask("snapshot")
    set_genre(home)
    return "rollback", home.ask("snapshots")["snapshots"][-1]["id"]


def undo(home):
    set_genre(home)
    return "undo", home.ask("changes")["entries"][0]["id"]


def set_genre(home):
    home.ask("set-genre", "Not a genre", home.ask("scan")["tracks"][0]["relativePath"])


@unittest.skipUnless(may_trace(), "strace is not there, or may not trace processes here")
class OutsideFaults(unittest.TestCase):
    def setUp(self):
        place = "/dev/shm" if os.access("/dev/shm", os.W_OK) else None
        scratch = tempfile.TemporaryDirectory(prefix="tarnwick-outside-", dir=place)
        self.addCleanup(scratch.cleanup)
        self.home = Home(pathlib.Path(scratch.name))

    def test_relink(self):
        self.interrupt(relink)

    def test_resolve_duplicates(self):
        self.interrupt(resolve_duplicates)

    def test_merge_crates(self):
        self.interrupt(merge_crates)

    def test_restore_cues(self):
        self.interrupt(restore_cues)

    def test_roll_back(self):
        self.interrupt(roll_back)

    def test_undo(self):
        self.interrupt(undo)

    def interrupt(self, prepare):
        command = prepare(self.home)
        self.home.keep()
        self.before = self.home.user_files()
        counts = self.calls_of(command)
        self.after = self.home.user_files()
        self.assertTrue(self.after != self.before, "the command changes something")
        for failure, call, number in self.cases(counts):
            with self.subTest(failure=failure, call=call, number=number):
                self.home.renew()
                tracer = ("strace", "-f", "-qq", "-o", "/dev/null", "-e", f"trace={call}",
                          "-e", f"inject={call}:{failure}:when={number}")
                self.check_run(self.home.run(*command, tracer=tracer))
            count()
        for limit in self.limits():
            with self.subTest(limit=limit):
                self.home.renew()
                self.check_run(self.home.run(*command, before=lambda: limit_files(limit)))
            count()

    def limits(self):
        """Sizes that no file can grow beyond: the write that would do so is a short one."""
        sizes = sorted({len(content) for content in (self.before | self.after).values()})
        database = len(self.after[DATABASE])
        return [1, database // 2, database - 1, *(sizes[::5] if IS_LONG else [])]

    def check_run(self, done):
        self.assertIn(done.returncode, (0, 1, -9, 137), done.stderr)
        self.check()

    def calls_of(self, command):
        """How often the command makes each call."""
        log = self.home.folder.parent / "calls"
        done = self.home.run(*command, tracer=("strace", "-f", "-qq", "-o", log, "-e",
                                               "trace=" + ",".join(CALLS)))
        self.assertEqual(done.returncode, 0, done.stdout)
        made = re.findall(r"^\d+ +(\w+)\(", log.read_text(errors="replace"), re.MULTILINE)
        return {call: made.count(call) for call in CALLS if call in made}

    @staticmethod
    def cases(counts):
        """Each call in each way; in the short form some, of all kinds."""
        every = [(failure, call, number + 1) for number in range(max(counts.values()))
                 for call, count in counts.items() if number < count for failure in FAILURES]
        if IS_LONG:
            return every
        step = max(1, len(every) // CASES_IN_SHORT_FORM) | 1
        return every[::step]

    def check(self):
        self.check_user_files()
        for reading in ("held", "snapshots", "cues", "score"):
            self.home.ask(reading)
        self.check_user_files()
        entries = self.home.ask("changes")["entries"]
        for entry in entries:
            if entry["isReversible"]:
                self.home.ask("undo", entry["id"])
                self.check_undone(entry)

    def check_user_files(self):
        present = self.home.user_files()
        held = self.home.held()
        for path, content in present.items():
            allowed = {self.before.get(path), self.after.get(path)}
            self.assertTrue(content in allowed, f"{path} is neither old nor new")
        for path, content in self.before.items():
            self.assertTrue(path in present or content in held, f"{path} is lost")

    def check_undone(self, entry):
        present = self.home.user_files()
        if entry["kind"] == "dedupe":
            path = next(path for path in self.before if path.endswith("/" + entry["target"]))
            # A manifest that couldn't be written doesn't know the file, which then stays held.
            is_known = any(item["id"] == entry["holdingID"] for item in self.home.ask("held")["items"])
            content = present.get(path) if is_known else self.before[path]
            self.assertTrue(content == self.before[path], "the file is back")
        elif entry["kind"] == "relink":
            self.assertTrue(present[DATABASE] == self.before[DATABASE], "the record is back")
        else:
            genre = "Not a genre".encode("utf-16-be")
            self.assertFalse(genre in present[DATABASE], "the genre is back")


if __name__ == "__main__":
    counted_test.main("interruptions")
