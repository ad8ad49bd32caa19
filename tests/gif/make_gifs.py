#!/usr/bin/env python3
"""Makes a few hundred small GIF files of every kind, the same ones on every machine: with a writer of our own, and by
gifsicle and ImageMagick.

    make_gifs.py FOLDER TOOLS_DEVICE GIFSICLE CONVERT
"""
import concurrent.futures
import os
import pathlib
import random
import struct
import subprocess
import sys

OWN_FILES = 240
LARGE_FILES = 4
PLAIN_TEXT = b"\x21\x01\x0c" + bytes(12) + b"\x05hello\x00"
COMMENT = b"\x21\xfe\x07comment\x00"
LOOP = b"\x21\xff\x0bNETSCAPE2.0\x03\x01\x00\x00\x00"


def indices_like_a_picture(chance, count, colours):
    """Runs, noise and repeated pieces."""
    indices = []
    while len(indices) < count:
        length = chance.choice((1, 3, 9, 40, 200))
        kind = chance.randrange(3)
        if kind == 0:
            indices += [chance.randrange(colours)] * length
        elif kind == 1 or len(indices) < 40:
            indices += [chance.randrange(colours) for _ in range(length)]
        else:
            indices += indices[-37:][:length]
    return indices[:count]


def image(writer, chance, screen, table_bits, has_local):
    """An image block; it may reach beyond the screen, and hold fewer pixels than it promises."""
    left, top = (chance.randrange(size) if chance.random() < 0.6 else 0 for size in screen)
    width, height = (1 + chance.randrange(size - at + (6 if chance.random() < 0.2 else 0))
                     for size, at in zip(screen, (left, top)))
    if has_local:
        table_bits = chance.randrange(1, 9)
    # Where the table is small, some files hold indices beyond it.
    minimum = max(2, table_bits)
    colours = 1 << (minimum if chance.random() < 0.2 else table_bits)
    flags = (0x80 | (table_bits - 1) if has_local else 0) | (0x40 if chance.random() < 0.4 else 0)
    block = struct.pack("<BHHHHB", 0x2C, left, top, width, height, flags)
    if has_local:
        block += chance.randbytes(3 << table_bits)
    data = writer.compress(indices_like_a_picture(chance, width * height, colours), minimum)
    return block + bytes([minimum]) + writer.sub_blocks(data)


def own_file(writer, chance, screen):
    table_bits = chance.randrange(1, 9)
    has_global = chance.random() < 0.8
    packed = (0x80 | (table_bits - 1) if has_global else 0) | chance.choice((0, 0x70))
    out = [b"GIF89a", struct.pack("<HHBBB", *screen, packed, chance.randrange(1 << table_bits), 0)]
    if has_global:
        out.append(chance.randbytes(3 << table_bits))
    if chance.random() < 0.5:
        out.append(LOOP)
    for _ in range(chance.choice((1, 1, 2, 3, 6))):
        if chance.random() < 0.8:
            flags = chance.choice((0, 1, 2, 3, 3, 7)) << 2 | chance.randrange(2)
            out.append(struct.pack("<BBBBHBB", 0x21, 0xF9, 4, flags, chance.randrange(20), chance.randrange(4), 0))
        if chance.random() < 0.2:
            out.append(chance.choice((COMMENT, PLAIN_TEXT)))
        out.append(image(writer, chance, screen, table_bits, not has_global or chance.random() < 0.3))
    if chance.random() < 0.2:
        out.append(COMMENT)
    out.append(b"\x3B")
    return b"".join(out)


def gifsicle_commands(gifsicle, folder):
    """Small pictures only: gifsicle may go on with a full table, which the decoder refuses on purpose."""
    variants = (("-O1",), ("-O3",), ("--interlace",), ("--no-interlace", "--unoptimize"), ("--colors", "8"),
                ("--rotate-90",), ("--resize", "31x22"), ("--lossy=60", "-O2"), ("--crop", "1,1+5x4"),
                ("--loopcount=3", "--comment", "made to be read"))
    for number in range(60):
        yield [gifsicle, "--no-warnings", "--conserve-memory", *variants[number % len(variants)],
               folder / f"fitting_{number:03}.gif", "-o", folder / f"gifsicle_{number:03}.gif"]


def convert_command(convert, folder):
    """All by one process, which takes long to start, and without dithering, which takes memory and time."""
    chance = random.Random(3)
    command = [convert, "-respect-parenthesis", "+dither"]
    for number in range(24):
        size = f"{chance.randrange(3, 90)}x{chance.randrange(3, 70)}" if number else "220x160"
        options = (["-interlace", "GIF"], ["-colors", "16"], ["-colors", "3"],
                   ["-fuzz", "20%", "-transparent", "gray50"], ["-layers", "optimize"], ["-type", "Grayscale"])[number % 6]
        command += ["(", "-delay", "7", "-loop", "0"]
        for frame in range(1 + number % 3):
            command += ["(", "-seed", str(100 * number + frame), "-size", size, "plasma:fractal",
                        "-dispose", ("none", "background", "previous")[frame % 3], ")"]
        command += [*options, "-write", folder / f"convert_{number:03}.gif", ")"]
    return [*command, "null:"]


def main():
    folder, tools = map(pathlib.Path, sys.argv[1:3])
    sys.path.insert(0, str(tools))
    sys.dont_write_bytecode = True
    import gif as writer
    folder.mkdir(parents=True, exist_ok=True)
    chance = random.Random(89)
    for number in range(OWN_FILES):
        screen = (chance.randrange(1, 65), chance.randrange(1, 49))
        (folder / f"own_{number:03}.gif").write_bytes(own_file(writer, chance, screen))
    for number in range(LARGE_FILES):
        (folder / f"large_{number}.gif").write_bytes(own_file(writer, chance, (320, 240)))
    for number in range(60):  # gifsicle gives screens that its images do not fit into another size
        frames = [[chance.randrange(0, 0x10000, 0x1111) for _ in range(20)] * 12 for _ in range(1 + number % 4)]
        (folder / f"fitting_{number:03}.gif").write_bytes(writer.encode(frames, 16, delay=number % 12))
    commands = [convert_command(sys.argv[4], folder), *gifsicle_commands(sys.argv[3], folder)]
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        list(pool.map(lambda command: subprocess.run(command, check=True), commands))


if __name__ == "__main__":
    main()
