#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes the hand-made seeds: a small valid file of each kind, and some that lie about themselves."""
import pathlib

CORPUS = pathlib.Path(__file__).resolve().parent / "corpus"


def raster_file(width, height, bits, bytes_per_row, bits_stored, pixel_type, offset=0, data=None):
    """80 bytes of header, then the rows; counting bytes unless there are others."""
    fields = [width, height, bits, bytes_per_row, bits_stored, 32, 0, pixel_type, offset]
    numbers = " ".join(f"{field:5d}" for field in fields)
    header = f"!Bitmap QUORIX VIRT {numbers}       ".encode()
    if data is None:
        data = bytes(i & 255 for i in range(max(0, height * bytes_per_row)))
    return header + data


RASTER_FILES = {
    "indices": raster_file(4, 3, 8, 4, 8, 1),
    "indices_small": raster_file(2, 2, 8, 2, 8, 1),
    "indices_large": raster_file(12, 10, 8, 12, 8, 1),
    "older_indices": raster_file(4, 3, 8, 4, 8, 0),
    "older_indices_with_offset": raster_file(5, 3, 8, 5, 8, 0, offset=10),
    "rgb": raster_file(4, 3, 24, 12, 24, 5),
    "rgb_large": raster_file(12, 10, 24, 36, 24, 6),
    "rgbx": raster_file(4, 3, 32, 16, 32, 5),
    "bgrx": raster_file(4, 3, 32, 16, 32, 7),
    "quads_without_order": raster_file(4, 3, 32, 16, 32, 1),
    "rows_longer_than_the_raster": raster_file(5, 2, 24, 15, 24, 5),
    "row_bytes_too_few": raster_file(4, 3, 32, 1, 32, 5),
    "row_bytes_none": raster_file(4, 3, 8, 0, 8, 1),
    "row_bytes_huge": raster_file(4, 3, 8, 99999, 8, 1, data=bytes(20)),
    "size_negative": raster_file(-4, -3, 8, 4, 8, 1, data=bytes(12)),
    "depth_unknown": raster_file(4, 3, 16, 8, 16, 1),
    "cut_in_a_row": raster_file(4, 3, 24, 12, 24, 5)[:100],
    "header_alone": raster_file(4, 3, 8, 4, 8, 1, data=b""),
    "header_cut": raster_file(4, 3, 8, 4, 8, 1)[:40],
    "empty": b"",
}


def main():
    folder = CORPUS / "raster_file"
    folder.mkdir(parents=True, exist_ok=True)
    for name, content in RASTER_FILES.items():
        (folder / name).write_bytes(content)


if __name__ == "__main__":
    main()
