#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Writes the hand-made seeds: a small valid file of each kind, and some that lie about themselves.

They go into build/corpus; corpus.sh makes archives of what stands there.
"""
import pathlib
import struct

CORPUS = pathlib.Path(__file__).resolve().parent.parent / "build" / "corpus"


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


# ---- bitmap fonts


def bdf_glyph(encoding, rows, box=None, width=None, lines=()):
    """A glyph of rows of hexadecimal digits; `lines` stand before its bitmap."""
    box = box or (4 * len(rows[0]) if rows else 0, len(rows), 0, 0)
    width = box[0] + 1 if width is None else width
    return "\n".join((f"STARTCHAR c{encoding}", f"ENCODING {encoding}", "SWIDTH 500 0",
                      f"DWIDTH {width} 0", "BBX " + " ".join(map(str, box)), *lines, "BITMAP",
                      *rows, "ENDCHAR", ""))


def bdf_font(*glyphs, count=None):
    count = len(glyphs) if count is None else count
    return ("STARTFONT 2.1\nCOMMENT a seed\nFONT -x-y\nSIZE 8 72 72\nFONTBOUNDINGBOX 8 8 0 -2\n"
            f"CHARS {count}\n" + "".join(glyphs) + "ENDFONT\n").encode()


A_GLYPH = bdf_glyph(65, ["18", "24", "42", "7E", "42", "42"], (7, 6, 0, 0))
G_GLYPH = bdf_glyph(103, ["70", "90", "90", "70", "10", "60"], (4, 6, -1, -2), 5)

BDF_FONTS = {
    "letters": bdf_font(bdf_glyph(32, ["00"]), A_GLYPH, G_GLYPH, bdf_glyph(0x104, ["F", "9", "F1"])),
    "line_ends_of_windows": bdf_font(A_GLYPH, G_GLYPH).replace(b"\n", b"\r\n"),
    "more_than_33_glyphs": bdf_font(*(bdf_glyph(code, [f"{code:02X}"]) for code in range(60, 96))),
    "encoding_twice": bdf_font(A_GLYPH, bdf_glyph(65, ["FF"])),
    "encoding_negative": bdf_font(bdf_glyph(-1, ["FF"]), A_GLYPH),
    "small_letters_in_a_row": bdf_font(bdf_glyph(65, ["fF", "aB", "g0", "1 2"])),
    "without_bitmap": bdf_font(A_GLYPH, "ENCODING 66\nDWIDTH 3 0\nBBX 4 4 0 0\nENDCHAR\n", G_GLYPH),
    "bitmap_too_long": bdf_font(bdf_glyph(65, ["FF" * 20] * 30), A_GLYPH),
    "line_too_long": bdf_font(bdf_glyph(65, ["81" * 400, "FF"]), A_GLYPH),
    "keyword_in_a_bitmap": bdf_font(bdf_glyph(65, ["FF", "DWIDTH 9 9", "COMMENT x", "81"])),
    "box_huge": bdf_font(bdf_glyph(65, ["FF"], (2147483647, 2147483647, -2147483648, 2147483647),
                                   2147483647)),
    "numbers_huge": bdf_font(bdf_glyph(99999999999, ["FF"], (8, 1, 99999999999, -99999999999))),
    "numbers_missing": bdf_font("ENCODING \nDWIDTH x\nBBX 3 +4 - 5\nBITMAP\nFF\nENDCHAR\n", A_GLYPH),
    "count_missing": bdf_font(A_GLYPH, G_GLYPH).replace(b"CHARS 2\n", b""),
    "count_twice": bdf_font(A_GLYPH, "CHARS 1\n", G_GLYPH, count=2),
    "count_too_small": bdf_font(A_GLYPH, G_GLYPH, count=1),
    "count_huge": bdf_font(A_GLYPH, count=2147483647),
    "count_negative": bdf_font(A_GLYPH, count=-1),
    "count_none": bdf_font(A_GLYPH, count=0),
    "cut_in_a_bitmap": bdf_font(A_GLYPH, G_GLYPH)[:-20],
    "empty": b"",
}

# ---- TrueType fonts

ON, X_BYTE, Y_BYTE, REPEAT, X_SAME, Y_SAME = 1, 2, 4, 8, 16, 32


class Order:
    """Numbers of one byte order, packed by the letters of struct."""

    def __init__(self, sign):
        self.sign = sign

    def __call__(self, letters, *values):
        return struct.pack(self.sign + letters, *values)


BIG, LITTLE = Order(">"), Order("<")


def simple_glyph(pack, contours, flags=None, instructions=b"", contour_count=None, ends=None):
    """Contours of points (x, y, on the curve), all coordinates as signed words."""
    points = [point for contour in contours for point in contour]
    if ends is None:
        ends, total = [], -1
        for contour in contours:
            total += len(contour)
            ends.append(total)
    xs, ys = [p[0] for p in points] or [0], [p[1] for p in points] or [0]
    count = len(contours) if contour_count is None else contour_count
    glyph = pack("hhhhh", count, min(xs), min(ys), max(xs), max(ys))
    glyph += b"".join(pack("H", end) for end in ends)
    glyph += pack("H", len(instructions)) + instructions
    glyph += bytes(ON if p[2] else 0 for p in points) if flags is None else flags
    for axis in (0, 1):
        before = 0
        for point in points:
            glyph += pack("h", point[axis] - before)
            before = point[axis]
    return glyph + b"\0" * (len(glyph) % 2)


def composite_glyph(pack, *components):
    """Components are tuples of flags, glyph number and bytes that follow."""
    glyph = pack("hhhhh", -1, 0, 0, 500, 900)
    for i, (flags, number, rest) in enumerate(components):
        more = 0x20 if i + 1 < len(components) else 0
        glyph += pack("HH", flags | more, number) + rest
    return glyph


def character_map(pack, segments, glyph_numbers=(), platform=(3, 1), format_number=4, length=None):
    """Segments are tuples of start, end, delta and range offset."""
    segments = [*segments, (0xFFFF, 0xFFFF, 1, 0)]
    count = len(segments)
    if length is None:
        length = 16 + 8 * count + 2 * len(glyph_numbers)
    table = pack("HH", 0, 1) + pack("HHI", *platform, 12)
    table += pack("HHHHHHH", format_number, length & 0xFFFF, 0, 2 * count, 0, 0, 0)
    for column, values in enumerate(zip(*((s[1], s[0], s[2], s[3]) for s in segments))):
        table += b"".join(pack("H", value) for value in values)
        if column == 0:
            table += pack("H", 0)
    return table + b"".join(pack("H", number) for number in glyph_numbers)


def truetype_font(pack, glyphs, cmap, long_loca=False, loca=None, count=None, leave_out=(),
                  head_size=54, maxp_size=32):
    offsets, glyf = [0], b""
    for glyph in glyphs:
        glyf += glyph
        offsets.append(len(glyf))
    if loca is None:
        loca = b"".join(pack("I", o) if long_loca else pack("H", o // 2) for o in offsets)
    count = len(glyphs) if count is None else count
    head = (b"\0" * 50 + pack("hh", int(long_loca), 0)).ljust(head_size, b"\0")[:head_size]
    maxp = (pack("IH", 0x10000, count)).ljust(maxp_size, b"\0")[:maxp_size]
    tables = {"cmap": cmap, "glyf": glyf, "head": head, "loca": loca, "maxp": maxp}
    tables = {tag: table for tag, table in tables.items() if tag not in leave_out}
    directory = pack("IHHHH", 0x10000, len(tables), 0, 0, 0)
    body, place = b"", 12 + 16 * len(tables)
    for tag, table in tables.items():
        directory += tag.encode() + pack("III", 0, place + len(body), len(table))
        body += table
    return directory + body


def letters(pack, **changes):
    """Four glyphs: a box, a capital A with a hole and curves, a blank, a composite."""
    box = [(0, 0, 1), (0, 700, 1), (400, 700, 1), (400, 0, 1)]
    triangle = [(0, 0, 1), (250, 700, 1), (500, 0, 1)]
    hole = [(150, 100, 1), (200, 50, 0), (250, 100, 0), (250, 300, 1)]
    compact = (pack("hhhhhH", 1, 0, 0, 90, 90, 3) + pack("H", 0) +
               bytes([ON | X_SAME | Y_SAME | REPEAT, 1, X_BYTE | Y_BYTE | X_SAME,
                      ON | X_BYTE | Y_SAME]) + bytes([90, 40]) + bytes([90]))
    turned = pack("hhhh", 0x2000, 0x1000, -0x1000, 0x2000)
    glyphs = [simple_glyph(pack, [box]), simple_glyph(pack, [triangle, hole]), b"",
              composite_glyph(pack, (1, 1, pack("hh", 10, -20)), (0x40, 0, bytes([5, 250]) +
                                                                  pack("hh", 0x4000, 0x1000)),
                              (0x81, 1, pack("hh", 0, 0) + turned), (8, 2, b"\0\0" + pack("h", 99))),
              compact + b"\0" * (len(compact) % 2)]
    cmap = character_map(pack, [(32, 32, 65506, 0), (65, 67, 0, 6), (97, 97, 65442, 0)],
                         (1, 3, 4))
    return truetype_font(pack, changes.pop("glyphs", glyphs), changes.pop("cmap", cmap), **changes)


TRIANGLE = [(0, 0, 1), (250, 700, 1), (500, 0, 1)]

TRUETYPE_FONTS = {
    "letters": letters(BIG),
    "long_loca": letters(BIG, long_loca=True),
    "little_endian": letters(LITTLE),
    "one_control_point": letters(BIG, glyphs=[simple_glyph(BIG, [[(9, 9, 0)], TRIANGLE])] * 4),
    "ends_fall": letters(BIG, glyphs=[simple_glyph(BIG, [TRIANGLE], contour_count=2,
                                                   ends=[2, 1])] * 4),
    "last_point_65535": letters(BIG, glyphs=[simple_glyph(BIG, [], contour_count=1, ends=[65535])
                                             + bytes([0x39, 255] * 256)] * 4),
    "flags_beyond_the_points": letters(BIG, glyphs=[simple_glyph(BIG, [TRIANGLE],
                                                                 flags=bytes([9, 200, 1]))] * 4),
    "no_contours": letters(BIG, glyphs=[simple_glyph(BIG, [], contour_count=0)] * 4),
    "contours_below_minus_1": letters(BIG, glyphs=[simple_glyph(BIG, [], contour_count=-2)] * 4),
    "composite_of_itself": letters(BIG, glyphs=[composite_glyph(BIG, (3, 1, BIG("hh", 1, 1)))] * 4),
    "composite_without_end": letters(BIG, glyphs=[composite_glyph(BIG, (0x23, 0, BIG("hh", 1, 1)))]
                                     * 4),
    "component_unknown": letters(BIG, glyphs=[composite_glyph(BIG, (2, 99, b"\1\1"),
                                                              (2, 5, b"\1\1"))] * 4),
    "loca_falls": letters(BIG, loca=BIG("HHHHHH", 40, 30, 20, 10, 0, 65535)),
    "loca_short": letters(BIG, loca=BIG("HHH", 0, 10, 20)),
    "glyphs_65535": letters(BIG, count=65535),
    "glyphs_none": letters(BIG, count=0),
    "map_of_macintosh": letters(BIG, cmap=character_map(BIG, [(65, 66, 1, 0)], platform=(1, 0))),
    "map_of_format_6": letters(BIG, cmap=character_map(BIG, [(65, 66, 1, 0)], format_number=6)),
    "map_too_short": letters(BIG, cmap=character_map(BIG, [(65, 66, 1, 0)], length=20)),
    "map_longer_than_its_table": letters(BIG, cmap=character_map(BIG, [(65, 66, 1, 0)],
                                                                 length=4000)),
    "map_leads_out": letters(BIG, cmap=character_map(BIG, [(65, 80, 0, 60000)], (1, 2))),
    "segments_overlap": letters(BIG, cmap=character_map(BIG, [(0, 65535, 7, 0), (60, 70, 0, 6),
                                                              (70, 60, 0, 0)], (3, 2, 1))),
    "no_head": letters(BIG, leave_out=("head",)),
    "no_tables": letters(BIG, leave_out=("cmap", "glyf", "head", "loca", "maxp")),
    "head_of_53": letters(BIG, head_size=53),
    "maxp_of_6": letters(BIG, maxp_size=6),
    "cut_in_glyf": letters(BIG)[:300],
    "empty": b"",
}


def main():
    for target, files in {"raster_file": RASTER_FILES, "fits_file": FITS_FILES,
                          "bdf_font": BDF_FONTS, "truetype_font": TRUETYPE_FONTS}.items():
        folder = CORPUS / target
        folder.mkdir(parents=True, exist_ok=True)
        for name, content in files.items():
            (folder / name).write_bytes(content)


if __name__ == "__main__":
    main()
