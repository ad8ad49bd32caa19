#!/usr/bin/env python3
"""Stops the sound server in its tracks (SIGSTOP) and uses the player all the same: it answers, ends in time, and saves its
list; a server that goes on takes up the song again.

hung_server.py PROGRAM     exit status 0, or 1 with a line that says what did not happen
"""

import pathlib
import signal
import sys
import time

from PIL import ImageChops

from ear import Failure, wait_for
from stage import Stage, Window, make_tones

SONGS = ["one.mp3", "two.mp3"]
PLAY_BUTTON = (113, 159, 160, 208)
ANSWER_S = 0.7  # from a key to its picture, with the time that a look at the screen takes
END_S = 1.0
PLAY_FACE, PAUSE_FACE = "play", "pause"


class Scene:
    """A player on a stage whose sound server may hang."""

    def __init__(self, stage, program, hangs=False):
        self.stage = stage
        for song, pitch in zip(SONGS, (440, 660)):
            make_tones(stage.root / "card" / song, [(pitch, 20)])
        self.ear = stage.listen()
        if hangs:
            self.hang()
        # What a thread leaves that waits for the server when the program ends is no leak.
        stage.environment["ASAN_OPTIONS"] = "detect_leaks=0"
        self.player = stage.start_player(program)
        self.window = Window(stage, self.player)
        wait_for("the first picture", lambda: max(high for _, high in self.window.look().getextrema()) > 100)
        self.at_rest = self.window.look()

    def hang(self):
        self.stage.sound_server.send_signal(signal.SIGSTOP)

    def go_on(self):
        self.stage.sound_server.send_signal(signal.SIGCONT)

    def face(self):
        difference = ImageChops.difference(self.at_rest.crop(PLAY_BUTTON), self.window.look().crop(PLAY_BUTTON))
        return PAUSE_FACE if sum(difference.convert("L").histogram()[16:]) >= 20 else PLAY_FACE

    def expect_answer(self, what, key, face):
        self.window.press(key)
        wait_for(what, lambda: self.face() == face, ANSWER_S)
        print(f"ok: {what}", flush=True)

    def expect_end(self, what, ask):
        start = time.monotonic()
        ask()
        wait_for(f"{what} ends the player", lambda: self.player.poll() is not None, END_S)
        took = time.monotonic() - start
        if self.player.returncode != 0:
            raise Failure(f"{what}: the player ended with status {self.player.returncode}")
        play_list = self.stage.root / "device/Windows/play_list.txt"
        saved = play_list.read_bytes().decode("utf-16-le", "replace") if play_list.exists() else ""
        if not all(song in saved for song in SONGS):
            raise Failure(f"{what}: the play list was not saved: {saved!r}")
        print(f"ok: {what} ends the player in {took:.2f} s with its list saved", flush=True)


def hangs_while_a_song_plays(scene):
    scene.window.press("Return")
    scene.ear.expect_tone("the player plays", 440)
    scene.hang()
    scene.expect_answer("pause is shown at once", "Return", PLAY_FACE)
    scene.expect_answer("play is shown at once", "Return", PAUSE_FACE)
    scene.window.press("Right")
    scene.expect_answer("pause after a step is shown at once", "Return", PLAY_FACE)
    scene.expect_end("the exit key", lambda: scene.window.press("Escape"))


def hangs_before_a_song_plays(scene):
    scene.expect_answer("play is shown at once", "Return", PAUSE_FACE)
    scene.expect_end("a signal", lambda: scene.player.send_signal(signal.SIGTERM))


def hangs_for_a_while(scene):
    scene.window.press("Return")
    scene.ear.expect_tone("the player plays", 440)
    scene.hang()
    scene.expect_answer("pause is shown at once", "Return", PLAY_FACE)
    time.sleep(1)
    scene.go_on()
    scene.ear.expect_silence("pause reaches the server late")
    scene.expect_answer("play is shown at once", "Return", PAUSE_FACE)
    scene.ear.expect_tone("the song goes on", 440)
    scene.expect_end("the exit key", lambda: scene.window.press("Escape"))


def main():
    program = pathlib.Path(sys.argv[1]).resolve()
    for case, hangs_at_first in ((hangs_while_a_song_plays, False), (hangs_before_a_song_plays, True),
                                 (hangs_for_a_while, False)):
        with Stage() as stage:
            try:
                case(Scene(stage, program, hangs_at_first))
            except Failure as failure:
                raise Failure(f"{case.__name__}: {failure}") from None
            finally:
                stage.sound_server.send_signal(signal.SIGCONT)


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"FAILED: {failure}")
    print("ok: a sound server that hangs holds up nothing")
