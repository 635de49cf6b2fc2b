# SPDX-License-Identifier: MIT
"""The bitmap fonts are installed, and an installed library finds them wherever it was moved to."""
import os
import re
import shutil
import unittest

from package import CONFIG, HERE, LIB, PREFIX, SHARED, WINDOWS, main, run, scratch

NAMES = [f"{family}{size}" for family, sizes in
         (("complx", (10, 12, 14, 18)), ("simplx", (8, 10, 12, 14)), ("helve", (10, 12, 14, 18)))
         for size in sizes]
FONTS = PREFIX / CONFIG["datadir"] / "quorix" / "fonts"


def width_of_a(name):
    """Ten times what the file says."""
    glyph = (FONTS / f"{name}.bdf").read_text().split("\nENCODING 65\n", 1)[1]
    return 10 * int(re.search(r"^DWIDTH (\d+) 0$", glyph, re.MULTILINE).group(1))


def in_tree(root, path):
    return root / path.relative_to(PREFIX)


class Fonts(unittest.TestCase):
    def build(self, folder):
        program = folder / ("fonts.exe" if WINDOWS else "fonts")
        library = LIB / "libquorix.dll.a" if WINDOWS else SHARED
        run(CONFIG["cc"], "-std=c11", f"-I{PREFIX}/include", HERE / "consumer" / "fonts.c",
            library, "-o", program)
        return program

    def widths(self, program, environment):
        command = [CONFIG["emulator"]] if WINDOWS else []
        out = run(*command, program, cwd=program.parent, env=environment)
        return [int(word) for word in out.split()]

    def environment(self, **more):
        environment = {name: value for name, value in os.environ.items() if name != "QUORIX"}
        return dict(environment, **more)

    def test_twelve_fonts_and_their_licence_are_installed(self):
        self.assertEqual(sorted(path.name for path in FONTS.iterdir()),
                         sorted([f"{name}.bdf" for name in NAMES] + ["LICENSE.txt"]))

    @unittest.skipIf(WINDOWS, "on Windows the registry tells the folder")
    def test_a_moved_library_finds_them_without_any_setting(self):
        folder = scratch("moved_fonts")
        moved = folder / "elsewhere"
        shutil.copytree(PREFIX, moved, symlinks=True)
        program = self.build(folder)
        library = in_tree(moved, LIB)
        environment = self.environment(LD_LIBRARY_PATH=str(library))
        self.assertEqual(self.widths(program, environment), [width_of_a(name) for name in NAMES])
        in_tree(moved, FONTS).rename(folder / "fonts_without_a_library")
        self.assertEqual(self.widths(program, environment), [-1] * 12)

    def test_a_variable_tells_where_they_are(self):
        folder = scratch("told_fonts")
        program = self.build(folder)
        if WINDOWS:
            shutil.copy(SHARED, folder)
        environment = self.environment(LD_LIBRARY_PATH=str(LIB), QUORIX=str(FONTS.parent))
        self.assertEqual(self.widths(program, environment), [width_of_a(name) for name in NAMES])
        environment["QUORIX"] = str(folder)
        self.assertEqual(self.widths(program, environment), [-1] * 12)


if __name__ == "__main__":
    main()
