#!/usr/bin/env python3
"""scripts/layers run as a program over small made-up trees."""

import unittest

from script_case import ScriptTest


class LayersTest(ScriptTest):
    script = "layers"

    def setUp(self):
        super().setUp()
        self.folder("foundation", "May include: nothing")
        self.folder("serato", "Reads crates.\n\nMay include: foundation")
        self.folder("app", "May include: foundation, serato")

    def folder(self, name, readme):
        self.write(f"src/{name}/README.md", f"# {name}\n\n{readme}\n")

    def test_own_folder_and_allowed_folders_pass(self):
        self.write("src/foundation/bytes.h", "#pragma once\n")
        self.write("src/serato/crate.cpp", '#include "serato/crate.h"\n#include "foundation/bytes.h"\n')
        self.passes()

    def test_include_against_the_layers_is_named_with_file_and_line(self):
        self.write("src/foundation/bytes.h", '#pragma once\n\n#include "serato/crate.h"\n')
        self.fails_with("src/foundation/bytes.h:3: foundation may not include serato/crate.h")

    def test_include_without_a_folder_is_named(self):
        self.write("src/serato/crate.cpp", '#include "crate.h"\n')
        self.fails_with('src/serato/crate.cpp:1: "crate.h" does not start with a folder of src/')

    def test_system_and_generated_includes_are_left_alone(self):
        self.write("src/serato/crate.cpp", '#include <QString>\n#include "crate.moc"\n')
        self.passes()

    def test_folder_without_readme_is_named(self):
        self.write("src/tags/tags.cpp", "")
        self.fails_with("src/tags: has no README.md")

    def test_readme_without_the_line_is_named(self):
        self.folder("tags", "Audio tags.")
        self.fails_with('src/tags/README.md: has no line "May include: ..."')

    def test_allowed_folder_that_is_none_is_named(self):
        self.folder("tags", "May include: fundation")
        self.fails_with("src/tags/README.md: allows fundation, which is no folder")

    def test_ring_of_folders_is_named(self):
        self.folder("foundation", "May include: app")
        self.fails_with("ring: app -> foundation -> app")

    def test_only_command_files_use_the_line_for_commands(self):
        self.folder("repair", "May include: serato\nCommands may also include: app")
        self.folder("app", "May include: serato, repair")
        self.write("src/repair/tag_commands.cpp", '#include "app/app_state.h"\n')
        self.passes()
        self.write("src/repair/repair_engine.cpp", '#include "app/app_state.h"\n')
        self.fails_with("src/repair/repair_engine.cpp:1: repair may not include app/app_state.h")

    def test_patterns_allow_single_headers(self):
        self.folder("screens", "May include: app")
        self.folder("cli", "May include: app, screens/*_figures.h")
        self.write("src/cli/score.cpp", '#include "screens/score/score_figures.h"\n')
        self.passes()
        self.write("src/cli/health.cpp", '#include "screens/score/score_presenter.h"\n')
        self.fails_with("src/cli/health.cpp:1: cli may not include screens/score/score_presenter.h")

    def test_figures_obey_their_own_line_alone(self):
        self.folder("screens", "May include: app\nFigures may include: serato")
        self.write("src/screens/score_figures.cpp", '#include "screens/score_figures.h"\n#include "serato/crate.h"\n')
        self.passes()
        self.write("src/screens/score_figures.h", '#include "screens/score_presenter.h"\n')
        self.fails_with("src/screens/score_figures.h:1: screens may not include screens/score_presenter.h")

    def test_subfolder_with_a_readme_has_its_own_rule(self):
        self.folder("screens", "May include: app, screens/components")
        self.folder("screens/components", "May include: nothing")
        self.write("src/screens/components/theme.cpp", '#include "app/app_state.h"\n')
        self.fails_with("src/screens/components/theme.cpp:1: screens/components may not include app/app_state.h")


if __name__ == "__main__":
    unittest.main()
