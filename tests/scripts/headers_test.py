#!/usr/bin/env python3
"""scripts/checks/headers run as a program over a made-up tree with a compilation database."""

import json
import subprocess
import unittest

from script_case import REPOSITORY, ScriptTest


class HeadersTest(ScriptTest):
    def setUp(self):
        super().setUp()
        entries = [self.entry("src/serato/crate.cpp", "-DTEN=10"), self.entry("src/serato/tag.cpp", "")]
        self.write("build/compile_commands.json", json.dumps(entries))
        self.write("src/serato/name.h", "#pragma once\n#include <string>\nusing Name = std::string;\n")
        self.write("src/serato/crate.h", '#pragma once\n#include "serato/name.h"\nName name(int = TEN);\n')

    def entry(self, path, flags):
        source = str(self.root / path)
        command = f"/usr/bin/ccache /usr/bin/c++ {flags} -std=gnu++20 -o x.o -c {source}"
        return {"directory": str(self.root), "command": command, "file": source}

    def run_script(self):
        command = [str(REPOSITORY / "scripts/checks/headers"), str(self.root / "build"), str(self.root)]
        return subprocess.run(command, capture_output=True, text=True, timeout=60)

    def test_headers_that_bring_what_they_use_pass(self):
        self.passes()

    def test_header_that_leans_on_its_includer_is_named(self):
        self.write("src/serato/store.h", "#pragma once\nstd::string folder();\n")
        self.fails_with("src/serato/store.h:1: does not compile alone")

    def test_header_takes_the_flags_of_its_own_source(self):
        self.write("src/serato/tag.h", "#pragma once\nint tag(int = TEN);\n")
        self.fails_with("src/serato/tag.h:1: does not compile alone")

    def test_header_without_a_source_takes_the_fullest_flags_of_its_folder(self):
        self.write("src/serato/layout.h", "#pragma once\nint layout(int = TEN);\n")
        self.passes()

    def test_header_is_checked_again_when_one_below_it_changes(self):
        self.passes()
        self.write("src/serato/name.h", "#pragma once\n")
        self.fails_with("src/serato/crate.h:1: does not compile alone")

    def test_fault_stays_a_fault_until_it_is_mended(self):
        self.write("src/serato/store.h", "#pragma once\nstd::string folder();\n")
        self.fails_with("src/serato/store.h")
        self.fails_with("src/serato/store.h")
        self.write("src/serato/store.h", "#pragma once\n#include <string>\nstd::string folder();\n")
        self.passes()


if __name__ == "__main__":
    unittest.main()
