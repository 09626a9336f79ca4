#!/usr/bin/env python3
"""scripts/checks/hardened over small programs: what the build's own flags make, and what lacks one."""

import subprocess
import sys
import unittest

from script_case import REPOSITORY, ScriptTest

PROJECT = f"""cmake_minimum_required(VERSION 3.25)
project(small LANGUAGES CXX)
include({REPOSITORY / "cmake/TarnwickToolchain.cmake"})
add_executable(program program.cpp)
add_library(module MODULE module.cpp)
set_target_properties(module PROPERTIES PREFIX "")
"""
# A text of unknown length goes into an array on the stack.
PROGRAM = """#include <cstring>
{}
{{
    char text[16];
    std::strcpy(text, argv[0]);
    return int(std::strlen(text)) + count;
}}
"""
GOOD = ["-O2", "-fPIE", "-pie", "-fstack-protector-strong", "-U_FORTIFY_SOURCE", "-D_FORTIFY_SOURCE=2",
        "-Wl,-z,relro,-z,now,-z,noexecstack"]
# What takes one thing away, and how that is told.
SPOILING = {
    "-no-pie": "lies at a fixed address",
    "-Wl,-z,norelro": "its tables stay writable",
    "-Wl,-z,lazy": "its tables are filled while it runs",
    "-Wl,-z,execstack": "its stack may be executable",
    "-fno-stack-protector": "its stack has no guards",
    "-U_FORTIFY_SOURCE": "no writer of the C library is guarded",
}


@unittest.skipIf(sys.platform == "darwin", "programs are of another form there")
class HardenedTest(ScriptTest):
    def setUp(self):
        super().setUp()
        self.write("program.cpp", PROGRAM.format("int main(int count, char **argv)"))
        self.write("module.cpp", PROGRAM.format('extern "C" int run(int count, char **argv)'))
        self.files = []

    def made(self, command):
        ran = subprocess.run([str(word) for word in command], stdout=subprocess.PIPE,
                             stderr=subprocess.STDOUT, text=True, cwd=self.root)
        self.assertEqual(ran.returncode, 0, ran.stdout)

    def run_script(self):
        command = [str(REPOSITORY / "scripts/checks/hardened"), *map(str, self.files)]
        return subprocess.run(command, capture_output=True, text=True, timeout=60)

    def build_small_project(self, hardened):
        self.write("CMakeLists.txt", PROJECT)
        self.made(["cmake", "-G", "Ninja", "-S", ".", "-B", "build", "-DCMAKE_BUILD_TYPE=Release",
                   f"-DTARNWICK_HARDENED={hardened}"])
        self.made(["cmake", "--build", "build"])
        self.files = [self.root / "build/program", self.root / "build/module.so"]

    def test_flags_of_the_build_make_hardened_programs_and_modules(self):
        self.build_small_project("ON")
        self.passes()

    def test_build_without_these_flags_is_found_out(self):
        self.build_small_project("OFF")
        self.fails_with("build/program: its stack has no guards")
        self.fails_with("build/module.so: its stack has no guards")

    def test_each_lack_is_told(self):
        self.files = [self.root / "program"]
        self.made(["c++", *GOOD, "program.cpp", "-o", "program"])
        self.passes()
        for flag, fault in SPOILING.items():
            with self.subTest(flag):
                self.made(["c++", *GOOD, flag, "program.cpp", "-o", "program"])
                self.fails_with(f"program: {fault}")

    def test_what_is_no_program_is_a_fault(self):
        self.files = [self.root / "program.cpp"]
        self.fails_with("program.cpp: can't be read")
        self.files = [self.root / "nowhere"]
        self.fails_with("nowhere: can't be read")


if __name__ == "__main__":
    unittest.main()
