#!/usr/bin/env python3
"""Draws a skin: pictures.json + SVG pieces + palette.css -> the GIF images of a device's Windows folder.

Pieces that a skin lacks are those of the skin it is based on.

All pictures are laid out on one sheet, so that a single run of rsvg-convert renders them; each is then cut out and laid
over what it stands on, so that its soft edges need no see-through pixels.
"""

import argparse
import io
import json
import pathlib
import re
import subprocess
import sys

from PIL import Image

import gif

SHEET_WIDTH = 640


class Picture:
    """One picture on the sheet: its file (none for an animation's steps), markup, size, and what lies beneath it."""

    def __init__(self, file, markup, size, over=None, keyed=False):
        self.file, self.markup, self.size, self.over, self.keyed = file, markup, size, over, keyed
        self.place = (0, 0)
        self.words = []


class Skin:
    """The sources of a skin: a folder, and behind it the folder of the skin that it is based on."""

    def __init__(self, folder, base):
        self.folders = [folder] + ([base] if base else [])

    def find(self, name):
        for folder in self.folders:
            if (folder / name).exists():
                return folder / name
        sys.exit(f"{self.folders[0]}: has no {name}")


def read_art(skin, name):
    """(inner markup, (width, height)) of an SVG piece."""
    file = skin.find(f"{name}.svg")
    match = re.match(r'<svg xmlns="[^"]+" width="(\d+)" height="(\d+)">\n(.*)</svg>\s*$', file.read_text(encoding="utf-8"), re.S)
    if not match:
        sys.exit(f"{file}: begin with <svg xmlns=... width=... height=...> and nothing more")
    return match[3], (int(match[1]), int(match[2]))


def key_face(left, top, width, height, corner):
    """A flat face with one light line along its top edge: the face is laid one pixel lower over the line's colour."""
    return (f'<rect class="top" x="{left}" y="{top}" width="{width}" height="{height}" rx="{corner}"/>'
            f'<rect class="face" x="{left}" y="{top + 1}" width="{width}" height="{height - 1}" rx="{corner}"/>')


def button_markup(button, form, state, skin):
    left, top, width, height = button["face"]
    parts, carries = [key_face(left, top, width, height, form["corner"])], "captioned"
    if "glyph" in button:
        carries = ""
        art, (wide, high) = read_art(skin, f"glyphs/{button['glyph']}")
        x, y = left + (width - wide) // 2, top + (height - high) // 2
        parts.append(f'<g transform="translate({x} {y})">{art}</g>')
    if state == "on":
        parts.append(f'<rect class="on-bar" x="{left + width // 2 - 11}" y="{top + height - 7}" width="22" height="3" rx="1.5"/>')
    return f'<g class="{form["class"]} {carries} {state}">{"".join(parts)}</g>'


def collect(skin):
    """Every picture in an order in which what lies beneath comes first; then the animation's steps."""
    plan = json.loads(skin.find("pictures.json").read_text(encoding="utf-8"))
    pictures = []
    for screen in plan["screens"]:
        art, size = read_art(skin, f"screens/{screen['art']}")
        markup = f'<g class="{screen.get("state", "normal")}">{art}</g>'
        pictures.append(Picture(screen["file"], markup, size, screen.get("over"), screen.get("keyed", False)))
    for button in plan["buttons"]:
        for state in button["states"]:
            markup = button_markup(button, plan["forms"][button["form"]], state, skin)
            pictures.append(Picture(f'{button["file"]}_{state}.gif', markup, tuple(button["size"]), button["over"]))
    animation = plan["animation"]
    art, size = read_art(skin, f"screens/{animation['art']}")
    steps = [Picture(None, art.replace("rotate(0 ", f"rotate({360 * i / animation['steps']:g} "), size)
             for i in range(animation["steps"])]
    return pictures, steps, animation


def lay_out(pictures):
    """Gives every picture its place on the sheet, row by row; returns the sheet's height."""
    x = y = row_height = 0
    for picture in sorted(pictures, key=lambda p: -p.size[1]):
        if x + picture.size[0] > SHEET_WIDTH:
            x, y, row_height = 0, y + row_height, 0
        picture.place = (x, y)
        x, row_height = x + picture.size[0], max(row_height, picture.size[1])
    return y + row_height


def render(pictures, palette, rsvg):
    height = lay_out(pictures)
    cells = "".join('<svg x="{}" y="{}" width="{}" height="{}">{}</svg>\n'.format(*p.place, *p.size, p.markup) for p in pictures)
    sheet = f'<svg xmlns="http://www.w3.org/2000/svg" width="{SHEET_WIDTH}" height="{height}">\n{cells}</svg>\n'
    done = subprocess.run([rsvg, "--stylesheet", str(palette)], input=sheet.encode(), stdout=subprocess.PIPE, check=True)
    return Image.open(io.BytesIO(done.stdout)).convert("RGBA")


def flatten(picture, sheet, finished, row_colour):
    """The picture's RGB565 words: laid over what lies beneath, or the key colour where it is keyed and empty."""
    x, y = picture.place
    width, height = picture.size
    pixels = list(sheet.crop((x, y, x + width, y + height)).getdata())
    below = None
    if picture.over:
        file, left, top = picture.over
        base = finished[file]
        below = [gif.to_888(base.words[(top + j) * base.size[0] + left + i]) for j in range(height) for i in range(width)]
    words = []
    for index, (red, green, blue, alpha) in enumerate(pixels):
        if alpha == 0 and picture.keyed:
            words.append(gif.KEY_COLOUR)
            continue
        if alpha < 255:
            if below is None and not picture.keyed:
                sys.exit(f"{picture.file}: see-through at {index % width},{index // width}, and nothing is known to lie beneath")
            under = below[index] if below else row_colour
            red, green, blue = ((c * alpha + u * (255 - alpha) + 127) // 255 for c, u in zip((red, green, blue), under))
        word = gif.to_565(red, green, blue)
        if word == gif.KEY_COLOUR:
            sys.exit(f"{picture.file}: drawn in the key colour")
        words.append(word)
    return words


def palette_colour(palette, role):
    match = re.search(rf"^\.{role}\b[^{{]*{{[^}}]*#([0-9a-f]{{6}})", palette.read_text(encoding="utf-8"), re.M)
    return tuple(bytes.fromhex(match[1]))


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--skin", type=pathlib.Path, required=True, help="folder of the skin's sources")
    parser.add_argument("--base", type=pathlib.Path, help="folder of the skin that it is based on")
    parser.add_argument("--out", type=pathlib.Path, help="folder for the GIF images")
    parser.add_argument("--rsvg", default="rsvg-convert")
    parser.add_argument("--list", action="store_true", help="print the names of the images and draw nothing")
    options = parser.parse_args()

    skin = Skin(options.skin, options.base)
    pictures, steps, animation = collect(skin)
    if options.list:
        print(";".join([p.file for p in pictures] + [animation["file"]]), end="")
        return
    options.out.mkdir(parents=True, exist_ok=True)
    palette = skin.find("palette.css")
    sheet = render(pictures + steps, palette, options.rsvg)
    row_colour = palette_colour(palette, "row")
    finished = {}
    for picture in pictures:
        picture.words = flatten(picture, sheet, finished, row_colour)
        finished[picture.file] = picture
        gif.write_checked(options.out / picture.file, [picture.words], picture.size[0])
    frames = [flatten(step, sheet, finished, row_colour) for step in steps]
    gif.write_checked(options.out / animation["file"], frames, steps[0].size[0], animation["delay"])


if __name__ == "__main__":
    main()
