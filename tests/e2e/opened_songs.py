#!/usr/bin/env python3
"""Songs that the command line names play at once and leave the user's own list alone; one player is left each time.

opened_songs.py PROGRAM CONTROL SONG     exit status 0, or 1 with a line that says what did not happen
"""

import pathlib
import shutil
import sys
import time

from PIL import Image

from ear import Failure, wait_for
from other_programs import PATIENCE_S, SONG_REPEATS, Stage, end, expect, expect_end

OPENED = "device/.cardsong-opened/Device"
STARTS = 20
TOP = (0, 0, 320, 40)  # nothing but the background
LIST = "device/Windows/play_list.txt"


def make_music(stage, song):
    for name in ("z.mp3", "b c.wma.mp3", "album/two.mp3", "album/one.mp3"):
        path = stage.root / "music" / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(song * SONG_REPEATS)


def await_song(stage, song, count):
    def plays():
        status = stage.status(OPENED)
        return status is not None and (status["state"], status["song"], status["count"]) == ("playing", song, count)
    wait_for(f"{song} plays, of {count}", plays)


def await_state(stage, state):
    wait_for(f"the songs are {state}", lambda: (stage.status(OPENED) or {}).get("state") == state)


def users_list(stage):
    return (stage.root / LIST).read_bytes()


def songs_play_in_the_order_given(stage):
    player = stage.start(stage.root / "music/z.mp3", stage.root / "music/b c.wma.mp3")
    await_song(stage, "01.z", 2)
    stage.do("next", device=OPENED)
    await_song(stage, "02.b c.wma", 2)
    return player


def what_is_opened_next_takes_its_place(stage, before):
    player = stage.start(stage.root / "music/album")
    expect_end(before)
    await_song(stage, "01.one", 2)
    return player


def a_start_without_songs_has_the_users_own_list(stage, before):
    player = stage.start("--keys", "Enter wait:200 Right")
    expect_end(before)
    stage.await_status("the user's own list plays", state="playing", song="02.b", count=3)
    return player


def songs_take_the_place_of_the_users_own_list(stage, before):
    player = stage.start(stage.root / "music/z.mp3")
    expect_end(before)
    saved = users_list(stage)
    await_song(stage, "01.z", 1)
    end(player)
    expect("the user's own list", users_list(stage), saved)


def a_song_that_is_not_there_leaves_the_player_alone(stage):
    player = stage.start("--keys", "Enter")
    stage.await_status("the player plays", state="playing")
    wrong = stage.start("none.mp3")
    _, errors = wrong.communicate(timeout=PATIENCE_S)
    expect("the answer", (wrong.returncode, errors), (1, "cardsong: none.mp3: No such file or directory\n"))
    stage.await_status("the player goes on", state="playing")
    end(player)


def a_song_whose_file_goes_leaves_the_list(stage):
    player = stage.start(stage.root / "music/z.mp3", stage.root / "music/album/one.mp3")
    await_song(stage, "01.z", 2)
    (stage.root / "music/album/one.mp3").unlink()
    stage.do("next", device=OPENED)
    wait_for("one song is left", lambda: stage.status(OPENED)["count"] == 1)
    end(player)


def a_notice_in_front_does_not_keep_a_player(stage):
    """One that waits for its user has no window that could be told to exit."""
    noticing = stage.start("--card", "nowhere")
    wait_for("the player holds its device", lambda: "does not answer" in stage.ask("status")[2])
    player = stage.start(stage.root / "music/z.mp3")
    noticing.communicate(timeout=PATIENCE_S)
    expect("the end of the one without a card", noticing.returncode, 0)
    await_song(stage, "01.z", 1)
    end(player)


def of_two_that_start_at_once_the_later_stays(stage):
    first = stage.start(stage.root / "music/z.mp3")
    time.sleep(0.02)
    second = stage.start(stage.root / "music/album/two.mp3")
    expect_end(first)
    await_song(stage, "01.two", 1)
    end(second)


def of_many_that_start_at_once_one_stays(stage):
    """Every third start names no song. One of these that finds another of its kind calls it to the front, and ends, too."""
    players = [stage.start(*([stage.root / "music/z.mp3"] if number % 3 else [])) for number in range(STARTS)]
    wait_for("one is left", lambda: sum(player.poll() is None for player in players) == 1, PATIENCE_S * 2)
    stage.await_player()
    last = next(player for player in players if player.poll() is None)
    for player in players:
        end(player) if player is last else expect_end(player)
    left = sorted(path.name for path in (stage.root / "device").glob(".cardsong-opened*"))
    expect("what is left of the songs", left, [".cardsong-opened"])


def commands_find_the_songs_that_play(stage):
    player = stage.start(stage.root / "music/z.mp3")
    await_song(stage, "01.z", 1)
    stage.await_status("the player of the device plays them", state="playing", song="01.z")
    stage.do("pause")
    await_state(stage, "paused")
    stage.do("registry", "set", "Key", "Name", "the user's")
    expect("the registry of the user's device", stage.ask("registry", "get", "Key", "Name")[1], "the user's\n")
    expect("that of the songs", stage.ask("registry", "get", "Key", "Name", device=OPENED)[0], 1)
    end(player)
    expect("status without a player", stage.ask("status"), (1, "", f"cardsongctl: no player runs for {stage.root}/device\n"))


def songs_look_like_the_users_own(stage):
    """A picture of the user's is the player's background, and a save leaves all that is the user's as it is."""
    windows = stage.root / "device/Windows"
    windows.mkdir(parents=True, exist_ok=True)
    shutil.copy(stage.program.parent / "device/tree/Windows/gui_full_bg2.gif", windows / "gui_musicplayer_background.gif")

    def top_of_picture(*options):
        shot = stage.root / "shot.png"
        expect_end(stage.start(*options, "--screenshot", shot, "--run-for", "2"))
        with Image.open(shot) as picture:
            return picture.convert("RGB").crop(TOP).tobytes()
    own = top_of_picture()
    before = {path.name: path.read_bytes() for path in windows.iterdir()}
    expect("songs wear the user's background", top_of_picture(stage.root / "music/z.mp3") == own, True)
    expect("the user's files are as they were", {path.name: path.read_bytes() for path in windows.iterdir()} == before, True)
    (windows / "gui_musicplayer_background.gif").unlink()
    expect("songs without it do", top_of_picture(stage.root / "music/z.mp3") == own, False)


def main():
    program, control = (pathlib.Path(argument).resolve() for argument in sys.argv[1:3])
    song = pathlib.Path(sys.argv[3]).read_bytes()
    with Stage(program, control, song) as stage:
        make_music(stage, song)
        player = songs_play_in_the_order_given(stage)
        player = what_is_opened_next_takes_its_place(stage, player)
        player = a_start_without_songs_has_the_users_own_list(stage, player)
        songs_take_the_place_of_the_users_own_list(stage, player)
        a_song_that_is_not_there_leaves_the_player_alone(stage)
        a_song_whose_file_goes_leaves_the_list(stage)
        a_notice_in_front_does_not_keep_a_player(stage)
        of_two_that_start_at_once_the_later_stays(stage)
        of_many_that_start_at_once_one_stays(stage)
        commands_find_the_songs_that_play(stage)
        songs_look_like_the_users_own(stage)


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"FAILED: {failure}")
    print("ok: opened songs play, and the user's own list is as it was")
