#!/usr/bin/env python3
"""Draws the GIF files that bench/gif decodes: 80 pictures of a skin's sizes, a photograph of 1920 x 1080 and an animation
of 200 frames with small changes. The same files on every machine.

    make_pictures.py FOLDER
"""
import pathlib
import random
import sys

from PIL import Image, ImageDraw, ImageFilter

SCREEN = (320, 240)
BUTTON_SIZES = ((106, 32), (80, 32), (64, 32), (47, 49), (66, 49), (62, 91), (140, 32), (286, 15))


def clouds(size, chance, octaves):
    """Noise of several scales in three colours, as a photograph has it."""
    whole = Image.new("RGB", size, (128, 128, 128))
    for octave in range(octaves):
        cells = (3 << octave, 2 << octave)
        noise = Image.frombytes("RGB", cells, chance.randbytes(3 * cells[0] * cells[1])).resize(size, Image.BICUBIC)
        whole = Image.blend(whole, noise, 0.5 / (1 << octave) ** 0.5)
    return whole


def photograph(size, chance):
    grain = Image.frombytes("RGB", size, chance.randbytes(3 * size[0] * size[1])).filter(ImageFilter.BoxBlur(1))
    return Image.blend(clouds(size, chance, 7), grain, 0.04)


def background(chance, number):
    """Every other one smooth, with plain areas for texts; the others as a photograph."""
    if number % 2:
        return photograph(SCREEN, chance)
    picture = clouds(SCREEN, chance, 2)
    draw = ImageDraw.Draw(picture)
    for _ in range(4):
        left, top = chance.randrange(240), chance.randrange(180)
        draw.rectangle((left, top, left + 80, top + 50), fill=tuple(chance.randbytes(3)))
    return picture


def button(size, chance):
    big = Image.new("RGB", (4 * size[0], 4 * size[1]), (255, 0, 255))
    draw = ImageDraw.Draw(big)
    color = chance.randbytes(3)
    for y in range(2, big.height - 2):
        shade = tuple(min(255, value // 2 + 120 * y // big.height) for value in color)
        draw.line((2, y, big.width - 3, y), fill=shade)
    middle = (big.width // 2, big.height // 2)
    reach = min(middle) // 2
    draw.polygon([(middle[0] - reach, middle[1] - reach), (middle[0] + reach, middle[1]),
                  (middle[0] - reach, middle[1] + reach)], fill=(250, 250, 250))
    return big.resize(size, Image.LANCZOS)


def save(picture, path, colors=256, dither=Image.Dither.FLOYDSTEINBERG):
    picture.quantize(colors, dither=dither).save(path, interlace=0)


def animation_frames(chance, count):
    """A sprite that moves and a bar that grows, over a background that stays."""
    still = background(chance, 0)
    palette = still.quantize(200)
    for number in range(count):
        frame = still.copy()
        draw = ImageDraw.Draw(frame)
        x, y = 10 + number, 90 + abs(number % 60 - 30)
        draw.ellipse((x, y, x + 40, y + 30), fill=(220, 40, 40), outline=(20, 20, 20))
        draw.ellipse((x + 10, y + 8, x + 18, y + 14), fill=(250, 250, 250))
        draw.rectangle((20, 220, 20 + number, 226), fill=(40, 60, 200))
        yield frame.quantize(palette=palette, dither=Image.Dither.NONE)


def main():
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    chance = random.Random(1080)
    for number in range(16):
        save(background(chance, number), folder / f"skin_{number:02}.gif")
    for number in range(16, 80):
        save(button(BUTTON_SIZES[number % len(BUTTON_SIZES)], chance), folder / f"skin_{number:02}.gif",
             (16, 64, 256)[number % 3], Image.Dither.NONE)
    save(photograph((1920, 1080), chance), folder / "photograph.gif")
    first, *others = animation_frames(chance, 200)
    first.save(folder / "animation.gif", save_all=True, append_images=others, duration=100, loop=0, optimize=False,
               interlace=0)


if __name__ == "__main__":
    main()
