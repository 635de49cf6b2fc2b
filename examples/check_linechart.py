#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""What linechart does with CSV files of all kinds: good ones that look different give one picture,
bad ones a message with the number of the line.

    check_linechart.py FOLDER PROGRAM...
"""
import pathlib
import shutil
import subprocess
import sys

sys.dont_write_bytecode = True
import picture  # noqa: E402

PLAIN = b"x,a,b c\n1,2.5,3\n2,,4\n3,1,-5e-1\n"

# All of these hold the same table.
SAME = {
    "CR LF line ends": PLAIN.replace(b"\n", b"\r\n"),
    "a byte order mark": b"\xef\xbb\xbf" + PLAIN,
    "quoted fields": b'"x","a","b c"\n"1","2.5","3"\n"2","",4\n3,1,"-5e-1"\n',
    "blanks round the fields": b" x , a ,\tb c\n1 , 2.5,3\n2, , 4 \n3,1,-5e-1\n",
    "blank lines and comments": b"# of a kind\n\n" + PLAIN.replace(b"\n", b"\n  \n# more\n"),
    "NA as a gap": PLAIN.replace(b"2,,", b"2,NA,"),
    "NaN as a gap": PLAIN.replace(b"2,,", b"2,NaN,"),
    "no line end at the end": PLAIN[:-1],
}

BAD = {
    "a word among the numbers": (b"x,y\n1,2\n2,two\n", ':3: column 2 is not a number: "two"'),
    "a missing x": (b"x,y\n1,2\n,3\n", ':3: column 1 is not a number: ""'),
    "a trailing unit": (b"1,2\n2,3 cm\n", ':2: column 2 is not a number: "3 cm"'),
    "an infinite value": (b"1,2\n2,inf\n", ':2: column 2 is not a number: "inf"'),
    "a number that is too large": (b"1,2\n2,1e999\n", ':2: column 2 is not a number: "1e999"'),
    "a missing column": (b"# two\nx,y\n1,2\n3\n", ":4: 1 columns instead of 2"),
    "a column too much": (b"1,2\n3,4,5\n", ":2: 3 columns instead of 2"),
    "one column alone": (b"1\n2\n", ":1: one column; x and at least one series are wanted"),
    "ten columns": (b"1,2,3,4,5,6,7,8,9,10\n", ":1: more than 9 columns"),
    "a quote without an end": (b'x,y\n1,"2\n', ":2: a quoted field does not end"),
    "text after a quote": (b'x,y\n1,"2"3\n', ":2: text after a quoted field: 3"),
    "a line without an end": (b"1,2\n" + b"3" * 5000 + b",4\n", ":2: the line is longer than"),
    "names alone": (b"x,y\n", ": no numbers in it"),
    "nothing": (b"", ": no numbers in it"),
    "gaps alone": (b"1,\n2,NA\n", ": every value is missing"),
    "too far apart": (b"1,-1e308\n2,1e308\n", ": the numbers are too far apart"),
}

# One value, a column of equal ones, enormous, tiny, two alike: each must end with a picture.
ODD = {
    "one point": b"5,7\n",
    "one value all the time": b"1,3\n2,3\n3,3\n",
    "zero all the time": b"0,0\n0,0\n",
    "large numbers": b"1e300,1e300\n2e300,-1e300\n",
    "small numbers": b"1e-300,1e-300\n2e-300,3e-300\n",
    "close numbers": b"1,1000000000.001\n2,1000000000.002\n",
    "numbers that differ in the last bit": b"1,1\n2,1.0000000000000002\n",
    "names of other scripts": "x,\u4e2d\u6587,\u00e4\n1,2,3\n2,3,4\n".encode(),
    "wrong UTF-8": b"x,\xff\xfe\xe4,\xe4\n1,2,3\n2,3,4\n",
    "a long name": b"x,y,z" + b"z" * 200 + b"\n1,2,3\n2,3,4\n",
    "zero bytes": b"1,2\n2,3\n\0,4\n3,4\n",
}


class Runner:
    def __init__(self, folder, program):
        self.folder, self.program, self.failed, self.count = folder, program, 0, 0

    def run(self, *arguments):
        (self.folder / "out.png").unlink(missing_ok=True)
        return subprocess.run([*self.program, *arguments], cwd=self.folder, capture_output=True,
                              timeout=120)

    def chart(self, data):
        (self.folder / "in.csv").write_bytes(data)
        return self.run("in.csv", "out.png")

    def expect(self, what, condition, done):
        self.count += 1
        if not condition:
            self.failed += 1
            print(f"{what}: status {done.returncode}, {done.stderr.decode(errors='replace')}")

    def refused(self, what, done, status, message):
        """It ends with a status and a message, and draws nothing."""
        self.expect(what, done.returncode == status and message in done.stderr.decode() and
                    not (self.folder / "out.png").exists(), done)

    def summary(self):
        try:
            return picture.read(self.folder / "out.png").summary()
        except (picture.Wrong, OSError) as why:
            return f"no picture: {why}"


def main():
    folder = pathlib.Path(sys.argv[1])
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    runner = Runner(folder, sys.argv[2:])

    done = runner.chart(PLAIN)
    plain = runner.summary()
    runner.expect("a plain file", done.returncode == 0 and plain.startswith("1600 900 0 "), done)
    for what, data in SAME.items():
        done = runner.chart(data)
        runner.expect(what, done.returncode == 0 and runner.summary() == plain, done)
    for what, data in ODD.items():
        done = runner.chart(data)
        drawn = runner.summary().startswith("1600 900 0 ")
        if what == "zero bytes":  # ends the line, which then is blank or not a number
            runner.expect(what, (done.returncode, drawn) in ((0, True), (1, False)), done)
        else:
            runner.expect(what, done.returncode == 0 and drawn, done)
    for what, (data, message) in BAD.items():
        runner.refused(what, runner.chart(data), 1, "in.csv" + message)

    usage = "usage: linechart data.csv out.png [title]"
    runner.refused("no arguments", runner.run(), 2, usage)
    runner.refused("one argument", runner.run("in.csv"), 2, usage)
    runner.refused("four arguments", runner.run("in.csv", "out.png", "title", "more"), 2, usage)
    runner.refused("a missing file", runner.run("none.csv", "out.png"), 1, "none.csv: No such file")
    (folder / "in.csv").write_bytes(PLAIN)
    runner.refused("a picture that cannot be written", runner.run("in.csv", "none/out.png"), 1,
                   "none/out.png cannot be written (status -1)")
    print(f"{runner.count - runner.failed} of {runner.count} cases as expected")
    return 1 if runner.failed else 0


if __name__ == "__main__":
    sys.exit(main())
