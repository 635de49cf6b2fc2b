#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Draws every picture of examples/gallery.txt and writes a page that shows them.

    gallery.py FOLDER_OF_PROGRAMS GALLERY_FOLDER

A line of the list is `file | caption | source | command`. The command runs in the gallery folder;
its first word names a program, {data} is examples/data. Without a command, an earlier one has
written the file. Empty lines and those that start with # are skipped.
"""
import html
import os
import pathlib
import shlex
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
SHOWN = {".png"}  # what a browser shows; other files are linked
PAGED = {".pdf", ".ps"}  # what Ghostscript makes previews of
PREVIEW = ("gs", "-q", "-dBATCH", "-dNOPAUSE", "-dSAFER", "-sDEVICE=png16m", "-r96",
           "-dTextAlphaBits=4", "-dGraphicsAlphaBits=4", "-sPAPERSIZE=a4")

PAGE = """<!DOCTYPE html>
<html lang="en">
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>Quorix gallery</title>
<style>
body {{ font-family: sans-serif; margin: clamp(.6em, 4vw, 2em); background: #f4f4f2; color: #222; }}
main {{ display: grid; gap: 1.5em;
  grid-template-columns: repeat(auto-fill, minmax(min(22em, 100%), 1fr)); }}
figure {{ margin: 0; padding: 1em; background: #fff; border: 1px solid #ddd; min-width: 0; }}
img {{ max-width: 100%; height: auto; {squares} }}
figcaption {{ margin-top: .6em; line-height: 1.4; }}
code, small {{ color: #555; }}
figure {{ overflow-wrap: anywhere; }}
</style>
<h1>Quorix gallery</h1>
<p>{count}, each drawn by a small program through the exported operations alone.</p>
<main>
{figures}
</main>
</html>
"""

# Behind transparent pages.
SQUARES = "background: repeating-conic-gradient(#ddd 0% 25%, #fff 0% 50%) 0 0 / 16px 16px;"

FIGURE = """<figure>{picture}
<figcaption>{caption}<br>
<small><a href="{source_link}">{source}</a>{command}</small></figcaption></figure>"""


def read_list(path):
    """The entries of the list, each a tuple of four texts."""
    entries = []
    for number, line in enumerate(path.read_text().splitlines(), 1):
        if not line.strip() or line.startswith("#"):
            continue
        fields = [field.strip() for field in line.split("|")]
        if len(fields) != 4:
            sys.exit(f"{path}:{number}: four fields are wanted, there are {len(fields)}")
        entries.append(tuple(fields))
    if not entries:
        sys.exit(f"{path}: no picture")
    return entries


def draw(programs, gallery, file, command):
    """Runs one command, which must leave the file."""
    if command:
        words = shlex.split(command.replace("{data}", str(ROOT / "examples" / "data")))
        program = programs / words[0]
        # The bitmap fonts are those of the sources.
        environment = dict(os.environ, QUORIX=str(ROOT), QUORIX_DESKTOP="memory")
        status = subprocess.run([program, *words[1:]], cwd=gallery, env=environment).returncode
        if status != 0:
            sys.exit(f"gallery: {command}: exit status {status}")
    written = gallery / file
    if not written.is_file() or written.stat().st_size == 0:
        sys.exit(f"gallery: {file} was not written")


def previews(gallery, file):
    """Draws every page of a file and gives the names of the pictures."""
    stem = f"{file}-page-"
    done = subprocess.run([*PREVIEW, "-o", f"{stem}%02d.png", file], cwd=gallery)
    names = sorted(path.name for path in gallery.glob(f"{stem}*.png"))
    if done.returncode != 0 or not names:
        sys.exit(f"gallery: {file} cannot be shown")
    return names


def figure(gallery, file, caption, source, command):
    """The figure, and how many pictures it shows."""
    shown = []
    name = html.escape(file)
    suffix = pathlib.Path(file).suffix
    if suffix in SHOWN | PAGED:
        shown = previews(gallery, file) if suffix in PAGED else [file]
        picture = "\n".join(f'<a href="{html.escape(link)}"><img src="{html.escape(link)}" '
                            f'alt="{html.escape(caption)}"></a>' for link in shown)
        if suffix in PAGED:
            picture += f'\n<a href="{name}">{name}</a>'
    else:
        size = (gallery / file).stat().st_size
        picture = f'<a href="{name}">{name}</a> ({size:,} bytes)'
    if not (ROOT / source).is_file():
        sys.exit(f"gallery: {file}: there is no {source}")
    source_link = pathlib.Path(os.path.relpath(ROOT / source, gallery)).as_posix()
    command = html.escape(command.replace("{data}", "examples/data"))
    return len(shown), FIGURE.format(picture=picture, caption=html.escape(caption),
                         source=html.escape(source), source_link=html.escape(source_link),
                         command=command and f" <code>{command}</code>")


def main():
    programs, gallery = (pathlib.Path(argument).resolve() for argument in sys.argv[1:])
    shutil.rmtree(gallery, ignore_errors=True)
    gallery.mkdir(parents=True)
    figures, pictures, links = [], 0, 0
    for file, caption, source, command in read_list(ROOT / "examples" / "gallery.txt"):
        draw(programs, gallery, file, command)
        shown, text = figure(gallery, file, caption, source, command)
        figures.append(text)
        pictures += shown
        links += shown == 0
    index = gallery / "index.html"
    count = f"{pictures} pictures"
    if links:
        count += f" and {links} other {'file' if links == 1 else 'files'}"
    index.write_text(PAGE.format(squares=SQUARES, count=count, figures="\n".join(figures)))
    print(f"{count}, see {index}")


if __name__ == "__main__":
    main()
