# SPDX-License-Identifier: MIT
"""Inside the library nobody calls an exported operation, and the record is passed on.

An operation reads the global record once, and what it calls gets it as an argument. `problems_of`
lists the lines that do otherwise; the first tests put mistakes into small files and expect them to
be found. In window/ and widgets/ events come in without a record, so there only calls count.
"""
import pathlib
import re
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
FOLDERS = "base core platform raster algorithms pdf depth formats imagein imageout window widgets"
# Where the record is made and released, and where operations have it made.
OPENERS = {"core/output_context.cpp", "core/output_context.h", "raster/record.cpp"}
FINDS_THE_RECORD = ("window/", "widgets/")


def without_comments(line):
    return re.sub(r'"(\\.|[^"\\])*"', '""', line.split("//")[0])


def chunks_of(text):
    """(first line number, lines) of what begins in the first column, as functions do."""
    start, lines = 1, []
    for number, line in enumerate(text.splitlines(), 1):
        if re.match(r"[A-Za-z_#]", line) and lines:
            yield start, lines
            start, lines = number, []
        lines.append(line)
    yield start, lines


def problems_of(name, text):
    for start, lines in chunks_of(text):
        exported = lines[0].startswith('extern "C"')
        for number, line in enumerate(lines, start):
            code = without_comments(line)
            calls = re.findall(r"\bqq[a-z]\w*(?=\()", code)
            if exported and number == start:
                calls = calls[1:]
            for call in calls:
                yield f"{name}:{number}: calls {call}"
            if exported or code.startswith("#") or name in OPENERS:
                continue
            if not name.startswith(FINDS_THE_RECORD) and re.search(r"\boutput_context\b", code):
                yield f"{name}:{number}: reads output_context"


class Mistakes(unittest.TestCase):
    def expect(self, text, *problems):
        self.assertEqual(list(problems_of("raster/a.cpp", text)), list(problems))

    def test_operations_read_the_record_and_call_functions(self):
        self.expect('#include "core/output_context.h"\n'
                    'namespace quorix {\n'
                    '// As qqvrdr(), but output_context is passed on.\n'
                    'void read(OutputContext *context) {\n  show("qqvrdr()");\n}\n'
                    '}  // namespace quorix\n'
                    'extern "C" int32_t qqvrdr(void) {\n  read(output_context);\n}\n')

    def test_a_function_calls_an_operation(self):
        self.expect("void save() {\n  quorix_row = 0;\n  qqvrdr(0);\n}\n",
                    "raster/a.cpp:3: calls qqvrdr")

    def test_an_operation_calls_an_operation(self):
        self.expect('extern "C" int32_t qqsget(int32_t n) {\n  return ::qqsget2(n);\n}\n',
                    "raster/a.cpp:2: calls qqsget2")

    def test_a_function_reads_the_record(self):
        self.expect('extern "C" int32_t qqvers(void) {\n}\nvoid clear() {\n  f(output_context);\n}\n',
                    "raster/a.cpp:4: reads output_context")


class Library(unittest.TestCase):
    def test_passes_the_record_on(self):
        found = []
        operations = 0
        for folder in FOLDERS.split():
            for path in sorted((SOURCE / folder).rglob("*")):
                if path.suffix in (".cpp", ".h"):
                    text = path.read_text(encoding="utf-8")
                    operations += text.count('extern "C"')
                    found += problems_of(str(path.relative_to(SOURCE).as_posix()), text)
        self.assertEqual(found, [])
        self.assertGreater(operations, 50)


if __name__ == "__main__":
    unittest.main()
