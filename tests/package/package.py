# SPDX-License-Identifier: MIT
"""What the tests of the installed package share: its configuration, and running programs.

Each test is `NAME_test.py CONFIG.json`; CMake writes the configuration.
"""
import json
import pathlib
import re
import subprocess
import sys
import unittest

CONFIG = json.loads(pathlib.Path(sys.argv[1]).read_text())
PREFIX = pathlib.Path(CONFIG["prefix"])
INCLUDE = PREFIX / "include"
LIB = PREFIX / CONFIG["libdir"]
WINDOWS = CONFIG["windows"]
SHARED = PREFIX / "bin" / "quorix.dll" if WINDOWS else LIB / "libquorix.so"
STATIC = LIB / "libquorix.a"
HERE = pathlib.Path(__file__).resolve().parent


def run(*command, **options):
    """The output of a program, which must end well."""
    words = [str(word) for word in command]
    done = subprocess.run(words, text=True, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, **options)
    if done.returncode != 0:
        raise AssertionError(f"{' '.join(words)}\nexit status {done.returncode}\n{done.stdout}")
    return done.stdout


def scratch(name):
    """A new empty folder."""
    folder = pathlib.Path(CONFIG["scratch"]) / name
    if folder.exists():
        run("rm", "-rf", folder)
    folder.mkdir(parents=True)
    return folder


def without_comments(text):
    return re.sub(r"/\*.*?\*/", "", text, flags=re.DOTALL)


def declared_operations():
    """The operations that the installed headers declare."""
    names = set()
    for header in sorted((INCLUDE / "quorix").glob("*.h")):
        text = without_comments(header.read_text())
        names.update(re.findall(r"\bQUORIX_API\s+(?:int32_t\s+|const char \*)(\w+)\s*\(", text))
    return names


def expected_operations():
    """The operations of this version for this system."""
    lists = ["exports.txt"]
    if WINDOWS:
        lists.append("exports_windows.txt")
    lines = [line for name in lists if (HERE / name).exists()
             for line in (HERE / name).read_text().splitlines()]
    return {line for line in lines if line and not line.startswith("#")}


def main():
    unittest.main(argv=sys.argv[:1], verbosity=2)
