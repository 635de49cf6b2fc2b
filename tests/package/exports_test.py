# SPDX-License-Identifier: MIT
"""The names that leave the libraries are the operations, and nothing else."""
import re
import unittest

from package import CONFIG, SHARED, STATIC, WINDOWS, declared_operations, expected_operations, main, run


def exported_by_shared_object():
    lines = run(CONFIG["nm"], "-D", "--defined-only", "-P", SHARED).splitlines()
    return {line.split()[0] for line in lines}


def exported_by_dll():
    dump = run(CONFIG["objdump"], "-p", SHARED)
    table = dump.split("[Ordinal/Name Pointer] Table")[1].split("\n\n")[0]
    return set(re.findall(r"^\s*\[\s*\d+\].*?(\S+)$", table, flags=re.MULTILINE))


def defined_by_static_library():
    """(kind, plain C++ name) of each global symbol."""
    lines = run(CONFIG["nm"], "-g", "--defined-only", "-C", STATIC).splitlines()
    matches = (re.fullmatch(r"[0-9a-f]+ (\S) (.*)", line) for line in lines)
    return {(match[1], match[2]) for match in matches if match}


# Of the compiler: templates of the standard library, tables of the C++ run time, and on Windows
# each inline function's comdat sections.
MAY_STAND_BESIDE = re.compile(
    r"(quorix::|(vtable|typeinfo|typeinfo name|guard variable|VTT) for (quorix|std)::"
    r"|non-virtual thunk to quorix::)")
STANDARD = re.compile(r"(.*\b)?(std|__gnu_cxx|__cxxabiv1)::|operator (new|delete)")


class Exports(unittest.TestCase):
    def test_the_shared_library_exports_the_operations_alone(self):
        names = exported_by_dll() if WINDOWS else exported_by_shared_object()
        self.assertEqual(sorted(names), sorted(expected_operations()))

    def test_the_headers_declare_the_same_operations(self):
        declared, expected = declared_operations(), expected_operations()
        self.assertEqual(sorted(declared), sorted(expected))

    def test_the_static_library_defines_besides_only_names_of_its_namespace(self):
        found = set()
        for kind, name in defined_by_static_library():
            if name in expected_operations():
                found.add(name)
            elif not MAY_STAND_BESIDE.match(name):
                self.assertTrue(STANDARD.match(name) and kind in "WVuTRDB", f"{kind} {name}")
        self.assertEqual(sorted(found), sorted(expected_operations()))


if __name__ == "__main__":
    main()
