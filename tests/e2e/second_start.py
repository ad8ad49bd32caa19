#!/usr/bin/env python3
"""Starts the player a second time while another program's window lies over the first: the first comes to the front.

second_start.py PROGRAM     exit status 0, or 1 with a line that says what did not happen
"""

import pathlib
import subprocess
import sys
import time

from ear import Failure, wait_for
from stage import Stage, Window

PATIENCE_S = 30


def cover(stage, program):
    """A player of another device, in another skin: it stands for any program with a window in the same place."""
    stage.start([program, "--device", stage.root / "other", "--card", stage.root / "card", "--scale", "1", "--language", "en",
                 "--skin", "amber", "--audio-sink", "null"])


def settled_picture(window):
    def picture():
        before = window.look()
        time.sleep(0.5)  # longer than any part of a start takes to be shown
        return before.tobytes() == window.look().tobytes() and before.getcolors(2) is None and before

    return wait_for("the player's picture stands still", picture, PATIENCE_S)


def main():
    program = pathlib.Path(sys.argv[1]).resolve()
    with Stage() as stage:
        stage.start_bus()
        window = Window(stage, stage.start_player(program, "--audio-sink", "null"))
        own = settled_picture(window).tobytes()
        cover(stage, program)
        wait_for("the other window covers the player", lambda: window.look().tobytes() != own, PATIENCE_S)
        covered = settled_picture(window).tobytes()
        if covered == own:
            raise Failure("nothing covers the player")
        second = stage.start_player(program, "--audio-sink", "null", stderr=subprocess.PIPE, text=True)
        _, complaints = second.communicate(timeout=PATIENCE_S)
        if (second.returncode, complaints) != (0, ""):
            raise Failure(f"the second start ended with {second.returncode}: {complaints}")
        wait_for("the player lies before the other window", lambda: window.look().tobytes() == own)
    print("ok: the player came to the front")


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"FAILED: {failure}")
