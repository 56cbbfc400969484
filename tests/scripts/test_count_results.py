"""What ./test says at its end is counted here: no failure may get lost on the way."""

import os
import tempfile
import unittest

from count_results import count

PASSED = '<testcase name="a" status="run" result="completed" classname="S"/>'
SKIPPED = '<testcase name="s" status="run" result="skipped" classname="S"><skipped message=""/></testcase>'
FAILED = '<testcase name="f" status="run" result="completed" classname="S"><failure message="x"/></testcase>'


class CountResults(unittest.TestCase):
    def counted(self, tests, reports):
        """Counts a ctest report of {name: status} with the GoogleTest reports {name: [cases]} beside it."""
        with tempfile.TemporaryDirectory() as folder:
            for name, cases in reports.items():
                with open(os.path.join(folder, f"test_{name}.xml"), "w", encoding="utf-8") as file:
                    file.write(f"<testsuites><testsuite>{''.join(cases)}</testsuite></testsuites>")
            junit = os.path.join(folder, "ctest.xml")
            with open(junit, "w", encoding="utf-8") as file:
                lines = [f'<testcase name="{name}" status="{status}"/>' for name, status in tests.items()]
                file.write(f"<testsuite>{''.join(lines)}</testsuite>")
            return count(junit, folder)

    def test_each_case_of_a_program_counts(self):
        self.assertEqual(self.counted({"base": "run"}, {"base": [PASSED, PASSED, SKIPPED]}), (2, []))
        self.assertEqual(self.counted({"base": "fail"}, {"base": [PASSED, FAILED]}), (1, ["base: S.f"]))

    def test_other_tests_count_as_one(self):
        self.assertEqual(self.counted({"layers": "run", "library": "fail"}, {}), (1, ["library: fail"]))

    def test_a_program_that_ends_badly_is_a_failure(self):
        # A leak is found when every case has passed; a crash or a missing program leaves no report.
        self.assertEqual(self.counted({"base": "fail"}, {"base": [PASSED]}), (1, ["base: fail"]))
        self.assertEqual(self.counted({"base": "fail", "edit": "notrun"}, {}), (0, ["base: fail", "edit: notrun"]))


if __name__ == "__main__":
    unittest.main()
