#!/usr/bin/env python3
"""What a shell does to the player: it takes away who reads the log, closes streams, keeps signals from the program. The
player plays on, and its list is saved.

under_a_shell.py PROGRAM CONTROL SONG     exit status 0, or 1 with a line that says what did not happen
"""

import os
import pathlib
import signal
import subprocess
import sys

from ear import Failure
from other_programs import PATIENCE_S, Stage, end, expect

CLOSED = ((2,), (1, 2), (0, 1, 2))


def start(stage, *options, before=None, environment=None, **streams):
    """The program as a shell starts it; `before` runs in its process just before it."""
    process = subprocess.Popen(
        [stage.program, "--headless", "--audio-sink=null", "--fill", "--play", "--device", stage.root / "device", "--card",
         stage.root / "card", *options], env=environment or stage.environment(), preexec_fn=before, **streams)
    stage.processes.append(process)
    return process


def close(*streams):
    def before():
        for stream in streams:
            os.close(stream)
    return before


def ignore(*signals):
    def before():
        for number in signals:
            signal.signal(number, signal.SIG_IGN)
    return before


def without_bus(stage):
    """Its library would ignore the signal of a broken pipe for us."""
    environment = stage.environment()
    del environment["DBUS_SESSION_BUS_ADDRESS"]
    return environment


def expect_saved(stage, process):
    expect("the end of the player", process.wait(PATIENCE_S), 0)
    saved = (stage.root / "device/Windows/play_list.txt").read_bytes().decode("utf-16-le", "replace")
    expect("the songs of the saved list", saved.count(".mp3"), 3)


def who_reads_the_log_goes_first(stage):
    player = start(stage, "--verbose", "--keys", "wait:4000 Exit", environment=without_bus(stage),
                   stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    while b"01.a" not in (line := player.stdout.readline()):
        if not line:
            raise Failure("the log ends before the first song")
    player.stdout.close()  # and the song goes on to tell its time
    expect_saved(stage, player)


def no_file_takes_the_place_of_a_closed_stream(stage):
    for streams in CLOSED:
        player = start(stage, "--verbose", "--keys", "wait:300 Right wait:300 Exit", environment=without_bus(stage),
                       before=close(*streams))
        expect_saved(stage, player)
        for lock in (stage.root / "device").glob("*.lock"):
            expect(f"the bytes of {lock.name} without {streams}", lock.read_bytes(), b"")


def the_doctor_finds_the_same_without_streams(stage):
    def lines(before):
        doctor = start(stage, "--doctor", before=before, stdout=subprocess.PIPE, stdin=subprocess.DEVNULL)
        return doctor.communicate(timeout=PATIENCE_S)[0], doctor.returncode
    expect("the doctor without input and errors", lines(close(0, 2)), lines(None))


def signals_that_are_kept_from_the_player_do_not_end_it(stage):
    player = start(stage, before=ignore(signal.SIGHUP, signal.SIGINT), stdout=subprocess.DEVNULL,
                   stderr=subprocess.PIPE, text=True)
    stage.await_status("the player plays", state="playing", number=1)
    for number in (signal.SIGHUP, signal.SIGINT):
        player.send_signal(number)
    stage.do("next")
    stage.await_status("the player plays on", state="playing", number=2)
    end(player)
    expect_saved(stage, player)


def main():
    program, control = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
    song = pathlib.Path(sys.argv[3]).read_bytes()
    for case in (who_reads_the_log_goes_first, no_file_takes_the_place_of_a_closed_stream,
                 the_doctor_finds_the_same_without_streams, signals_that_are_kept_from_the_player_do_not_end_it):
        with Stage(program, control, song) as stage:
            try:
                case(stage)
            except Failure as failure:
                raise Failure(f"{case.__name__}: {failure}") from None


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"FAILED: {failure}")
    print("ok: a shell does the player no harm")
