# SPDX-License-Identifier: MIT
"""C programs are built against the installation in each way that there is, and draw a picture."""
import os
import shutil
import unittest

from package import CONFIG, HERE, LIB, PREFIX, SHARED, WINDOWS, main, run, scratch

SOURCE = HERE / "consumer" / "consumer.c"
EXE = ".exe" if WINDOWS else ""

# 6 by 3 pixels, white but for a red line from (1, 1) to (4, 1).
WHITE, RED = "255 255 255", "255 0 0"
PICTURE = " ".join(["P3 6 3 255"] + [WHITE] * 7 + [RED] * 4 + [WHITE] * 7)


class Programs(unittest.TestCase):
    def check(self, program):
        """Runs a program, and has its picture decoded by other people's code."""
        folder = program.parent
        environment = dict(os.environ)
        if WINDOWS:
            shutil.copy(SHARED, folder)  # where Windows looks for it
        else:
            environment["LD_LIBRARY_PATH"] = str(LIB)
        command = [CONFIG["emulator"]] if WINDOWS else []
        run(*command, program, "picture.png", cwd=folder, env=environment)
        run("pngcheck", "-q", folder / "picture.png")
        decoded = run("sh", "-c", 'pngtopnm "$0" | pnmtoplainpnm', folder / "picture.png")
        self.assertEqual(" ".join(decoded.split()), PICTURE)

    def compile_by_pkg_config(self, folder, *options):
        paths = [str(LIB / "pkgconfig")]
        if WINDOWS:
            paths += [f"{CONFIG['cross_root']}/lib/pkgconfig", f"{CONFIG['cross_root']}/share/pkgconfig"]
        variable = "PKG_CONFIG_LIBDIR" if WINDOWS else "PKG_CONFIG_PATH"
        environment = dict(os.environ, **{variable: ":".join(paths)})
        flags = run("pkg-config", *options, "--cflags", "--libs", "quorix", env=environment).split()
        program = folder / f"consumer{EXE}"
        static = ["-static"] if "--static" in options else []
        run(CONFIG["cc"], "-std=c11", SOURCE, "-o", program, *static, *flags)
        return program

    def test_find_package_gives_both_libraries(self):
        folder = scratch("find_package")
        toolchain = [f"-DCMAKE_TOOLCHAIN_FILE={CONFIG['toolchain']}"] if WINDOWS else []
        # Among the roots of a cross build, where packages are looked for alone.
        where = "CMAKE_FIND_ROOT_PATH" if WINDOWS else "CMAKE_PREFIX_PATH"
        run(CONFIG["cmake"], "-G", "Ninja", "-S", SOURCE.parent, "-B", folder,
            f"-D{where}={PREFIX}", *toolchain)
        run(CONFIG["cmake"], "--build", folder)
        self.check(folder / f"with_quorix{EXE}")
        self.check(folder / f"with_quorix_static{EXE}")

    def test_pkg_config_gives_the_shared_library(self):
        program = self.compile_by_pkg_config(scratch("pkg_config"))
        self.check(program)
        dump = run(CONFIG["objdump"], "-p", program)
        self.assertIn("quorix.dll" if WINDOWS else f"libquorix.so.{CONFIG['major']}", dump)

    def test_pkg_config_gives_the_static_library(self):
        program = self.compile_by_pkg_config(scratch("pkg_config_static"), "--static")
        self.check(program)
        dump = run(CONFIG["objdump"], "-p", program)
        self.assertNotIn("quorix.dll" if WINDOWS else "libquorix.so", dump)

    @unittest.skipIf(WINDOWS, "there the registry names the install directory")
    def test_an_installation_that_was_moved_finds_its_own_files(self):
        folder = scratch("moved")
        tree = folder / "tree"
        shutil.copytree(PREFIX, tree, symlinks=True)
        library = tree / CONFIG["libdir"]
        (tree / "bin").mkdir(exist_ok=True)
        compile_it = [CONFIG["cc"], "-std=c11", f"-I{tree}/include", HERE / "consumer/directory.c"]
        shared, static = folder / "with_shared", tree / "bin" / "with_static"
        run(*compile_it, "-o", shared, f"-L{library}", "-lquorix")
        run(*compile_it, "-o", static, library / "libquorix.a", "-lz", "-lm")
        environment = {name: value for name, value in os.environ.items() if name != "QUORIX"}
        environment["LD_LIBRARY_PATH"] = str(library)
        data = (tree / "share" / "quorix").resolve()
        for program in (shared, static):
            self.assertEqual(run(program, cwd="/", env=environment), f"{len(str(data))} {data}\n")
        data.rename(folder / "elsewhere")
        for program in (shared, static):
            self.assertEqual(run(program, cwd="/", env=environment), "9 c:\\quorix\n")

    @unittest.skipUnless(WINDOWS, "LoadLibrary is a call of Windows")
    def test_the_dll_can_be_loaded_at_run_time(self):
        folder = scratch("load_library")
        run(CONFIG["cc"], "-std=gnu11", f"-I{PREFIX}/include", SOURCE.parent / "load_library.c",
            "-o", folder / "load_library.exe")
        self.check(folder / "load_library.exe")


if __name__ == "__main__":
    main()
