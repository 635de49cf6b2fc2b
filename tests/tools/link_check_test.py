# SPDX-License-Identifier: MIT
"""The build `link` finds one name with two meanings, wherever in a program they stand."""
import pathlib
import subprocess
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
PROJECT = f"""
cmake_minimum_required(VERSION 3.25)
project(clash CXX)
set(QUORIX_LINK_CHECK ON)
include({SOURCE}/cmake/link_check.cmake)
add_library(parts STATIC one.cpp)
add_executable(program main.cpp)
target_link_libraries(program parts)
"""


class LinkCheck(unittest.TestCase):
    def build(self, one, main):
        """The exit status and output of a build of a program of two files."""
        with tempfile.TemporaryDirectory() as name:
            folder = pathlib.Path(name)
            for file, text in (("CMakeLists.txt", PROJECT), ("one.cpp", one), ("main.cpp", main)):
                (folder / file).write_text(text)
            output = ""
            for command in (["cmake", "-G", "Ninja", "-S", folder, "-B", folder / "build"],
                            ["cmake", "--build", folder / "build"]):
                done = subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                      stderr=subprocess.STDOUT, text=True, check=False)
                output += done.stdout
                if done.returncode != 0:
                    break
            return done.returncode, output

    def test_what_agrees_is_linked(self):
        status, output = self.build(
            "struct Colour { int red; }; int f(Colour *c) { return c->red; }",
            "struct Colour { int red; }; int f(Colour *); int main() { Colour c{}; return f(&c); }")
        self.assertEqual(status, 0, output)

    def test_a_record_with_other_fields_is_an_error(self):
        status, output = self.build(
            "struct Colour { int red; }; int f() { Colour c{1}; return c.red; }",
            "struct Colour { double r; }; int f(); int main() { Colour c{f() * .5}; return c.r > 1; }")
        self.assertNotEqual(status, 0)
        self.assertIn("-Werror=odr", output)
        self.assertIn("struct Colour", output)

    def test_a_variable_of_another_type_is_an_error(self):
        status, output = self.build("double limit = 1;",
                                    "extern int limit; int main() { return limit; }")
        self.assertNotEqual(status, 0)
        self.assertIn("-Werror=lto-type-mismatch", output)


if __name__ == "__main__":
    unittest.main()
