#!/usr/bin/env python3
"""Ends the X server while the player plays: the player saves its list, says what happened and ends with its own status.

lost_display.py PROGRAM [COUNT]     exit status 0, or 1 with a line that says what did not happen
"""

import pathlib
import subprocess
import sys

from ear import Failure, wait_for
from stage import Stage, Window, make_tones

DISPLAY_LOST = 3
MESSAGE = "cardsong: the display went away; the play list is saved\n"
SONGS = ["one tone.mp3", "two tones.mp3"]


def lose_display(program):
    with Stage() as stage:
        stage.start_bus()
        for song in SONGS:
            make_tones(stage.root / "card" / song, [(440, 10)])
        ear = stage.listen()
        player = stage.start_player(program, stderr=subprocess.PIPE, text=True)
        Window(stage, player).press("Return")
        ear.expect_tone("the player plays", 440)
        play_list = stage.root / "device/Windows/play_list.txt"
        if play_list.exists():
            raise Failure("the play list is saved before the player ends: this test would see nothing")

        stage.display_server.kill()
        wait_for("the player ends after its display", lambda: player.poll() is not None)
        complaints = player.stderr.read()
        if player.returncode != DISPLAY_LOST or complaints != MESSAGE:
            raise Failure(f"the player ended with status {player.returncode} and said: {complaints}")
        saved = play_list.read_bytes().decode("utf-16", "replace") if play_list.exists() else ""
        if not all(song in saved for song in SONGS):
            raise Failure(f"the play list was not saved: {saved!r}")


if __name__ == "__main__":
    try:
        for _ in range(int(sys.argv[2]) if len(sys.argv) > 2 else 1):
            lose_display(pathlib.Path(sys.argv[1]).resolve())
    except Failure as failure:
        sys.exit(f"FAILED: {failure}")
    print("ok: the play list outlives the display")
