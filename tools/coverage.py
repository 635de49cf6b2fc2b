#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Prints which part of the library's lines and branches was reached, from what gcov counted.

    coverage.py [--files] [--missing PATTERN] [--least PERCENT] BUILD_FOLDER

A line each for the folders and for the whole; with --files one for each file, the thinnest first,
and with --missing the places in files whose name holds PATTERN where a branch was never taken or a
line never reached. With --least the exit status is 1 if fewer branches in all were taken.

A branch that several instances of a template share is one branch, taken if one of them took it.
"""
import argparse
import collections
import json
import pathlib
import subprocess
import sys

SOURCE = pathlib.Path(__file__).resolve().parents[1]


def gcov_reports(build):
    """What gcov says of each object that has counts."""
    objects = sorted(build.glob("CMakeFiles/quorix_objects.dir/**/*.gcno"))
    for start in range(0, len(objects), 20):
        done = subprocess.run(["gcov", "--json-format", "--stdout", "--branch-probabilities",
                               *objects[start:start + 20]],
                              cwd=build, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True,
                              check=True)
        for line in done.stdout.splitlines():
            if line.startswith("{"):
                yield json.loads(line)


class File:
    def __init__(self):
        self.lines = collections.Counter()     # line: times it was reached
        self.branches = collections.Counter()  # (line, branches there, which of them): times taken

    def add(self, line):
        number, branches = line["line_number"], line["branches"]
        self.lines[number] += line["count"]
        for i, branch in enumerate(branches):
            self.branches[number, len(branches), i] += branch["count"]

    def counts(self):
        """Lines reached, lines, branches taken, branches."""
        return (sum(count > 0 for count in self.lines.values()), len(self.lines),
                sum(count > 0 for count in self.branches.values()), len(self.branches))

    def missing(self):
        for number in sorted(self.lines):
            here = [(key, count) for key, count in self.branches.items() if key[0] == number]
            never = sum(count == 0 for _, count in here)
            if self.lines[number] == 0:
                yield number, "never reached"
            elif never:
                yield number, f"{never} of {len(here)} branches never taken"


def files_of(build):
    """The library's own files by name, with their counts."""
    files = collections.defaultdict(File)
    for report in gcov_reports(build):
        for file in report["files"]:
            path = (build / file["file"]).resolve()
            if SOURCE in path.parents and build not in path.parents:
                name = str(path.relative_to(SOURCE))
                for line in file["lines"]:
                    files[name].add(line)
    return files


def percent(part, whole):
    return 100 * part / whole if whole else 100.0


def show(name, counts):
    lines_reached, lines, taken, branches = counts
    print(f"{name:<34}{percent(lines_reached, lines):7.1f} % of {lines:5} lines"
          f"{percent(taken, branches):8.1f} % of {branches:5} branches")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--files", action="store_true", help="each file too")
    parser.add_argument("--missing", metavar="PATTERN", help="what was not reached")
    parser.add_argument("--least", type=float, default=0, metavar="PERCENT")
    parser.add_argument("build", type=pathlib.Path)
    arguments = parser.parse_args()

    files = files_of(arguments.build.resolve())
    counts = {name: file.counts() for name, file in files.items()}
    if not counts:
        sys.exit("coverage: nothing was counted")
    if arguments.files:
        for name in sorted(counts, key=lambda name: percent(*counts[name][2:])):
            show(name, counts[name])
        print()
    if arguments.missing:
        for name in sorted(name for name in files if arguments.missing in name):
            for number, words in files[name].missing():
                print(f"{name}:{number}: {words}")
        print()
    folders = collections.defaultdict(lambda: [0, 0, 0, 0])
    for name, its in counts.items():
        for group in (name.split("/")[0] + "/", "all"):
            folders[group] = [a + b for a, b in zip(folders[group], its)]
    for group in sorted(folders, key=lambda group: (group == "all", group)):
        show(group, folders[group])
    sys.exit(percent(*folders["all"][2:]) < arguments.least)


if __name__ == "__main__":
    main()
