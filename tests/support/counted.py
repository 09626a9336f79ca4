"""How a test in Python that counts what it tries is run against a build."""

import argparse
import pathlib
import sys
import unittest

# The exit status that ctest shows as skipped; to anyone else it is a failure.
NOTHING_TRIED = 77

_build = pathlib.Path()
_tried = 0


def built(path):
    """A program of the build."""
    return _build / path


def count(number=1):
    """Adds to the figure that the test tells at its end."""
    global _tried
    _tried += number


def main(what):
    """Runs the test that was started, then tells how many of `what` it tried."""
    global _build
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", type=pathlib.Path, required=True)
    wanted, rest = parser.parse_known_args()
    _build = wanted.build.resolve()
    program = unittest.main(module="__main__", argv=[sys.argv[0], *rest], exit=False)
    print(f"{_tried} {what}")
    if not program.result.wasSuccessful():
        sys.exit(1)
    sys.exit(0 if _tried else NOTHING_TRIED)
