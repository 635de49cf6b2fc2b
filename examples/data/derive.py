#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Makes the data files of this folder from Debian packages, as README.md tells.

    derive.py FOLDER    FOLDER holds the unpacked packages (`dpkg-deb -x PACKAGE.deb FOLDER`)

The files stand in the repository: nobody needs this to build or run the examples.
"""
import csv
import datetime
import pathlib
import struct
import sys
import zipfile
import zoneinfo

HERE = pathlib.Path(__file__).resolve().parent


def save(name, comments, lines):
    text = "".join(f"# {comment}\n" for comment in comments) + "".join(f"{x}\n" for x in lines)
    (HERE / name).write_text(text, encoding="utf-8", newline="\n")
    print(name, len(text))


def co2(root):
    """Monthly means of the weekly values; a month without any is left empty."""
    path = root / "usr/lib/python3/dist-packages/statsmodels/datasets/co2/co2.csv"
    months = {}
    for row in csv.DictReader(path.open()):
        key = int(row["date"][:4]), int(row["date"][4:6])
        months.setdefault(key, [])
        if row["co2"].strip():
            months[key].append(float(row["co2"]))
    lines = ["year,CO₂ (ppm)"]
    for (year, month), values in sorted(months.items()):
        mean = f"{sum(values) / len(values):.2f}" if values else ""
        lines.append(f"{year + (month - 0.5) / 12:.3f},{mean}")
    save("co2.csv", ["Mauna Loa, Hawaii: carbon dioxide in air, monthly means of weekly values"],
         lines)


def sunspots(root):
    path = root / "usr/lib/python3/dist-packages/statsmodels/datasets/sunspots/sunspots.csv"
    lines = [f"{row['YEAR']},{row['SUNACTIVITY']}" for row in csv.DictReader(path.open())]
    save("sunspots.csv", ["Yearly mean sunspot number, 1700 to 2008"], ["year,sunspots"] + lines)


def el_nino(root):
    path = root / "usr/lib/python3/dist-packages/statsmodels/datasets/elnino/elnino.csv"
    rows = list(csv.reader(path.open()))[1:]
    region = "Pacific off Peru (0-10 S, 90-80 W): sea surface temperature in degrees Celsius"
    short = [[f"{float(v):.2f}" for v in row[1:]] for row in rows]
    save("el-nino.csv", [region],
         ["year," + ",".join(str(m) for m in range(1, 13))] +
         [",".join([row[0], *values]) for row, values in zip(rows, short)])
    by_year = {row[0]: values for row, values in zip(rows, short)}
    lines = ['month,"mean, 1950-2010",1982,1983,1997,1998']
    for month in range(12):
        mean = sum(float(row[month + 1]) for row in rows) / len(rows)
        chosen = [by_year[year][month] for year in ("1982", "1983", "1997", "1998")]
        lines.append(",".join([str(month + 1), f"{mean:.2f}", *chosen]))
    save("el-nino-years.csv", [region + ", chosen years"], lines)


def penguins(root):
    path = root / "usr/lib/R/site-library/palmerpenguins/extdata/penguins.csv"
    lines = ["species,flipper_length_mm,body_mass_g"]
    for row in csv.DictReader(path.open()):
        if row["flipper_length_mm"] != "NA":
            lines.append(f"{row['species']},{row['flipper_length_mm']},{row['body_mass_g']}")
    save("penguins.csv", ["Penguins of the Palmer Archipelago, Antarctica, 2007-2009"], lines)


def michelson(root):
    path = root / "usr/lib/R/library/datasets/data/morley.tab"
    rows = [line.split() for line in path.read_text().splitlines()[1:]]
    save("michelson.csv", ["Speed of light in air, km/s, less 299000: A. A. Michelson, 1879"],
         ["experiment,run,speed"] + [",".join(row[1:]) for row in rows])


def array_of(npz, name):
    data = npz.read(name + ".npy")
    return data[10 + struct.unpack("<H", data[8:10])[0]:]


def elevation(root):
    """2 by 2 means of a grid of 344 rows (from the north) by 403 columns."""
    path = root / "usr/share/matplotlib/mpl-data/sample_data/jacksboro_fault_dem.npz"
    values = struct.unpack(f"<{344 * 403}h", array_of(zipfile.ZipFile(path), "elevation"))
    lines = []
    for row in range(0, 344, 2):
        cells = []
        for column in range(0, 402, 2):
            at = row * 403 + column
            cells.append((values[at] + values[at + 1] + values[at + 403] + values[at + 404] + 2) // 4)
        lines.append(",".join(str(cell) for cell in cells))
    save("elevation.csv",
         ["Jacksboro fault, Tennessee: elevation in metres, 172 rows from north to south",
          "by 201 columns from west to east, 6 arc seconds apart"], lines)


def geoid(root):
    """Every 2 degrees of a grid of 15 minutes, rows from the south."""
    data = (root / "usr/share/proj/egm96_15.gtx").read_bytes()
    _, _, _, _, rows, columns = struct.unpack(">4d2i", data[:40])
    values = struct.unpack(f">{rows * columns}f", data[40:])
    lines = []
    for row in range(rows - 1, -1, -8):
        lines.append(",".join(f"{values[row * columns + c]:.1f}" for c in range(0, columns, 8)))
    save("geoid.csv",
         ["Height of the geoid EGM96 above the ellipsoid WGS 84 in metres: 91 rows from 90 N to",
          "90 S by 180 columns from 180 W, 2 degrees apart"], lines)


def land(root):
    """Rings of the country polygons, a blank line between them."""
    folder = root / "usr/lib/python3/dist-packages/geopandas/datasets/naturalearth_lowres"
    data = (folder / "naturalearth_lowres.shp").read_bytes()
    lines, at = ["longitude,latitude"], 100
    while at < len(data):
        length = struct.unpack(">i", data[at + 4:at + 8])[0] * 2
        shape, parts, points = struct.unpack("<i32x2i", data[at + 8:at + 52])
        assert shape == 5
        starts = list(struct.unpack(f"<{parts}i", data[at + 52:at + 52 + 4 * parts])) + [points]
        where = at + 52 + 4 * parts
        xy = struct.unpack(f"<{2 * points}d", data[where:where + 16 * points])
        for first, end in zip(starts, starts[1:]):
            ring = []
            for p in range(first, end):
                point = f"{xy[2 * p]:.1f},{xy[2 * p + 1]:.1f}".replace("-0.0", "0.0")
                if not ring or ring[-1] != point:
                    ring.append(point)
            if len(ring) > 3:
                lines += ring + [""]
        at += 8 + length
    save("land.csv", ["Countries of the world: rings in degrees, a blank line after each"], lines)


def zones(_):
    """Places of the zone table with their offset from UTC outside daylight saving time: the
    smaller of those of January and July 2025."""
    lines = ["zone,latitude,longitude,offset_minutes"]
    for line in pathlib.Path("/usr/share/zoneinfo/zone1970.tab").read_text().splitlines():
        if line.startswith("#"):
            continue
        _, place, name = line.split("\t")[:3]
        split = max(place.rfind("+"), place.rfind("-"))
        zone = zoneinfo.ZoneInfo(name)
        noons = (datetime.datetime(2025, month, 1, 12, tzinfo=zone) for month in (1, 7))
        offset = min(noon.utcoffset().total_seconds() for noon in noons) / 60
        lines.append(f"{name},{degrees(place[:split]):.2f},{degrees(place[split:]):.2f},{offset:.0f}")
    save("zones.csv", ["Principal places of the time zones, with the offset of standard time"], lines)


def degrees(text):
    """DDMM, DDDMM, DDMMSS or DDDMMSS with a sign."""
    digits = text[1:]
    whole = 2 if len(digits) in (4, 6) else 3
    value = int(digits[:whole]) + int(digits[whole:whole + 2]) / 60
    if len(digits) > whole + 2:
        value += int(digits[whole + 2:]) / 3600
    return -value if text[0] == "-" else value


def fits_card(keyword, value, comment):
    if isinstance(value, bool):
        value = "FT"[value]
    elif isinstance(value, str):
        value = f"'{value:8}'".ljust(20)
    return f"{keyword:8}= {value:>20} / {comment}".ljust(80)


def m51(root):
    """The image as it stands there, its own header replaced by one of FITS that tells the same.
    Comments fill it up to a block of 36 lines."""
    data = (root / "usr/lib/iraf/dev/pix.pix").read_bytes()
    size, columns, rows = 2048, 512, 512
    assert data[:6] == b"impv2c" and len(data) == size + 2 * columns * rows
    cards = [fits_card("SIMPLE", True, "file conforms to FITS standard"),
             fits_card("BITPIX", 16, "bits per pixel"), fits_card("NAXIS", 2, "number of axes"),
             fits_card("NAXIS1", columns, "pixels of a row"),
             fits_card("NAXIS2", rows, "rows, from the bottom"),
             fits_card("OBJECT", "M51", "Whirlpool galaxy"),
             fits_card("OBSERVAT", "KPNO", "Kitt Peak National Observatory"),
             fits_card("DATE-OBS", "1987-04-05", "UT, of the start"),
             fits_card("EXPTIME", 600.0, "s"), fits_card("FILTER", "B", "blue light"),
             fits_card("BUNIT", "count", "")]
    cards += ["COMMENT".ljust(80)] * (35 - len(cards)) + ["END".ljust(80)]
    pixels = data[size:]
    file = "".join(cards).encode() + pixels + bytes(-len(pixels) % 2880)
    (HERE / "m51.fits").write_bytes(file)
    print("m51.fits", len(file))


def cat(root):
    file = root / "usr/lib/python3/dist-packages/skimage/data/chelsea.png"
    (HERE / "cat.png").write_bytes(file.read_bytes())
    print("cat.png", file.stat().st_size)


def main():
    root = pathlib.Path(sys.argv[1])
    for make in (co2, sunspots, el_nino, penguins, michelson, elevation, geoid, land, zones, m51,
                 cat):
        make(root)


if __name__ == "__main__":
    main()
