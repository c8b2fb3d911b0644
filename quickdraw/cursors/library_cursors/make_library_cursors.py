#!/usr/bin/env python3
"""Writes the library's own cursors as 32 by 32 monochrome .cur files:
the cross-hair and plus of GetCursor 2 and 3, and the Window Manager's drag
cursors. Run it here after changing a picture; the .cur files are checked in.

Pictures: '#' black, 'o' white, '~' inverted, anything else transparent.
"""
import struct
from pathlib import Path

SIDE = 32


def picture_from_rule(size, black, white):
    rows = []
    for y in range(size):
        rows.append("".join("#" if black(x, y) else "o" if white(x, y) else " "
                            for x in range(size)))
    return rows


def near(points, x, y):
    return any(abs(x - px) <= 1 and abs(y - py) <= 1 for px, py in points)


def cross_hair():
    # A thin cross 15 pixels wide, centred on (8, 8), with a white rim so it
    # shows on black too.
    line = lambda x, y: 1 <= x <= 15 and 1 <= y <= 15 and (x == 8 or y == 8)
    black_points = [(x, y) for x in range(17) for y in range(17) if line(x, y)]
    return picture_from_rule(17, line, lambda x, y: near(black_points, x, y))


def fat_plus():
    # The spreadsheet plus: arms 5 pixels wide, white inside a black outline.
    inside = lambda x, y: 0 <= x <= 14 and 0 <= y <= 14 and (abs(x - 7) <= 2 or abs(y - 7) <= 2)
    edge = lambda x, y: inside(x, y) and not all(
        inside(x + dx, y + dy) for dx in (-1, 0, 1) for dy in (-1, 0, 1))
    return picture_from_rule(15, edge, inside)


ARROW = [
    "#",
    "##",
    "#o#",
    "#oo#",
    "#ooo#",
    "#oooo#",
    "#ooooo#",
    "#oooooo#",
    "#ooooooo#",
    "#oooooooo#",
    "#ooooo#####",
    "#oo#oo#",
    "#o# #oo#",
    "##  #oo#",
    "#    #oo#",
    "     #oo#",
    "      ##",
]

DOCUMENT = [
    "#########",
    "#ooooooo#",
    "#o#####o#",
    "#ooooooo#",
    "#o####oo#",
    "#ooooooo#",
    "#o#####o#",
    "#ooooooo#",
    "#o###ooo#",
    "#ooooooo#",
    "#########",
]


def overlay(base, top, left, picture):
    rows = [list(r.ljust(SIDE)) for r in base]
    while len(rows) < SIDE:
        rows.append(list(" " * SIDE))
    for dy, line in enumerate(picture):
        for dx, c in enumerate(line):
            if c != " ":
                rows[top + dy][left + dx] = c
    return ["".join(r) for r in rows]


def drag(documents):
    picture = []
    for i in reversed(range(documents)):
        picture = overlay(picture, 12 + 3 * i, 10 + 3 * i, DOCUMENT)
    return overlay(picture, 0, 0, ARROW)


def cursor_file(picture, hot_x, hot_y):
    rows = [line.ljust(SIDE)[:SIDE] for line in picture] + [" " * SIDE] * (SIDE - len(picture))
    # Windows: AND 0 XOR 0 black, AND 0 XOR 1 white, AND 1 XOR 0 screen,
    # AND 1 XOR 1 inverted screen.
    planes = {"#": (0, 0), "o": (0, 1), "~": (1, 1)}
    xor_rows, and_rows = [], []
    for line in rows:
        xor_bits = and_bits = 0
        for c in line:
            a, x = planes.get(c, (1, 0))
            and_bits = and_bits << 1 | a
            xor_bits = xor_bits << 1 | x
        xor_rows.append(struct.pack(">I", xor_bits))
        and_rows.append(struct.pack(">I", and_bits))
    # Bottom-up rows, the XOR bitmap first, as in an icon resource.
    image = (struct.pack("<IiiHHIIiiII", 40, SIDE, 2 * SIDE, 1, 1, 0, 0, 0, 0, 2, 0) +
             struct.pack("<II", 0x000000, 0xFFFFFF) +
             b"".join(reversed(xor_rows)) + b"".join(reversed(and_rows)))
    header = struct.pack("<HHH", 0, 2, 1)
    entry = struct.pack("<BBBBHHII", SIDE, SIDE, 2, 0, hot_x, hot_y, len(image), 6 + 16)
    return header + entry + image


def main():
    here = Path(__file__).resolve().parent
    cursors = {
        "cross.cur": (cross_hair(), 8, 8),
        "plus.cur": (fat_plus(), 7, 7),
        "drag_single.cur": (drag(1), 0, 0),
        "drag_multiple.cur": (drag(3), 0, 0),
    }
    for name, (picture, hot_x, hot_y) in cursors.items():
        (here / name).write_bytes(cursor_file(picture, hot_x, hot_y))


if __name__ == "__main__":
    main()
