#!/usr/bin/env python3
"""scripts/setup.sh where it installs nothing: its lists, and systems other than Debian."""

import os
import subprocess
import unittest

from script_case import REPOSITORY, ScriptTest


class SetupTest(ScriptTest):
    def setup(self, *arguments, system="ID=fedora\nVERSION_ID=40\n", path=os.environ["PATH"]):
        self.write("os-release", system)
        environment = {"OS_RELEASE": str(self.root / "os-release"), "PATH": path}
        command = ["/bin/bash", str(REPOSITORY / "scripts/setup.sh"), *arguments]
        return subprocess.run(command, env=environment, capture_output=True, text=True, timeout=60)

    def listed(self, *options):
        return set(self.setup("--list", *options).stdout.split())

    def test_options_add_to_what_building_and_running_take(self):
        self.assertLessEqual({"g++", "cmake", "fonts-inter"}, self.listed())
        self.assertFalse({"shellcheck", "python3-mutagen", "clang"} & self.listed())
        self.assertLess(self.listed(), self.listed("--test"))
        self.assertLess(self.listed("--test"), self.listed("--interop"))
        self.assertEqual({"clang", "libclang-rt-dev"}, self.listed("--fuzz") - self.listed())

    def test_elsewhere_it_lists_the_packages_and_is_content_with_the_commands(self):
        ran = self.setup()
        self.assertEqual(ran.returncode, 0, ran.stdout)
        self.assertIn("\n  qt6-base-dev\n", ran.stdout)

    def test_older_debian_counts_as_elsewhere(self):
        ran = self.setup(system='ID=debian\nVERSION_ID="11"\n')
        self.assertIn("This is not Debian 12 or later", ran.stdout)

    def test_elsewhere_a_missing_command_is_named(self):
        for command in ("sort", "dirname"):
            self.link(command)
        ran = self.setup(path=str(self.root / "bin"))
        self.assertEqual(ran.returncode, 1)
        self.assertIn("Not found: cmake\n", ran.stdout)

    def link(self, command):
        (self.root / "bin").mkdir(exist_ok=True)
        place = next(p for p in ("/usr/bin", "/bin") if os.path.exists(f"{p}/{command}"))
        os.symlink(f"{place}/{command}", self.root / "bin" / command)

    def test_unknown_option_is_refused(self):
        ran = self.setup("--everything")
        self.assertEqual(ran.returncode, 2)
        self.assertIn("unknown option --everything", ran.stderr)


if __name__ == "__main__":
    unittest.main()
