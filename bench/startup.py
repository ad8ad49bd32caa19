#!/usr/bin/env python3
"""Measures the start and the cost of playing of the built player, in a window under Xvfb, with a PulseAudio null sink.

startup.py PROGRAM [--runs N] [--play SECONDS] [--wayland]

With --wayland the player is measured under cage instead, whose screen is a window of 1024 x 768; the player fills it.

First frame and first sound are counted from the moment before the process is made; the first sound is the moment when the
sink has taken the second buffer of a song, whose Enter waits while the program starts. All figures are warm.
"""

import argparse
import contextlib
import pathlib
import statistics
import subprocess
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "tests/e2e"))
from stage import Failure, Stage, Window, make_tones, wait_for  # noqa: E402
from wayland import SCREEN, Compositor  # noqa: E402

MILESTONES = ("display open", "first frame", "first sound")


class FullScreen:
    """What keys reach the player without a window of its own that an X server knows."""

    def __init__(self, stage, _player):
        self.stage = stage
        time.sleep(2)

    def press(self, key):
        self.stage.xdotool("mousemove", 5, 5, "key", key)


@contextlib.contextmanager
def desktop(stage, wayland):
    """How the player's keys are reached there."""
    if not wayland:
        yield Window
        return
    with stage.screen_of(SCREEN):
        stage.environment["WAYLAND_DISPLAY"] = str(Compositor(stage).socket)
        yield FullScreen


def trace_start(stage, program):
    """Milliseconds of each milestone of a start whose first key is already waiting."""
    player = stage.start_player(program, "--keys", "Enter", "--run-for", "1",
                                extra={"CARDSONG_TRACE_START": f"{time.time():.6f}"},
                                stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
    _, errors = player.communicate(timeout=30)
    reached = {}
    for line in errors.splitlines():
        name, _, milliseconds = line.rpartition(" ")
        if name in MILESTONES:
            reached[name] = float(milliseconds)
    missing = [name for name in MILESTONES if name not in reached]
    if missing:
        raise Failure(f"the player did not reach: {', '.join(missing)}")
    return reached


def processor_seconds(pid):
    """Of all threads, to the nanosecond: the ticks of /proc/PID/stat are too coarse for threads that run so briefly."""
    threads = pathlib.Path(f"/proc/{pid}/task").glob("*/schedstat")
    return sum(int(thread.read_text().split()[0]) for thread in threads) / 1e9


def peak_megabytes(pid):
    status = pathlib.Path(f"/proc/{pid}/status").read_text()
    return int(status.partition("VmHWM:")[2].split()[0]) / 1024


def processor_seconds_a_minute(pid, seconds):
    before, since = processor_seconds(pid), time.monotonic()
    time.sleep(seconds)
    return (processor_seconds(pid) - before) / (time.monotonic() - since) * 60


def measure_playing(stage, program, seconds, hands):
    """Processor seconds a minute of a window that nobody touches, playing and paused, and its peak of memory."""
    player = stage.start_player(program, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    window = hands(stage, player)
    window.press("Return")
    time.sleep(3)  # what the start costs is over
    playing = processor_seconds_a_minute(player.pid, seconds)
    peak = peak_megabytes(player.pid)
    window.press("Return")
    time.sleep(1)
    paused = processor_seconds_a_minute(player.pid, seconds)
    window.press("Escape")
    wait_for("the player ends", lambda: player.poll() is not None)
    return playing, paused, peak


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program", type=pathlib.Path)
    parser.add_argument("--runs", type=int, default=9)
    parser.add_argument("--play", type=float, default=30.0)
    parser.add_argument("--wayland", action="store_true")
    options = parser.parse_args()
    program = options.program.resolve()
    with Stage() as stage:
        make_tones(stage.root / "card" / "00 long tone.mp3", [(440, 1)] * (int(options.play) + 10))
        with desktop(stage, options.wayland) as hands:
            trace_start(stage, program)  # files come into the cache
            starts = [trace_start(stage, program) for _ in range(options.runs)]
            playing, paused, peak = measure_playing(stage, program, options.play, hands)
    print(f"{'':34}{'median':>8}{'best':>8}{'worst':>8}")
    for name in MILESTONES:
        times = [start[name] for start in starts]
        print(f"{name + ', ms':34}{statistics.median(times):8.0f}{min(times):8.0f}{max(times):8.0f}")
    print(f"{'peak memory playing MP3, MB':34}{peak:8.1f}")
    print(f"{'processor time a minute played, s':34}{playing:8.2f}")
    print(f"{'processor time a minute paused, s':34}{paused:8.2f}")


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"startup: {failure}")
