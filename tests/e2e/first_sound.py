#!/usr/bin/env python3
"""Plays a card through a real window and a real sound server, listens and looks.

first_sound.py PROGRAM     exit status 0, or 1 with a line that says what did not happen
"""

import os
import pathlib
import sys

from PIL import ImageChops

from ear import Failure, wait_for
from stage import Stage, Window, make_tones

# Regions (left, top, right, bottom) and places to tap of the main window.
TITLE = (180, 45, 318, 115)
PLAY_BUTTON = (113, 159, 160, 208)
SLIDER = (17, 139, 303, 154)
PLAY, STOP, NEXT = (136, 183), (89, 183), (183, 183)


def slider_at(share):
    return (SLIDER[0] + round(share * (SLIDER[2] - SLIDER[0])), 146)


def changed(before, after, region):
    """How many pixels of the region differ."""
    difference = ImageChops.difference(before.crop(region), after.crop(region)).convert("L")
    return sum(difference.histogram()[16:])


def make_card(card):
    make_tones(card / "00 three tones.mp3", [(440, 3), (880, 4), (1320, 5)])
    (card / "01 not a song.mp3").write_text("There is no music in here.\n" * 100)
    make_tones(card / "02 one tone.mp3", [(660, 12)])


def expect_change(what, window, before, region, least):
    wait_for(what, lambda: changed(before, window.look(), region) >= least)
    print(f"ok: {what}", flush=True)


def play_through(stage, window, ear):
    ear.expect_silence("before anything is pressed")
    at_rest = window.look()

    window.press("Return")
    ear.expect_tone("Enter plays the first song", 440)
    expect_change("the play button shows the pause face", window, at_rest, PLAY_BUTTON, 20)
    expect_change("the title is shown", window, at_rest, TITLE, 50)
    expect_change("the title moves", window, window.look(), TITLE, 50)

    before_seek = window.look()
    window.tap(*slider_at(0.75))
    ear.expect_tone("a tap at three quarters of the slider jumps there", 1320)
    filled = (slider_at(0.45)[0], SLIDER[1], slider_at(0.6)[0], SLIDER[3])
    expect_change("the slider is filled up to there", window, before_seek, filled, 50)
    rest = (slider_at(0.97)[0], SLIDER[1], SLIDER[2], SLIDER[3])
    if changed(at_rest, window.look(), rest):
        raise Failure("the slider is filled beyond the place of the song")

    window.tap(*STOP)
    ear.expect_silence("stop")
    wait_for("the play button shows the play face again", lambda: changed(at_rest, window.look(), PLAY_BUTTON) < 20)

    window.tap(*PLAY)
    ear.expect_tone("play after stop starts at the beginning", 440)
    window.tap(*NEXT)
    ear.expect_tone("next passes over the file that is no song", 660)
    window.tap(*PLAY)
    ear.expect_silence("pause")
    window.tap(*PLAY)
    ear.expect_tone("play after pause goes on", 660)


def main():
    program = pathlib.Path(sys.argv[1]).resolve()
    with Stage() as stage:
        make_card(stage.root / "card")
        ear = stage.listen()
        player = stage.start_player(program)
        window = Window(stage, player)
        try:
            play_through(stage, window, ear)
        except Failure:
            if "CARDSONG_E2E_PICTURE" in os.environ:
                window.look().save(os.environ["CARDSONG_E2E_PICTURE"])
            raise
        window.press("Escape")
        wait_for("Escape ends the player", lambda: player.poll() is not None)
        if player.returncode != 0:
            raise Failure(f"the player ended with status {player.returncode}")


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"FAILED: {failure}")
    print("ok: the player ended by itself")
