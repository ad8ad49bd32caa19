#!/usr/bin/env python3
"""Ends the X server while the player plays: the player saves its list, says what happened and ends with its own status.
Stops the X server in its tracks (SIGSTOP): the player saves its list, and can be ended by the signals that it was asked with.

lost_display.py PROGRAM [COUNT]     exit status 0, or 1 with a line that says what did not happen
"""

import pathlib
import signal
import subprocess
import sys

from ear import Failure, wait_for
from stage import Stage, Window, make_tones

DISPLAY_LOST, GAVE_UP = 3, 130
MESSAGE = "cardsong: the display went away; the play list is saved\n"
SONGS = ["one tone.mp3", "two tones.mp3"]


def play(stage, program):
    stage.start_bus()
    for song in SONGS:
        make_tones(stage.root / "card" / song, [(440, 10)])
    ear = stage.listen()
    player = stage.start_player(program, stderr=subprocess.PIPE, text=True)
    Window(stage, player).press("Return")
    ear.expect_tone("the player plays", 440)
    if play_list(stage).exists():
        raise Failure("the play list is saved before the player ends: this test would see nothing")
    return player


def play_list(stage):
    return stage.root / "device/Windows/play_list.txt"


def expect_saved(stage):
    saved = play_list(stage).read_bytes().decode("utf-16", "replace") if play_list(stage).exists() else ""
    if not all(song in saved for song in SONGS):
        raise Failure(f"the play list was not saved: {saved!r}")


def lose_display(program):
    with Stage() as stage:
        player = play(stage, program)
        stage.display_server.kill()
        wait_for("the player ends after its display", lambda: player.poll() is not None)
        complaints = player.stderr.read()
        if player.returncode != DISPLAY_LOST or complaints != MESSAGE:
            raise Failure(f"the player ended with status {player.returncode} and said: {complaints}")
        expect_saved(stage)


def hang_display(program):
    with Stage() as stage:
        player = play(stage, program)
        stage.display_server.send_signal(signal.SIGSTOP)
        try:
            player.send_signal(signal.SIGTERM)
            wait_for("the play list is saved", play_list(stage).exists)

            def has_ended():
                player.send_signal(signal.SIGTERM)
                return player.poll() is not None
            wait_for("the player can be ended while its display hangs", has_ended)
        finally:
            stage.display_server.send_signal(signal.SIGCONT)
        if player.returncode != GAVE_UP:
            raise Failure(f"the player ended with status {player.returncode}")
        expect_saved(stage)


if __name__ == "__main__":
    try:
        for _ in range(int(sys.argv[2]) if len(sys.argv) > 2 else 1):
            for case in (lose_display, hang_display):
                case(pathlib.Path(sys.argv[1]).resolve())
    except Failure as failure:
        sys.exit(f"FAILED: {failure}")
    print("ok: the play list outlives the display")
