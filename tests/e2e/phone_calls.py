#!/usr/bin/env python3
"""Calls the user while a song plays, on a sound server that lets calls go before music. The song's pitch tells its place.

phone_calls.py PROGRAM     exit status 0, or 1 with a line that says what did not happen
"""

import pathlib
import subprocess
import sys
import time
import wave

from ear import RATE, Failure, StampedEar, wait_for
from pause_in_place import MARGIN, WINDOW, make_rising_tone, place_s
from stage import Stage, Window

CALL_S = 60
FACE_MIDDLE = (137, 184)  # in the triangle of the play face, between the bars of the pause face
STOP_BUTTON = (89, 183)
MOST_MS_TO_SILENCE = 200
MOST_MS_OFF = 200  # the server mutes before the player hears of it and pauses


class Scene:
    """A player with one song, before a server that knows about calls, or not."""

    def __init__(self, stage, program):
        self.stage = stage
        make_rising_tone(stage.root / "card/rising.mp3")
        with wave.open(str(stage.root / "call.wav"), "wb") as file:
            file.setnchannels(1)
            file.setsampwidth(2)
            file.setframerate(8000)
            file.writeframes(bytes(2 * 8000 * CALL_S))  # nobody says a word, so that what is heard is the song
        self.ear = StampedEar(stage.environment)
        stage.processes.append(self.ear.recorder)
        self.player = stage.start_player(program)
        self.window = Window(stage, self.player)
        self.expect_play_face("at the start")

    def shows_play_face(self):
        return min(self.window.look().getpixel(FACE_MIDDLE)) > 200

    def expect_play_face(self, what):
        wait_for(f"{what}: the play face", self.shows_play_face)

    def expect_pause_face(self, what):
        wait_for(f"{what}: the pause face", lambda: not self.shows_play_face())

    def play(self):
        self.window.press("Return")
        self.ear.expect_sound("the song plays")
        self.expect_pause_face("a song that plays")
        time.sleep(0.7)

    def call(self):
        return self.stage.start(["paplay", "--property=media.role=phone", self.stage.root / "call.wav"],
                                stderr=subprocess.DEVNULL)

    def expect_silence(self, what, seconds=0.5):
        wait_for(f"{what}: silence", lambda: self.ear.silent_for(seconds))

    def hang_up(self, call):
        call.terminate()
        call.wait()

    def place_of_end(self):
        begin = self.ear.sound_end - WINDOW - 2 * MARGIN
        return place_s(self.ear.samples, begin) + (self.ear.sound_end - begin - WINDOW / 2) / RATE

    def place_of_next_sound(self, what):
        searched = self.ear.expect_sound(what)
        time.sleep(0.3)
        samples = self.ear.samples
        begin = next(at for at in range(searched, len(samples)) if abs(samples[at]) > 300)
        return place_s(samples, begin + MARGIN) - (MARGIN + WINDOW / 2) / RATE

    def expect_still_silent(self, what):
        time.sleep(1.2)  # the server tells of the end of the call at once
        if not self.ear.silent_for(1.2):
            raise Failure(f"{what}: the song went on")
        self.expect_play_face(what)

    def leave(self):
        self.window.press("Escape")
        if self.player.wait(10) != 0:
            raise Failure(f"the player ended with status {self.player.returncode}")


def the_song_gives_way_and_goes_on_where_it_was(scene):
    scene.play()
    events = scene.stage.start(["pactl", "subscribe"], stdout=subprocess.PIPE, text=True)
    time.sleep(0.3)  # it says nothing when it is ready
    call = scene.call()
    next(line for line in events.stdout if "'new' on sink-input" in line)
    called = time.monotonic()
    events.kill()
    scene.expect_silence("a call")
    to_silence_ms = 1000 * (scene.ear.last_sound - called)
    scene.expect_play_face("a call")
    before = scene.place_of_end()
    time.sleep(1.5)  # the call takes its time
    scene.hang_up(call)
    off_ms = 1000 * (scene.place_of_next_sound("the call is over") - before)
    scene.expect_pause_face("the call is over")
    print(f"   silent after {to_silence_ms:.0f} ms, went on {off_ms:.0f} ms from where it was", flush=True)
    if to_silence_ms > MOST_MS_TO_SILENCE or abs(off_ms) > MOST_MS_OFF:
        raise Failure("that is too much")


def two_calls_in_a_row(scene):
    scene.play()
    for _ in range(2):
        call = scene.call()
        scene.expect_play_face("a call")
        scene.expect_silence("a call")
        scene.hang_up(call)
        scene.ear.expect_sound("the call is over")
        scene.expect_pause_face("the call is over")


def a_song_that_the_user_paused_stays_paused(scene):
    scene.play()
    scene.window.press("Return")
    scene.expect_play_face("paused")
    call = scene.call()
    scene.expect_silence("paused")
    scene.hang_up(call)
    scene.expect_still_silent("paused before the call")
    scene.play()


def a_song_paused_during_the_call_stays_paused(scene):
    scene.play()
    call = scene.call()
    scene.expect_play_face("a call")
    scene.window.press("Return")
    scene.expect_pause_face("played during the call")
    scene.window.press("Return")
    scene.expect_play_face("paused during the call")
    scene.expect_silence("paused during the call")
    scene.hang_up(call)
    scene.expect_still_silent("paused during the call")


def a_song_stopped_during_the_call_stays_stopped(scene):
    scene.play()
    call = scene.call()
    scene.expect_play_face("a call")
    scene.window.tap(*STOP_BUTTON)
    scene.expect_silence("stopped during the call")
    scene.hang_up(call)
    scene.expect_still_silent("stopped during the call")
    scene.window.press("Return")
    if (place := scene.place_of_next_sound("played after the call")) > 0.2:
        raise Failure(f"a stopped song went on at {place:.1f} s")


def a_song_started_during_the_call_is_silent_until_its_end(scene):
    """The server asks before it has told the song's stream by name, so that nobody hears the request; it mutes, too."""
    call = scene.call()
    wait_for("the call is there", lambda: b"phone" in subprocess.run(
        ["pactl", "list", "sink-inputs"], env=scene.stage.environment, capture_output=True, check=True).stdout)
    scene.window.press("Return")
    scene.expect_pause_face("started during the call")
    time.sleep(1)  # it would sound
    if scene.ear.last_sound != 0.0:
        raise Failure("the song sounds during the call")
    scene.hang_up(call)
    scene.ear.expect_sound("the call is over")


def a_server_that_dies_during_the_call_leaves_a_player_that_answers(scene):
    scene.play()
    scene.call()
    scene.expect_play_face("a call")
    scene.stage.sound_server.kill()
    scene.stage.sound_server.wait()
    scene.window.press("Return")  # the song's server is gone: it ends
    scene.expect_play_face("without a server")
    scene.window.press("Return")
    scene.expect_pause_face("played anew without a server")


def a_server_that_knows_of_no_roles_changes_nothing(scene):
    scene.play()
    call = scene.call()
    time.sleep(1)
    if scene.ear.silent_for(0.3):
        raise Failure("the song gave way")
    scene.expect_pause_face("an ordinary stream")
    scene.hang_up(call)


CASES = {the_song_gives_way_and_goes_on_where_it_was: True, two_calls_in_a_row: True,
         a_song_that_the_user_paused_stays_paused: True, a_song_paused_during_the_call_stays_paused: True,
         a_song_stopped_during_the_call_stays_stopped: True, a_song_started_during_the_call_is_silent_until_its_end: True,
         a_server_that_dies_during_the_call_leaves_a_player_that_answers: True,
         a_server_that_knows_of_no_roles_changes_nothing: False}


def main():
    program = pathlib.Path(sys.argv[1]).resolve()
    for case, lets_calls_go_first in CASES.items():
        with Stage() as stage:
            if lets_calls_go_first:
                subprocess.run(["pactl", "load-module", "module-role-cork"], env=stage.environment, check=True,
                               stdout=subprocess.DEVNULL)
            scene = Scene(stage, program)
            try:
                case(scene)
                scene.leave()
            except Failure as failure:
                raise Failure(f"{case.__name__}: {failure}") from None
        print(f"ok: {case.__name__.replace('_', ' ')}", flush=True)


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"FAILED: {failure}")
    print("ok: calls go before music")
