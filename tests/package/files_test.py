# SPDX-License-Identifier: MIT
"""What is installed can be moved: no file names a folder of the build. The README is up to date."""
import pathlib
import re
import unittest

from package import CONFIG, LIB, PREFIX, SHARED, STATIC, WINDOWS, main

# Where a path begins.
START = r"(?:(?<![\w}/.-])|(?<=-I)|(?<=-L))"


class Files(unittest.TestCase):
    def test_all_parts_are_there(self):
        parts = [SHARED, STATIC, LIB / "pkgconfig/quorix.pc", LIB / "cmake/Quorix/QuorixConfig.cmake",
                 LIB / "cmake/Quorix/QuorixConfigVersion.cmake", PREFIX / "include/quorix/quorix.h"]
        if WINDOWS:
            parts.append(LIB / "libquorix.dll.a")
        for part in parts:
            self.assertTrue(part.is_file(), part)

    def test_no_text_file_holds_a_path_of_the_build(self):
        texts = [path for path in PREFIX.rglob("*") if path.suffix in {".pc", ".cmake", ".h"}]
        self.assertGreater(len(texts), 5)
        for path in texts:
            text = path.read_text()
            for folder in (CONFIG["build"], CONFIG["source"], CONFIG["prefix"]):
                # As a path of its own, or the start of one.
                self.assertNotRegex(text, START + re.escape(folder) + r"(?![\w.-])", path)

    def test_the_readme_shows_the_first_program(self):
        source = pathlib.Path(CONFIG["source"])
        program = (source / "examples/first.c").read_text().split("*/\n", 1)[1]
        self.assertIn(f"```c\n{program}```\n", (source / "README.md").read_text())

    def test_the_version_is_the_projects(self):
        self.assertIn(f"\nVersion: {CONFIG['version']}\n", (LIB / "pkgconfig/quorix.pc").read_text())


if __name__ == "__main__":
    main()
