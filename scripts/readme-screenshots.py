#!/usr/bin/env python3
"""Copies the screenshots `make demo` saved in $BUILD into docs/screenshots for
the README, recompressed: the demo's PNG writer stores its rows uncompressed,
which is quick to write but a hundred times larger than needed."""
import glob
import os
import struct
import sys
import zlib

root = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
build = os.environ.get("BUILD", os.path.join(root, "build"))
dest = os.path.join(root, "docs", "screenshots")


def chunks(data):
    i = 8
    while i < len(data):
        (size,) = struct.unpack(">I", data[i:i + 4])
        yield data[i + 4:i + 8], data[i + 8:i + 8 + size]
        i += 12 + size


def chunk(kind, body):
    return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))


def recompress(path):
    parts = list(chunks(open(path, "rb").read()))
    header = next(body for kind, body in parts if kind == b"IHDR")
    pixels = zlib.decompress(b"".join(body for kind, body in parts if kind == b"IDAT"))
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) +
            chunk(b"IDAT", zlib.compress(pixels, 9)) + chunk(b"IEND", b""))


shots = sorted(glob.glob(os.path.join(build, "editor-[0-9]*.png")))
shots.append(os.path.join(build, "demo-screenshot.png"))
missing = [s for s in shots if not os.path.exists(s)]
if missing:
    sys.exit("run `make demo` first: %s is missing" % missing[0])
os.makedirs(dest, exist_ok=True)
for shot in shots:
    with open(os.path.join(dest, os.path.basename(shot)), "wb") as out:
        out.write(recompress(shot))
print("%d screenshots in %s" % (len(shots), dest))
