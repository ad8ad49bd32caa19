#!/usr/bin/env python3
"""Brings the native and the Windows program into the same states, and holds their pictures against each other.

same_picture.py NATIVE WINDOWS     exit status 0; 1 with a line that says where they differ; 77 without the native program

Text is drawn by each system's own fonts, so its places are left out; everything else must be the same, pixel by pixel, in
the colours that the device's screen has.
"""

import pathlib
import subprocess
import sys

from PIL import Image, ImageDraw

from ear import Failure
from stage import HEIGHT, WIDTH, Stage, make_tones, under_wine

SKIPPED = 77
# Title, times, labels of the soft keys: left, top, right, bottom.
TEXTS = [(34, 45, 286, 82), (33, 117, 113, 138), (221, 117, 300, 138), (8, 212, 99, 238), (115, 212, 205, 238)]
SLIDER = (17, 139, 303, 154)  # of a song that was paused, which is never at quite the same place
STATES = {  # the script that leads there, and what is left out besides texts
    "at rest": ("wait:1500", []),
    "stopped": ("wait:1500 Enter wait:1500 tap:89,183 wait:1500", []),
    "paused": ("wait:1500 Enter wait:1500 Enter wait:1500", [SLIDER]),
}


def screen_colours(path, left_out):
    """The picture in the 65536 colours of the device's screen, with places blanked."""
    picture = Image.open(path).convert("RGB")
    if picture.size != (WIDTH, HEIGHT):
        raise Failure(f"{path.name} is {picture.size}, not {WIDTH} x {HEIGHT}")
    picture = picture.point([value >> bits << bits for bits in (3, 2, 3) for value in range(256)])
    draw = ImageDraw.Draw(picture)
    for place in left_out:
        draw.rectangle(place, fill=0)
    return picture


def shoot(stage, program, language, script, left_out):
    path = stage.root / f"{program.name}.png"
    path.unlink(missing_ok=True)
    command = under_wine(program) if program.suffix == ".exe" else [program]
    done = subprocess.run([*command, "--device", stage.root / f"device-{program.name}", "--card", stage.root / "card",
                           "--fill", "--headless", "--scale", "1", "--language", language, "--keys",
                           f"{script} shot:{path} Exit"],
                          env=stage.environment, capture_output=True, timeout=60)
    if done.returncode != 0 or not path.exists():
        raise Failure(f"{program.name} ended with status {done.returncode} and no picture")
    return screen_colours(path, left_out)


def compare(stage, native, windows, language, state, script, left_out):
    pictures = [shoot(stage, program, language, script, TEXTS + left_out) for program in (native, windows)]
    different = [(x, y) for y in range(HEIGHT) for x in range(WIDTH)
                 if pictures[0].getpixel((x, y)) != pictures[1].getpixel((x, y))]
    if different:
        x, y = different[0]
        raise Failure(f"{state}, {language}: {len(different)} pixels differ, the first at {x}, {y}: "
                      f"{pictures[0].getpixel((x, y))} and {pictures[1].getpixel((x, y))}")
    print(f"ok: {state}, {language}: both builds show the same", flush=True)


def main():
    native, windows = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
    if not native.exists():
        print("the native program is not built")
        return SKIPPED
    with Stage() as stage:
        make_tones(stage.root / "card/00 tone.mp3", [(440, 30)])
        for state, (script, left_out) in STATES.items():
            compare(stage, native, windows, "en", state, script, left_out)
        for language in ("zh-TW", "zh-CN"):
            compare(stage, native, windows, language, "at rest", *STATES["at rest"])
    return 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except Failure as failure:
        sys.exit(f"FAILED: {failure}")
