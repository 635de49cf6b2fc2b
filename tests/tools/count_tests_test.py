# SPDX-License-Identifier: MIT
"""tools/count_tests.py decides whether a run was good: what it makes of each kind of end."""
import json
import pathlib
import subprocess
import sys
import tempfile
import unittest

TOOL = pathlib.Path(__file__).resolve().parents[2] / "tools" / "count_tests.py"

PASSED = {"name": "Passes", "status": "RUN", "result": "COMPLETED"}
FAILED = {"name": "Fails", "status": "RUN", "result": "COMPLETED", "failures": [{"failure": "no"}]}
SKIPPED = {"name": "IsSkipped", "status": "RUN", "result": "SKIPPED"}


class CountTests(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.build = pathlib.Path(folder.name)
        self.results = self.build / "results"
        self.results.mkdir()

    def write(self, tests):
        """tests: (name, ctest's status, cases of a GoogleTest program or None)."""
        listed, ran = [], []
        for name, status, cases in tests:
            labels = [] if cases is None else [{"name": "LABELS", "value": ["gtest"]}]
            listed.append({"name": name, "properties": labels})
            if status:
                ran.append(f'<testcase name="{name}" status="{status}"/>')
            if cases:
                content = {"testsuites": [{"name": "Suite", "testsuite": cases}]}
                (self.results / f"{name}.json").write_text(json.dumps(content))
        (self.results / "tests.json").write_text(json.dumps({"tests": listed}))
        (self.results / "ctest.xml").write_text(f"<testsuite>{''.join(ran)}</testsuite>")

    def expect(self, line, status, *options):
        done = subprocess.run([sys.executable, TOOL, *options, self.build], text=True,
                              stdout=subprocess.PIPE)
        self.assertEqual(done.stdout.splitlines()[-1], line, done.stdout)
        self.assertEqual(done.returncode, status)

    def test_cases_of_a_program_count_and_other_tests_count_as_one(self):
        self.write([("program", "run", [PASSED, PASSED]), ("other", "run", None)])
        self.expect("3 passed, 0 failed", 0)

    def test_a_failed_case_counts_once(self):
        self.write([("program", "fail", [PASSED, FAILED])])
        self.expect("1 passed, 1 failed", 1)

    def test_a_failed_other_test_counts(self):
        self.write([("good", "run", None), ("bad", "fail", None)])
        self.expect("1 passed, 1 failed", 1)

    def test_a_skipped_case_is_told_of(self):
        self.write([("program", "run", [PASSED, SKIPPED])])
        self.expect("1 passed, 0 failed, 1 skipped", 0)

    def test_a_program_that_leaves_no_results_failed(self):
        self.write([("good", "run", None), ("program", "run", [])])
        self.expect("1 passed, 1 failed", 1)

    def test_a_program_that_ends_badly_after_its_cases_failed(self):
        self.write([("program", "fail", [PASSED])])
        self.expect("1 passed, 1 failed", 1)

    def test_a_test_that_did_not_run_failed(self):
        self.write([("good", "run", None), ("forgotten", None, None)])
        self.expect("1 passed, 1 failed", 1)

    def test_no_tests_at_all_failed(self):
        self.write([])
        self.expect("0 passed, 1 failed", 1)

    def test_a_build_without_results_failed(self):
        self.expect("0 passed, 1 failed", 1)

    def test_a_step_that_broke_counts_as_failed(self):
        self.write([("good", "run", None)])
        self.expect("1 passed, 1 failed", 1, "--broken", "1")

    def test_what_passed_elsewhere_is_added(self):
        self.write([("good", "run", None)])
        self.expect("3 passed, 0 failed", 0, "--passed", "2")


if __name__ == "__main__":
    unittest.main()
