#!/usr/bin/env python3
"""All that a user can do, in one story: by touch alone, or by keys alone. What the player does is asked for over a message
bus, as its neighbours on a device would; where a picture counts it is looked at; what sounds is heard.

whole_player.py PROGRAM CONTROL TREE touch|keys     TREE: the files that a device ships
                                                    exit status 0, or 1 with a line that says what did not happen
"""

import pathlib
import subprocess
import sys

from bus import Bus
from ear import Failure, wait_for
from player_hands import Keys, Touch
from player_watcher import Watcher
from stage import Stage, Window, make_tones

SONG_S = 20
SONGS = {"a": 440, "b": 550, "c": 660, "d": 770, "e": 880, "f": 990}  # Hz
SETTINGS_PROGRAM = '#!/bin/sh\necho "$@" >"${0%/*}/settings.txt"\n'
BAR_PIXEL_MS = SONG_S * 1000 // 286
FRAME_MS = 27


class Story:
    def __init__(self, stage, programs, tree, hands):
        self.stage, self.hands_of = stage, hands
        self.program, self.control = programs
        self.tree = tree
        self.device, self.card = stage.root / "device", stage.root / "card"
        self.ear = stage.listen()

    def begin(self):
        self.player = self.stage.start_player(self.program)
        window = Window(self.stage, self.player)
        self.hands = self.hands_of(window)
        self.watcher = Watcher(window, self.control, self.device, self.tree)
        self.watcher.expect("a player that has just begun", state="stopped", number=0)

    def expect_end(self, what):
        try:
            status = self.player.wait(10)
        except subprocess.TimeoutExpired:
            raise Failure(f"{what}: the player has not ended") from None
        if status != 0:
            raise Failure(f"{what}: the player ended with status {status}")
        print(f"ok: {what}", flush=True)


def an_empty_list_takes_the_whole_card(story):
    story.watcher.remember_main_window()
    story.hands.do("open_list")
    story.watcher.expect("the songs of the card are in the list", count=len(SONGS))
    story.watcher.await_window("play list")


def a_song_is_found_on_the_second_page_and_plays(story):
    hands, watcher = story.hands, story.watcher
    pages = [watcher.title()]
    hands.do("page_down")
    watcher.await_picture("the second page", lambda: watcher.title() not in pages)
    hands.do("page_up")
    watcher.await_picture("the first page again", lambda: watcher.title() == pages[0])
    hands.do("page_down")
    watcher.await_picture("the second page again", lambda: watcher.title() != pages[0])
    hands.row(2)
    watcher.await_picture("the picked row", lambda: watcher.selected_rows() == [2])
    hands.do("play_row")
    watcher.expect("the picked song plays", state="playing", number=6, song="06.f")
    watcher.await_window("main")
    story.ear.expect_tone("it is the picked song", SONGS["f"])


def songs_leave_the_list(story):
    hands, watcher = story.hands, story.watcher
    hands.do("open_list")
    watcher.await_window("play list")
    watcher.await_picture("the row of the current song on its page", lambda: watcher.selected_rows() == [2])
    hands.do("drop")
    watcher.expect("the song that played is off the list", state="stopped", number=0, count=5)
    hands.do("clear")
    watcher.expect("no song is left", state="stopped", count=0)


def songs_of_the_card_are_chosen(story):
    hands, watcher = story.hands, story.watcher
    hands.do("open_library")
    watcher.await_window("library")
    watcher.await_picture("empty boxes", lambda: watcher.ticked_rows() == [])
    hands.row(2)
    watcher.await_picture("one ticked box", lambda: watcher.ticked_rows() == [2])
    hands.do("check_all")
    watcher.await_picture("all boxes ticked", lambda: watcher.ticked_rows() == [1, 2, 3, 4])
    hands.do("check_all")
    watcher.await_picture("all boxes empty again", lambda: watcher.ticked_rows() == [])
    hands.row(1)
    hands.row(3)
    watcher.await_picture("two ticked boxes", lambda: watcher.ticked_rows() == [1, 3])
    hands.do("done")
    watcher.await_window("play list")
    watcher.expect("the two are in the list", count=2)
    hands.do("add_all")
    watcher.expect("the others come behind them", count=len(SONGS))
    hands.do("back")
    watcher.await_window("main")


def the_song_plays_and_pauses(story):
    hands, watcher, ear = story.hands, story.watcher, story.ear
    watcher.await_face("play_but_normal", "play")
    watcher.await_face("stop_but_disable", "stop")
    hands.do("play_or_pause")
    watcher.expect("the first song plays", state="playing", number=1, song="01.a")
    watcher.await_face("pause_but_normal", "play")
    ear.expect_tone("its sound", SONGS["a"])
    hands.do("play_or_pause")
    watcher.expect("the song is paused", state="paused", number=1)
    watcher.await_face("play_but_normal", "play")
    ear.expect_silence("a paused song")
    hands.do("play_or_pause")
    watcher.expect("the song goes on", state="playing", number=1)
    hands.do("next")
    watcher.expect("the next song", state="playing", number=2, song="02.c")
    ear.expect_tone("its sound", SONGS["c"])
    hands.do("previous")
    watcher.expect("the song before", state="playing", number=1)


def expect_place(story, what, ms, tolerance_ms):
    def is_there():
        return abs(story.watcher.status()["position_ms"] - ms) <= tolerance_ms

    story.watcher.await_report(f"{what}: {ms} ms", is_there)


def the_place_in_the_song_is_chosen(story):
    story.hands.do("play_or_pause")
    report = story.watcher.expect("the song is paused", state="paused")
    if story.hands_of is Touch:
        for part in (0.75, 0.25):
            story.hands.seek(part)
            expect_place(story, "a tap on the bar", round(report["length_ms"] * part), BAR_PIXEL_MS + FRAME_MS)
    else:
        at = report["position_ms"]
        for key, ms in (("forward_5", at + 5000), ("forward_5", at + 10000), ("back_5", at + 5000)):
            story.hands.do(key)
            expect_place(story, "a step of five seconds", ms, 3 * FRAME_MS)


def the_modes_are_switched(story):
    hands, watcher = story.hands, story.watcher
    for is_on, face in ((True, "shuffle_but_on"), (False, "shuffle_but_normal")):
        hands.do("shuffle")
        watcher.expect(f"shuffle: {is_on}", shuffle=is_on, repeat="off")
        watcher.await_face(face, "shuffle")
    for mode, face in (("all", "repeat_but_on"), ("single", "repeat_single_but_on"), ("off", "repeat_but_normal")):
        hands.do("repeat")
        watcher.expect(f"repeat: {mode}", repeat=mode, shuffle=False)
        watcher.await_face(face, "repeat")


def the_song_is_stopped(story):
    story.hands.do("play_or_pause")
    story.watcher.expect("the song goes on", state="playing", number=1)
    story.hands.do("stop")
    story.watcher.expect("the player is stopped", state="stopped", number=0, count=len(SONGS))
    story.watcher.await_face("stop_but_disable", "stop")
    story.ear.expect_silence("a stopped player")


def the_audio_settings_are_opened(story):
    told = story.device / "Windows/settings.txt"
    story.hands.do("audio_settings")
    wait_for("the device's program starts", lambda: told.exists() and told.read_text() == "-s\n")
    print("ok: the audio settings of the device open", flush=True)


def another_program_sounds(story):
    story.hands.do("play_or_pause")
    story.watcher.expect("the song plays", state="playing", number=1)
    story.watcher.tell("audio-state", "2")
    at = story.watcher.expect("the song waits for the other sound", state="paused", number=1)["position_ms"]
    story.ear.expect_silence("a song that waits")
    story.watcher.tell("audio-state", "1")
    back_at = story.watcher.expect("the song goes on by itself", state="playing", number=1)["position_ms"]
    if not at <= back_at < at + 3000:
        raise Failure(f"the song waited at {at} ms and goes on at {back_at} ms")
    story.ear.expect_tone("the song sounds again", SONGS["a"])


def the_card_is_pulled(story):
    story.card.rename(story.card.with_name("pulled"))
    story.watcher.await_window("alert")
    story.hands.do("ok")
    story.expect_end("the alert is answered, and the player ends")


def the_player_is_ended(story):
    story.card.with_name("pulled").rename(story.card)
    story.begin()
    story.watcher.expect("the list is the one of last time", count=len(SONGS))
    story.hands.do("play_or_pause")
    story.watcher.expect("it plays", state="playing", number=1, song="01.a")
    story.hands.do("exit")
    story.expect_end("the player ends")
    saved = (story.device / "Windows/play_list.txt").read_bytes().split(b"\r\n")  # between lines of two-byte letters
    names = [line.decode("utf-16-le").split("$")[1] for line in saved if line]
    if names != [f"{name}.mp3" for name in "acbdef"]:
        raise Failure(f"the saved list holds {names}")


CHAPTERS = (an_empty_list_takes_the_whole_card, a_song_is_found_on_the_second_page_and_plays, songs_leave_the_list,
            songs_of_the_card_are_chosen, the_song_plays_and_pauses, the_place_in_the_song_is_chosen, the_modes_are_switched,
            the_song_is_stopped, the_audio_settings_are_opened, another_program_sounds, the_card_is_pulled,
            the_player_is_ended)


def prepare(stage, bus):
    stage.environment["DBUS_SESSION_BUS_ADDRESS"] = bus.address
    for name, pitch in SONGS.items():
        make_tones(stage.root / "card" / f"{name}.mp3", [(pitch, SONG_S)])
    windows = stage.root / "device/Windows"
    windows.mkdir()
    settings = windows / "TAVO_SET_AUDIO"
    settings.write_text(SETTINGS_PROGRAM)
    settings.chmod(0o755)


def main():
    *programs, tree = (pathlib.Path(argument).resolve() for argument in sys.argv[1:4])
    hands = {"touch": Touch, "keys": Keys}[sys.argv[4]]
    bus = Bus()
    try:
        with Stage() as stage:
            prepare(stage, bus)
            story = Story(stage, programs, tree, hands)
            story.begin()
            for chapter in CHAPTERS:
                try:
                    chapter(story)
                except Failure as failure:
                    raise Failure(f"{chapter.__name__}: {failure}") from None
    finally:
        bus.end()


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"FAILED: {failure}")
    print(f"ok: the whole player, by {sys.argv[4]}")
