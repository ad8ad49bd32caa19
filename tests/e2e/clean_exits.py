#!/usr/bin/env python3
"""Starts, plays and ends the player again and again on a machine that is too slow for it; every end must be clean.

clean_exits.py PROGRAM [COUNT]     exit status 0, or 1 with the ends that were not clean
"""

import os
import pathlib
import subprocess
import sys

from ear import Failure
from stage import Stage, make_tones

COUNT = 20
BUSY_LOOPS = 2
PATIENCE_S = 60


def slow_down(stage):
    """One processor for all, and somebody else on it."""
    os.sched_setaffinity(0, {min(os.sched_getaffinity(0))})
    for _ in range(BUSY_LOOPS):
        stage.start([sys.executable, "-c", "while True: pass"])


def move_the_mouse(stage):
    """Without a rest, over the middle of the screen: the player's window has input to look at in the very moment of its end."""
    moves = [word for x in list(range(200, 400)) * 100 for word in ("mousemove", str(x), "240")]
    forever = "import subprocess, sys\nwhile True: subprocess.run(sys.argv[1:])"
    stage.start([sys.executable, "-c", forever, "xdotool", *moves], stderr=subprocess.DEVNULL)


def end_once(stage, program, number):
    """Returns what was not clean about it. The moment of the end differs from round to round."""
    script = f"Enter wait:{100 + 7 * number % 200} Exit"
    player = stage.start_player(program, "--keys", script, "--audio-sink", "null", stderr=subprocess.PIPE, text=True)
    _, complaints = player.communicate(timeout=PATIENCE_S)
    stage.processes.remove(player)
    return [f"{number}: status {player.returncode}: {complaints.strip()}"] if player.returncode or complaints else []


def main():
    program = pathlib.Path(sys.argv[1]).resolve()
    count = int(sys.argv[2]) if len(sys.argv) > 2 else COUNT
    with Stage() as stage:
        stage.start_bus()
        make_tones(stage.root / "card/tone.mp3", [(440, 30)])
        slow_down(stage)
        move_the_mouse(stage)
        faults = [fault for number in range(count) for fault in end_once(stage, program, number)]
    if faults:
        raise Failure(f"{len(faults)} of {count} ends were not clean:\n" + "\n".join(faults))
    print(f"ok: {count} clean ends")


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"FAILED: {failure}")
