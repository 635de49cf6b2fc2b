# SPDX-License-Identifier: MIT
"""The shared library's own name, and what the libraries need beside themselves."""
import re
import unittest

from package import CONFIG, LIB, SHARED, STATIC, WINDOWS, main, run

# They come with every Windows.
WINDOWS_OWN = {"kernel32.dll", "msvcrt.dll", "user32.dll", "gdi32.dll", "comdlg32.dll",
               "comctl32.dll", "shell32.dll", "advapi32.dll", "opengl32.dll"}
LINUX_NEEDS = {"libz.so.1", "libc.so.6", "libm.so.6"}


def users_of(*functions):
    """The sources whose objects in the static library call one of these functions of C."""
    called = re.compile(rf"(\w+)\.cpp\.o\w*:.* U (?:__imp_)?_?(?:{'|'.join(functions)})(?:32|64)?$")
    lines = run(CONFIG["nm"], "-A", "-u", STATIC).splitlines()
    return {match[1] for match in map(called.search, lines) if match}


class Binaries(unittest.TestCase):
    def setUp(self):
        self.dump = run(CONFIG["objdump"], "-p", SHARED)

    @unittest.skipUnless(WINDOWS, "there is no DLL on Linux")
    def test_the_dll_stands_alone(self):
        needs = {name.lower() for name in re.findall(r"DLL Name: (\S+)", self.dump)}
        self.assertIn("kernel32.dll", needs)
        self.assertEqual(needs - WINDOWS_OWN, set())

    @unittest.skipIf(WINDOWS, "a DLL has no soname")
    def test_the_soname_holds_the_major_version(self):
        self.assertEqual(re.findall(r"SONAME\s+(\S+)", self.dump),
                         [f"libquorix.so.{CONFIG['major']}"])
        self.assertEqual((LIB / "libquorix.so").resolve().name,
                         f"libquorix.so.{CONFIG['version']}")

    @unittest.skipIf(WINDOWS, "of the shared object")
    def test_the_shared_object_needs_zlib_and_the_c_library_alone(self):
        needs = set(re.findall(r"NEEDED\s+(\S+)", self.dump))
        self.assertIn("libz.so.1", needs)
        self.assertEqual(needs - LINUX_NEEDS, set())

    @unittest.skipIf(WINDOWS, "of the shared object")
    def test_the_shared_object_looks_for_libraries_in_no_folder_of_its_own(self):
        self.assertNotRegex(self.dump, r"R(UN)?PATH")

    def test_the_process_is_ended_only_where_no_drawing_record_can_be_had(self):
        self.assertEqual(users_of("exit", "_exit", "_Exit", "quick_exit"), {"record", "window_set"})

    def test_no_picture_holds_the_time_of_its_writing(self):
        # qqtime, and the date of a PDF document.
        self.assertEqual(users_of("time", "localtime", "localtime_r", "gmtime", "gmtime_r",
                                  "gettimeofday", "clock_gettime", "timespec_get"),
                         {"system_calls", "closing"})


if __name__ == "__main__":
    main()
