#!/usr/bin/env python3
"""scripts/checks/tidy run as a program over a made-up tree with a compilation database."""

import json
import os
import shutil
import subprocess
import unittest

from script_case import REPOSITORY, ScriptTest

WIDENED = "long long area(int a)\n{\n    return a * a;\n}\n"
SETTINGS = "Checks: '-*,bugprone-*'\nWarningsAsErrors: '*'\nHeaderFilterRegex: 'src/.*'\n"
# Notes what it is asked to read, and hands over to the real one.
WITNESS = """#!/bin/sh
[ "$1" = --version ] || echo "$4" >>'{log}'
exec '{real}' "$@"
"""


class TidyTest(ScriptTest):
    def setUp(self):
        super().setUp()
        self.write(".clang-tidy", SETTINGS)
        self.write("src/a/one.cpp", "int one()\n{\n    return 1;\n}\n")
        self.write("src/a/two.cpp", '#include "a/two.h"\nint two()\n{\n    return 2;\n}\n')
        self.write("src/a/two.h", '#pragma once\n#include "a/below.h"\nint two();\n')
        self.write("src/a/below.h", "#pragma once\n")
        self.write_database(("src/a/one.cpp", ""), ("src/a/two.cpp", ""))
        self.log = self.root / "log"
        witness = self.root / "bin/clang-tidy"
        self.write("bin/clang-tidy", WITNESS.format(log=self.log, real=shutil.which("clang-tidy")))
        witness.chmod(0o755)

    def write_database(self, *sources):
        entries = [{"directory": str(self.root), "file": str(self.root / path),
                    "command": f"/usr/bin/c++ {flags} -I{self.root}/src -std=c++20 -O1 -o x.o -c x"}
                   for path, flags in sources]
        self.write("build/compile_commands.json", json.dumps(entries))

    def run_script(self):
        command = [str(REPOSITORY / "scripts/checks/tidy"), str(self.root / "build"), str(self.root)]
        path = f"{self.root / 'bin'}:{os.environ['PATH']}"
        return subprocess.run(command, capture_output=True, text=True, timeout=60,
                              env={**os.environ, "PATH": path})

    def readings(self):
        """How often clang-tidy was asked to read something since the last time of asking."""
        count = len(self.log.read_text().splitlines()) if self.log.exists() else 0
        self.log.unlink(missing_ok=True)
        return count

    def test_sources_without_fault_pass_and_are_read_as_one(self):
        self.passes()
        self.assertEqual(self.readings(), 1)

    def test_what_passed_is_not_read_again(self):
        self.passes()
        self.readings()
        self.passes()
        self.assertEqual(self.readings(), 0)

    def test_changed_source_is_read_again_and_its_neighbour_is_not(self):
        self.passes()
        self.readings()
        self.write("src/a/one.cpp", WIDENED)
        self.fails_with("src/a/one.cpp:3:12: error: performing an implicit widening conversion")
        self.assertEqual(self.log.read_text(), f"{self.root}/src/a/one.cpp\n")

    def test_source_is_read_again_when_a_header_below_it_changes(self):
        self.passes()
        self.write("src/a/below.h", "#pragma once\ninline " + WIDENED)
        self.fails_with("src/a/below.h:4:12: error: performing an implicit widening conversion")

    def test_all_are_read_again_when_the_settings_change(self):
        self.passes()
        self.readings()
        self.write(".clang-tidy", SETTINGS + "# Another word.\n")
        self.passes()
        self.assertEqual(self.readings(), 1)

    def test_source_is_read_again_when_its_flags_change(self):
        self.passes()
        self.readings()
        self.write_database(("src/a/one.cpp", "-DTEN=10"), ("src/a/two.cpp", ""))
        self.passes()
        self.assertEqual(self.readings(), 1)

    def test_fault_is_named_once_and_stays_until_it_is_mended(self):
        self.write("src/a/two.h", "#pragma once\ninline " + WIDENED)
        self.write("src/a/one.cpp", '#include "a/two.h"\n')
        for _ in range(2):
            said = self.run_script()
            self.assertEqual(said.stdout.count("error: performing"), 1, said.stdout)
            self.assertEqual(said.returncode, 1)
        self.write("src/a/two.h", "#pragma once\n")
        self.passes()

    def test_fault_of_one_source_does_not_hide_that_of_another(self):
        self.write("src/a/one.cpp", WIDENED)
        self.write("src/a/two.cpp", WIDENED.replace("area", "space"))
        said = self.run_script().stdout
        self.assertIn("src/a/one.cpp:3:12: error: performing", said)
        self.assertIn("src/a/two.cpp:3:12: error: performing", said)

    def test_sources_whose_names_clash_pass(self):
        for name in ("one", "two"):
            self.write(f"src/a/{name}.cpp",
                       f"namespace {{\nint ten()\n{{\n    return 10;\n}}\n}}\n"
                       f"int {name}()\n{{\n    return ten();\n}}\n")
        self.passes()
        self.passes()

    def test_what_the_build_has_made_is_not_ours(self):
        self.write("build/src/a/made.h", "inline " + WIDENED)
        self.write("src/a/one.cpp", '#include "made.h"\n')
        self.write_database(("src/a/one.cpp", f"-I{self.root}/build/src/a"), ("src/a/two.cpp", ""))
        self.passes()

    def test_source_that_does_not_compile_is_a_fault(self):
        self.write("src/a/one.cpp", "int one() { return nothing; }\n")
        self.fails_with("src/a/one.cpp:1:20: error: use of undeclared identifier 'nothing'")


if __name__ == "__main__":
    unittest.main()
