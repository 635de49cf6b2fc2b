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


def fits_unit(*cards, data=b"", pad=None):
    """A header with END, as many blank lines more as the reader passes over, and data in blocks."""
    lines = [card.ljust(80)[:80] for card in cards] + ["END".ljust(80)]
    lines += [" " * 80] * (len(lines) % 36 if pad is None else pad)
    return "".join(lines).encode("latin-1") + data


def fits_image(bitpix, *axes, cards=(), first="SIMPLE  =                    T"):
    lengths = [f"NAXIS{i + 1:<3}= {length:20d}" for i, length in enumerate(axes)]
    size = abs(bitpix) // 8
    for length in axes:
        size *= length
    return fits_unit(first, f"BITPIX  = {bitpix:20d}", f"NAXIS   = {len(axes):20d}", *lengths,
                     *cards, data=bytes(i & 255 for i in range(size)))


VALUES = ("OBJECT  = 'it''s a star'         / a name", "EXPTIME =              12.50 / seconds",
          "FILTER  = ''", "BSCALE  = 1.5E-3", "DEEP    =                    F",
          "PHASE   = (1.0, 2.0)", "NOTHING =", "COMMENT no value here", "OPEN    = 'not closed",
          "ORDER   = (1, 2)", "LONGEXP = 1E400", "COUNT   = 99999999999")

FITS_FILES = {
    "bytes": fits_image(8, 5, 3),
    "floats": fits_image(-32, 3, 2),
    "values": fits_image(16, 2, 2, cards=VALUES),
    "no_axes": fits_image(8),
    "bitpix_small": fits_image(7, 4),
    "two_units": (fits_image(8, 3).ljust(800 + 2880, b"\0") +
                  fits_image(-64, 2, first="EXTENSION= 'IMAGE   '")),
    "tables": (fits_image(8, first="SIMPLE  =                    T") +
               fits_image(8, 0, first="EXTENSION= 'BINTABLE'") +
               fits_image(8, first="EXTENSION= 'TABLE   '") +
               fits_image(8, first="XTENSION= 'IMAGE   '")),
    "no_bitpix": fits_unit("SIMPLE  =                    T", "NAXIS   = 0"),
    "no_naxis": fits_unit("SIMPLE  =                    T", "BITPIX  = 8"),
    "axis_missing": fits_unit("BITPIX  = 8", "NAXIS   = 2", "NAXIS1  = 4"),
    "axis_before_naxis": fits_unit("BITPIX  = 8", "NAXIS1  = 4", "NAXIS   = 1"),
    "axis_negative": fits_unit("BITPIX  = 8", "NAXIS   = 1", "NAXIS1  = -4"),
    "axes_huge": fits_unit("BITPIX  = -64", "NAXIS   = 3", "NAXIS1  = 2147483647",
                           "NAXIS2  = 2147483647", "NAXIS3  = 2147483647"),
    "naxis_negative": fits_unit("BITPIX  = 8", "NAXIS   = -1"),
    "naxis_999": fits_unit("BITPIX  = 8", "NAXIS   = 999", "NAXIS999= 1"),
    "naxis_1000": fits_unit("BITPIX  = 8", "NAXIS   = 1000"),
    "naxis_twice": fits_unit("BITPIX  = 8", "NAXIS   = 2", "NAXIS1  = 4", "NAXIS   = 1",
                             "NAXIS1  = 3", data=b"abc"),
    "without_end": fits_unit("BITPIX  = 8", "NAXIS   = 0")[:160],
    "cut_in_a_card": fits_unit("BITPIX  = 8", "NAXIS   = 0")[:200],
    "data_cut": fits_image(16, 5, 3)[:-7],
    "empty": b"",
}


def main():
    for target, files in {"raster_file": RASTER_FILES, "fits_file": FITS_FILES}.items():
        folder = CORPUS / target
        folder.mkdir(parents=True, exist_ok=True)
        for name, content in files.items():
            (folder / name).write_bytes(content)


if __name__ == "__main__":
    main()
