#!/usr/bin/env python3
"""Lets system calls of the real program fail from outside, or kills it at them, with strace.

outside_faults_test.py --build FOLDER

Each run changes a fresh copy of one library with one command, of which the n-th call of one kind
goes wrong, in every thread that makes as many; some writes are cut short as well, by a limit to the
size of files. After it every file is the one before or the one after the command, nothing is lost,
the next launch reads its stores or takes them for empty, and what the log has as reversible is
undone. Only runs count in which a call did go wrong.
A few calls in each run of the tests; all of them with TARNWICK_FAULTS=long.
"""

import collections
import itertools
import json
import os
import pathlib
import random
import re
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "support"))
import counted
from counted import built, count

KILL = "signal=SIGKILL"
CHANGING = {call: ("error=EIO", "error=ENOSPC", "error=EACCES", "error=EROFS", KILL)
            for call in ("writev", "ftruncate", "fsync", "rename", "renameat2", "unlink", "mkdir",
                         "fchmod", "copy_file_range")}
# Only of files and folders of the user, as a program reads many others to start at all.
READING = {"openat": ("error=EIO", "error=EACCES", "error=EMFILE", "error=ENOSPC", KILL),
           "read": ("error=EIO", "error=ESTALE", "error=EACCES", KILL),
           "getdents64": ("error=EIO", "error=ESTALE", "error=EACCES", KILL)}
TEMPORARY = re.compile(r"/\.[^/]*\.twtmp")
IS_LONG = os.environ.get("TARNWICK_FAULTS") == "long"
CASES_IN_SHORT_FORM = 12
# How many of all planned cases strike at least: threads don't share their work alike in each run.
SHARE_IN_LONG_FORM = 0.9
DATABASE = "Music/_Serato_/database V2"
SNAPSHOT_SET = ("database V2", "Subcrates", "SmartCrates", "neworder.pref", "window.pref")


def may_trace():
    """Whether a process may be traced here, with a fault put into it."""
    try:
        done = subprocess.run(["strace", "-f", "-qq", "-o", "/dev/null", "-e",
                               "inject=fsync:error=EIO:when=1", "true"], capture_output=True)
    except FileNotFoundError:
        return False
    return done.returncode == 0


def ways_of(call, number):
    """How the n-th call of a kind goes wrong; of the many that read each fails in one way."""
    if call in CHANGING:
        return CHANGING[call]
    *errors, kill = READING[call]
    return errors[number % len(errors)], kill


def limit_files(size):
    """In a process that is about to start a program."""
    signal.signal(signal.SIGXFSZ, signal.SIG_IGN)
    resource.setrlimit(resource.RLIMIT_FSIZE, (size, size))


def has_struck(failure, log):
    """Whether strace, whose log this is, let a call fail or killed the process at it."""
    return "+++ killed by SIGKILL +++" in log if failure == KILL else "(INJECTED)" in log


def without_cues(content):
    """An audio file as a program leaves it that takes the cues away."""
    return content.replace(b"Serato Markers2", b"Nobody Markers2") \
        .replace(b"Serato BeatGrid", b"Nobody BeatGrid")


def frames_of(content):
    """What an audio file holds, whatever the order of the frames in its tag and the space there."""
    if not content.startswith(b"ID3"):
        return content
    is_synchsafe = content[3] == 4

    def size_at(place, bits):
        return sum(byte << bits * (3 - i) for i, byte in enumerate(content[place:place + 4]))

    end = 10 + size_at(6, 7)
    place, frames = 10, []
    while place + 10 <= end and content[place]:
        size = size_at(place + 4, 7 if is_synchsafe else 8)
        frames.append(content[place:place + 10 + size])
        place += 10 + size
    return sorted(frames), content[end:]


def entries_of(crate):
    """The records of a crate that name its tracks."""
    place, entries = 0, []
    while place < len(crate):
        end = place + 8 + int.from_bytes(crate[place + 4:place + 8], "big")
        if crate[place:place + 4] == b"otrk":
            entries.append(crate[place:end])
        place = end
    return entries


def snapshot_of(files):
    """What a snapshot of a library holds, by its path there."""
    within = {path.removeprefix("Music/_Serato_/"): content for path, content in files.items()
              if path.startswith("Music/_Serato_/")}
    return {path: content for path, content in within.items() if path.split("/")[0] in SNAPSHOT_SET}


class Home:
    """A home folder with a library, always at the same place, and what it was at first."""

    def __init__(self, folder):
        self.folder = folder.resolve() / "home"
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
        # Other tests on this machine start programs that bear Serato's name, for a moment.
        for _ in range(100):
            done = self.run(*arguments)
            if b"Close Serato" not in done.stdout + done.stderr:
                break
            time.sleep(0.1)
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

    def places(self):
        """Every file, what is written beside it, and every folder, as strace's -P takes them."""
        places = [f"{self.folder}/."]
        for path in self.folder.rglob("*"):
            if path.is_dir():
                places.append(f"{path}/.")
            else:
                places += [str(path), f"{path.parent}/.{path.name}.twtmp"]
        return places

    def snapshots(self):
        return {snapshot["id"] for snapshot in self.ask("snapshots")["snapshots"]}

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
    group = next(group for group in groups if len(group["members"]) == 2)
    # Which copy is the best depends on tags, and these on whether they can be read.
    return "resolve-duplicates", group["key"], "--keep", group["members"][0]


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
        self.interrupt(merge_crates, self.is_unread_crate)

    def test_restore_cues(self):
        self.interrupt(restore_cues, self.is_restored_anew)

    def test_roll_back(self):
        self.interrupt(roll_back)

    def test_undo(self):
        self.interrupt(undo)

    def is_unread_crate(self, path, content):
        """A crate that can't be read counts as empty when tracks come to it; it is in a snapshot."""
        if path not in self.after or self.before[path] == self.after[path]:
            return False
        folded = next(self.before[path] for path in self.before if path not in self.after)
        version = self.after[path][:self.after[path].index(b"otrk")]
        return content == version + b"".join(entries_of(folded)) and \
            self.before[path] in self.home.files("data/Tarnwick/Snapshots").values()

    def is_restored_anew(self, path, content):
        """A file whose tag can't be read counts as one that lost its cues, and gets those it had."""
        return frames_of(content) in (frames_of(self.before[path]), frames_of(self.after[path]))

    def interrupt(self, prepare, may_follow_unread=lambda path, content: False):
        """Where a call that reads fails, a file may be one that the second function accepts."""
        command = prepare(self.home)
        self.home.keep()
        self.before = self.home.user_files()
        self.snapshots_at_first = self.home.snapshots()
        places = set(self.home.places())
        self.assertEqual(self.home.run(*command).returncode, 0)
        self.after = self.home.user_files()
        self.assertTrue(self.after != self.before, "the command changes something")
        places |= set(self.home.places())
        self.of_user = [word for place in sorted(places) for word in ("-P", place)]
        self.may_be = None
        self.cut_writes_short(command)
        self.fail_calls(command, may_follow_unread)

    def fail_calls(self, command, may_follow_unread):
        cases = self.cases(self.calls_of(command, CHANGING) | self.calls_of(command, READING))
        wanted = len(cases) * SHARE_IN_LONG_FORM if IS_LONG else CASES_IN_SHORT_FORM
        self.assertGreaterEqual(wanted, CASES_IN_SHORT_FORM)
        struck = 0
        for call, number, failure in cases:
            if not IS_LONG and struck == wanted:
                break
            with self.subTest(failure=failure, call=call, number=number):
                self.home.renew()
                self.may_be = may_follow_unread if call in READING else None
                done, log = self.trace(command, [call], "-e",
                                       f"inject={call}:{failure}:when={number}")
                if has_struck(failure, log):
                    struck += 1
                    count()
                self.check_run(done)
        self.assertGreaterEqual(struck, wanted, f"of {len(cases)} planned cases")

    def cut_writes_short(self, command):
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
        self.assertIn(done.returncode, (0, 1, 2, -9, 137), done.stderr)
        if done.returncode == 2:
            # What it should change couldn't be found.
            self.assertTrue(self.home.user_files() == self.before, "nothing is changed")
        self.check()

    def trace(self, command, calls, *options):
        """Runs the command, and tells what it ended with and which of these calls it made."""
        log = self.home.folder.parent / "calls"
        tracer = ["strace", "-f", "--quiet=all", "-o", log, "-e", "trace=" + ",".join(calls)]
        tracer += options
        if set(calls) <= READING.keys():
            tracer += self.of_user
        done = self.home.run(*command, tracer=tracer)
        return done, log.read_text(errors="replace")

    def calls_of(self, command, calls):
        """How often the command makes each call, in the thread that makes the most of them."""
        self.home.renew()
        done, log = self.trace(command, calls)
        self.assertEqual(done.returncode, 0, done.stdout)
        made = collections.Counter(re.findall(r"^(\d+) +(\w+)\(", log, re.MULTILINE))
        return {call: max(number for (_, name), number in made.items() if name == call)
                for call in calls if any(name == call for _, name in made)}

    @staticmethod
    def cases(counts):
        """Each call in each way; in the short form some, of all calls, and as many to spare."""
        every = [[(call, number, failure) for number in range(1, most + 1)
                  for failure in ways_of(call, number)] for call, most in counts.items()]
        if IS_LONG:
            return list(itertools.chain(*every))
        order = random.Random(8)
        mixed = [order.sample(cases, len(cases)) for cases in every]
        in_turn = itertools.chain(*itertools.zip_longest(*mixed))
        return [case for case in in_turn if case][:2 * CASES_IN_SHORT_FORM]

    def check(self):
        self.check_user_files()
        self.check_snapshots()
        for reading in ("held", "cues", "score"):
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
            is_allowed = content in allowed or self.may_be and self.may_be(path, content)
            self.assertTrue(is_allowed, f"{path} is neither old nor new")
        for path, content in self.before.items():
            self.assertTrue(path in present or content in held, f"{path} is lost")

    def check_snapshots(self):
        """One that is listed is whole."""
        for name in self.home.snapshots() - self.snapshots_at_first:
            copied = self.home.files(f"data/Tarnwick/Snapshots/{name}")
            below = f"data/Tarnwick/Snapshots/{name}/"
            copied = {path.removeprefix(below): content for path, content in copied.items()
                      if path != below + "meta.json"}
            self.assertTrue(copied == snapshot_of(self.before), f"{name} is not whole")

    def check_undone(self, entry):
        present = self.home.user_files()
        if entry["kind"] == "dedupe":
            path = next(path for path in self.before if path.endswith("/" + entry["target"]))
            # A manifest that couldn't be written doesn't know the file, which then stays held.
            held = self.home.ask("held")["items"]
            is_known = any(item["id"] == entry["holdingID"] for item in held)
            content = present.get(path) if is_known else self.before[path]
            self.assertTrue(content == self.before[path], "the file is back")
        elif entry["kind"] == "relink":
            self.assertTrue(present[DATABASE] == self.before[DATABASE], "the record is back")
        else:
            genre = "Not a genre".encode("utf-16-be")
            self.assertFalse(genre in present[DATABASE], "the genre is back")


if __name__ == "__main__":
    counted.main("interruptions")
