#!/usr/bin/env python3
"""scripts/checks/paths run as a program over small made-up trees."""

import unittest

from script_case import ScriptTest


class PathsTest(ScriptTest):
    script = "checks/paths"

    def setUp(self):
        super().setUp()
        self.write("scripts/run.sh", "")
        self.write("src/serato/crate_store.h", "")

    def page(self, text, path="README.md"):
        self.write(path, text)

    def test_paths_that_exist_pass_however_they_are_written(self):
        self.page("Call `./scripts/run.sh --now`, see `src/serato`, `src/serato/`, `crate_store.h`,\n")
        self.page("`crate_store.h`, `serato/crate_store.h`, [up](../../README.md)\n", "src/serato/README.md")
        self.passes()

    def test_missing_path_is_named_with_file_and_line(self):
        self.page("First.\n\nCall `./scripts/start.sh`.\n")
        self.fails_with("README.md:3: scripts/start.sh does not exist")

    def test_missing_file_without_a_folder_is_named(self):
        self.page("See `crate_writer.h`.\n", "docs/architecture.md")
        self.fails_with("docs/architecture.md:1: crate_writer.h does not exist")

    def test_missing_link_target_is_named(self):
        self.page("![the score](docs/score.png)\n")
        self.fails_with("README.md:1: docs/score.png does not exist")

    def test_pattern_must_match_something(self):
        self.page("`src/*/crate_*.h`\n")
        self.passes()
        self.page("`src/*/tag_*.h`\n")
        self.fails_with("README.md:1: src/*/tag_*.h does not exist")

    def test_other_words_are_left_alone(self):
        self.page("`database V2`, `a/b`, `build/dev`, `src/<folder>`, `scripts/NAME`, [x](https://x.org)\n")
        self.passes()


if __name__ == "__main__":
    unittest.main()
