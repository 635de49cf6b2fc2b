# SPDX-License-Identifier: MIT
"""Pictures as the library writes them, decoded without it: PNG files with 8-bit samples and no
row filters, binary PPM files, PostScript programs, and PDF documents of one picture. Other PDF
documents count as they are, but for the time when they were made, and meshes in PLY files by their
lines, however these end. Where pngcheck, netpbm, qpdf,
poppler and Ghostscript are installed, they must agree."""
import hashlib
import re
import shutil
import subprocess
import zlib


class Wrong(Exception):
    """What is wrong with a picture."""


def want(condition, text):
    if not condition:
        raise Wrong(text)


class Picture:
    """Width, height, the bytes red, green, blue of every pixel, and how many are transparent."""

    def __init__(self, width, height, rgb, clear):
        self.width, self.height, self.rgb, self.clear = width, height, rgb, clear

    def summary(self):
        digest = hashlib.sha256(self.rgb).hexdigest()
        return f"{self.width} {self.height} {self.clear} {digest}"


class Document:
    """A PDF document: number of pages, length, and its bytes without the time of creation."""

    def __init__(self, pages, data):
        self.pages = pages
        self.data = data

    def summary(self):
        digest = hashlib.sha256(self.data).hexdigest()
        return f"{self.pages} pages {len(self.data)} {digest}"


class Mesh:
    """Number of vertices and polygons, and the lines of the file."""

    def __init__(self, vertices, polygons, text):
        self.vertices, self.polygons, self.text = vertices, polygons, text

    def summary(self):
        digest = hashlib.sha256(self.text.encode()).hexdigest()
        return f"{self.vertices} vertices {self.polygons} polygons {digest}"


PLY_HEADER = re.compile(r"""ply
format ascii 1\.0
(?:comment .*
)*element vertex (\d+)
property float x
property float y
property float z
property uchar red
property uchar green
property uchar blue
element face (\d+)
property list uchar int vertex_indices
end_header
""")


def decode_ply(data):
    text = data.decode("ascii").replace("\r\n", "\n")
    header = PLY_HEADER.match(text)
    want(header and text.endswith("\n"), "not a mesh of coloured vertices")
    vertices, polygons = int(header[1]), int(header[2])
    lines = text[header.end():-1].split("\n")
    want(len(lines) == vertices + polygons, "wrong number of lines")
    for line in lines[:vertices]:
        numbers = re.fullmatch(r"(-?\d+\.\d{6} ){3}(\d+) (\d+) (\d+)", line)
        want(numbers and all(int(c) <= 255 for c in numbers.groups()[1:]), f"vertex {line}")
    for line in lines[vertices:]:
        count, *corners = (int(word) for word in line.split(" "))
        want(len(corners) == count, f"polygon {line}")
        want(all(0 <= corner < vertices for corner in corners), f"polygon {line}")
    return Mesh(vertices, polygons, text)


def png_chunks(data):
    want(data[:8] == b"\x89PNG\r\n\x1a\n", "no PNG signature")
    chunks, at = {}, 8
    while at < len(data):
        size = int.from_bytes(data[at:at + 4], "big")
        kind, body = data[at + 4:at + 8], data[at + 8:at + 8 + size]
        stored = int.from_bytes(data[at + 8 + size:at + 12 + size], "big")
        want(stored == zlib.crc32(kind + body), f"wrong CRC of {kind}")
        want(kind not in chunks, f"two chunks {kind}")
        chunks[kind] = body
        at += 12 + size
    want(list(chunks)[0] == b"IHDR" and list(chunks)[-1] == b"IEND", "wrong order of chunks")
    return chunks


def decode_png(data):
    chunks = png_chunks(data)
    header = chunks[b"IHDR"]
    width, height = (int.from_bytes(header[i:i + 4], "big") for i in (0, 4))
    depth, kind = header[8], header[9]
    want(depth == 8 and kind in (2, 3) and header[10:] == bytes(3), f"unexpected header {header}")
    rows = zlib.decompress(chunks[b"IDAT"])
    stride = 1 + width * (3 if kind == 2 else 1)
    want(len(rows) == stride * height, "wrong number of pixels")
    want(not any(rows[::stride]), "a filtered row")
    pixels = b"".join(rows[y * stride + 1:(y + 1) * stride] for y in range(height))
    transparent = chunks.get(b"tRNS")
    if kind == 2:
        if transparent is None:
            return Picture(width, height, pixels, 0)
        colour = bytes(transparent[1::2])
        clear = sum(pixels[i:i + 3] == colour for i in range(0, len(pixels), 3))
        return Picture(width, height, pixels, clear)
    palette = chunks[b"PLTE"]
    entries = [palette[i:i + 3] for i in range(0, len(palette), 3)]
    want(max(pixels) < len(entries), "an index beyond the palette")
    rgb = b"".join(map(entries.__getitem__, pixels))
    return Picture(width, height, rgb, 0 if transparent is None else pixels.count(0))


def decode_ppm(data):
    magic, width, height, top = data.split(None, 4)[:4]
    want(magic == b"P6" and top == b"255", "no PPM header")
    rgb = data[len(b" ".join((magic, width, height, top))) + 1:]
    want(len(rgb) == 3 * int(width) * int(height), "wrong number of pixels")
    return Picture(int(width), int(height), rgb, 0)


def decode_postscript(data):
    size = re.search(rb"/Width (\d+)\s+/Height (\d+)\s", data)
    pixels = re.search(rb">> image\r?\n([0-9A-F\r\n]*)> grestore showpage\r?\n$", data)
    want(data.startswith(b"%!PS") and size and pixels, "no PostScript picture")
    width, height = map(int, size.groups())
    rgb = bytes.fromhex(pixels[1].decode())
    want(len(rgb) == 3 * width * height, "wrong number of pixels")
    return Picture(width, height, rgb, 0)


def decode_pdf(data):
    want(data.startswith(b"%PDF-1.3\n") and data.endswith(b"%%EOF\n"), "no PDF document")
    masked, times = re.subn(rb"(/CreationDate \(D:)\d{14}\)", rb"\g<1>" + 14 * b"0" + b")", data)
    want(times == 1, "not one time of creation")
    pages = data.count(b"/Type /Page\n")
    images = list(re.finditer(rb"/Subtype /Image\n.*\n   /Width (\d+) /Height (\d+) .*\n"
                              rb"   /Length (\d+)\n   /Filter /FlateDecode\n>>\nstream\n", data))
    if pages != 1 or len(images) != 1:
        return Document(pages, masked)
    width, height, length = map(int, images[0].groups())
    rgb = zlib.decompress(data[images[0].end():images[0].end() + length])
    want(len(rgb) == 3 * width * height, "wrong number of pixels")
    return Picture(width, height, rgb, 0)


def ask(*command):
    """What an independent program says, or None where it is not installed."""
    if shutil.which(command[0]) is None:
        return None
    done = subprocess.run(command, capture_output=True)
    want(done.returncode == 0, f"{' '.join(command)}: {done.stdout or done.stderr}")
    return done.stdout


def read(path):
    data = path.read_bytes()
    if path.suffix == ".ppm":
        picture = decode_ppm(data)
        ask("pamfile", str(path))
        return picture
    if path.suffix == ".ply":
        return decode_ply(data)
    if path.suffix == ".ps":
        picture = decode_postscript(data)
        ask("gs", "-q", "-dBATCH", "-dNOPAUSE", "-dSAFER", "-sDEVICE=nullpage", str(path))
        return picture
    if path.suffix == ".pdf":
        picture = decode_pdf(data)
        ask("qpdf", "--check", str(path))
        if isinstance(picture, Picture):
            extracted = path.with_name(path.name + "-000.ppm")
            if ask("pdfimages", str(path), str(path)) is not None:
                ppm = decode_ppm(extracted.read_bytes())
                extracted.unlink()
                want(ppm.rgb == picture.rgb, "pdfimages sees other pixels")
        return picture
    picture = decode_png(data)
    ask("pngcheck", "-q", str(path))
    pnm = ask("pngtopnm", str(path))
    if pnm is not None and pnm.startswith(b"P6"):
        want(decode_ppm(pnm).rgb == picture.rgb, "pngtopnm sees other pixels")
    return picture
