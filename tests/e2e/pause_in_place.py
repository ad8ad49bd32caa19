#!/usr/bin/env python3
"""Pauses a song whose pitch tells its place, records the loudspeaker, and holds each place where the sound goes on to the one
where it stopped.

pause_in_place.py PROGRAM [PAUSES]     exit status 0, or 1 with a line that says what did not happen
"""

import array
import math
import pathlib
import subprocess
import sys
import time
import wave

from ear import RATE, Failure, frequency_hz, level_db, wait_for
from stage import Stage, Window

LOWEST_HZ, HZ_PER_SECOND = 400, 100
SONG_S = 40
PLAYED_S, PAUSED_S = 0.5, 0.4
MOST_MS_OFF = 30
BLOCK = RATE // 500  # 2 ms
SILENT_DB = -50
WINDOW = RATE // 20  # 50 ms of a pitch
MARGIN = RATE // 100


def make_rising_tone(path):
    samples = array.array("h", (
        round(12000 * math.sin(2 * math.pi * (LOWEST_HZ + HZ_PER_SECOND / 2 * t) * t))
        for t in (i / RATE for i in range(RATE * SONG_S))))
    wav = path.with_suffix(".wav")
    with wave.open(str(wav), "wb") as file:
        file.setnchannels(1)
        file.setsampwidth(2)
        file.setframerate(RATE)
        file.writeframes(samples.tobytes())
    subprocess.run(["lame", "--quiet", "--cbr", "-b", "192", wav, path], check=True)
    wav.unlink()


def pieces(samples):
    """Stretches of sound between silences, in samples."""
    loud = [level_db(samples[at:at + BLOCK]) > SILENT_DB for at in range(0, len(samples) - BLOCK, BLOCK)]
    found, begin, quiet = [], None, 0
    for block, is_loud in enumerate(loud + [False] * 100):
        if is_loud:
            begin = block if begin is None else begin
            quiet = 0
        elif begin is not None:
            quiet += 1
            if quiet == 75:  # 150 ms
                found.append((begin * BLOCK, (block - quiet + 1) * BLOCK))
                begin = None
    return [(begin, end) for begin, end in found if end - begin > 2 * (WINDOW + MARGIN)]


def place_s(samples, begin):
    return (frequency_hz(samples[begin:begin + WINDOW]) - LOWEST_HZ) / HZ_PER_SECOND


def measure(samples):
    """Milliseconds that the sound left out (or repeated, below 0) at each pause."""
    sound = pieces(samples)
    expected = (2 * MARGIN + WINDOW) / RATE  # from the middle of the one window to that of the other
    return [1000 * (place_s(samples, begin + MARGIN) - place_s(samples, end - MARGIN - WINDOW) - expected)
            for (_, end), (begin, _) in zip(sound, sound[1:])]


def record(stage, program, pauses):
    make_rising_tone(stage.root / "card/rising.mp3")
    recording = stage.root / "recording"
    with recording.open("wb") as file:
        recorder = stage.start(["parec", "--device=@DEFAULT_MONITOR@", "--format=s16le", f"--rate={RATE}", "--channels=1",
                                "--latency-msec=20"], stdout=file, stderr=subprocess.DEVNULL)
        wait_for("the recorder hears the sound server", lambda: recording.stat().st_size > 0)
        player = stage.start_player(program)
        window = Window(stage, player)
        window.press("Return")
        for _ in range(pauses):
            time.sleep(PLAYED_S)  # what is measured takes its time
            window.press("Return")
            time.sleep(PAUSED_S)
            window.press("Return")
        time.sleep(PLAYED_S)
        window.press("Escape")
        wait_for("Escape ends the player", lambda: player.poll() is not None)
        time.sleep(0.5)
        recorder.terminate()
        recorder.wait()
    raw = recording.read_bytes()
    return array.array("h", raw[:len(raw) // 2 * 2])


def main():
    program = pathlib.Path(sys.argv[1]).resolve()
    pauses = int(sys.argv[2]) if len(sys.argv) > 2 else 12
    with Stage() as stage:
        off = measure(record(stage, program, pauses))
    print("ms off at each pause:", *(f"{ms:.0f}" for ms in off))
    if len(off) != pauses:
        raise Failure(f"{len(off)} pauses were heard, not {pauses}")
    if max(map(abs, off)) > MOST_MS_OFF:
        raise Failure(f"the song went on {max(off, key=abs):.0f} ms off its place")


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"FAILED: {failure}")
    print("ok: after every pause the song goes on where it was")
