#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Runs one line of gallery.txt and compares its pictures with golden.txt.

    check_pictures.py [--print] FILE FOLDER PROGRAM...

FILE is the first field of the line, FOLDER is where to work, PROGRAM is the example with whatever
runs it before. golden.txt holds a line for each picture: name, width, height, number of transparent
pixels, SHA-256 of its colours; and for each PDF document of more than a picture: name, number of
pages, length, SHA-256 of its bytes with the time of creation masked; and for each mesh: name,
number of vertices and of polygons, SHA-256 of its lines. The sums were taken after
somebody had looked at the pictures; --print prints lines to put there.
"""
import os
import pathlib
import shlex
import shutil
import subprocess
import sys

sys.dont_write_bytecode = True
import picture  # noqa: E402

HERE = pathlib.Path(__file__).resolve().parent


def entries_of(file):
    """The command of a line of the gallery, and all files that it writes."""
    command, files = None, []
    for line in (HERE / "gallery.txt").read_text(encoding="utf-8").splitlines():
        if not line.strip() or line.startswith("#"):
            continue
        name, _, _, own = (field.strip() for field in line.split("|"))
        if name == file:
            command = own
        elif command is not None and own:
            break
        if command is not None:
            files.append(name)
    if not command:
        sys.exit(f"no command for {file} in gallery.txt")
    return command, files


def golden_sums():
    lines = (HERE / "golden.txt").read_text().splitlines()
    return dict(line.split(None, 1) for line in lines if line and not line.startswith("#"))


def main():
    arguments = sys.argv[1:]
    printing = arguments[0] == "--print"
    file, folder, *program = arguments[printing:]
    folder = pathlib.Path(folder)
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    command, files = entries_of(file)
    # Forward slashes do on every system.
    words = [word.replace("{data}", (HERE / "data").as_posix()) for word in shlex.split(command)]
    # The bitmap fonts are those of the sources.
    environment = dict(os.environ, QUORIX=HERE.parent.as_posix(), QUORIX_DESKTOP="memory")
    status = subprocess.run(program + words[1:], cwd=folder, env=environment).returncode
    if status != 0:
        sys.exit(f"{command}: exit status {status}")
    failed = 0
    for name in files:
        try:
            summary = picture.read(folder / name).summary()
        except (picture.Wrong, OSError) as why:
            sys.exit(f"{name}: {why}")
        if printing:
            print(name, summary)
        elif golden_sums().get(name) != summary:
            print(f"{name}: {summary}, which is not what golden.txt says")
            failed = 1
    left = sorted(path.name for path in folder.iterdir() if path.name not in files)
    if left:
        sys.exit(f"files left behind: {left}")
    return failed


if __name__ == "__main__":
    sys.exit(main())
