#!/usr/bin/env python3
"""Wears the skins that there are, one of the user's own too, and asks for one that there is not.

skins.py PROGRAM     exit status 0, or 1 with a line that says what was wrong
"""

import pathlib
import subprocess
import sys

from PIL import Image

from ear import Failure
from stage import Stage, under_wine

BAD_OPTION = 2
KEY_FACE = (130, 165)  # of the play key, which is at rest
AMBER_FACE = (0x39, 0x34, 0x31)
NIGHT_FACE = (0x18, 0x34, 0x4A)
OWN_FACE = (0x00, 0x80, 0x00)


def run(stage, program, *options):
    command = under_wine(program) if program.suffix == ".exe" else [program]
    return subprocess.run([*command, "--device", stage.root / "device", "--card", stage.root / "card", "--headless",
                           "--scale", "1", "--language", "en", *options],
                          env=stage.environment, capture_output=True, text=True, timeout=60)


def face(stage, program, *options):
    """The colour of the play key, cut to the 65536 colours of the device's screen."""
    path = stage.root / "picture.png"
    path.unlink(missing_ok=True)
    done = run(stage, program, *options, "--keys", f"wait:1500 shot:{path} Exit")
    if done.returncode != 0 or not path.exists():
        raise Failure(f"{options}: ended with status {done.returncode} and no picture: {done.stderr}")
    return tuple(value & mask for value, mask in zip(Image.open(path).convert("RGB").getpixel(KEY_FACE), (0xF8, 0xFC, 0xF8)))


def expect_face(stage, program, colour, *options):
    wanted = tuple(value & mask for value, mask in zip(colour, (0xF8, 0xFC, 0xF8)))
    found = face(stage, program, *options)
    if found != wanted:
        raise Failure(f"{options}: the play key is {found}, not {wanted}")
    print(f"ok: {options}", flush=True)


def expect_complaint(stage, program, name, line):
    done = run(stage, program, "--skin", name)
    if done.returncode != BAD_OPTION or done.stderr.strip() != line:
        raise Failure(f"--skin {name}: status {done.returncode}, and it said: {done.stderr}")
    print(f"ok: --skin {name} is refused", flush=True)


def main():
    program = pathlib.Path(sys.argv[1]).resolve()
    with Stage() as stage:
        expect_face(stage, program, NIGHT_FACE)
        expect_face(stage, program, AMBER_FACE, "--skin", "amber")
        expect_complaint(stage, program, "nosuch", "cardsong: --skin: there is no skin nosuch; there is amber")

        own = stage.root / "device/Skins/mine"
        own.mkdir(parents=True)
        picture = Image.new("RGB", (47, 49), OWN_FACE).quantize()
        picture.save(own / "gui_musicplayer_play_but_normal.gif")
        expect_face(stage, program, OWN_FACE, "--skin", "mine")
        expect_face(stage, program, NIGHT_FACE)
        expect_complaint(stage, program, "../mine",
                         "cardsong: --skin: there is no skin ../mine; there is amber, mine")

        in_place = stage.root / "device/Windows"
        in_place.mkdir(exist_ok=True)
        picture.save(in_place / "gui_musicplayer_play_but_normal.gif")
        expect_face(stage, program, OWN_FACE, "--skin", "amber")


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"FAILED: {failure}")
