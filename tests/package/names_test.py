# SPDX-License-Identifier: MIT
"""The version, and the words for statuses: what the headers say is what the library says."""
import os
import re
import shutil
import unittest

from package import CONFIG, HERE, INCLUDE, LIB, PREFIX, SHARED, WINDOWS, main, run, scratch

# The arguments through which operations give their status.
STATUS_NAMES = ("status", "result", "io", "resolution", "rotate_and_status")
DONE, A_NUMBER = "done", "done, and a number"
UNKNOWN, UNKNOWN_OPERATION = "unknown status", "unknown operation"
OPERATION = re.compile(r"/\*((?:(?!\*/).)*)\*/\s*QUORIX_API int32_t (\w+)\(([^)]*)\);", re.DOTALL)


def plain(text):
    """A comment's words, without its stars, line ends and marks of names."""
    lines = [re.sub(r"^ ?\* ?", "", line) for line in text.splitlines()]
    return re.sub(r"\s+", " ", " ".join(lines)).replace("`", "").strip()


def statuses_in(text):
    """{status: words} of "0 done; -1 no file; -2 no memory. What follows" and "-3: words. ...".

    A number counts where a piece begins: at the start, or behind one of "; ", ". " and ": ".
    """
    found = re.finditer(r"(?:^|(?<=[;.:] ))(-?\d+):? ([a-zA-Z][^;]*?)(?=;|\. |\.?$)", text)
    return {int(match[1]): match[2] for match in found}


def entry_of(comment, name):
    """What a description says of an argument: in a list of arguments, or behind "name: "."""
    lines = comment.splitlines()
    for number, line in enumerate(lines):
        start = re.match(rf"( \* +){name}  +\S", line)
        if not start:
            continue
        entry = [line[len(start[1]) + len(name):]]
        for following in lines[number + 1:]:
            # The next argument stands as far to the left; a blank line ends the list.
            if not re.match(r" \* +", following) or len(re.match(r" \* +", following)[0]) <= len(start[1]):
                break
            entry.append(following)
        return plain("\n".join(entry))
    inline = re.search(rf"\b{name}: (.*?)(?:\n \*\n|$)", comment, re.DOTALL)
    return plain(inline[1]) if inline else None


def family_statuses(header):
    """Those that a header gives for all operations that say "as above" or "see above"."""
    match = re.search(r"Statuses of all \w+: (.*?)\n \*(?:\n|/)", header, re.DOTALL)
    return statuses_in(plain(match[1])) if match else {}


def documented(header):
    """{operation: {status: words}} of the operations of a header that give a status."""
    family = family_statuses(header)
    found = {}
    previous = None
    for match in OPERATION.finditer(header):
        comment, operation, arguments = match[1], match[2], match[3]
        names = [name for name in STATUS_NAMES if re.search(rf"\*{name}\b", arguments)]
        if not names:
            continue
        entry = entry_of(comment, names[0])
        if entry is None and comment.lstrip().startswith("The same"):
            found[operation] = found[previous]
            continue
        if entry is None:
            raise AssertionError(f"{operation}: its {names[0]} is not described")
        entry = re.split(r"[Oo]utput: |on return: |On return the status, ", entry)[-1]
        other = re.search(r"(?:status of|as for) (\w+)", entry)
        if other:
            found[operation] = found[other[1]]
        else:
            some = re.search(r"(-?\d+) and (-?\d+) as above", entry)
            if some:
                shared = {int(number): family[int(number)] for number in some.groups()}
                entry = entry[:some.start()]
            else:
                shared = family if re.search(r"(?:as|see) above", entry) else {}
            found[operation] = shared | statuses_in(entry)
        previous = operation
    return found


class Names(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.headers = {path.name: path.read_text() for path in sorted((INCLUDE / "quorix").glob("*.h"))
                       if path.name != "status.h"}
        cls.documented = {}
        for text in cls.headers.values():
            cls.documented |= documented(text)
        folder = scratch("names")
        program = folder / ("names.exe" if WINDOWS else "names")
        run(CONFIG["cc"], "-std=c11", f"-I{PREFIX}/include", HERE / "consumer/names.c",
            LIB / "libquorix.dll.a" if WINDOWS else SHARED, "-o", program)
        if WINDOWS:
            shutil.copy(SHARED, folder)
        command = [CONFIG["emulator"]] if WINDOWS else []
        cls.others = ["qqvdrw", "qqv", "qqvini qqvwin", " ", ""]
        lines = run(*command, program, *cls.documented, *cls.others,
                    env=dict(os.environ, LD_LIBRARY_PATH=str(LIB))).splitlines()
        cls.version, cls.of_null = lines[0], lines[-1]
        cls.told = {}
        for line in lines[1:-1]:
            operation, status, words = re.match(r"(.*?) (-?\d+) (.*)$", line).groups()
            cls.told.setdefault(operation, {})[int(status)] = words

    def test_the_version_is_the_projects(self):
        major, minor, patch = (int(part) for part in CONFIG["version"].split("."))
        number = 10000 * major + 100 * minor + patch
        self.assertEqual(self.version, f"{CONFIG['version']} {number} {number}")

    def test_the_headers_describe_many_statuses(self):
        self.assertGreater(len(self.documented), 45)
        # Spelt out here, so that a reader of headers that finds nothing is noticed.
        self.assertEqual(self.documented["qqvwin"], {
            0: "done", -2: "no memory", -3: "the rectangle is empty or not within the raster"})
        self.assertEqual(set(self.documented["qqppng"]), {0, -1, -2, -3, -4, -5, -9})
        self.assertEqual(set(self.documented["qqpiscl"]), {0, -1, -2, -3, -9})
        self.assertEqual(self.documented["c_posifl"], self.documented["c_skipfl"])
        self.assertEqual(set(self.documented["qqttf1"]), {0, 1, 2, 3, 4, 5, 8, 11, 12, 13, 14, 15, 23, 24})

    def test_the_words_are_those_of_the_headers(self):
        for operation, statuses in self.documented.items():
            told = {status: words for status, words in self.told[operation].items()
                    if words not in (UNKNOWN, A_NUMBER)}
            statuses = dict(statuses)
            if self.told[operation][30] == A_NUMBER:
                # Numbers of something begin with 0.
                statuses.pop(0, None)
                told.pop(0, None)
            self.assertEqual(told, statuses, operation)

    def test_no_words_are_made_up(self):
        for operation in self.others:
            self.assertEqual(set(self.told[operation].values()), {UNKNOWN_OPERATION}, operation)
        self.assertEqual(self.of_null, UNKNOWN_OPERATION)

    def test_every_status_has_a_name(self):
        names = self.headers["names.h"]
        given = names[names.index("What operations give"):]
        numbers = {int(number) for number in re.findall(r"= (-?\d+)", given)}
        for operation, statuses in self.documented.items():
            if operation != "qqfits6":  # whose numbers from 0 on are types
                self.assertLessEqual(set(statuses), numbers, operation)


if __name__ == "__main__":
    main()
