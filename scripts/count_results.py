"""Counts what a ctest run did: "PASSED FAILED" on the first line, then the name of each failure.

Usage: count_results.py CTEST_JUNIT GTEST_FOLDER. A GoogleTest program counts with each of its cases, by the report
that it left in the folder; every other test counts as one.
"""

import os
import sys
import xml.etree.ElementTree as xml


def count_cases(report):
    """(passed, names of failures) of one GoogleTest report; skipped cases count as neither."""
    passed, failed = 0, []
    for case in xml.parse(report).getroot().iter("testcase"):
        if case.find("failure") is not None:
            failed.append(f"{case.get('classname')}.{case.get('name')}")
        elif case.get("result") == "completed":
            passed += 1
    return passed, failed


def count(junit, folder):
    passed, failed = 0, []
    for test in xml.parse(junit).getroot().iter("testcase"):
        name, good = test.get("name"), test.get("status") == "run"
        report = os.path.join(folder, f"test_{name}.xml")
        cases, failures = count_cases(report) if os.path.isfile(report) else (int(good), [])
        passed += cases
        failed += [f"{name}: {failure}" for failure in failures]
        if not good and not failures:
            failed.append(f"{name}: {test.get('status')}")
    return passed, failed


def main():
    passed, failed = count(*sys.argv[1:3])
    print(passed, len(failed))
    for name in failed:
        print(name)


if __name__ == "__main__":
    main()
