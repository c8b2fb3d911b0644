#!/usr/bin/env python3
"""Writes the title-bar buttons of the library's small-caption windows as
11 by 11 bitmaps, in colour (24 bits) and in one-bit "Mono" forms: the close
box, the zoom box and the restore box, each up and pressed ("Dn"). Run it
here after changing a picture; the .bmp files are checked in.

Pictures: '#' dark, '.' light, ' ' face. Pressed buttons swap dark and light
around a darker face.
"""
import struct
from pathlib import Path

SIDE = 11

CLOSE = [
    "           ",
    " ######### ",
    " #.......# ",
    " #.     .# ",
    " #.     .# ",
    " #.     .# ",
    " #.     .# ",
    " #.     .# ",
    " #.......# ",
    " ######### ",
    "           ",
]
ZOOM = [
    "           ",
    " ######### ",
    " #   #   # ",
    " #   #   # ",
    " #   #   # ",
    " #####   # ",
    " #       # ",
    " #       # ",
    " #       # ",
    " ######### ",
    "           ",
]
RESTORE = [
    "           ",
    " ######### ",
    " #       # ",
    " # ##### # ",
    " # #   # # ",
    " # #   # # ",
    " # #   # # ",
    " # ##### # ",
    " #       # ",
    " ######### ",
    "           ",
]

COLOURS = {"up": {"#": (0, 0, 0), ".": (255, 255, 255), " ": (192, 192, 192)},
           "down": {"#": (255, 255, 255), ".": (0, 0, 0), " ": (128, 128, 128)}}


def bmp_colour(picture, state):
    row_bytes = (SIDE * 3 + 3) & ~3
    pixels = b""
    for row in reversed(picture):  # bottom-up rows
        line = b"".join(bytes(reversed(COLOURS[state][c])) for c in row)
        pixels += line + b"\0" * (row_bytes - len(line))
    header = struct.pack("<IiiHHIIiiII", 40, SIDE, SIDE, 1, 24, 0, len(pixels), 2835, 2835, 0, 0)
    return file_header(len(header) + len(pixels), len(header)) + header + pixels


def bmp_mono(picture, state):
    row_bytes = ((SIDE + 31) // 32) * 4
    dark = "#" if state == "up" else "."
    pixels = b""
    for row in reversed(picture):
        bits = 0
        for x, c in enumerate(row):
            if c != dark:  # bit set: white
                bits |= 1 << (row_bytes * 8 - 1 - x)
        pixels += bits.to_bytes(row_bytes, "big")
    palette = bytes([0, 0, 0, 0, 255, 255, 255, 0])
    header = struct.pack("<IiiHHIIiiII", 40, SIDE, SIDE, 1, 1, 0, len(pixels), 2835, 2835, 2, 0)
    offset = len(header) + len(palette)
    return file_header(offset + len(pixels), offset) + header + palette + pixels


def file_header(size, offset):
    return struct.pack("<2sIHHI", b"BM", 14 + size, 0, 0, 14 + offset)


def main():
    here = Path(__file__).parent
    for name, picture in (("close", CLOSE), ("zoom", ZOOM), ("restore", RESTORE)):
        for state, suffix in (("up", "up"), ("down", "dn")):
            (here / f"{name}_{suffix}.bmp").write_bytes(bmp_colour(picture, state))
            (here / f"{name}_{suffix}_mono.bmp").write_bytes(bmp_mono(picture, state))


if __name__ == "__main__":
    main()
