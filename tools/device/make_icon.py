#!/usr/bin/env python3
"""Draws the program's icon in 16 to 256 pixels: cardsong.ico, and a picture of each size where a desktop looks for it."""

import argparse
import io
import pathlib
import struct
import subprocess

from PIL import Image

SIZES = {16: "cardsong_16.svg", 24: "cardsong_24.svg", 32: "cardsong.svg", 48: "cardsong.svg",
         64: "cardsong.svg", 128: "cardsong.svg", 256: "cardsong.svg"}
SMALLEST_PNG = 128            # smaller ones are plain bitmaps, which every reader of icons knows


def render(source, size, rsvg):
    return subprocess.run([rsvg, "-w", str(size), "-h", str(size), str(source)], stdout=subprocess.PIPE, check=True).stdout


def bitmap_entry(png, size):
    """A 32-bit bitmap, bottom-up, with the one-bit mask that the form still asks for."""
    pixels = Image.open(io.BytesIO(png)).convert("RGBA").transpose(Image.FLIP_TOP_BOTTOM)
    colours = pixels.tobytes("raw", "BGRA")
    stride = (size + 31) // 32 * 4
    alpha = pixels.getchannel("A").tobytes()
    mask = bytearray(stride * size)
    for i, value in enumerate(alpha):
        if value == 0:
            mask[i // size * stride + i % size // 8] |= 0x80 >> i % size % 8
    header = struct.pack("<IiiHHIIiiII", 40, size, size * 2, 1, 32, 0, len(colours) + len(mask), 0, 0, 0, 0)
    return header + colours + bytes(mask)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--source", type=pathlib.Path, required=True)
    parser.add_argument("--out", type=pathlib.Path, required=True)
    parser.add_argument("--rsvg", default="rsvg-convert")
    options = parser.parse_args()

    images = []
    for size, file in SIZES.items():
        png = render(options.source / file, size, options.rsvg)
        images.append((size, png if size >= SMALLEST_PNG else bitmap_entry(png, size)))
        picture = options.out / f"icons/hicolor/{size}x{size}/apps/cardsong.png"
        picture.parent.mkdir(parents=True, exist_ok=True)
        picture.write_bytes(png)
    directory, offset = struct.pack("<HHH", 0, 1, len(images)), 6 + 16 * len(images)
    for size, data in images:
        directory += struct.pack("<BBBBHHII", size & 255, size & 255, 0, 0, 1, 32, len(data), offset)
        offset += len(data)
    (options.out / "cardsong.ico").write_bytes(directory + b"".join(data for _, data in images))


if __name__ == "__main__":
    main()
