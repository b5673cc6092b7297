#!/usr/bin/env python3
"""Makes resources/antenna.ico from resources/antenna.svg; needs rsvg-convert (package librsvg2-bin)."""

import pathlib
import struct
import subprocess

RESOURCES = pathlib.Path(__file__).resolve().parent.parent / "resources"
SIZES = (16, 24, 32, 48, 256)

images = [
    subprocess.run(["rsvg-convert", "-w", str(size), "-h", str(size), RESOURCES / "antenna.svg"],
                   check=True, capture_output=True).stdout
    for size in SIZES
]
offset = 6 + 16 * len(SIZES)
directory = struct.pack("<HHH", 0, 1, len(SIZES))  # reserved, icon, count
for size, image in zip(SIZES, images):
    directory += struct.pack("<BBBBHHII", size % 256, size % 256, 0, 0, 1, 32, len(image), offset)
    offset += len(image)
(RESOURCES / "antenna.ico").write_bytes(directory + b"".join(images))
