#!/usr/bin/env python3
"""scripts/torture over a made-up tree: what its table counts, and what counts as a finding."""

import os
import shutil
import subprocess
import unittest

from script_case import REPOSITORY, ScriptTest

CTEST = "echo '95% tests passed, 2 tests failed out of 40'; exit 8"


class TortureTest(ScriptTest):
    def setUp(self):
        super().setUp()
        (self.root / "scripts").mkdir()
        for script in ("torture", "at_home"):
            shutil.copy(REPOSITORY / "scripts" / script, self.root / "scripts" / script)
        self.program("scripts/fuzz", "echo json")
        self.program("bin/cmake", "")
        self.program("bin/ctest", CTEST)

    def program(self, path, text):
        self.write(path, f"#!/bin/sh\n{text}\n")
        (self.root / path).chmod(0o755)

    def loop(self, name, text):
        """A test that makes each call of a writer fail, as it was built."""
        self.write(f"tests/fault/{name}.cpp", "TARNWICK_FAULT_LOOP_MAIN(Test)\n")
        self.program(f"build/dev/tests/fault/{name}", text)

    def torture(self, *steps):
        """The exit status, the last lines' table without its head, and all that was told."""
        command = [self.root / "scripts/torture", "--seconds", "1"]
        for step in steps:
            command += ["--only", step]
        environment = dict(os.environ, PATH=f"{self.root}/bin:{os.environ['PATH']}")
        ran = subprocess.run(command, env=environment, capture_output=True, text=True, timeout=60)
        table = ran.stdout.split("findings\n")[-1].splitlines()[:-1]
        return ran.returncode, [" ".join(row.split()) for row in table], ran.stdout

    def test_begins_with_its_bound_and_ends_with_a_table(self):
        self.program("scripts/check", "")
        self.program("scripts/package", "")
        status, table, told = self.torture("checks", "package")
        self.assertEqual((status, table), (0, ["clang-tidy, cppcheck, other checks 1 run 0",
                                               "package, hardened 1 run 0"]))
        self.assertTrue(told.startswith("scripts/torture: checks package, at most 45 minutes on "))
        self.assertRegex(told, r"Took \d+ minutes.\n$")

    def test_a_check_that_fails_is_a_finding_and_shown(self):
        self.program("scripts/check", "echo this is wrong; exit 1")
        status, table, told = self.torture("checks")
        self.assertEqual((status, table), (1, ["clang-tidy, cppcheck, other checks 1 run 1"]))
        self.assertIn("this is wrong", told)

    def test_what_a_step_starts_is_no_part_of_the_run(self):
        self.program("scripts/check", 'test -z "$TARNWICK_TORTURE_SCRATCH"')
        self.assertEqual(self.torture("checks")[0], 0)

    def test_adds_up_what_the_tests_tell(self):
        self.loop("one_test", "echo 'QINFO  : Test::cleanup() 5 interruptions'; "
                              "echo 'QINFO  : Test::cleanup() 12 interruptions'; echo Totals")
        self.loop("other_test", "echo 3 interruptions")
        status, table, _ = self.torture("faults")
        self.assertEqual((status, table), (0, ["failing, killed, power lost 15 cases 0"]))

    def test_a_test_that_fails_is_a_finding_and_shown(self):
        self.loop("one_test", "echo 12 interruptions; echo lost a file; exit 1")
        self.loop("other_test", "echo 3 interruptions")
        status, table, told = self.torture("faults")
        self.assertEqual((status, table), (1, ["failing, killed, power lost 15 cases 1"]))
        self.assertIn("lost a file", told)

    def test_a_test_that_tried_nothing_is_a_finding(self):
        for text in ("", "echo 0 interruptions", "echo 12 other things"):
            with self.subTest(text):
                self.loop("one_test", text)
                self.loop("other_test", "echo 3 interruptions")
                status, table, told = self.torture("faults")
                self.assertEqual((status, table), (1, ["failing, killed, power lost 3 cases 1"]))
                self.assertIn("one_test tried nothing", told)

    def test_a_build_that_fails_is_a_finding(self):
        self.loop("one_test", "echo 12 interruptions")
        self.program("bin/cmake", "exit 1")
        status, table, _ = self.torture("faults", "asan")
        self.assertEqual((status, table), (1, ["failing, killed, power lost 0 cases 1",
                                               "address and undefined sanitizers 0 test programs 1"]))

    def test_counts_the_programs_of_a_test_run_and_those_that_failed(self):
        status, table, told = self.torture("asan")
        self.assertEqual((status, table), (1, ["address and undefined sanitizers 40 test programs 2"]))
        self.assertIn("2 tests failed", told)
        self.program("bin/ctest", CTEST.replace("2 tests", "0 tests"))
        status, table, _ = self.torture("asan")
        self.assertEqual((status, table), (0, ["address and undefined sanitizers 40 test programs 0"]))

    def test_counts_the_inputs_of_each_target_and_its_finds(self):
        for finds in (0, 1):
            with self.subTest(finds):
                self.program("scripts/fuzz", f"[ $# -gt 0 ] || exec echo json\n"
                                             f"[ $1 != --build ] || exit 0\n"
                                             f"echo 'json: 500 runs, {finds} finds'; exit {finds}")
                status, table, _ = self.torture("fuzz")
                self.assertEqual((status, table), (finds, [f"fuzz json 500 runs {finds}"]))


if __name__ == "__main__":
    unittest.main()
