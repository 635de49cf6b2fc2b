#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Lets qpdf, poppler, mupdf and Ghostscript read what pdf_samples and the examples wrote.

    judge.py samples PDF_SAMPLES
    judge.py examples DATA REPORT LINECHART

qpdf must find nothing wrong with any document. Known drawings must have the colours that they are
known to have, words must be found, and pictures must come out pixel for pixel as they went in.
"""
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

WHITE, BLACK = (255, 255, 255), (0, 0, 0)
RED, GREEN, BLUE = (255, 0, 0), (0, 255, 0), (0, 0, 255)
CYAN, MAGENTA, YELLOW = (0, 255, 255), (255, 0, 255), (255, 255, 0)
DARK_GREEN, ORANGE = (0, 128, 0), (255, 128, 0)

# Places in points from the lower left corner of a page of 200 by 200, and what stands there.
AREAS = [
    (40, 40, RED), (90, 40, BLUE), (10, 40, WHITE), (40, 65, WHITE),
    (130, 30, DARK_GREEN), (175, 75, DARK_GREEN), (150, 50, WHITE), (110, 50, WHITE),
    # A line with square ends, a dot with round ones, a corner that is mitred.
    (25, 103, MAGENTA), (75, 97, MAGENTA), (15, 100, WHITE), (85, 100, WHITE),
    (104, 100, CYAN), (116, 100, CYAN), (110, 107, CYAN), (123, 100, WHITE),
    (155, 90, ORANGE), (170, 110, ORANGE), (172, 88, ORANGE), (160, 100, WHITE),
    # Two clip rectangles; the line in the second has the colour that was set before the first.
    (30, 140, BLACK), (30, 155, BLACK), (10, 155, WHITE), (50, 155, WHITE),
    (90, 155, ORANGE), (90, 172, WHITE), (70, 155, WHITE), (110, 155, WHITE),
]
OBJECTS = [
    (20, 40, RED), (40, 40, GREEN), (60, 40, BLUE),
    (20, 20, WHITE), (40, 20, BLACK), (60, 20, YELLOW), (5, 5, CYAN), (75, 30, CYAN),
    # The same with white as transparent.
    (90, 40, RED), (110, 40, GREEN), (130, 40, BLUE),
    (90, 20, CYAN), (110, 20, BLACK), (130, 20, YELLOW),
    # The same turned to the left.
    (160, 20, RED), (160, 40, GREEN), (160, 60, BLUE),
    (180, 20, WHITE), (180, 40, BLACK), (180, 60, YELLOW), (170, 75, CYAN), (195, 40, CYAN),
    # A form in threefold size, and in twofold size turned to the right.
    (25, 105, RED), (25, 155, RED), (55, 130, BLUE), (75, 130, CYAN), (40, 165, CYAN),
    (120, 130, RED), (105, 135, RED), (120, 110, BLUE), (135, 105, BLUE), (145, 120, CYAN),
]
MUCH = [(20, 20, RED), (180, 180, BLUE), (20, 180, WHITE)]
DRAWINGS = {"areas": AREAS, "objects": OBJECTS, "much": MUCH}
# Boxes in which some ink must be, and others in which none may be; the second letter of a text that
# was not stretched would end before the last box.
INK = [(21, 148, 62, 160), (8, 21, 24, 62), (81, 148, 108, 162), (81, 117, 115, 130),
       (70, 50, 130, 95), (42, 170, 49, 184)]
NO_INK = [(120, 140, 200, 200), (0, 0, 200, 15), (55, 165, 115, 200)]

FONTS = """Times-Roman Times-Bold Times-Italic Times-BoldItalic Helvetica Helvetica-Bold
Helvetica-Oblique Helvetica-BoldOblique Helvetica-Narrow Helvetica-Narrow-Bold
Helvetica-Narrow-Oblique Helvetica-Narrow-BoldOblique NewCenturySchlbk-Roman
NewCenturySchlbk-Italic NewCenturySchlbk-Bold NewCenturySchlbk-BoldItalic
ZapfChancery-MediumItalic ZapfDingbats Courier Courier-Bold Courier-Oblique Courier-BoldOblique
AvantGarde-Book AvantGarde-Demi AvantGarde-BookOblique AvantGarde-DemiOblique Bookman-Light
Bookman-LightItalic Bookman-Demi Bookman-DemiItalic Palatino-Roman Palatino-Italic Palatino-Bold
Palatino-BoldItalic Symbol""".split()

problems = []


def judge(good, words):
    if not good:
        problems.append(words)
        print(words)


def run(*command):
    """Output and error text of a program that must succeed."""
    done = subprocess.run([str(word) for word in command], capture_output=True, check=False)
    errors = done.stderr.decode(errors="replace").strip()
    judge(done.returncode == 0, f"{' '.join(map(str, command))} ends with {done.returncode}: {errors}")
    return done.stdout, errors


class Picture:
    """A PPM file with 8 bits per sample, or bare triples."""

    def __init__(self, width, height, triples):
        self.width, self.height, self.triples = width, height, triples
        if len(triples) != 3 * width * height:
            raise ValueError(f"{len(triples)} bytes are no picture of {width} by {height}")

    @classmethod
    def of_ppm(cls, data):
        words = re.match(rb"P6\s(?:#.*\n)?(\d+)\s+(\d+)\s+255\s", data)
        if words is None:
            raise ValueError("not the PPM that was asked for")
        return cls(int(words[1]), int(words[2]), data[words.end():])

    def at(self, x, y):
        start = 3 * (y * self.width + x)
        return tuple(self.triples[start:start + 3])

    def every_fifth(self):
        """One pixel of each square of 5 by 5, its middle."""
        pixels = [self.at(x, y) for y in range(2, self.height, 5) for x in range(2, self.width, 5)]
        return Picture(self.width // 5, self.height // 5, bytes(v for p in pixels for v in p))

    def turned_left(self):
        rows = [self.at(self.width - 1 - y, x) for y in range(self.width)
                for x in range(self.height)]
        return Picture(self.height, self.width, bytes(v for pixel in rows for v in pixel))

    def __eq__(self, other):
        return (self.width, self.height, self.triples) == (other.width, other.height, other.triples)


def by_poppler(file, page, resolution, folder):
    run("pdftoppm", "-q", "-r", resolution, "-f", page, "-singlefile", file, folder / "poppler")
    return Picture.of_ppm((folder / "poppler.ppm").read_bytes())


def by_mupdf(file, page, resolution, folder):
    out = folder / "mupdf.ppm"
    _, errors = run("mutool", "draw", "-q", "-r", resolution, "-F", "ppm", "-o", out, file, page)
    judge("error" not in errors, f"{file.name}: mupdf says {errors}")
    return Picture.of_ppm(out.read_bytes())


def by_ghostscript(file, width, height, resolution, folder):
    out = folder / "ghostscript.ppm"
    _, errors = run("gs", "-q", "-dBATCH", "-dNOPAUSE", "-dSAFER", "-sDEVICE=ppmraw",
                    f"-r{resolution}", f"-g{width}x{height}", f"-sOutputFile={out}", file)
    judge(errors == "", f"{file.name}: Ghostscript says {errors}")
    return Picture.of_ppm(out.read_bytes())


def pixel_of(picture, x, y, turned):
    """What stands at a place of a page of 200 by 200 points at 72 dots per inch."""
    return picture.at(y, x) if turned else picture.at(x, 199 - y)


def is_like(colour, other):
    return all(abs(a - b) <= 2 for a, b in zip(colour, other))


def check_drawing(file, places, folder):
    turned = "turned" in file.name
    for render in (by_poppler, by_mupdf):
        picture = render(file, 1, 72, folder)
        for x, y, colour in places:
            got = pixel_of(picture, x, y, turned)
            judge(is_like(got, colour), f"{file.name}: {render.__name__} has {got} at {x}, {y}")
        if places is AREAS:  # a rectangle of no width shows all the same
            darkest = min(pixel_of(picture, x, 160, turned) for x in range(148, 152))
            judge(darkest < (225, 225, 225), f"{file.name}: {render.__name__}: nothing at 150, 160")


def has_ink(picture, box, turned):
    left, bottom, right, top = box
    return any(sum(pixel_of(picture, x, y, turned)) < 400
               for x in range(left, right) for y in range(bottom, top))


def check_words(file, folder):
    turned = "turned" in file.name
    for render in (by_poppler, by_mupdf):
        picture = render(file, 1, 72, folder)
        for boxes, wanted in ((INK, True), (NO_INK, False)):
            for box in boxes:
                judge(has_ink(picture, box, turned) == wanted,
                      f"{file.name}: {render.__name__}: ink in {box} should be {wanted}")
        second = render(file, 2, 72, folder)
        judge(has_ink(second, (5, 98, 185, 112), turned), f"{file.name}: page 2 is empty")
    text = run("pdftotext", file, "-")[0].decode()
    for word in ("Quorix", "upward", "ÄÖÜß", "(a\\b)", "X", "H"):
        judge(word in text, f"{file.name}: the word {word} is not in {text!r}")
    listed = run("pdffonts", file)[0].decode().split("\n")[2:-1]
    names = [line.split()[0] for line in listed]
    judge(sorted(names) == sorted(FONTS), f"{file.name}: fonts {names}")
    check_bookmarks(file)


def check_bookmarks(file):
    # Bookmarks name the last of all their descendants as their last child. mupdf does not expect
    # that of one whose last child has children itself; it says so, and shows the same tree.
    lines = run("mutool", "show", file, "outline")[0].decode().splitlines()
    shown = [re.match(r'[-|+](\t+)"(.*)"\t#page=(\d+)', line).groups() for line in lines]
    shown = [(len(tabs) - 1, title, int(page)) for tabs, title, page in shown]
    wanted = [(0, "Chapter", 1), (1, "Section one", 1), (1, "Section two", 2), (2, "Detail", 2),
              (0, "Second chapter", 2)]
    judge(shown == wanted, f"{file.name}: bookmarks {shown}")


def check_picture(triples, folder):
    """A pixel is 4 twentieths of a millimetre, so at 127 to the inch each is one dot. Poppler makes
    images a dot larger where that touches the edge of the next, hence the middle of larger dots."""
    width, height = (int(word) for word in triples.stem.split("_")[1].split("x"))
    picture = Picture(width, height, triples.read_bytes())
    on_page = picture.turned_left() if width > height else picture
    shown = by_ghostscript(triples.with_suffix(".ps"), on_page.width, on_page.height, 127, folder)
    judge(shown == on_page, f"{triples.stem}: PostScript shows other pixels")
    for form in ("plain", "compressed"):
        file = triples.with_name(f"{triples.stem}_{form}.pdf")
        run("pdfimages", file, folder / "image")
        inside = Picture.of_ppm((folder / "image-000.ppm").read_bytes())
        judge(inside == picture, f"{file.name}: holds other pixels")
        for render in (by_poppler, by_mupdf):
            judge(render(file, 1, 5 * 127, folder).every_fifth() == picture,
                  f"{file.name}: {render.__name__} shows other pixels")


def check_by_qpdf(file):
    out, errors = run("qpdf", "--check", file)
    judge("WARNING" not in out.decode(errors="replace") + errors, f"{file.name}: qpdf warns {errors}")


def check_documents(folder, count):
    documents = sorted(folder.glob("*.pdf"))
    judge(len(documents) == count, f"there are {len(documents)} documents")
    for file in documents:
        check_by_qpdf(file)
    print(f"{len(documents)} documents")


def check_samples(folder, scratch, samples):
    run(samples, folder)
    check_documents(folder, 16 + 60 + 12)
    for drawing, places in DRAWINGS.items():
        for file in sorted(folder.glob(f"{drawing}_*.pdf")):
            check_drawing(file, places, scratch)
    for file in sorted(folder.glob("words_*.pdf")):
        check_words(file, scratch)
    for triples in sorted(folder.glob("*.rgb")):
        check_picture(triples, scratch)


def check_examples(folder, scratch, data, report, linechart):
    """The chart as PostScript and as PDF is one picture, which both show in the same size."""
    run(report, data / "co2.csv", data / "el-nino-years.csv", data / "land.csv", data / "zones.csv",
        folder / "report.pdf")
    run(linechart, data / "co2.csv", folder / "chart.pdf", "Carbon dioxide")
    run(linechart, data / "co2.csv", folder / "chart.ps", "Carbon dioxide")
    check_documents(folder, 2)
    for page in range(1, 5):
        for render in (by_poppler, by_mupdf):
            judge(len(set(render(folder / "report.pdf", page, 40, scratch).triples)) > 5,
                  f"report.pdf: {render.__name__} shows nothing on page {page}")
    run("pdfimages", folder / "chart.pdf", scratch / "chart")
    chart = Picture.of_ppm((scratch / "chart-000.ppm").read_bytes())
    judge(chart.width > 100 and len(set(chart.triples)) > 5, "chart.pdf holds no chart")
    text = (folder / "chart.ps").read_bytes()
    digits = re.search(rb">> image\n([0-9A-F\n]*)\n> grestore", text)[1].replace(b"\n", b"")
    judge(bytes.fromhex(digits.decode()) == chart.triples, "chart.ps has other pixels")


def main():
    needed = ("qpdf", "pdftoppm", "pdftotext", "pdfimages", "pdffonts", "mutool", "gs")
    missing = [program for program in needed if shutil.which(program) is None]
    if missing:
        sys.exit(f"these programs are needed: {', '.join(missing)}")
    check = {"samples": check_samples, "examples": check_examples}[sys.argv[1]]
    with tempfile.TemporaryDirectory() as name, tempfile.TemporaryDirectory() as scratch_name:
        check(pathlib.Path(name), pathlib.Path(scratch_name), *map(pathlib.Path, sys.argv[2:]))
    print(f"{len(problems)} problems")
    sys.exit(1 if problems else 0)


if __name__ == "__main__":
    main()
