#!/usr/bin/env python3
"""Makes the icons of Windows and macOS of packaging/vorn.svg, whose circles it draws: packaging/icons/make.py [--check].

Writes vorn.icns beside itself and windows/vorn.ico; with --check it only looks whether they are of that drawing, point for
point. Pictures are PNG (RFC 2083), 8 bits of red, green, blue and opacity.
"""
import pathlib
import re
import struct
import sys
import xml.etree.ElementTree as xml
import zlib

HERE = pathlib.Path(__file__).resolve().parent
ICO_SIZES = [16, 24, 32, 48, 64, 128, 256]
# The kinds of a macOS icon that hold PNG, with their points; the last four are for screens of double density.
ICNS_KINDS = {b"icp4": 16, b"icp5": 32, b"ic07": 128, b"ic08": 256, b"ic09": 512,
              b"ic11": 32, b"ic12": 64, b"ic13": 256, b"ic14": 512}


def colour(text):
    return tuple(int(text[k:k + 2], 16) for k in (1, 3, 5))


def discs(svg):
    """Centre, outer and inner radius, and colour of what is painted, the lowest first."""
    def walk(node, inherited):
        style = inherited | node.attrib
        if node.tag.endswith("}circle"):
            x, y, r = (float(style[name]) for name in ("cx", "cy", "r"))
            if style.get("fill", "none") != "none":
                yield x, y, r, 0.0, colour(style["fill"])
            if "stroke" in style:
                half = float(style["stroke-width"]) / 2
                yield x, y, r + half, r - half, colour(style["stroke"])
        for child in node:
            yield from walk(child, style)

    root = xml.parse(svg).getroot()
    unknown = {node.tag for node in root.iter()} - {f"{{http://www.w3.org/2000/svg}}{tag}" for tag in ("svg", "title", "g", "circle")}
    assert not unknown, f"cannot draw {unknown}"
    return list(walk(root, {})), float(root.attrib["width"])


def covered(distance, outer, inner):
    """How much of a point so far from the centre lies in the ring, all in points."""
    beyond = min(max(outer - distance + 0.5, 0), 1)
    return beyond - (min(max(inner - distance + 0.5, 0), 1) if inner > 0 else 0)


def point(x, y, shapes):
    red = green = blue = opacity = 0.0
    for cx, cy, outer, inner, paint in shapes:
        part = covered(((x - cx) ** 2 + (y - cy) ** 2) ** 0.5, outer, inner)
        if part > 0:
            red, green, blue = (old * (1 - part) + new * part for old, new in zip((red, green, blue), paint))
            opacity = opacity * (1 - part) + part
    if opacity == 0:
        return 0, 0, 0, 0
    return tuple(round(value / opacity) for value in (red, green, blue)) + (round(255 * opacity),)


def points(size, drawing):
    """The rows of a PNG before they are packed, each behind a 0: no filter."""
    shapes, width = drawing
    scale = size / width
    scaled = [(x * scale, y * scale, outer * scale, inner * scale, paint) for x, y, outer, inner, paint in shapes]
    rows = bytearray()
    for y in range(size):
        rows.append(0)
        for x in range(size):
            rows.extend(point(x + 0.5, y + 0.5, scaled))
    return bytes(rows)


def png(size, rows):
    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    head = struct.pack(">IIBBBBB", size, size, 8, 6, 0, 0, 0)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", head) + chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b"")


def ico(pictures):
    place = 6 + 16 * len(ICO_SIZES)
    table, data = struct.pack("<HHH", 0, 1, len(ICO_SIZES)), b""
    for size in ICO_SIZES:
        table += struct.pack("<BBBBHHII", size % 256, size % 256, 0, 0, 1, 32, len(pictures[size]), place + len(data))
        data += pictures[size]
    return table + data


def icns(pictures):
    data = b"".join(kind + struct.pack(">I", 8 + len(pictures[size])) + pictures[size] for kind, size in ICNS_KINDS.items())
    return b"icns" + struct.pack(">I", 8 + len(data)) + data


def unpacked(icon):
    """The rows of all pictures, in order: how they are packed may differ from one machine to the next."""
    return [zlib.decompress(icon[at.end():at.end() + struct.unpack(">I", icon[at.start() - 4:at.start()])[0]])
            for at in re.finditer(rb"IDAT(?=\x78)", icon)]


def main():
    drawing = discs(HERE.parent / "vorn.svg")
    pictures = {size: png(size, points(size, drawing)) for size in {*ICO_SIZES, *ICNS_KINDS.values()}}
    for file, icon in {HERE.parent / "windows" / "vorn.ico": ico(pictures), HERE / "vorn.icns": icns(pictures)}.items():
        if "--check" not in sys.argv:
            file.write_bytes(icon)
        elif unpacked(icon) != unpacked(file.read_bytes()) or len(unpacked(icon)) < 7:
            sys.exit(f"{file.name} is not of vorn.svg: run packaging/icons/make.py")


main()
