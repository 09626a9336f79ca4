#!/usr/bin/env python3
"""scripts/checks/banned_calls run as a program over small made-up trees."""

import unittest

from script_case import ScriptTest


class BannedCallsTest(ScriptTest):
    script = "checks/banned_calls"

    def setUp(self):
        super().setUp()
        self.write("src/serato/README.md", "")

    def test_each_call_is_named_with_file_and_line(self):
        for call in (
            "QFile file(path);",
            "QFileInfo info(path);",
            "QDir::home();",
            "std::ifstream stream(path);",
            "const int fd = ::open(path, O_RDONLY);",
            "QProcess process;",
            'qgetenv("HOME");',
            "QDateTime::currentDateTimeUtc();",
            "#include <unistd.h>",
            "#include <filesystem>",
            "#ifdef Q_OS_LINUX",
        ):
            with self.subTest(call):
                self.write("src/serato/crate.cpp", f"\n{call}\n")
                self.fails_with("src/serato/crate.cpp:2: ")

    def test_platform_may_call_them(self):
        self.write("src/platform/files.cpp", "QFile file(path);\n")
        self.passes()

    def test_words_in_comments_and_texts_are_no_calls(self):
        self.write("src/serato/crate.cpp", '// QFile\n/* QDir\nQFile */\nu"QFile"_s;\nQFileDevice::x;\n')
        self.passes()

    def test_call_behind_a_comment_is_found(self):
        self.write("src/serato/crate.cpp", "/* one\ntwo */ QFile file;\n")
        self.fails_with("src/serato/crate.cpp:2: QFile")

    def test_line_that_gives_its_reason_passes_and_one_without_does_not(self):
        self.write("src/serato/crate.cpp", "QFile out;  // platform: allowed, standard output\n")
        self.passes()
        self.write("src/serato/crate.cpp", "QFile out;  // platform: allowed,\n")
        self.fails_with("src/serato/crate.cpp:1: QFile")

    def test_colours_are_named_in_theme_alone(self):
        self.write("src/screens/components/Theme.qml", 'color: "#ffeedd"\n')
        self.passes()
        self.write("src/screens/Row.qml", 'Text {\n    color: "#ffeedd"\n}\n')
        self.fails_with("src/screens/Row.qml:2: ")


if __name__ == "__main__":
    unittest.main()
