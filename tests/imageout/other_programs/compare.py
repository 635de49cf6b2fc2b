#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Lets netpbm, ImageMagick, giflib and pngcheck read what imageout_samples wrote. netpbm reads TIFF
files by libtiff.

    compare.py IMAGEOUT_SAMPLES

Each picture must come out of every program as the triples that stand beside it.
"""
import pathlib
import shutil
import subprocess
import sys
import tempfile


TO_PNM = {".png": "pngtopnm", ".gif": "giftopnm", ".tif": "tifftopnm", ".bmp": "bmptopnm"}


def output_of(*command):
    done = subprocess.run([str(word) for word in command], capture_output=True, check=False)
    if done.returncode != 0:
        raise ValueError(f"{command[0]} fails: {done.stderr.decode(errors='replace').strip()}")
    return done.stdout


def numbers_of_plain_ppm(text):
    """Width, height and the samples of a PPM in text form with at most 255."""
    words = text.split()
    if words[0] != b"P3" or words[3] != b"255":
        raise ValueError("not the plain PPM that was asked for")
    return int(words[1]), int(words[2]), bytes(int(word) for word in words[4:])


def by_netpbm(picture):
    ppm = picture.read_bytes()
    if picture.suffix in TO_PNM:
        ppm = output_of(TO_PNM[picture.suffix], picture)
    # netpbm writes pictures of greys as such.
    ppm = subprocess.run(["ppmtoppm"], input=ppm, capture_output=True, check=True).stdout
    done = subprocess.run(["pnmtoplainpnm"], input=ppm, capture_output=True, check=True)
    return numbers_of_plain_ppm(done.stdout)


def by_imagemagick(picture):
    # The transparent colour keeps its samples and only loses its transparency.
    size = output_of("convert", picture, "-format", "%w %h", "info:-").split()
    samples = output_of("convert", picture, "-alpha", "off", "-depth", "8", "rgb:-")
    return int(size[0]), int(size[1]), samples


def by_giflib(picture):
    size = output_of("convert", picture, "-format", "%w %h", "info:-").split()
    bare = picture.with_suffix(".bare")
    output_of("gif2rgb", "-1", "-o", bare, picture)
    return int(size[0]), int(size[1]), bare.read_bytes()


def check(picture):
    width, height = (int(word) for word in picture.stem.split("_")[1].split("x"))
    expected = (width, height, picture.with_suffix(".rgb").read_bytes())
    if picture.suffix == ".png":
        output_of("pngcheck", "-q", picture)
    readers = [by_netpbm, by_imagemagick]
    if picture.suffix == ".gif":
        readers.append(by_giflib)
    for reader in readers:
        if reader(picture) != expected:
            raise ValueError(f"{reader.__name__[3:]} reads other pixels")


def main():
    needed = (*TO_PNM.values(), "ppmtoppm", "pnmtoplainpnm", "convert", "gif2rgb", "pngcheck")
    missing = [program for program in needed if shutil.which(program) is None]
    if missing:
        sys.exit(f"these programs are needed: {', '.join(missing)}")
    failures = 0
    with tempfile.TemporaryDirectory() as folder:
        output_of(sys.argv[1], folder)
        pictures = sorted(p for p in pathlib.Path(folder).iterdir() if p.suffix != ".rgb")
        forms = 7 + 2 + 5 + 3  # PNG and PPM, GIF, TIFF, BMP
        if len(pictures) != 2 * 6 * forms:
            sys.exit(f"{len(pictures)} pictures instead of {2 * 6 * forms}")
        for picture in pictures:
            try:
                check(picture)
            except ValueError as problem:
                print(f"{picture.name}: {problem}")
                failures += 1
    print(f"{len(pictures)} pictures, {failures} wrong")
    sys.exit(1 if failures else 0)


if __name__ == "__main__":
    main()
