#!/usr/bin/env python3
"""The command line runs on a machine that has nothing to show pictures with."""

import argparse
import pathlib
import re
import subprocess
import sys
import unittest

BUILD = None
OF_A_DISPLAY = re.compile(r"lib(Qt6(Gui|Quick|Qml|Widgets|DBus)|X11|xcb|wayland|GL|EGL|fontconfig)")


def libraries_of(program):
    listed = subprocess.run(["ldd", program], check=True, stdout=subprocess.PIPE)
    return listed.stdout.decode("utf-8")


class LibrariesTest(unittest.TestCase):
    def test_the_command_line_needs_no_display(self):
        needed = libraries_of(BUILD / "bin" / "tarnwick-cli")
        self.assertIn("libQt6Core", needed)
        self.assertIsNone(OF_A_DISPLAY.search(needed), needed)

    def test_the_window_program_does(self):
        self.assertIsNotNone(OF_A_DISPLAY.search(libraries_of(BUILD / "bin" / "tarnwick")))


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", type=pathlib.Path, required=True)
    options, rest = parser.parse_known_args()
    BUILD = options.build.resolve()
    unittest.main(argv=sys.argv[:1] + rest)
