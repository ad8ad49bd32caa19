#!/usr/bin/env python3
"""Pulls the card out from under a song that sounds: unmounted, or renamed where nothing may be mounted. The sound ends at
once, the player says so, exits, keeps its list, and plays again when the card is back.

card_pulled.py PROGRAM     exit status 0, or 1 with a line that says what did not happen
"""

import os
import pathlib
import shutil
import subprocess
import sys
import time
import wave

from ear import RATE, Failure, StampedEar, wait_for
from stage import Stage, Window, make_tones

SONG_S = 30
SONGS = {"a.mp3": 440, "b.mp3": 660}
SAVED = b"".join(f"{number}${name}$\\SDMMC${SONG_S}".encode("utf-16-le") + b"\r\n"
                 for number, name in enumerate(SONGS, start=1))
OK_BUTTON = (230, 217)
LIST_PAPER = (20, 190)  # white in the list, dark in the main window
MOST_MS = 300


class MountedCard:
    """A file system of its own: songs that are open stay readable when it is taken off."""

    def __init__(self, folder, songs):
        self.folder, self.songs = folder, songs

    def put(self):
        self.folder.mkdir(exist_ok=True)
        subprocess.run(["mount", "-t", "tmpfs", "card", self.folder], check=True)
        for song in self.songs.iterdir():
            shutil.copy(song, self.folder)

    def pull(self):
        subprocess.run(["umount", "-l", self.folder], check=True)


class FolderCard:
    def __init__(self, folder, songs):
        self.folder, self.songs = folder, songs

    def put(self):
        shutil.copytree(self.songs, self.folder)

    def pull(self):
        self.folder.rename(self.folder.with_suffix(f".{time.monotonic_ns()}"))


def hush_notices(folder):
    """The notice has a sound of its own, which is not the song's."""
    with wave.open(str(folder / "TAVO_Audio_InfoMessage.wav"), "wb") as file:
        file.setnchannels(1)
        file.setsampwidth(2)
        file.setframerate(RATE)
        file.writeframes(bytes(RATE // 10))


def answer_notice(window, player):
    window.tap(*OK_BUTTON)
    status = player.wait(10)
    if status != 0:
        raise Failure(f"the player ended with status {status}")


def picture_of_a_start_without_card(stage, program):
    player = stage.start_player(program, "--card", stage.root / "nowhere", stderr=subprocess.DEVNULL)
    window = Window(stage, player)
    time.sleep(1)  # nobody else paints now
    picture = window.look()
    answer_notice(window, player)
    return picture


def expect_list_kept(stage):
    if (stage.root / "device/Windows/play_list.txt").read_bytes() != SAVED:
        raise Failure("the saved list is another one")


def pull_while_it_plays(stage, program, card, notice, open_list=False):
    card.put()
    player = stage.start_player(program, "--card", card.folder, stderr=subprocess.DEVNULL)
    window = Window(stage, player)
    window.press("Return")
    stage.ear.expect_sound("the song plays")
    if open_list:
        window.press("l")
        wait_for("the play list", lambda: min(window.look().getpixel(LIST_PAPER)) > 200)
    time.sleep(1)
    pulled = time.monotonic()
    card.pull()
    wait_for("silence", lambda: stage.ear.silent_for(0.5))
    ms = 1000 * (stage.ear.last_sound - pulled)
    wait_for("the notice that no card is there", lambda: window.look().tobytes() == notice.tobytes())
    answer_notice(window, player)
    expect_list_kept(stage)
    print(f"ok: {type(card).__name__}: silent {ms:.0f} ms after the pull, notice, exit, list kept", flush=True)
    if ms > MOST_MS:
        raise Failure(f"the song went on for {ms:.0f} ms")


def play_again(stage, program, card):
    card.put()
    player = stage.start_player(program, "--card", card.folder, stderr=subprocess.DEVNULL)
    window = Window(stage, player)
    window.press("Return")
    stage.ear.expect_sound("the card is back")
    window.press("Escape")
    if player.wait(10) != 0:
        raise Failure(f"the player ended with status {player.returncode}")
    expect_list_kept(stage)
    card.pull()
    print(f"ok: {type(card).__name__}: back again, the same list plays", flush=True)


def run(program, may_mount):
    with Stage() as stage:
        songs = stage.root / "songs"
        songs.mkdir()
        for name, pitch in SONGS.items():
            make_tones(songs / name, [(pitch, SONG_S)])
        files = stage.root / "device/Windows"
        files.mkdir()
        (files / "play_list.txt").write_bytes(SAVED)
        hush_notices(files)
        stage.ear = StampedEar(stage.environment)
        stage.processes.append(stage.ear.recorder)
        notice = picture_of_a_start_without_card(stage, program)
        cards = [FolderCard(stage.root / "folder", songs)]
        if may_mount:
            cards.append(MountedCard(stage.root / "mount", songs))
        for card in cards:
            pull_while_it_plays(stage, program, card, notice)
            play_again(stage, program, card)
        pull_while_it_plays(stage, program, cards[0], notice, open_list=True)


def main():
    program = pathlib.Path(sys.argv[1]).resolve()
    own_mounts = ["unshare", "--map-root-user", "--mount"]
    if "--may-mount" not in sys.argv and subprocess.run([*own_mounts, "true"], capture_output=True, check=False).returncode == 0:
        os.execvp(own_mounts[0], [*own_mounts, sys.executable, "-B", __file__, program, "--may-mount"])
    run(program, "--may-mount" in sys.argv)


if __name__ == "__main__":
    try:
        main()
    except Failure as failure:
        sys.exit(f"FAILED: {failure}")
    print("ok: the card may be pulled out at any time")
