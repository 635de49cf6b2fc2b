# SPDX-License-Identifier: MIT
"""The bitmap fonts are installed, and an installed library finds them wherever it was moved to."""
import os
import re
import shutil
import unittest

from package import CONFIG, HERE, LIB, PREFIX, SHARED, STATIC, WINDOWS, main, run, scratch

NAMES = [f"{family}{size}" for family, sizes in
         (("complx", (10, 12, 14, 18)), ("simplx", (8, 10, 12, 14)), ("helve", (10, 12, 14, 18)))
         for size in sizes]
SONAME = f"libquorix.so.{CONFIG['major']}"
STATIC_NEEDS = ["-DQUORIX_STATIC", *(["-static"] if WINDOWS else []), "-lz", "-lm",
                *(["-lopengl32", "-lgdi32"] if WINDOWS else [])]
FONTS = PREFIX / CONFIG["datadir"] / "quorix" / "fonts"


def text_of(name):
    return (FONTS / f"{name}.bdf").read_text()


def width_of_a(name):
    """Ten times what the file says."""
    glyph = text_of(name).split("\nENCODING 65\n", 1)[1]
    return 10 * int(re.search(r"^DWIDTH (\d+) 0$", glyph, re.MULTILINE).group(1))


OWN = [width_of_a(name) for name in NAMES]


def put_fonts(folder, mark):
    """Fonts that can be told from those inside the library: the letter A is so much wider. Returns
    the widths."""
    folder.mkdir(parents=True)
    for name in NAMES:
        head, glyph = text_of(name).split("\nENCODING 65\n", 1)
        width = width_of_a(name) // 10
        glyph = glyph.replace(f"DWIDTH {width} 0", f"DWIDTH {width + mark} 0", 1)
        (folder / f"{name}.bdf").write_text(f"{head}\nENCODING 65\n{glyph}")
    return [width + 10 * mark for width in OWN]


def in_tree(root, path):
    return root / path.relative_to(PREFIX)


class Fonts(unittest.TestCase):
    def build(self, folder, library=LIB / "libquorix.dll.a" if WINDOWS else SHARED):
        folder.mkdir(parents=True, exist_ok=True)
        program = folder / ("user.exe" if WINDOWS else "user")
        more = STATIC_NEEDS if library == STATIC else []
        run(CONFIG["cc"], "-std=c11", f"-I{PREFIX}/include", HERE / "consumer" / "fonts.c",
            library, *more, "-o", program)
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
        fonts = in_tree(moved, FONTS)
        shutil.rmtree(fonts)
        marked = put_fonts(fonts, 1)
        environment = self.environment(LD_LIBRARY_PATH=str(in_tree(moved, LIB)))
        self.assertEqual(self.widths(program, environment), marked)
        fonts.rename(folder / "fonts_without_a_library")
        self.assertEqual(self.widths(program, environment), OWN)

    def test_a_variable_tells_where_they_are(self):
        folder = scratch("told_fonts")
        program = self.build(folder / "program")
        if WINDOWS:
            shutil.copy(SHARED, program.parent)
        marked = put_fonts(folder / "home" / "fonts", 2)
        environment = self.environment(LD_LIBRARY_PATH=str(LIB), QUORIX=str(folder / "home"))
        self.assertEqual(self.widths(program, environment), marked)
        environment["QUORIX"] = str(folder)
        self.assertEqual(self.widths(program, environment), OWN)

    def test_they_are_found_beside_the_shared_library(self):
        for way in ("fonts", "share/quorix/fonts", "../share/quorix/fonts"):
            folder = scratch("fonts_beside_library")
            beside = folder / "unpacked" / "bin"
            # Windows takes a library from the folder of the program.
            program = self.build(beside if WINDOWS else folder / "elsewhere")
            beside.mkdir(parents=True, exist_ok=True)
            shutil.copy(SHARED.resolve(), beside / ("quorix.dll" if WINDOWS else SONAME))
            environment = self.environment(LD_LIBRARY_PATH=str(beside))
            self.assertEqual(self.widths(program, environment), OWN, way)
            marked = put_fonts(beside / way, 3)
            self.assertEqual(self.widths(program, environment), marked, way)

    def test_they_are_found_beside_a_program_with_either_library(self):
        for library in ("shared", "static"):
            for way in ("fonts", "share/quorix/fonts", "../share/quorix/fonts"):
                folder = scratch("fonts_beside_program")
                if library == "static":
                    program = self.build(folder / "own" / "bin", STATIC)
                else:
                    program = self.build(folder / "own" / "bin")
                environment = self.environment(LD_LIBRARY_PATH=str(LIB))
                if WINDOWS and library == "shared":
                    shutil.copy(SHARED, program.parent)
                elif not WINDOWS and library == "shared":
                    # The installed fonts lie beside the installed library, and come first.
                    shutil.copy(SHARED.resolve(), folder / SONAME)
                    environment["LD_LIBRARY_PATH"] = str(folder)
                self.assertEqual(self.widths(program, environment), OWN, (library, way))
                marked = put_fonts(program.parent / way, 4)
                self.assertEqual(self.widths(program, environment), marked, (library, way))

    @unittest.skipUnless(WINDOWS, "other systems have no registry")
    def test_the_dll_asks_the_registry(self):
        folder = scratch("registry")
        program = folder / "registry.exe"
        run(CONFIG["cc"], "-std=c11", f"-I{PREFIX}/include", HERE / "consumer" / "registry.c",
            LIB / "libquorix.dll.a", "-o", program)
        shutil.copy(SHARED, folder)
        out = run(CONFIG["emulator"], program, cwd=folder, env=self.environment())
        self.assertEqual(out.split(), ["c:\\quorix", "d:\\told\\there", "c:\\quorix"])


if __name__ == "__main__":
    main()
