# SPDX-License-Identifier: MIT
"""Each installed header stands alone, as strict C and as C++."""
import unittest

from package import CONFIG, INCLUDE, main, run, scratch

STRICT = ["-pedantic", "-Wall", "-Wextra", "-Werror"]


class Headers(unittest.TestCase):
    def setUp(self):
        self.headers = sorted((INCLUDE / "quorix").glob("*.h"))
        self.assertGreater(len(self.headers), 1)
        self.folder = scratch("headers")

    def compile(self, compiler, standard, suffix):
        for header in self.headers:
            with self.subTest(header=header.name):
                # Twice: a header guards itself.
                source = self.folder / f"{header.stem}{suffix}"
                source.write_text(f"#include <quorix/{header.name}>\n" * 2 + "extern int unused;\n")
                run(compiler, f"-std={standard}", *STRICT, f"-I{INCLUDE}", "-fsyntax-only", source)

    def test_each_compiles_alone_as_c(self):
        self.compile(CONFIG["cc"], "c11", ".c")

    def test_each_compiles_alone_as_cxx(self):
        self.compile(CONFIG["cxx"], "c++20", ".cpp")


if __name__ == "__main__":
    main()
