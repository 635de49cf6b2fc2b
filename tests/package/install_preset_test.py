# SPDX-License-Identifier: MIT
"""The preset `install` asks for a compiler, CMake, Ninja and zlib alone, and installs the same files.

It runs with a search path of only those programs and with every other package hidden. What it
compiles is not what is tested here, so nothing is optimised.
"""
import re
import shutil
import unittest

from package import CONFIG, HERE, PREFIX, main, pathlib, run, scratch

PROGRAMS = "cmake ninja cc c++ gcc g++ as ld ar nm ranlib".split()
SOURCE = pathlib.Path(CONFIG["source"])


def packages_named():
    """All packages that any CMakeLists.txt of the project looks for."""
    names = {"PkgConfig"}
    # Build folders change while other tests run.
    folders = [folder for folder in SOURCE.iterdir()
               if folder.is_dir() and folder.name not in ("build", ".git")]
    lists = [path for folder in folders for path in folder.rglob("CMakeLists.txt")]
    for path in [*lists, *SOURCE.glob("cmake/*.cmake")]:
        names.update(re.findall(r"find_package\((\w+)", path.read_text()))
    return names - {"ZLIB", "Quorix"}


def files_below(folder):
    return {str(path.relative_to(folder)) for path in folder.rglob("*") if not path.is_dir()}


class InstallPreset(unittest.TestCase):
    def setUp(self):
        self.folder = scratch("install_preset")
        programs = self.folder / "programs"
        programs.mkdir()
        for name in PROGRAMS:
            found = shutil.which(name)
            if found:
                (programs / name).symlink_to(found)
        self.environment = {"PATH": str(programs), "HOME": str(self.folder), "LC_ALL": "C.UTF-8"}

    def test_it_needs_zlib_and_a_compiler_alone(self):
        hidden = [f"-DCMAKE_DISABLE_FIND_PACKAGE_{name}=ON" for name in packages_named()]
        self.assertGreater(len(hidden), 6)
        build, prefix = self.folder / "build", self.folder / "prefix"
        log = run("cmake", "--preset", "install", "-B", build, "-DCMAKE_CXX_FLAGS_RELEASE=-O0",
                  "--no-warn-unused-cli", *hidden, cwd=SOURCE, env=self.environment)
        self.assertNotIn("Werror", (build / "build.ninja").read_text())
        self.assertEqual(re.findall(r"-- Found (\w+)", log), ["ZLIB"])
        run("cmake", "--build", build, env=self.environment)
        run("cmake", "--install", build, "--prefix", prefix, env=self.environment)
        self.assertEqual(files_below(prefix), files_below(PREFIX))
        program = self.folder / "consumer"
        run("cc", HERE / "consumer/consumer.c", "-o", program, f"-I{prefix}/include",
            f"-L{prefix}/{CONFIG['libdir']}", "-lquorix", env=self.environment)
        run(program, self.folder / "picture.png",
            env={"LD_LIBRARY_PATH": f"{prefix}/{CONFIG['libdir']}"})
        self.assertGreater((self.folder / "picture.png").stat().st_size, 60)


if __name__ == "__main__":
    main()
