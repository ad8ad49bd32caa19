#!/usr/bin/env python3
"""Songs that the command line names play at once and leave the user's own list alone; one player is left each time.

opened_songs.py PROGRAM CONTROL SONG     exit status 0, or 1 with a line that says what did not happen
"""

import pathlib
import sys

from ear import Failure, wait_for
from other_programs import PATIENCE_S, SONG_REPEATS, Stage, end, expect, expect_end

OPENED = "device/.cardsong-opened/Device"
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


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"FAILED: {failure}")
    print("ok: opened songs play, and the user's own list is as it was")
