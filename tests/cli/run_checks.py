#!/usr/bin/env python3
"""Runs one transcript of the command line against the built program.

run_checks.py FILE --build FOLDER [--update]
"""

import argparse
import difflib
import os
import pathlib
import shlex
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
EXAMPLES = HERE.parents[1] / "docs" / "examples"
TODAY = "2026-11-20"


class Session:
    """A home folder of its own, and the commands that run in it."""

    def __init__(self, build, home):
        self.build = build
        self.home = home
        self.environment = {
            "HOME": str(home),
            "XDG_DATA_HOME": str(home / "data"),
            "PATH": f"{build / 'bin'}:{HERE / 'bin'}:{EXAMPLES}:{os.environ['PATH']}",
            "LC_ALL": "C.UTF-8",
            "TZ": "UTC",
            "USER": "nobody-in-particular",
        }
        for name in ("ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS", "TSAN_OPTIONS"):
            if name in os.environ:
                self.environment[name] = os.environ[name]

    def prepare(self, words):
        if words[0] != "library":
            raise SystemExit(f"unknown preparation: {words}")
        subprocess.run(
            [self.build / "tools" / "demo_library", "--tracks", words[1], "--seed", words[2],
             "--today", TODAY, "--out", self.home, *words[3:]],
            check=True, stdout=subprocess.DEVNULL, env=self.environment)

    def run(self, command):
        done = subprocess.run(["bash", "-o", "pipefail", "-c", command], cwd=self.home,
                              env=self.environment, stdin=subprocess.DEVNULL,
                              capture_output=True, text=True, timeout=60)
        lines = [line or "." for line in self.tidy(done.stdout).splitlines()]
        lines += ["! " + line for line in self.tidy(done.stderr).splitlines()]
        if done.returncode != 0:
            lines.append(f"[{done.returncode}]")
        return lines

    def tidy(self, text):
        bare = str(self.home).lstrip("/")
        return text.replace("/" + bare, "~").replace(bare, "~")


def play(transcript, session):
    """The transcript as the program would have it now."""
    result = []
    for line in transcript:
        if line.startswith("@ "):
            session.prepare(shlex.split(line[2:]))
            result.append(line)
        elif line.startswith("$ "):
            result.append(line)
            result.extend(session.run(line[2:]))
        elif line.startswith("#") or not line.strip():
            result.append(line)
    return result


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("file", type=pathlib.Path)
    parser.add_argument("--build", type=pathlib.Path, required=True)
    parser.add_argument("--update", action="store_true")
    options = parser.parse_args()
    expected = options.file.read_text(encoding="utf-8").splitlines()
    if not any(line.startswith("$ ") for line in expected):
        raise SystemExit(f"{options.file}: no command in it")
    with tempfile.TemporaryDirectory(prefix="tarnwick-cli-") as home:
        session = Session(options.build.resolve(), pathlib.Path(home).resolve())
        actual = play(expected, session)
    if options.update:
        options.file.write_text("\n".join(actual) + "\n", encoding="utf-8")
    elif actual != expected:
        sys.stdout.writelines(
            line + "\n" for line in difflib.unified_diff(expected, actual, "expected", "actual",
                                                         lineterm=""))
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
