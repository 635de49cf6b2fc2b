# SPDX-License-Identifier: MIT
"""The floors that ARCHITECTURE.md draws hold in the #include lines.

`problems_of` reads the page's table and a source tree, and lists what does not fit; the first tests
put mistakes into a small tree and expect them to be found.
"""
import pathlib
import re
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
SUFFIXES = {".cpp", ".h", ".c"}
# Headers of Windows, which also names them with capitals.
WINDOWS_HEADER = re.compile(r"(windows|win\w+|shellapi|commdlg|commctrl|GL/\w+)\.h", re.IGNORECASE)


def floors_of(page):
    """Folder to floor, from the rows `| 3 | `imageout/` | ...` of the table."""
    rows = re.findall(r"^\|\s*([\d.]+)\s*\|\s*`(\w+)/`\s*\|", page, re.MULTILINE)
    return {folder: float(floor) for floor, folder in rows}


def includes_of(path):
    """(line number, sign, name) of each #include line."""
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        found = re.match(r'\s*#\s*include\s*(["<])([^">]+)[">]', line)
        if found:
            yield number, found[1], found[2]


def order_problems(floors):
    """The table itself keeps the order that the library is built on."""
    groups = [{"base"}, {"core", "platform"}, set(), {"window"}, {"widgets"}]
    groups[2] = set(floors) - set().union(*groups)
    for lower, upper in zip(groups, groups[1:]):
        for a in sorted(lower & set(floors)):
            for b in sorted(upper & set(floors)):
                if floors[a] >= floors[b]:
                    yield f"ARCHITECTURE.md: {a}/ must stand below {b}/"
    if "base" not in floors or "core" not in floors:
        yield "ARCHITECTURE.md: the table of floors is missing"


def may_include(floors, folder, other):
    if other == folder:
        return True
    if other == "quorix":  # the public headers
        return folder not in ("base", "core")
    if folder == "core":
        return other == "base"
    return floors.get(other, float("inf")) < floors[folder]


def is_a_systems_place(parts):
    return parts[0] == "platform" or "win32" in parts[1:-1]


def include_problems(root, floors, path):
    parts = path.relative_to(root).parts
    for number, sign, name in includes_of(path):
        where = f"{path.relative_to(root)}:{number}"
        if WINDOWS_HEADER.fullmatch(name):
            if not is_a_systems_place(parts):
                yield f"{where}: {name} belongs below platform/ and */win32/ alone"
        elif sign == '"':
            is_public = name.startswith("quorix/")
            if not (root / "include" / name if is_public else root / name).is_file():
                yield f"{where}: {name} is not written from the root of the repository"
            elif not may_include(floors, parts[0], name.split("/")[0]):
                yield f"{where}: {parts[0]}/ may not include {name}"


def public_problems(root):
    """Public headers know each other and the C library."""
    for path in sorted((root / "include").rglob("*.h")):
        for number, sign, name in includes_of(path):
            is_public = sign == '"' and (path.parent / name).is_file() and "/" not in name
            if not is_public and not (sign == "<" and re.fullmatch(r"std\w+\.h", name)):
                yield f"{path.relative_to(root)}:{number}: a public header may not include {name}"


def folders_of(root):
    """Folders with code of the library, as CMakeLists.txt has them."""
    families = re.search(r"^set\(families ([^)]*)\)", (root / "CMakeLists.txt").read_text(),
                         re.MULTILINE)
    return set(families[1].split()) if families else set()


def problems_of(root):
    floors = floors_of((root / "ARCHITECTURE.md").read_text(encoding="utf-8"))
    problems = list(order_problems(floors)) + list(public_problems(root))
    for folder in sorted(folders_of(root) ^ set(floors)):
        problems.append(f"{folder}/ is only in one of ARCHITECTURE.md and CMakeLists.txt")
    for folder in sorted(floors):
        for path in sorted((root / folder).rglob("*")):
            if path.suffix in SUFFIXES:
                problems += include_problems(root, floors, path)
    return problems


TABLE = """
| floor | folder | holds |
|---|---|---|
| 4 | `widgets/` | dialogs |
| 3 | `window/` | windows |
| 2.5 | `depth/` | depth |
| 2 | `raster/` | the raster |
| 1 | `core/` | the record |
| 1 | `platform/` | systems |
| 0 | `base/` | numbers |
"""
FOLDERS = "base core platform raster depth window widgets"


class Mistakes(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        self.write("ARCHITECTURE.md", TABLE)
        self.write("CMakeLists.txt", f"set(families {FOLDERS})\n")
        self.write("include/quorix/raster.h", "#include <stdint.h>\n")
        self.write("include/quorix/quorix.h", '#include "raster.h"\n')
        for folder in FOLDERS.split():
            self.write(f"{folder}/{folder}.h", "#include <vector>\n")
        self.write("widgets/a.cpp", '#include "widgets/widgets.h"\n#include "window/window.h"\n')
        self.write("depth/win32/a.cpp", '#include <windows.h>\n#include "raster/raster.h"\n')

    def write(self, name, text):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text)

    def expect(self, *problems):
        self.assertEqual(problems_of(self.root), list(problems))

    def test_a_good_tree_has_no_problem(self):
        self.expect()

    def test_a_lower_floor_includes_a_higher_one(self):
        self.write("raster/b.cpp", '#include "base/base.h"\n#  include "window/window.h"\n')
        self.expect("raster/b.cpp:2: raster/ may not include window/window.h")

    def test_floors_of_half_a_step_count(self):
        self.write("raster/b.cpp", '#include "depth/depth.h"\n')
        self.expect("raster/b.cpp:1: raster/ may not include depth/depth.h")

    def test_folders_of_one_floor_do_not_know_each_other(self):
        self.write("platform/b.cpp", '#include "core/core.h"\n')
        self.expect("platform/b.cpp:1: platform/ may not include core/core.h")

    def test_base_includes_nobody(self):
        self.write("base/b.h", '#include "quorix/raster.h"\n')
        self.expect("base/b.h:1: base/ may not include quorix/raster.h")

    def test_core_includes_base_alone_wherever_the_table_puts_it(self):
        self.write("ARCHITECTURE.md", TABLE.replace("| 1 | `core/`", "| 1.5 | `core/`"))
        self.write("core/b.cpp", '#include "base/base.h"\n#include "platform/platform.h"\n')
        self.expect("core/b.cpp:2: core/ may not include platform/platform.h")

    def test_what_is_not_there_is_named_wrongly(self):
        self.write("raster/b.cpp", '#include "raster.h"\n')
        self.expect("raster/b.cpp:1: raster.h is not written from the root of the repository")

    def test_windows_headers_stay_where_windows_is(self):
        self.write("window/b.cpp", "#include <Windows.h>\n")
        self.expect("window/b.cpp:1: Windows.h belongs below platform/ and */win32/ alone")

    def test_public_headers_are_for_c(self):
        self.write("include/quorix/b.h", '#include <vector>\n#include "core/core.h"\n')
        self.expect("include/quorix/b.h:1: a public header may not include vector",
                    "include/quorix/b.h:2: a public header may not include core/core.h")

    def test_the_table_keeps_its_order(self):
        self.write("ARCHITECTURE.md", TABLE.replace("| 0 | `base/`", "| 2 | `base/`"))
        self.assertIn("ARCHITECTURE.md: base/ must stand below core/", problems_of(self.root))

    def test_the_table_has_every_folder(self):
        self.write("ARCHITECTURE.md", TABLE.replace("| 2.5 | `depth/`", "| 2.5 | depth"))
        self.expect("depth/ is only in one of ARCHITECTURE.md and CMakeLists.txt")


class Floors(unittest.TestCase):
    def test_they_hold(self):
        self.assertEqual(problems_of(SOURCE), [])

    def test_there_is_something_to_hold(self):
        floors = floors_of((SOURCE / "ARCHITECTURE.md").read_text(encoding="utf-8"))
        self.assertGreater(len(floors), 9)
        for folder in floors:
            includes = [name for path in (SOURCE / folder).rglob("*.cpp")
                        for _, _, name in includes_of(path)]
            self.assertGreater(len(includes), 3, folder)


if __name__ == "__main__":
    unittest.main()
