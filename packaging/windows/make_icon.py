#!/usr/bin/env python3
"""Puts pictures into one icon file: make_icon.py OUT.ico PNG...

A picture of an icon may be a PNG as it is; all systems that the program runs on take that."""

import struct
import sys
from pathlib import Path

SIGNATURE = b"\x89PNG\r\n\x1a\n"


def size_of(png, name):
    if png[:8] != SIGNATURE or png[12:16] != b"IHDR":
        raise ValueError(f"{name} is no PNG")
    return struct.unpack(">II", png[16:24])


def icon(pictures):
    """`pictures` are pairs of a name and the bytes of a PNG of at most 256 pixels a side."""
    header = struct.pack("<HHH", 0, 1, len(pictures))
    at = len(header) + 16 * len(pictures)
    entries, contents = b"", b""
    for name, png in pictures:
        width, height = size_of(png, name)
        if max(width, height) > 256:
            raise ValueError(f"{name} is too large for an icon")
        # 256 is written as 0.
        entries += struct.pack("<BBBBHHII", width % 256, height % 256, 0, 0, 1, 32, len(png), at)
        at += len(png)
        contents += png
    return header + entries + contents


def main(words):
    if len(words) < 2:
        print(__doc__, file=sys.stderr)
        return 2
    out, *names = words
    Path(out).write_bytes(icon([(name, Path(name).read_bytes()) for name in names]))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
