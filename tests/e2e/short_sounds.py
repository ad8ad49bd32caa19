#!/usr/bin/env python3
"""Plays short sounds through a real sound server, alone and beside a song, and stops the server in its tracks meanwhile.

short_sounds.py PLAY_SOUND PLAYER     exit status 0, or 1 with a line that says what did not happen
"""

import array
import math
import pathlib
import signal
import subprocess
import sys
import time
import wave

from ear import Failure, wait_for
from stage import RATE, Stage, Window, make_tones

CALL_MS = 50  # a call that waited for the server would take thousands
END_MS = 200


def make_sound(path, pitch, seconds):
    samples = array.array("h", (round(8000 * math.sin(2 * math.pi * pitch * i / RATE)) for i in range(RATE * seconds)))
    with wave.open(str(path), "wb") as file:
        file.setnchannels(1)
        file.setsampwidth(2)
        file.setframerate(RATE)
        file.writeframes(samples.tobytes())


class Sounds:
    """The program that plays sounds, and how long its calls took."""

    def __init__(self, stage, program):
        self.process = stage.start([program, stage.root / "device"], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True,
                                   extra={"ASAN_OPTIONS": "detect_leaks=0"})  # a thread may still wait for the server

    def ask(self, command, limit_ms=CALL_MS, succeeds=True):
        self.process.stdin.write(command + "\n")
        self.process.stdin.flush()
        answer = self.process.stdout.readline().split()
        if len(answer) != 3:
            raise Failure(f"{command}: the program ended")
        if bool(int(answer[1])) != succeeds:
            raise Failure(f"{command}: answered {answer[1]}")
        if float(answer[2]) > limit_ms:
            raise Failure(f"{command}: took {answer[2]} ms")
        print(f"ok: {command}: {answer[2]} ms", flush=True)

    def expect_end(self):
        wait_for("the program ends", lambda: self.process.poll() is not None, 2)
        if self.process.returncode != 0:
            raise Failure(f"the program ended with status {self.process.returncode}")


def expect_role(stage, role):
    """Of every stream: by it a sound server tells music, which gives way to a call, from a short sound, which does not."""
    streams = subprocess.run(["pactl", "list", "sink-inputs"], env=stage.environment, capture_output=True, text=True,
                             check=True).stdout
    roles = [line.split('"')[1] for line in streams.splitlines() if "media.role = " in line]
    if roles != [role]:
        raise Failure(f"the streams' roles are {roles}, not {role}")


def plays_alone(stage, ear, program):
    sounds = Sounds(stage, program)
    ear.expect_silence("before a sound")
    sounds.ask("play long.wav")
    ear.expect_tone("a sound", 500)
    expect_role(stage, "event")
    sounds.ask("play HIGH.WAV")
    ear.expect_tone("another sound in its place", 900)
    sounds.ask("play none.wav", succeeds=False)
    ear.expect_silence("a file that is not there")
    sounds.ask("play short.wav")
    ear.expect_tone("a sound of a second", 700)
    ear.expect_silence("it ends by itself")
    sounds.ask("play long.wav")
    ear.expect_tone("a sound again", 500)
    sounds.ask("stop")
    ear.expect_silence("a sound that is stopped")
    sounds.ask("end", END_MS)
    sounds.expect_end()


def outlives_a_server_that_hangs(stage, ear, program):
    sounds = Sounds(stage, program)
    sounds.ask("play long.wav")
    ear.expect_tone("a sound before the server hangs", 500)
    stage.sound_server.send_signal(signal.SIGSTOP)
    for command in ("play high.wav", "stop", "play long.wav", "play high.wav"):
        sounds.ask(command)
    sounds.ask("end", END_MS, succeeds=False)
    sounds.expect_end()
    stage.sound_server.send_signal(signal.SIGCONT)


def plays_what_was_asked_last(stage, ear, program):
    sounds = Sounds(stage, program)
    sounds.ask("play short.wav")
    ear.expect_tone("a sound before the server hangs", 700)
    stage.sound_server.send_signal(signal.SIGSTOP)
    sounds.ask("play long.wav")
    sounds.ask("play high.wav")
    time.sleep(1)
    stage.sound_server.send_signal(signal.SIGCONT)
    ear.expect_tone("the last of them, when the server goes on", 900)
    sounds.ask("stop")
    ear.expect_silence("and it is stopped")
    sounds.ask("end", END_MS)
    sounds.expect_end()


def mixes_with_a_song(stage, ear, program, player_program):
    make_tones(stage.root / "card/song.mp3", [(440, 30)])
    player = stage.start_player(player_program)
    window = Window(stage, player)
    window.press("Return")
    ear.expect_tone("the song", 440)
    alone_db = list(ear.heard)[-1][1]
    sounds = Sounds(stage, program)
    sounds.ask("play long.wav")
    # Two tones that are equally loud are 3 dB louder than one.
    wait_for("the sound beside the song", lambda: all(level > alone_db + 2 for _, level in list(ear.heard)[-5:]))
    print(f"ok: {alone_db:.1f} dB alone, {list(ear.heard)[-1][1]:.1f} dB with the sound", flush=True)
    sounds.ask("stop")
    ear.expect_tone("the song goes on alone", 440)
    sounds.ask("end", END_MS)
    window.press("Escape")
    wait_for("Escape ends the player", lambda: player.poll() is not None)


def main():
    program, player = (pathlib.Path(name).resolve() for name in sys.argv[1:3])
    with Stage() as stage:
        windows = stage.root / "device/Windows"
        windows.mkdir()
        make_sound(windows / "long.wav", 500, 60)
        make_sound(windows / "high.wav", 900, 60)
        make_sound(windows / "short.wav", 700, 1)
        ear = stage.listen()
        try:
            plays_alone(stage, ear, program)
            plays_what_was_asked_last(stage, ear, program)
            mixes_with_a_song(stage, ear, program, player)
            outlives_a_server_that_hangs(stage, ear, program)
        finally:
            stage.sound_server.send_signal(signal.SIGCONT)


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"FAILED: {failure}")
    print("ok: short sounds are heard, and nothing waits for their server")
