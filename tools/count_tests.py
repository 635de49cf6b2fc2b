#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Counts what the tests of some builds gave, and prints one line: N passed, N failed.

    count_tests.py [--passed N] [--broken N] [BUILD_FOLDER...]

A GoogleTest program (label "gtest") counts by its test cases, any other test as one. A program
that failed without telling of a failed case (a crash, a time limit, an early end) counts as one
more failure, and so does a build whose tests did not run. The exit status is 0 only if something
passed and nothing failed.
"""
import argparse
import json
import pathlib
import sys
import xml.etree.ElementTree as ElementTree


class Count:
    def __init__(self):
        self.passed = self.failed = self.skipped = 0

    def add(self, other):
        self.passed += other.passed
        self.failed += other.failed
        self.skipped += other.skipped


def labels_of(tests_json):
    """The names of all tests of a build, each with its labels."""
    labels = {}
    for test in json.loads(tests_json.read_text())["tests"]:
        properties = {p["name"]: p["value"] for p in test.get("properties", [])}
        labels[test["name"]] = properties.get("LABELS", [])
    return labels


def count_cases(results_json):
    """The cases that one GoogleTest program told of."""
    count = Count()
    for suite in json.loads(results_json.read_text())["testsuites"]:
        for case in suite["testsuite"]:
            if case.get("failures"):
                count.failed += 1
                print(f"  failed: {suite['name']}.{case['name']}")
            elif case["result"] == "SKIPPED":
                count.skipped += 1
            elif case["result"] == "COMPLETED":
                count.passed += 1
    return count


def count_test(results, name, status, is_gtest):
    """One test of CTest's."""
    count = Count()
    if is_gtest:
        try:
            count = count_cases(results / f"{name}.json")
        except (OSError, ValueError, KeyError) as problem:
            print(f"  failed: {name} left no results ({problem})")
            count.failed += 1
            return count
        if status != "run" and count.failed == 0:
            print(f"  failed: {name} ended badly ({status})")
            count.failed += 1
        elif count.passed + count.failed + count.skipped == 0:
            print(f"  failed: {name} holds no test")
            count.failed += 1
    elif status == "run":
        count.passed += 1
    else:
        print(f"  failed: {name} ({status})")
        count.failed += 1
    return count


def count_build(folder):
    results = folder / "results"
    count = Count()
    try:
        labels = labels_of(results / "tests.json")
        statuses = {case.get("name"): case.get("status")
                    for case in ElementTree.parse(results / "ctest.xml").iter("testcase")}
    except (OSError, ValueError, KeyError, ElementTree.ParseError) as problem:
        print(f"  failed: the tests did not run ({problem})")
        count.failed += 1
        return count
    if not labels:
        print("  failed: there is no test")
        count.failed += 1
    for name, its_labels in labels.items():
        count.add(count_test(results, name, statuses.get(name, "not run"), "gtest" in its_labels))
    return count


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--passed", type=int, default=0, help="what passed beside the tests")
    parser.add_argument("--broken", type=int, default=0, help="what failed beside the tests")
    parser.add_argument("folders", nargs="*", type=pathlib.Path)
    arguments = parser.parse_args()

    total = Count()
    total.passed, total.failed = arguments.passed, arguments.broken
    for folder in arguments.folders:
        count = count_build(folder)
        print(f"{folder.name}: {count.passed + count.failed} tests, {count.failed or 'none'} failed")
        total.add(count)
    skipped = f", {total.skipped} skipped" if total.skipped else ""
    print(f"{total.passed} passed, {total.failed} failed{skipped}")
    sys.exit(0 if total.failed == 0 and total.passed > 0 else 1)


if __name__ == "__main__":
    main()
