# SPDX-License-Identifier: MIT
"""The names that leave the libraries are the operations, and nothing else."""
import re
import unittest

from package import CONFIG, SHARED, STATIC, WINDOWS, declared_operations, expected_operations, main, run


VERSION_SET = f"QUORIX_{CONFIG['major']}"


def exported_by_shared_object():
    """The names, each of which has to stand in the version's own set."""
    lines = run(CONFIG["nm"], "-D", "--defined-only", "-P", SHARED).splitlines()
    names = {line.split()[0] for line in lines}
    names = {name for name in names if name.partition("@")[0] != VERSION_SET}  # the set itself
    return {name.removesuffix(f"@@{VERSION_SET}") for name in names}


def exported_by_dll():
    dump = run(CONFIG["objdump"], "-p", SHARED)
    table = dump.split("[Ordinal/Name Pointer] Table")[1].split("\n\n")[0]
    return set(re.findall(r"^\s*\[\s*\d+\].*?(\S+)$", table, flags=re.MULTILINE))


def defined_by_static_library():
    """(kind, name) of each global symbol, as the linker knows it."""
    lines = run(CONFIG["nm"], "-g", "--defined-only", STATIC).splitlines()
    matches = (re.fullmatch(r"[0-9a-f]+ (\S) (\S+)", line) for line in lines)
    return {(match[1], match[2]) for match in matches if match}


# Mangled names: a prefix of what it is, then the namespace it stands in.
OURS = re.compile(r"_Z[A-Za-z]{0,6}?6quorix")
# What the compiler makes of the standard library's templates; the linker drops copies of it.
STANDARD = re.compile(r"_Z[A-Za-z]{0,6}?(St|S[absiod]|9__gnu_cxx)")
DROPPED = "WVu"
# Pointers through which the compiler reaches data of other files, and a helper of clang's; copies
# are dropped likewise.
COMPILERS = re.compile(r"\.refptr\.|DW\.ref\.__gxx_personality_v0$|__clang_call_terminate$")


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
            elif WINDOWS:
                self.assertTrue(OURS.match(name) or STANDARD.match(name) or COMPILERS.match(name), name)
            elif not OURS.match(name):
                self.assertTrue((STANDARD.match(name) or COMPILERS.match(name)) and kind in DROPPED,
                                f"{kind} {name}")
        self.assertEqual(sorted(found), sorted(expected_operations()))


if __name__ == "__main__":
    main()
