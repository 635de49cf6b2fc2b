#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""What convert does: a photograph through all formats comes back as it was, sizes and parts are as
told, and what cannot be done ends with a message.

    check_convert.py FOLDER PROGRAM...
"""
import hashlib
import pathlib
import shutil
import struct
import subprocess
import sys
import zlib

sys.dont_write_bytecode = True
import picture  # noqa: E402

PHOTO = pathlib.Path(__file__).resolve().parent / "data" / "cat.png"
WIDTH, HEIGHT = 451, 300
# Of the pixels of the photograph as netpbm decodes them.
PIXELS = "416b729128bfb2c3d1eb69bf9b1734a796293abc17939267b2dc94f8a5784031"


def chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


def png(width, height, colour, rows):
    """A PNG file of 8 bits per sample without filters."""
    header = struct.pack(">IIBBBBB", width, height, 8, colour, 0, 0, 0)
    data = b"".join(b"\0" + row for row in rows)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(data)) +
            chunk(b"IEND", b""))


class Runner:
    def __init__(self, folder, program):
        self.folder, self.program, self.failed, self.count = folder, program, 0, 0

    def run(self, *arguments):
        return subprocess.run([*self.program, *arguments], cwd=self.folder, capture_output=True,
                              timeout=120)

    def expect(self, what, condition, done):
        self.count += 1
        if not condition:
            self.failed += 1
            print(f"{what}: status {done.returncode}, {done.stderr.decode(errors='replace')}")

    def refused(self, what, status, message, *arguments):
        done = self.run(*arguments)
        self.expect(what, done.returncode == status and message in done.stderr.decode() and
                    not (self.folder / "out.png").exists(), done)

    def pixels(self, *arguments):
        """Runs it with an output that the tests decode, and gives the picture."""
        target = self.folder / "out.ppm"
        target.unlink(missing_ok=True)
        done = self.run(*arguments, "out.ppm")
        try:
            return picture.read(target), done
        except (picture.Wrong, OSError):
            return picture.Picture(0, 0, b"", 0), done

    def same(self, what, expected, *arguments):
        got, done = self.pixels(*arguments)
        self.expect(what, done.returncode == 0 and
                    (got.width, got.height, got.rgb) == expected, done)


def rectangle(photo, x, y, width, height):
    rows = [photo.rgb[3 * (WIDTH * row + x):3 * (WIDTH * row + x + width)]
            for row in range(y, y + height)]
    return width, height, b"".join(rows)


def check_formats(runner, photo):
    whole = (WIDTH, HEIGHT, photo.rgb)
    before = PHOTO.as_posix()
    for name in ("a.bmp", "b.tif", "c.TIFF", "d.png"):
        done = runner.run(before, name)
        runner.expect(f"{before} to {name}", done.returncode == 0, done)
        runner.same(f"{name} and back", whole, name)
        before = name
    # The three that know palettes get the same one.
    results = []
    for name, *option in (("e.gif",), ("e.png", "-p"), ("e.bmp", "--palette"), ("e.tif", "-p")):
        done = runner.run(*option, PHOTO.as_posix(), name)
        runner.expect(name, done.returncode == 0, done)
        results.append(runner.pixels(name)[0])
    colours = {bytes(results[0].rgb[i:i + 3]) for i in range(0, len(results[0].rgb), 3)}
    runner.expect("at most 256 colours", 2 < len(colours) <= 256, done)
    runner.expect("one palette in all formats", len({result.rgb for result in results}) == 1 and
                  (results[0].width, results[0].height) == (WIDTH, HEIGHT), done)
    for name in ("f.ps", "f.pdf"):
        done = runner.run(PHOTO.as_posix(), name)
        page = picture.read(runner.folder / name) if done.returncode == 0 else photo
        runner.expect(name, page is not photo and page.rgb == photo.rgb, done)
    (runner.folder / "png.gif").write_bytes(PHOTO.read_bytes())
    runner.same("a PNG file with another name", whole, "png.gif")


def check_sizes(runner, photo):
    name = PHOTO.as_posix()
    runner.same("a part", rectangle(photo, 100, 50, 200, 120), "--crop", "200x120+100+50", name)
    runner.same("one pixel", rectangle(photo, 450, 299, 1, 1), "-c", "1x1+450+299", name)
    for scale, size in (("225x", (225, 150)), ("x600", (902, 600)), ("90x40", (90, 40)),
                        ("500x10", (500, 10)), ("1x1", (1, 1)), ("451x300", (451, 300))):
        got, done = runner.pixels("-s", scale, name)
        corners = [got.rgb[:3], got.rgb[-3:]]
        right = (got.width, got.height) == size and corners[0] == photo.rgb[:3]
        # The corners stay what they were (a size of 1 has the first alone).
        if min(size) > 1:
            right = right and corners[1] == photo.rgb[-3:]
        runner.expect(f"scaled to {scale}", done.returncode == 0 and right, done)
    flat = png(7, 5, 2, [bytes([200, 100, 50]) * 7] * 5)
    (runner.folder / "flat.png").write_bytes(flat)
    got, done = runner.pixels("-c", "4x4+1+1", "-s", "40x30", "flat.png")
    near = all(abs(got.rgb[i + k] - (200, 100, 50)[k]) <= 1
               for i in range(0, len(got.rgb), 3) for k in range(3))
    runner.expect("a flat colour stays flat", len(got.rgb) == 3600 and near, done)


def check_background(runner):
    (runner.folder / "clear.png").write_bytes(
        png(2, 1, 6, [bytes([10, 20, 30, 255, 10, 20, 30, 0])]))
    runner.same("white behind clear pixels", (2, 1, bytes([10, 20, 30, 255, 255, 255])),
                "clear.png")
    runner.same("another colour", (2, 1, bytes([10, 20, 30, 0x12, 0xAB, 0xEF])), "-b", "12abEF",
                "clear.png")


def check_refusals(runner):
    name = PHOTO.as_posix()
    (runner.folder / "text.png").write_text("no picture at all, but some text")
    (runner.folder / "empty.png").write_bytes(b"")
    (runner.folder / "cut.gif").write_bytes(b"GIF89a\x05\x00\x05\x00\x80\0\0" + bytes(30))
    bmp = struct.pack("<2sIHHI IiiHHIIIIII", b"BM", 0, 0, 0, 54, 40, 2, 2, 1, 32, 0, 0, 0, 0, 0, 0)
    (runner.folder / "deep.bmp").write_bytes(bmp + bytes(16))
    out = "out.png"
    for what, status, message, *arguments in (
            ("no file", 1, "nothing.png: ", "nothing.png", out),
            ("text", 1, "neither PNG, GIF, TIFF nor BMP", "text.png", out),
            ("nothing in the file", 1, "no picture in it", "empty.png", out),
            ("a damaged file", 1, "the GIF file is damaged", "cut.gif", out),
            ("a kind of bitmap", 1, "32 bits per pixel are not read", "deep.bmp", out),
            ("a part outside", 1, "reaches outside", "-c", "10x10+450+0", name, out),
            ("a folder that is not there", 1, "cannot be written", name, "no/out.png"),
            ("an unknown format", 2, "no known ending", name, "out.jpg"),
            ("one name", 2, "Two names", name),
            ("an unknown option", 2, "--help", "--size", "5x5", name, out),
            ("a bad size", 2, "--scale wants", "-s", "12", name, out),
            ("no size", 2, "--scale wants", "-s", "x", name, out),
            ("a bad part", 2, "--crop wants", "-c", "5x5", name, out),
            ("a part of nothing", 2, "--crop wants", "-c", "0x5+1+1", name, out),
            ("a bad colour", 2, "six hexadecimal digits", "-b", "red", name, out),
            ("a bad resolution", 2, "pixels per inch", "-r", "0", name, out)):
        runner.refused(what, status, message, *arguments)


def check_messages(runner):
    done = runner.run("--help")
    runner.expect("--help", done.returncode == 0 and done.stdout.startswith(b"Usage: convert") and
                  b"--background" in done.stdout, done)
    done = runner.run("-s", "2500x1700", PHOTO.as_posix(), "large.bmp")
    runner.expect("progress of a large picture",
                  done.returncode == 0 and b"writing large.bmp" in done.stderr, done)
    done = runner.run("-q", "large.bmp", "small.png")
    runner.expect("no progress if none is wanted", done.returncode == 0 and done.stderr == b"",
                  done)
    done = runner.run("-r", "300", PHOTO.as_posix(), "fine.bmp")
    metre = struct.unpack_from("<ii", (runner.folder / "fine.bmp").read_bytes(), 38)
    runner.expect("the resolution", metre == (11811, 11811), done)


def main():
    folder = pathlib.Path(sys.argv[1])
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    runner = Runner(folder, sys.argv[2:])
    photo, done = runner.pixels(PHOTO.as_posix())
    runner.expect("the photograph", done.returncode == 0 and
                  hashlib.sha256(photo.rgb).hexdigest() == PIXELS, done)
    check_formats(runner, photo)
    check_sizes(runner, photo)
    check_background(runner)
    check_refusals(runner)
    check_messages(runner)
    print(f"{runner.count} checks, {runner.failed} failed")
    return runner.failed != 0


if __name__ == "__main__":
    sys.exit(main())
